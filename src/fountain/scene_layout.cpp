#include "fountain/scene_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace fountain {
namespace {

// Design positions are in pixels here. Whole pixels, and vectors of whole units, keep every
// height and length that drawing derives from them whole at the design size.
constexpr double kMiddle = kDesignWidth / 2.0;
constexpr double kModulePitch = 128;
constexpr double kNozzles = 300;  ///< y of the middle of the modules

constexpr double Units(double pixels)
{
    return pixels * kUnitsPerPixel;
}

constexpr Box PixelBox(double left, double top, double width, double height)
{
    return {Units(left), Units(top), Units(width), Units(height)};
}

constexpr Segment PixelLine(double x1, double y1, double x2, double y2)
{
    return {Units(x1), Units(y1), Units(x2), Units(y2)};
}

constexpr double ModuleMiddle(int module)
{
    return kMiddle + kModulePitch * (module - 4);
}

// The rings lie within each other; an outer one ends lower because it is nearer to the viewer.
struct RingSize {
    double width;
    double height;
    double bottom;
};
constexpr std::array<RingSize, 5> kRings{
    {{108, 96, 308}, {88, 114, 306}, {68, 132, 304}, {48, 150, 302}, {26, 174, 300}}};

struct Jet {
    double start;  ///< pixels from the middle of the module
    double reach;  ///< units at level 1
    double rise;
};
constexpr std::array<Jet, 6> kCandelabra{{{-10, -158, 264},
                                          {-6, -120, 360},
                                          {-2, -62, 428},
                                          {2, 62, 428},
                                          {6, 120, 360},
                                          {10, 158, 264}}};

void PlaceModule(SceneLayout& layout, int module)
{
    const double middle = ModuleMiddle(module);
    for (int ring = 1; ring <= 5; ++ring) {
        const RingSize& size = kRings[static_cast<std::size_t>(ring - 1)];
        layout.lblRing[RingLabel(module, ring)] =
            PixelBox(middle - size.width / 2, size.bottom - size.height, size.width, size.height);
    }
    for (int jet = 0; jet < 6; ++jet) {
        const Jet& design = kCandelabra[static_cast<std::size_t>(jet)];
        const double x = Units(middle + design.start);
        layout.linCandelabra[CandelabraLine(module, jet)] = {x, Units(kNozzles), x + design.reach,
                                                             Units(kNozzles) - design.rise};
    }
    for (int side = 0; side < 2; ++side) {
        const double x = middle + (side == 0 ? -26 : 26);
        layout.linSweep[SweepLine(module, side)] = PixelLine(x, 306, x, 116);
    }
    layout.lblLamps[module] = PixelBox(middle - 48, 342, 96, 24);
}

// Two arches, five lines each, from the edges of the basin to both sides of the middle module.
void PlaceBazookas(SceneLayout& layout)
{
    constexpr std::array<double, 6> kRise{0, 128, 192, 192, 128, 0};
    for (int pair = 0; pair < 5; ++pair) {
        const auto step = static_cast<std::size_t>(pair);
        const double x1 = 16 + 84.0 * pair;
        const double x2 = x1 + 84;
        const double y1 = 308 - kRise[step];
        const double y2 = 308 - kRise[step + 1];
        layout.linBazooka[2 * pair] = PixelLine(x1, y1, x2, y2);
        layout.linBazooka[2 * pair + 1] = PixelLine(kDesignWidth - x1, y1, kDesignWidth - x2, y2);
    }
}

void PlacePeacock(SceneLayout& layout)
{
    constexpr double kStep = 12.5 * std::numbers::pi / 180;
    for (int line = 0; line <= 12; ++line) {
        const double angle = (line - 6) * kStep;
        const double x = Units(kMiddle + 4.0 * (line - 6));
        const double y = Units(296);
        layout.linPeacock[line] = {x, y, x + std::round(Units(60) * std::sin(angle)),
                                   y - std::round(Units(50) * std::cos(angle))};
    }
}

SceneLayout MakeDesign()
{
    SceneLayout layout;
    layout.fraView = PixelBox(0, 26, kDesignWidth, 372);
    for (int module = 1; module <= 7; ++module)
        PlaceModule(layout, module);
    PlaceBazookas(layout);
    PlacePeacock(layout);
    layout.linSpout = PixelLine(kMiddle, 30, kMiddle, 300);
    layout.linVoice = PixelLine(kMiddle, 190, kMiddle, 318);
    layout.linBase = PixelLine(20, 332, kDesignWidth - 20, 332);
    layout.shpCurtain[0] = PixelBox(80, 146, 864, 180);
    layout.shpCurtain[1] = PixelBox(128, 112, 768, 180);
    layout.lblCross = PixelBox(866, 40, 40, 62);
    layout.lblCurtainLight[0] = PixelBox(46, 280, 12, 12);
    layout.lblCurtainLight[1] = PixelBox(966, 280, 12, 12);
    return layout;
}

Box Scaled(const Box& box, ScaleFactors scale)
{
    return {box.left * scale.x, box.top * scale.y, box.width * scale.x, box.height * scale.y};
}

Segment Scaled(const Segment& line, ScaleFactors scale)
{
    return {line.x1 * scale.x, line.y1 * scale.y, line.x2 * scale.x, line.y2 * scale.y};
}

template <typename T, int First, int Last>
void Scale(document::IndexedArray<T, First, Last>& elements, ScaleFactors scale)
{
    for (T& element : elements)
        element = Scaled(element, scale);
}

// Ties go to even. A size beyond 16 bits, or none at all, must not overflow on the way.
std::int32_t Whole(double units)
{
    if (std::isnan(units))
        return 0;
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int32_t>(
        std::clamp<double>(std::nearbyint(units), Limits::min(), Limits::max()));
}

std::int32_t Height(const Segment& line)
{
    return Whole(std::abs(line.y2 - line.y1));
}

Vector VectorOf(const Segment& line)
{
    return {Whole(line.x1 - line.x2), Whole(line.y1 - line.y2)};
}

}  // namespace

const SceneLayout& DesignLayout()
{
    static const SceneLayout kDesign = MakeDesign();
    return kDesign;
}

ScaleFactors FitToScreen(double width, double height)
{
    return {width / kDesignWidth, height / kDesignHeight};
}

SceneLayout Fitted(const SceneLayout& layout, ScaleFactors scale)
{
    SceneLayout fitted = layout;
    fitted.fraView = Scaled(layout.fraView, scale);
    Scale(fitted.lblRing, scale);
    Scale(fitted.linCandelabra, scale);
    Scale(fitted.linSweep, scale);
    Scale(fitted.linBazooka, scale);
    fitted.linSpout = Scaled(layout.linSpout, scale);
    Scale(fitted.linPeacock, scale);
    fitted.linVoice = Scaled(layout.linVoice, scale);
    fitted.linBase = Scaled(layout.linBase, scale);
    Scale(fitted.shpCurtain, scale);
    fitted.lblCross = Scaled(layout.lblCross, scale);
    Scale(fitted.lblCurtainLight, scale);
    Scale(fitted.lblLamps, scale);
    return fitted;
}

Measures Measure(const SceneLayout& layout)
{
    Measures measures;
    for (int ring = 1; ring <= 5; ++ring)
        measures.ringUnit[ring] = Whole(Whole(layout.lblRing[RingLabel(7, ring)].height) / 6.0);
    for (int jet = 0; jet < 6; ++jet)
        measures.candelabraVector[jet] = VectorOf(layout.linCandelabra[CandelabraLine(7, jet)]);
    for (int line = 0; line <= 12; ++line)
        measures.peacockVector[line] = VectorOf(layout.linPeacock[line]);
    measures.spoutLength = Height(layout.linSpout);
    measures.sweepLength = Height(layout.linSweep[1]);
    measures.curtainUnit = Whole(Whole(layout.shpCurtain[1].height) / 6.0);
    return measures;
}

}  // namespace fountain
