#include "fountain/scene.h"

#include <gtest/gtest.h>

#include <sstream>

#include "fountain/colors.h"
#include "fountain_text.h"

namespace {

using fountain::Scene;
using testing_support::After;

constexpr fountain::DisplayOptions kNoOptions;

Scene Draw(const fountain::Fountain& fountain, const fountain::DisplayOptions& options = kNoOptions)
{
    const fountain::SceneLayout& layout = fountain::DesignLayout();
    return fountain::BuildScene(fountain.State(), fountain.Drawn(), options, layout,
                                fountain::Measure(layout));
}

Scene Draw(const char* times)
{
    return Draw(After(times));
}

const fountain::Measures& Units()
{
    static const fountain::Measures kUnits = fountain::Measure(fountain::DesignLayout());
    return kUnits;
}

/// Height of a ring's bar in ring units, "-" when it is hidden.
std::string RingText(const Scene& scene, int module, int ring)
{
    const fountain::LabelElement& bar = scene.lblRing[fountain::RingLabel(module, ring)];
    if (!bar.visible)
        return "-";
    std::ostringstream text;
    text << bar.height / Units().ringUnit[ring];
    return text.str();
}

TEST(BuildScene, RingHeights)
{
    const struct {
        const char* name;
        const char* times;
        const char* groupA;  // of ring 2, in units of a sixth
        const char* groupB;
    } rows[] = {
        {"hidden at first", "", "-", "-"},
        {"level 1 is a third", "002-017", "2", "-"},
        {"level 5 is all", "002-037", "-", "6"},
        {"joined: the mean of both", "002-017 002-101", "4", "4"},
        {"joined with 0: half levels", "002-021 002-096", "3.5", "3.5"},
        {"joined at 0", "002-112", "-", "-"},
        {"the end of a join redraws the other", "002-081 002-101 002-019", "4", "6"},
        {"only its own join counts", "001-064 002-018", "3", "-"},
        {"a copy draws its target alone", "002-084 080-017", "3", "5"},
    };
    for (const auto& row : rows) {
        const Scene scene = Draw(row.times);
        for (int module = 1; module <= 7; ++module)
            EXPECT_EQ(RingText(scene, module, 2), module % 2 == 1 ? row.groupA : row.groupB)
                << row.name << ", module " << module;
    }
}

TEST(BuildScene, RingsKeepTheirBottom)
{
    for (const char* times : {"", "001-049", "001-050 001-048", "048-054", "048-054 048-048"}) {
        const Scene scene = Draw(times);
        for (int index = 1; index <= 35; ++index)
            EXPECT_DOUBLE_EQ(scene.lblRing[index].Bottom(),
                             fountain::DesignLayout().lblRing[index].Bottom())
                << times << ", bar " << index;
    }
}

TEST(BuildScene, HiddenRingsKeepTheirHeight)
{
    const fountain::LabelElement bar = Draw("001-050 001-048").lblRing[1];
    EXPECT_FALSE(bar.visible);
    EXPECT_EQ(bar.height, 3 * Units().ringUnit[1]);
}

TEST(BuildScene, CandelabrasGrowFromTheirNozzles)
{
    const struct {
        const char* name;
        const char* times;
        double lengths;  // in design jets, of Group A
    } rows[] = {
        {"level 1 is the design", "008-017", 1},
        {"level 5", "008-021", 5},
        {"joined with 0", "008-021 008-096", 2.5},
    };
    for (const auto& row : rows)
        for (int jet = 0; jet < 6; ++jet) {
            const fountain::LineElement line =
                Draw(row.times).linCandelabra[fountain::CandelabraLine(3, jet)];
            const fountain::Segment& design =
                fountain::DesignLayout().linCandelabra[fountain::CandelabraLine(3, jet)];
            EXPECT_TRUE(line.visible);
            EXPECT_EQ(line.x1, design.x1);
            EXPECT_EQ(line.x2 - line.x1, (design.x2 - design.x1) * row.lengths) << row.name;
            EXPECT_EQ(line.y2 - line.y1, (design.y2 - design.y1) * row.lengths) << row.name;
        }
    EXPECT_FALSE(Draw("008-021").linCandelabra[fountain::CandelabraLine(4, 0)].visible);
}

// Lengths and angles of a hand-made layout that anyone can check: a sweep of 1000 units.
TEST(BuildScene, SweepsLean)
{
    const struct {
        const char* name;
        int position;
        bool opposed;
        int halves;
        double dx[2];
        double dy;
    } rows[] = {
        {"upright", 3, false, 10, {0, 0}, 1000},
        {"30 degrees to the right", 6, false, 10, {500, 500}, 866},
        {"30 degrees to the left", 0, false, 10, {-500, -500}, 866},
        {"opposed sweeps mirror each other", 6, true, 10, {500, -500}, 866},
        {"10 degrees at level 2", 4, false, 4, {69, 69}, 394},
        {"joined, two levels and a half", 2, true, 5, {-87, 87}, 492},
        {"no water", 6, false, 0, {0, 0}, 0},
    };
    fountain::SceneLayout layout;
    for (fountain::Segment& line : layout.linSweep)
        line = {100, 2000, 100, 1000};
    for (const auto& row : rows) {
        fountain::Drawing drawing;
        drawing.sweeps[1] = {static_cast<std::int16_t>(row.halves),
                             static_cast<std::int16_t>(row.position), row.opposed};
        const Scene scene =
            fountain::BuildScene({}, drawing, kNoOptions, layout, fountain::Measure(layout));
        for (int side = 0; side < 2; ++side) {
            const fountain::LineElement& line = scene.linSweep[fountain::SweepLine(2, side)];
            EXPECT_EQ(line.visible, row.halves > 0) << row.name;
            EXPECT_EQ(line.x2 - line.x1, row.dx[side]) << row.name << ", side " << side;
            EXPECT_EQ(line.y1 - line.y2, row.dy) << row.name << ", side " << side;
        }
    }
}

TEST(BuildScene, SweepsAreDrawnAsTheyStoodWhenTheyWereDrawn)
{
    fountain::Fountain fountain = After("006-053 033-099");
    for (int k = 0; k < 3; ++k)
        fountain.tmrSweeps_Timer();
    const fountain::LineElement leaning = Draw(fountain).linSweep[1];
    EXPECT_GT(leaning.x2, leaning.x1);
    testing_support::Listener listener;
    fountain.ApplyCommands(testing_support::Packed("034-099"), listener);
    EXPECT_EQ(Draw(fountain).linSweep[1], leaning) << "a motion command draws nothing";
    fountain.tmrSweeps_Timer();
    EXPECT_LT(Draw(fountain).linSweep[1].x2, leaning.x1) << "the next tick does";
}

TEST(BuildScene, BazookasStack)
{
    for (int level = 0; level <= 5; ++level) {
        fountain::Fountain fountain;
        fountain.DrawBazookas(level);
        const Scene scene = Draw(fountain);
        for (int line = 0; line <= 9; ++line)
            EXPECT_EQ(scene.linBazooka[line].visible, line / 2 < level) << level << ' ' << line;
    }
}

TEST(BuildScene, CentralWater)
{
    const fountain::SceneLayout& layout = fountain::DesignLayout();
    const Scene dry = Draw("");
    EXPECT_FALSE(dry.linSpout.visible || dry.linVoice.visible || dry.linPeacock[0].visible);
    EXPECT_TRUE(dry.shpCurtain[0].visible && dry.shpCurtain[1].visible) << "even at height 0";
    EXPECT_EQ(dry.shpCurtain[0].height, 0);

    const Scene wet = Draw("007-037 054-001");
    EXPECT_EQ(wet.linSpout.y1, layout.linSpout.y1) << "level 5 is the design length";
    EXPECT_EQ(Draw("007-033").linSpout.y1, layout.linSpout.y2 - Units().spoutLength / 5.0);
    EXPECT_TRUE(wet.linVoice.visible);
}

TEST(BuildScene, CurtainsAndPeacock)
{
    const fountain::SceneLayout& layout = fountain::DesignLayout();
    const Scene both = Draw("009-017 009-037");
    EXPECT_EQ(both.shpCurtain[0].height, 2 * Units().curtainUnit);
    EXPECT_EQ(both.shpCurtain[1].height, 6 * Units().curtainUnit);
    for (int curtain = 0; curtain <= 1; ++curtain)
        EXPECT_EQ(both.shpCurtain[curtain].Bottom(), layout.shpCurtain[curtain].Bottom());

    const Scene peacock = Draw("009-098");
    for (int index = 0; index <= 12; ++index) {
        const fountain::LineElement& line = peacock.linPeacock[index];
        EXPECT_TRUE(line.visible);
        EXPECT_EQ(line.x2 - line.x1,
                  2 * (layout.linPeacock[index].x2 - layout.linPeacock[index].x1));
        EXPECT_EQ(line.y2 - line.y1,
                  2 * (layout.linPeacock[index].y2 - layout.linPeacock[index].y1));
    }
}

TEST(DrawingOperations, IgnoreLevelsThatAreNone)
{
    for (const int level : {-1, 6, 7}) {
        fountain::Fountain fountain = After("003-050 006-050 008-050 007-050 009-050");
        const fountain::Fountain before = fountain;
        fountain.DrawRing(0, 3, level);
        fountain.DrawSweeps(0, level);
        fountain.DrawCandelabras(1, level);
        fountain.DrawBazookas(level);
        fountain.DrawSpout(level);
        fountain.DrawCurtain(0, level);
        fountain.DrawPeacock(level);
        EXPECT_EQ(fountain.State(), before.State()) << level;
        EXPECT_EQ(fountain.Drawn(), before.Drawn()) << level;
    }
    fountain::Fountain fountain;
    fountain.DrawMultiValve(0, 7);
    EXPECT_EQ(testing_support::StateText(fountain),
              "ring1 1/0 ring2 2/0 ring3 3/0 ring4 4/0 ring5 5/0 sweeps 5/0")
        << "the panel's valve makes a Wedding Cake of 7";
}

TEST(DrawingOperations, JoinedOnesDrawBothGroups)
{
    fountain::Fountain fountain = After("001-097 006-097 008-097");
    fountain.DrawRingJoined(0, 1, 4);
    fountain.DrawSweepsJoined(0, 4);
    fountain.DrawCandelabrasJoined(0, 4);
    for (int group = 0; group <= 1; ++group) {
        EXPECT_EQ(fountain.Drawn().ringHalves[group], 5);
        EXPECT_EQ(fountain.Drawn().sweeps[group].halves, 5);
        EXPECT_EQ(fountain.Drawn().candelabraHalves[group], 5);
    }
    fountain = After("001-033");
    fountain.DrawRingJoined(0, 1, 4);
    EXPECT_EQ(fountain.Drawn().ringHalves[1], 2) << "not joined";
}

/// Index of a colour in the legend.
int Entry(fountain::Color color)
{
    for (int index = 0; index <= 16; ++index)
        if (fountain::mlngColors(index) == color)
            return index;
    return -1;
}

TEST(BuildScene, ModulesTakeTheirLights)
{
    const struct {
        const char* name;
        const char* times;
        int entry;  // of module 4
    } rows[] = {
        {"unlit", "", 0},
        {"a value", "020-013", 13},
        {"unlit before green", "024-016", 6},
        {"unlit before amber", "024-032", 4},
        {"unlit before both", "024-048", 16},
        {"lit before both", "020-001 024-048", 1},
        {"the curtain's light goes", "024-048 024-000", 0},
        {"the module's light goes", "024-016 020-001 020-000", 6},
    };
    for (const auto& row : rows) {
        const Scene scene = Draw(row.times);
        EXPECT_EQ(Entry(scene.lblRing[fountain::RingLabel(4, 5)].color), row.entry) << row.name;
        EXPECT_EQ(Entry(scene.linCandelabra[fountain::CandelabraLine(4, 5)].color), row.entry);
        EXPECT_EQ(Entry(scene.linSweep[fountain::SweepLine(4, 1)].color), row.entry);
        EXPECT_EQ(Entry(scene.linSpout.color), row.entry) << row.name;
    }
}

TEST(BuildScene, BazookasTakeTheLightsOfTheirModules)
{
    const struct {
        const char* name;
        const char* times;
        std::vector<int> entries;  // of the lines 0..9
    } rows[] = {
        {"each its module",
         "017-001 018-002 019-003 020-004 021-005 022-006 023-007",
         {1, 7, 1, 7, 2, 6, 2, 6, 3, 5}},
        {"bazooka white", "017-001 016-004", {9, 8, 9, 8, 8, 8, 8, 8, 8, 8}},
        {"curtain lights where a module is unlit",
         "017-001 024-048",
         {1, 16, 1, 16, 16, 16, 16, 16, 16, 16}},
        {"bazooka white before curtain lights", "024-048 016-004", std::vector<int>(10, 8)},
    };
    for (const auto& row : rows) {
        const Scene scene = Draw(row.times);
        std::vector<int> entries;
        for (const fountain::LineElement& line : scene.linBazooka)
            entries.push_back(Entry(line.color));
        EXPECT_EQ(entries, row.entries) << row.name;
    }
}

TEST(BuildScene, OtherLights)
{
    EXPECT_EQ(Entry(Draw("025-007 026-002").linPeacock[0].color), 2) << "the last of both groups";
    EXPECT_EQ(Entry(Draw("026-002 025-000").linPeacock[12].color), 0);

    const struct {
        const char* times;
        int curtain;
        int green;
        int amber;
    } rows[] = {
        {"", 0, -1, -1}, {"024-016", 6, 6, -1}, {"024-032", 4, -1, 4}, {"024-048", 16, 6, 4}};
    for (const auto& row : rows) {
        const Scene scene = Draw(row.times);
        EXPECT_EQ(Entry(scene.shpCurtain[1].color), row.curtain) << row.times;
        EXPECT_EQ(Entry(scene.shpCurtain[0].color), 0) << "the front curtain has no lights";
        EXPECT_EQ(Entry(scene.lblCurtainLight[0].color), row.green) << row.times;
        EXPECT_EQ(Entry(scene.lblCurtainLight[1].color), row.amber) << row.times;
    }
    EXPECT_FALSE(Draw("").lblCross.visible);
    EXPECT_TRUE(Draw("016-002").lblCross.visible);
}

TEST(BuildScene, DisplayOptions)
{
    const fountain::Fountain fountain = After("017-015 018-006");
    const Scene plain = Draw(fountain);
    EXPECT_EQ(plain.candelabraDrawMode, fountain::DrawMode::Xor);
    EXPECT_EQ(plain.curtainFillStyle, fountain::FillStyle::VerticalLines);
    EXPECT_FALSE(plain.lampLetters);
    const Scene all = Draw(fountain, {true, true, true, true});
    EXPECT_EQ(all.candelabraDrawMode, fountain::DrawMode::Copy);
    EXPECT_EQ(all.curtainFillStyle, fountain::FillStyle::Solid);
    EXPECT_TRUE(all.lampLetters);
    EXPECT_EQ(all.lblLamps[1].text, "RBAW");
    EXPECT_EQ(all.lblLamps[2].text, "BA");
    EXPECT_EQ(all.lblLamps[3].text, "");
}

}  // namespace
