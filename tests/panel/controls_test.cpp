#include "panel/controls.h"

#include <gtest/gtest.h>

#include "fountain_text.h"
#include "panel_edits.h"

namespace {

using testing_support::Desk;
using testing_support::StateText;

/// The controls that differ from what they were loaded with: "updnRings_4=3 lblLight_28".
std::string ChangedText(panel::PanelState& panel)
{
    std::string text;
    const auto add = [&text](const std::string& word) { text += (text.empty() ? "" : " ") + word; };
    for (const panel::SpinnerControl& control : panel::SpinnerControls())
        for (int index = control.first; index <= control.last; ++index) {
            const panel::Spinner& spinner = control.at(panel, index);
            const std::string name =
                std::string(control.name) +
                (control.last == 0 ? std::string() : '_' + std::to_string(index));
            if (spinner.Changed())
                add(name + '=' + std::to_string(spinner.Value));
        }
    const auto addLabels = [&add](const std::string& name, const auto& labels) {
        for (int index = labels.kFirst; index <= labels.kLast; ++index)
            if (labels[index].Changed())
                add(name + '_' + std::to_string(index));
    };
    addLabels("lblBypass", panel.lblBypass);
    addLabels("lblMotion", panel.lblMotion);
    addLabels("lblLightMotion", panel.lblLightMotion);
    addLabels("lblCopy", panel.lblCopy);
    addLabels("lblLight", panel.lblLight);
    for (const auto& [name, changed] : {std::pair{"lblVoice", panel.lblVoice.Changed()},
                                        std::pair{"lblSweepTravel", panel.lblSweepTravel.Changed()},
                                        std::pair{"lblTimer", panel.lblTimer.Changed()}})
        if (changed)
            add(name);
    return text;
}

struct Row {
    const char* name;
    const char* earlier;
    const char* edits;
    const char* changed;
    const char* preview;
};

void ExpectRows(std::span<const Row> rows)
{
    for (const Row& row : rows) {
        Desk desk(row.earlier, "");
        desk.Do(row.edits);
        EXPECT_EQ(ChangedText(desk.panel), row.changed) << row.name;
        EXPECT_EQ(StateText(desk.fountain), row.preview) << row.name;
        EXPECT_EQ(desk.panel.blnTouched, !std::string_view(row.edits).ends_with('+')) << row.name;
    }
}

// clang-format off
TEST(Controls, LevelsAreShownAtOnce)
{
    const Row rows[] = {
        {"ring 3 of Group B",    "", "updnRings_5=4",      "updnRings_5=4",      "ring3 0/4"},
        {"sweeps",               "", "updnSweeps_0=2",     "updnSweeps_0=2",     "sweeps 2/0"},
        {"candelabras",          "", "updnCandelabra_1=3", "updnCandelabra_1=3", "candelabras 0/3"},
        {"bazookas",             "", "updnBazookas=1",     "updnBazookas=1",     "bazookas 1"},
        {"spout",                "", "updnSpout=2",        "updnSpout=2",        "spout 2"},
        {"voice",                "", "lblVoice",           "lblVoice",           "voice"},
        {"voice twice",          "", "lblVoice lblVoice",  "",                   ""},
        {"a join",               "003-036", "lblBypass_3", "lblBypass_3",        "ring3 0/4 join 3"},
        {"parted again", "003-036", "lblBypass_3 lblBypass_3", "",               "ring3 0/4"},
    };
    ExpectRows(rows);
}

TEST(Controls, CurtainsAndPeacockGiveWay)
{
    const Row rows[] = {
        {"back curtain lowers the peacock", "009-099", "updnCurtain_1=2", "updnCurtain_1=2 updnPeacock=0",
         "curtains 0/2"},
        {"at 0 it does not",                "009-099", "updnCurtain_1=0", "", "peacock 3"},
        {"peacock lowers the back curtain", "009-034", "updnPeacock=3", "updnCurtain_1=0 updnPeacock=3",
         "peacock 3"},
        {"at 0 it does not either",         "009-034", "updnPeacock=0", "", "curtains 0/2"},
        {"front curtain beside the peacock", "009-099", "updnCurtain_0=2", "updnCurtain_0=2",
         "curtains 2/0 peacock 3"},
        {"front curtain beside the back one", "009-034", "updnCurtain_0=2", "updnCurtain_0=2",
         "curtains 2/2"},
    };
    ExpectRows(rows);
}

TEST(Controls, MultiValveTakesItsGroupAlong)
{
    const Row rows[] = {
        {"Group A", "", "updnMultiValve_0=3", "updnMultiValve_0=3",
         "ring1 3/0 ring2 3/0 ring3 3/0 ring4 3/0 ring5 3/0 sweeps 3/0"},
        {"wedding cake", "", "updnMultiValve_1=6", "updnMultiValve_1=6",
         "ring1 0/1 ring2 0/2 ring3 0/3 ring4 0/4 ring5 0/5 sweeps 0/5"},
        {"a ring moved afterwards", "", "updnMultiValve_0=1 updnRings_4=2",
         "updnRings_4=2 updnMultiValve_0=1",
         "ring1 1/0 ring2 1/0 ring3 2/0 ring4 1/0 ring5 1/0 sweeps 1/0"},
        {"a ring moved before follows", "", "updnRings_4=2 updnMultiValve_0=1", "updnMultiValve_0=1",
         "ring1 1/0 ring2 1/0 ring3 1/0 ring4 1/0 ring5 1/0 sweeps 1/0"},
        {"back to 0", "003-018", "updnMultiValve_0=1 updnMultiValve_0=0", "updnRings_4=0", ""},
        {"back where all was", "048-017", "updnMultiValve_0=2 updnMultiValve_0=1", "",
         "ring1 1/0 ring2 1/0 ring3 1/0 ring4 1/0 ring5 1/0 sweeps 1/0 valve 1/0"},
        {"no further than the wedding cake", "048-022 003-016", "updnMultiValve_0+", "",
         "ring1 1/0 ring2 2/0 ring4 4/0 ring5 5/0 sweeps 5/0 valve 6/0"},
    };
    ExpectRows(rows);
}

TEST(Controls, SweepMotion)
{
    const Row rows[] = {
        {"a speed", "", "lblMotion_2", "updnSweepSpeed=2 lblMotion_0 lblMotion_2",
         "speed 2 tmrSweeps 375"},
        {"the spinner mirrors it", "", "updnSweepSpeed=2", "updnSweepSpeed=2 lblMotion_0 lblMotion_2",
         "speed 2 tmrSweeps 375"},
        {"opposed and fast", "", "lblMotion_5 updnSweepSpeed=3",
         "updnSweepSpeed=3 lblMotion_0 lblMotion_3 lblMotion_4 lblMotion_5",
         "speed 3 opposed tmrSweeps 250"},
        {"long", "", "lblSweepTravel lblMotion_1",
         "updnSweepSpeed=1 lblMotion_0 lblMotion_1 lblSweepTravel", "speed 1 0..6 tmrSweeps 500"},
        {"stopped sweeps swing out", "033-033", "lblMotion_0", "updnSweepSpeed=0 lblMotion_0 lblMotion_1",
         "tmrSweeps 500"},
        {"the choice again", "033-033", "lblMotion_1 lblMotion_4", "", "speed 1 tmrSweeps 500"},
        {"pulsation upward", "006-050", "updnSweepPulsate_0=2", "updnSweepPulsate_0=2",
         "sweeps 2/2 step 2/0 tmrPulsate 500"},
        {"downward", "006-050", "updnSweepPulsate_1=3", "updnSweepPulsate_1=3",
         "sweeps 2/2 step 0/-2 down 0/1 tmrPulsate 500"},
        {"one stops, the other goes on", "006-050 069-048", "updnSweepPulsate_0=1",
         "updnSweepPulsate_0=1", "sweeps 2/2 step 0/2 tmrPulsate 500"},
    };
    ExpectRows(rows);
}

TEST(Controls, Lights)
{
    const Row rows[] = {
        {"a lamp",          "", "lblLight_6",  "lblLight_6", "modules 0400000"},
        {"another of it",   "018-001", "lblLight_6", "lblLight_6", "modules 0500000"},
        {"lamp off",        "018-005", "lblLight_6", "lblLight_6", "modules 0100000"},
        {"Group A",         "", "lblLight_30", "lblLight_2 lblLight_10 lblLight_18 lblLight_26 lblLight_30",
         "modules 4040404"},
        {"Group B",         "", "lblLight_32", "lblLight_4 lblLight_12 lblLight_20 lblLight_32",
         "modules 0101010"},
        {"a lit lamp stays lit", "017-001", "lblLight_28",
         "lblLight_8 lblLight_16 lblLight_24 lblLight_28", "modules 1010101"},
        {"group off again", "049-001 017-000", "lblLight_28",
         "lblLight_8 lblLight_16 lblLight_24 lblLight_28", "groups 1/0"},
        {"all white",       "017-009", "lblLight_43",
         "lblLight_7 lblLight_11 lblLight_15 lblLight_19 lblLight_23 lblLight_27 lblLight_43",
         "modules 9888888"},
        {"none white",      "016-008", "lblLight_43",
         "lblLight_3 lblLight_7 lblLight_11 lblLight_15 lblLight_19 lblLight_23 lblLight_27 lblLight_43",
         ""},
        {"bazooka white",   "", "lblLight_39", "lblLight_39", "bazooka-white"},
        {"cross",           "", "lblLight_46", "lblLight_46", "cross"},
        {"peacock Group A", "", "lblLight_38", "lblLight_38", "peacock-lights 4/0"},
        {"peacock Group B", "", "lblLight_41", "lblLight_41", "peacock-lights 0/2"},
        {"curtain green",   "", "lblLight_44", "lblLight_44", "curtain-lights 1"},
        {"curtain amber",   "", "lblLight_45", "lblLight_45", "curtain-lights 2"},
    };
    ExpectRows(rows);
}

TEST(Controls, LightMovement)
{
    const Row rows[] = {
        {"right",             "019-001", "lblLightMotion_0", "lblLightMotion_0", "modules 0001000 moving"},
        {"left",              "019-001", "lblLightMotion_1", "lblLightMotion_1", "modules 0100000 moving left"},
        {"left, wrapping",    "017-001", "lblLightMotion_2", "lblLightMotion_2", "modules 0000001 moving left wrap"},
        {"right, wrapping",   "023-001", "lblLightMotion_3", "lblLightMotion_3", "modules 1000000 moving wrap"},
        {"out at the end",    "023-001", "lblLightMotion_0", "lblLightMotion_0", "moving"},
        {"clicked twice",     "", "lblLightMotion_3 lblLightMotion_3", "", "left wrap"},
        {"another one",       "019-001", "lblLightMotion_0 lblLightMotion_1", "lblLightMotion_1",
         "modules 0010000 moving left"},
        {"timer afterwards",  "019-001", "lblLightMotion_3 lblTimer", "lblLightMotion_3 lblTimer",
         "modules 0001000 moving wrap timed tmrLights 400"},
        {"timer first",       "019-001", "lblTimer lblLightMotion_1", "lblLightMotion_1 lblTimer",
         "modules 0010000 moving left timed tmrLights 400"},
        {"timer alone",       "", "lblTimer", "lblTimer", "timed"},
        {"timer switched off", "085-081", "lblTimer", "lblTimer", "moving"},
        {"movement switched off", "085-081", "lblLightMotion_0", "lblLightMotion_0", "left timed"},
    };
    ExpectRows(rows);
}
// clang-format on

// Joined groups share their water, so a level of one of them is seen on both.
TEST(Controls, JoinedGroupsAreDrawnAtTheirMean)
{
    Desk desk("003-096 006-096 008-096", "");
    desk.Do("updnRings_4=4 updnSweeps_1=2 updnCandelabra_0=5");
    const fountain::Drawing& drawn = desk.fountain.Drawn();
    EXPECT_EQ(drawn.ringHalves[4], 4);
    EXPECT_EQ(drawn.ringHalves[5], 4);
    EXPECT_EQ(drawn.sweeps[0].halves, 2);
    EXPECT_EQ(drawn.sweeps[1].halves, 2);
    EXPECT_EQ(drawn.candelabraHalves[0], 5);
    EXPECT_EQ(drawn.candelabraHalves[1], 5);
}

TEST(Controls, SpinnersStayInTheirRange)
{
    const struct {
        const char* edits;
        const char* name;
        int value;
    } rows[] = {
        {"updnRings_0=9", "updnRings", 5},
        {"updnRings_0=-3", "updnRings", 0},
        {"updnRings_0=5 updnRings_0+", "updnRings", 5},
        {"updnRings_0-", "updnRings", 0},
        {"updnMultiValve_0=5 updnMultiValve_0+ updnMultiValve_0+", "updnMultiValve", 6},
        {"updnSweepSpeed=3 updnSweepSpeed+", "updnSweepSpeed", 3},
        {"updnSweepPulsate_0=3 updnSweepPulsate_0+", "updnSweepPulsate", 0},
        {"updnSweepPulsate_0=0 updnSweepPulsate_0-", "updnSweepPulsate", 3},
        {"updnDisplay=300", "updnDisplay", 255},
    };
    for (const auto& row : rows) {
        Desk desk("", "");
        desk.Do(row.edits);
        EXPECT_EQ(panel::FindSpinner(row.name)->at(desk.panel, 0).Value, row.value) << row.edits;
    }
}

TEST(Controls, Captions)
{
    const struct {
        const char* edits;
        const char* display;
        const char* ends;
    } rows[] = {
        {"updnDisplay=5", "05", "-10 0 +10"},
        {"updnDisplay=10", "0A", "-10 0 +10"},
        {"updnDisplay=255", "FF", "-10 0 +10"},
        {"lblSweepTravel", "00", "-30 0 +30"},
        {"lblSweepTravel lblSweepTravel", "00", "-10 0 +10"},
    };
    for (const auto& row : rows) {
        Desk desk("", "");
        desk.Do(row.edits);
        const auto& ends = desk.panel.lblSweepTo;
        EXPECT_EQ(desk.panel.lblDisplay.Caption, row.display) << row.edits;
        EXPECT_EQ(ends[0].Caption + ' ' + ends[1].Caption + ' ' + ends[2].Caption, row.ends)
            << row.edits;
    }
}

TEST(Controls, RotateTime)
{
    const struct {
        const char* earlier;
        const char* edits;
        const char* text;
        int interval;
    } rows[] = {
        {"", "updnRotateTime_1+", "0.5", 500},
        {"", "updnRotateTime_1-", "0.4", 400},
        {"086-012", "updnRotateTime_0-", "0.4", 400},
        {"086-012", "updnRotateTime_0+ updnRotateTime_1-", "2.1", 2100},
        {"086-098", "updnRotateTime_1+ updnRotateTime_1+", "9.9", 9900},
        {"086-090", "updnRotateTime_0+", "9.9", 9900},
        {"086-255", "updnRotateTime_1-", "9.9", 9900},
        {"086-000", "updnRotateTime_1+", "0.4", 400},
    };
    for (const auto& row : rows) {
        Desk desk(row.earlier, "");
        desk.Do(row.edits);
        EXPECT_EQ(desk.panel.lblRotateTime.Caption, row.text) << row.earlier << row.edits;
        EXPECT_EQ(desk.fountain.tmrLights.Interval(), row.interval) << row.earlier << row.edits;
    }
}

}  // namespace
