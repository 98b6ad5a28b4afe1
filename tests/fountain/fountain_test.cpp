#include "fountain/fountain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "document/random_show.h"
#include "fountain_text.h"

namespace {

using testing_support::After;
using testing_support::Listener;
using testing_support::Packed;
using testing_support::StateText;

struct Row {
    const char* name;
    const char* times;
    const char* state;
};

template <std::size_t N>
void ExpectStates(const Row (&rows)[N])
{
    for (const Row& row : rows)
        EXPECT_EQ(StateText(After(row.times)), row.state) << row.name << ": " << row.times;
}

// clang-format off
TEST(ApplyCommands, Water)
{
    ExpectStates({
        {"ring of Group A",                  "001-019",                    "ring1 3/0"},
        {"ring of Group B",                  "005-037",                    "ring5 0/5"},
        {"both groups",                      "003-050",                    "ring3 2/2"},
        {"no group",                         "003-002",                    ""},
        {"level 0 drops",                    "003-050 003-016",            "ring3 0/2"},
        {"levels above 5 are ignored",       "003-050 003-054 003-055",    "ring3 2/2"},
        {"sweeps",                           "006-017 006-036",            "sweeps 1/4"},
        {"candelabras",                      "008-021 008-033",            "candelabras 5/1"},
        {"joined: level of one group",       "001-051 001-081",            "ring1 1/3 join 1"},
        {"joined: level 6 stores nothing",   "001-051 001-118",            "ring1 3/3 join 1"},
        {"join alone",                       "006-064",                    "join 6"},
        {"join ends with the next command",  "008-115 008-017",            "candelabras 1/3"},
        {"joins are per device",             "001-113 002-114",            "ring1 1/1 ring2 2/2 join 1 join 2"},
        {"bazookas",                         "007-021",                    "bazookas 5"},
        {"spout",                            "007-036",                    "spout 4"},
        {"bazookas and spout",               "007-051",                    "bazookas 3 spout 3"},
        {"bazookas at level 6",              "007-051 007-054",            "bazookas 3 spout 3"},
        {"voice starts at any data above 0", "054-200",                    "voice"},
        {"voice stops",                      "054-001 054-000",            ""},
        {"unknown addresses",                "010-255 015-255 027-255 040-255 042-255 068-255 098-255 100-255 255-255", ""},
    });
}

TEST(ApplyCommands, CurtainsAndPeacock)
{
    ExpectStates({
        {"front",                              "009-020",         "curtains 4/0"},
        {"back",                               "009-037",         "curtains 0/5"},
        {"front and back",                     "009-050",         "curtains 2/2"},
        {"peacock",                            "009-099",         "peacock 3"},
        {"bit 6 without bit 5",                "009-067",         ""},
        {"front and peacock: peacock is last", "009-115",         "curtains 3/0 peacock 3"},
        {"a front curtain drops the peacock",  "009-099 009-017", "curtains 1/0"},
        {"a back curtain drops the peacock",   "009-099 009-033", "curtains 0/1"},
        {"no curtain drops nothing",           "009-099 009-048", "peacock 3"},
        {"the peacock drops the back curtain", "009-050 009-097", "curtains 2/0 peacock 1"},
        {"no peacock drops nothing",           "009-050 009-096", "curtains 2/2"},
        {"level 6 drops nothing",              "009-099 009-054", "peacock 3"},
        {"peacock level 7 drops nothing",      "009-050 009-103", "curtains 2/2"},
    });
}

TEST(ApplyCommands, MultiValve)
{
    ExpectStates({
        {"a level",           "048-019", "ring1 3/0 ring2 3/0 ring3 3/0 ring4 3/0 ring5 3/0 sweeps 3/0 valve 3/0"},
        {"Wedding Cake",      "048-038", "ring1 0/1 ring2 0/2 ring3 0/3 ring4 0/4 ring5 0/5 sweeps 0/5 valve 0/6"},
        {"back to 0",         "048-054 048-048", ""},
        {"level 7",           "048-055", ""},
        {"no group",          "048-003", ""},
        {"joins are kept",    "002-064 048-017", "ring1 1/0 ring2 1/0 ring3 1/0 ring4 1/0 ring5 1/0 sweeps 1/0 valve 1/0 join 2"},
    });
}

TEST(ApplyCommands, Lights)
{
    ExpectStates({
        {"first module",                     "017-009",                 "modules 9000000"},
        {"last module, high bits ignored",   "023-255",                 "modules 000000F"},
        {"Group A",                          "049-005",                 "modules 5050505 groups 5/0"},
        {"Group B",                          "050-018",                 "modules 0202020 groups 0/2"},
        {"both groups",                      "051-012",                 "modules CCCCCCC groups 12/12"},
        {"all white, colours are kept",      "049-001 016-008",         "modules 9898989 groups 1/0"},
        {"a clear bit turns white off",      "051-015 016-004",         "modules 7777777 groups 15/15 bazooka-white"},
        {"cross",                            "016-006 016-002",         "cross"},
        {"curtain green",                    "024-016",                 "curtain-lights 1"},
        {"curtain amber",                    "024-032",                 "curtain-lights 2"},
        {"curtain both",                     "024-048",                 "curtain-lights 3"},
        {"curtain: 7 of 16 round down",      "024-023",                 "curtain-lights 1"},
        {"curtain: a half goes to even",     "024-024",                 "curtain-lights 2"},
        {"curtain: the even half below",     "024-040",                 "curtain-lights 2"},
        {"curtain: rounding up to 4 is off", "024-048 024-060",         ""},
        {"peacock groups",                   "025-255 026-002",         "peacock-lights 7/2"},
        {"41 is Group B too",                "041-012",                 "peacock-lights 0/4"},
    });
}

TEST(ApplyCommands, CopyAndExchange)
{
    const char* const water = "001-018 006-019 008-020 049-004 ";
    const struct {
        const char* name;
        const char* copy;
        const char* state;
    } rows[] = {
        {"water A to B",    "080-017", "ring1 2/2 sweeps 3/3 candelabras 4/4 modules 4040404 groups 4/0"},
        {"water B to A",    "080-033", "modules 4040404 groups 4/0"},
        {"water exchanged", "080-049", "ring1 0/2 sweeps 0/3 candelabras 0/4 modules 4040404 groups 4/0"},
        {"lights A to B",   "080-018", "ring1 2/0 sweeps 3/0 candelabras 4/0 modules 4444444 groups 4/4"},
        {"all exchanged",   "080-051", "ring1 0/2 sweeps 0/3 candelabras 0/4 modules 0404040 groups 0/4"},
        {"no direction",    "080-003", "ring1 2/0 sweeps 3/0 candelabras 4/0 modules 4040404 groups 4/0"},
        {"nothing to copy", "080-048", "ring1 2/0 sweeps 3/0 candelabras 4/0 modules 4040404 groups 4/0"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(StateText(After(std::string(water) + row.copy)), row.state) << row.name;
    EXPECT_EQ(StateText(After("049-004 017-001 080-050")), "modules 0404040 groups 0/4")
        << "the value given to the group is copied, not that of a module";
}

TEST(ApplyCommands, LightMovement)
{
    ExpectStates({
        {"single, right, without wrapping",    "023-001 017-002 085-017", "modules 0200000 moving"},
        {"single, right, with wrapping",       "023-001 017-002 085-033", "modules 1200000 moving wrap"},
        {"single, left, without wrapping",     "023-001 017-002 085-018", "modules 0000010 moving left"},
        {"single, left, with wrapping",        "023-001 017-002 085-034", "modules 0000012 moving left wrap"},
        {"a single shift is over at the next", "017-002 085-033 | 054-000", "modules 0200000 wrap"},
        {"timed does not shift by itself",     "017-002 085-097 | 054-000", "modules 2000000 moving wrap timed tmrLights 400"},
        {"stop",                               "085-097 085-000",         "wrap"},
        {"no low bit is a stop",               "085-082 085-096",         "left"},
        {"a shift leaves the timer running",   "085-081 085-017",         "moving tmrLights 400"},
        {"period",                             "086-025",                 "period 2500"},
        {"longest period",                     "086-255",                 "period 25500"},
        {"period of a running timer",          "085-081 086-000",         "moving timed period 0 tmrLights 0"},
    });
}

TEST(ApplyCommands, SweepMotion)
{
    ExpectStates({
        {"slow, short",                       "033-033",         "speed 1 tmrSweeps 500"},
        {"medium, long",                      "033-067",         "speed 2 0..6 tmrSweeps 375"},
        {"fast, no travel",                   "034-096",         "speed 3 opposed 3..3 tmrSweeps 250"},
        {"bits 2, 3, 4 and 7 mean nothing",   "033-189",         "speed 1 tmrSweeps 500"},
        {"a stop leaves the timer and travel", "034-099 034-000", "opposed 0..6 tmrSweeps 250"},
        {"a stop tells the direction",        "034-099 033-000", "0..6 tmrSweeps 250"},
        {"pulsation up",                      "006-019 069-016", "sweeps 3/0 step 3/0 tmrPulsate 500"},
        {"pulsation down, both",              "006-050 069-112", "sweeps 2/2 step -2/-2 down 1/1 tmrPulsate 500"},
        {"pulsation of no group",             "006-050 069-064", "sweeps 2/2 tmrPulsate 500"},
        {"the other group goes on",           "006-050 069-048 069-096", "sweeps 2/2 step 2/-2 down 0/1 tmrPulsate 500"},
        {"stop of both",                      "006-050 069-112 069-000", "sweeps 2/2"},
    });
}
// clang-format on

TEST(ApplyCommands, IgnoresAddressesThatDriveNothing)
{
    const std::vector<int> driving = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  16, 17,
                                      18, 19, 20, 21, 22, 23, 24, 25, 26, 33, 34, 41,
                                      48, 49, 50, 51, 54, 69, 80, 85, 86, 99};
    // Off its reset state in every way that a reset would undo.
    const fountain::Fountain before = After("048-050 006-084 008-050 051-007 033-033 069-016");
    const std::string text = StateText(before);
    for (int address = 0; address <= 255; ++address) {
        bool changes = false;
        for (int data = 0; data <= 255; ++data) {
            fountain::Fountain fountain = before;
            Listener listener;
            const char command[] = {static_cast<char>(address), static_cast<char>(data)};
            fountain.ApplyCommands({command, 2}, listener);
            changes |= StateText(fountain) != text || listener.display >= 0;
        }
        const bool drives = std::ranges::find(driving, address) != driving.end();
        EXPECT_EQ(changes, drives) << address;
    }
}

TEST(ApplyCommands, TellsThePanel)
{
    fountain::Fountain fountain;
    Listener listener;
    fountain.ApplyCommands(Packed("000-010 099-077 000-255"), listener);
    EXPECT_EQ(listener.display, 255);
    EXPECT_EQ(listener.resets, 1);
    const document::Commands two = Packed("000-007 054-001");
    fountain.ApplyCommands(std::string_view(two).substr(0, 3), listener);
    EXPECT_EQ(listener.display, 7);
    EXPECT_EQ(StateText(fountain), "") << "an address without data is no command";
}

TEST(ResetDevices, BringsEveryDeviceBack)
{
    EXPECT_EQ(StateText(After("001-115 006-115 008-115 048-054 007-053 009-099 009-019 054-001 "
                              "051-015 025-007 026-007 024-048 016-014 069-112 034-099 085-114 "
                              "086-007 099-000")),
              "opposed");
    EXPECT_EQ(StateText(After("034-099 033-099 099-000")), "");
}

// Whatever a file holds: every level stays drawable and every light value has a colour.
TEST(ApplyCommands, NeverLeavesItsRanges)
{
    const auto inRange = [](const fountain::FountainState& state) {
        const auto within = [](const auto& values, int last) {
            return std::ranges::all_of(values, [&](int v) { return v >= 0 && v <= last; });
        };
        return within(state.mintRingLevel, 5) && within(state.mintSweepLevel, 5) &&
               within(state.mintCandelabraLevel, 5) && within(state.mintMultiValveLevel, 6) &&
               within(state.mintCurtainLevel, 5) && within(state.mintPulseBase, 5) &&
               within(state.mintModuleLights, 15) && within(state.mintGroupLights, 15) &&
               within(state.mintPeacockLights, 7) && state.mintCurtainLights <= 3 &&
               state.mintSweepSpeed <= 3 && state.mintSweepPosition >= -1 &&
               state.mintSweepPosition <= 7 && std::abs(state.mintPulseStep[0]) <= 5 &&
               std::abs(state.mintPulseStep[1]) <= 5;
    };
    testing_support::Random random(1);
    fountain::Fountain fountain;
    Listener listener;
    for (int k = 0; k < 300'000; ++k) {
        const int any = random.Below(65'536);  // each of the commands, in any order
        const char command[] = {static_cast<char>(any >> 8), static_cast<char>(any & 255)};
        fountain.ApplyCommands({command, 2}, listener);
        if (fountain.tmrSweeps.Ticks() && random.OneIn(8))
            fountain.tmrSweeps_Timer();
        if (fountain.tmrPulsate.Ticks() && random.OneIn(8))
            fountain.tmrPulsate_Timer();
        if (fountain.tmrLights.Ticks() && random.OneIn(8))
            fountain.tmrLights_Timer();
        ASSERT_TRUE(inRange(fountain.State())) << (any >> 8) << '-' << (any & 255);
    }
}

// A tick of each timer, as positions and levels over time.
TEST(Effects, SweepsSwing)
{
    const struct {
        const char* name;
        const char* times;
        std::vector<int> positions;
    } rows[] = {
        {"short", "033-097", {4, 3, 2, 3, 4, 3}},
        {"long", "033-099", {4, 5, 6, 5, 4, 3, 2, 1, 0, 1}},
        {"no travel", "033-096", {2, 3, 2, 3}},
    };
    for (const auto& row : rows) {
        fountain::Fountain fountain = After(row.times);
        std::vector<int> positions;
        for (std::size_t k = 0; k < row.positions.size(); ++k) {
            fountain.tmrSweeps_Timer();
            positions.push_back(fountain.State().mintSweepPosition);
            EXPECT_TRUE(fountain.tmrSweeps.Enabled());
        }
        EXPECT_EQ(positions, row.positions) << row.name;
    }
}

TEST(Effects, StoppedSweepsSwingOutToUpright)
{
    fountain::Fountain fountain = After("033-099");
    Listener listener;
    for (int k = 0; k < 4; ++k)
        fountain.tmrSweeps_Timer();
    ASSERT_EQ(StateText(fountain), "speed 3 at 5 back 0..6 tmrSweeps 250");
    fountain.ApplyCommands(Packed("033-000"), listener);
    fountain.tmrSweeps_Timer();
    EXPECT_EQ(StateText(fountain), "at 4 back 0..6 tmrSweeps 250");
    fountain.tmrSweeps_Timer();
    EXPECT_EQ(StateText(fountain), "back 0..6");
}

TEST(Effects, SweepsPulsate)
{
    const struct {
        const char* name;
        const char* times;
        std::vector<int> levels;  // of Group B
    } rows[] = {
        {"upward", "006-035 069-032", {0, 1, 2, 3, 0, 1}},
        {"downward", "006-035 069-096", {2, 1, 0, 3, 2}},
        {"nothing at level 0", "069-032", {0, 0}},
        {"goes on from a level that is set", "006-035 069-032 006-033", {2, 3, 0}},
        {"a level above the top drops", "006-033 069-032 006-037", {0, 1, 0}},
        {"the other group stands still", "006-035 069-016", {3, 3}},
    };
    for (const auto& row : rows) {
        fountain::Fountain fountain = After(row.times);
        std::vector<int> levels;
        for (std::size_t k = 0; k < row.levels.size(); ++k) {
            fountain.tmrPulsate_Timer();
            levels.push_back(fountain.State().mintSweepLevel[1]);
        }
        EXPECT_EQ(levels, row.levels) << row.name;
        EXPECT_TRUE(fountain.tmrPulsate.Enabled()) << row.name;
    }
}

TEST(Effects, LightsMove)
{
    fountain::Fountain empties = After("051-001 085-082");
    for (int k = 0; k < 6; ++k)
        empties.tmrLights_Timer();
    EXPECT_EQ(StateText(empties).substr(0, 15), "modules 1000000");
    empties.tmrLights_Timer();
    EXPECT_EQ(empties.State().mintModuleLights[1], 0);

    fountain::Fountain circles = After("017-009 085-097");
    for (int k = 0; k < 6; ++k)
        circles.tmrLights_Timer();
    EXPECT_EQ(StateText(circles).substr(0, 15), "modules 0000009");
    circles.tmrLights_Timer();
    EXPECT_EQ(StateText(circles).substr(0, 15), "modules 9000000");
}

TEST(Timer, KnowsWhenAPeriodBegins)
{
    fountain::Timer timer(400);
    timer.SetInterval(500);
    EXPECT_EQ(timer.Periods(), 0U) << "it does not run";
    timer.Enable();
    timer.Enable();
    EXPECT_EQ(timer.Periods(), 1U) << "enabling a running timer does nothing";
    timer.SetInterval(500);
    EXPECT_EQ(timer.Periods(), 2U) << "writing the same interval begins anew";
    timer.SetInterval(0);
    EXPECT_FALSE(timer.Ticks());
}

}  // namespace
