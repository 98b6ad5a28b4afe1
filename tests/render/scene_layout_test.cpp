#include "fountain/scene_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "pictures.h"

namespace fountain {
namespace {

struct Point {
    double x;
    double y;
};

template <typename Elements>
void AddEnds(std::vector<Point>& points, const Elements& lines)
{
    for (const Segment& line : lines)
        points.insert(points.end(), {{line.x1, line.y1}, {line.x2, line.y2}});
}

template <typename Elements>
void AddCorners(std::vector<Point>& points, const Elements& boxes)
{
    for (const Box& box : boxes)
        points.insert(points.end(),
                      {{box.left, box.top}, {box.left + box.width, box.top + box.height}});
}

std::vector<Point> PointsOf(const Scene& scene, WindowSize size)
{
    std::vector<Point> points;
    AddCorners(points, scene.lblRing);
    AddCorners(points, scene.shpCurtain);
    AddCorners(points, scene.lblCurtainLight);
    AddCorners(points, scene.lblLamps);
    AddCorners(points, std::vector<Box>{scene.lblCross});
    AddEnds(points, scene.linCandelabra);
    // The length of a sweep follows the height of the view, also when it leans; the painter narrows
    // the swing of a view that is too narrow for it.
    if (size.width * 3 >= size.height * 4)
        AddEnds(points, scene.linSweep);
    AddEnds(points, scene.linBazooka);
    AddEnds(points, scene.linPeacock);
    AddEnds(points, std::vector<Segment>{scene.linSpout, scene.linVoice, scene.linBase});
    return points;
}

// Half levels of everything are whole units at the design size, so that drawing never rounds.
TEST(DesignLayout, DrawsInWholeUnits)
{
    const SceneLayout& layout = DesignLayout();
    const Measures measures = Measure(layout);
    for (int ring = 1; ring <= 5; ++ring) {
        EXPECT_EQ(measures.ringUnit[ring] % 2, 0) << "ring " << ring;
        EXPECT_EQ(measures.ringUnit[ring] * 6, layout.lblRing[RingLabel(7, ring)].height);
    }
    for (const Vector& vector : measures.candelabraVector) {
        EXPECT_EQ(vector.x % 2, 0);
        EXPECT_EQ(vector.y % 2, 0);
        EXPECT_NE(vector.x, 0);
        EXPECT_GT(vector.y, 0);
    }
    for (int line = 0; line <= 12; ++line) {
        const Segment& design = layout.linPeacock[line];
        EXPECT_EQ(design.x1 - design.x2, measures.peacockVector[line].x) << line;
        EXPECT_EQ(design.y1 - design.y2, measures.peacockVector[line].y) << line;
    }
    EXPECT_EQ(measures.sweepLength % 20, 0);
    EXPECT_EQ(measures.spoutLength % 10, 0);
    EXPECT_EQ(measures.curtainUnit * 6, layout.shpCurtain[1].height);
}

TEST(DesignLayout, ModulesAreAlikeAndStandEvenly)
{
    const SceneLayout& layout = DesignLayout();
    const double pitch =
        layout.lblRing[RingLabel(2, 1)].left - layout.lblRing[RingLabel(1, 1)].left;
    const Box& middle = layout.lblRing[RingLabel(4, 1)];
    EXPECT_EQ(middle.left + middle.width / 2, layout.fraView.width / 2);
    for (int module = 1; module <= 6; ++module) {
        for (int ring = 1; ring <= 5; ++ring) {
            Box moved = layout.lblRing[RingLabel(module, ring)];
            moved.left += (7 - module) * pitch;
            EXPECT_EQ(moved, layout.lblRing[RingLabel(7, ring)]) << module << "/" << ring;
        }
        for (int jet = 0; jet <= 5; ++jet) {
            Segment moved = layout.linCandelabra[CandelabraLine(module, jet)];
            moved.x1 += (7 - module) * pitch;
            moved.x2 += (7 - module) * pitch;
            EXPECT_EQ(moved, layout.linCandelabra[CandelabraLine(7, jet)]) << module << "/" << jet;
        }
    }
    for (int pair = 0; pair <= 4; ++pair) {
        const Segment& left = layout.linBazooka[2 * pair];
        const Segment& right = layout.linBazooka[2 * pair + 1];
        EXPECT_EQ(left.x2 + right.x2, layout.fraView.width) << pair;
        EXPECT_EQ(left.y2, right.y2) << pair;
    }
}

TEST(FittedLayout, KeepsTheHighestWaterInsideTheView)
{
    for (const WindowSize size : kSizes)
        for (int position = 0; position <= 6; ++position)
            for (const bool opposed : {false, true}) {
                const Scene scene = FullScene(size, position, opposed);
                for (const Point& point : PointsOf(scene, size)) {
                    EXPECT_GE(point.x, 0) << size << " " << position;
                    EXPECT_LE(point.x, scene.fraView.width) << size << " " << position;
                    EXPECT_GE(point.y, 0) << size << " " << position;
                    EXPECT_LE(point.y, scene.fraView.height) << size << " " << position;
                }
            }
}

TEST(FittedLayout, ScalesEachAxisByItself)
{
    EXPECT_EQ(FitToScreen(1024, 768), (ScaleFactors{1, 1}));
    EXPECT_EQ(Fitted(DesignLayout(), {1, 1}), DesignLayout());

    const SceneLayout wide = Fitted(DesignLayout(), FitToScreen(1280, 768));
    EXPECT_EQ(wide.fraView.width, DesignLayout().fraView.width * 1.25);
    EXPECT_EQ(wide.fraView.top, DesignLayout().fraView.top);
    EXPECT_EQ(wide.linSweep[1].x1, DesignLayout().linSweep[1].x1 * 1.25);
    EXPECT_EQ(wide.linSweep[1].y2, DesignLayout().linSweep[1].y2);
    EXPECT_EQ(Measure(wide).sweepLength, Measure(DesignLayout()).sweepLength);
    EXPECT_EQ(Measure(wide).candelabraVector[0].x,
              std::nearbyint(Measure(DesignLayout()).candelabraVector[0].x * 1.25));
}

TEST(Measure, RoundsToWholeUnitsOf16Bits)
{
    const struct {
        const char* name;
        double length;
        int measured;
    } cases[] = {
        {"tie goes down to even", 100.5, 100},
        {"tie goes up to even", 101.5, 102},
        {"nearest", 101.51, 102},
        {"too large", 1e12, std::numeric_limits<std::int16_t>::max()},
        {"no number", std::nan(""), 0},
    };
    for (const auto& c : cases) {
        SceneLayout layout = DesignLayout();
        layout.linSpout = {0, 0, 0, c.length};
        EXPECT_EQ(Measure(layout).spoutLength, c.measured) << c.name;
        layout.lblRing[RingLabel(7, 2)].height = c.length;
        EXPECT_EQ(Measure(layout).ringUnit[2], std::nearbyint(c.measured / 6.0)) << c.name;
    }
}

}  // namespace
}  // namespace fountain
