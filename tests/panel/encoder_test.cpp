#include "panel/encoder.h"

#include <gtest/gtest.h>

#include <span>

#include "fountain_text.h"
#include "panel_edits.h"

namespace {

using testing_support::Desk;
using testing_support::Packed;

struct Row {
    const char* name;
    const char* earlier;  // the times before
    const char* stored;   // at this time
    const char* edits;
    const char* after;  // before what can be merged or left out is
};

void ExpectRows(std::span<const Row> rows)
{
    for (const Row& row : rows) {
        Desk desk(row.earlier, row.stored);
        desk.Do(row.edits);
        document::Commands commands = Packed(row.stored);
        document::SplitCommands(commands);
        panel::EncodePanel(commands, desk.panel, {desk.before, desk.fountain.tmrLights.Interval()});
        EXPECT_EQ(document::CommandText(commands), row.after) << row.name;
    }
}

// clang-format off
TEST(EncodePanel, ResetDisplayAndCopy)
{
    const Row rows[] = {
        {"nothing is changed",             "003-020", "003-021 069-000", "", "003-021 069-000"},
        {"a reset comes first",            "", "003-020",         "lblReset_0", "099-000 003-020"},
        {"a reset takes a copy's place",   "", "080-017 003-020", "lblReset_0", "099-000 003-020"},
        {"a reset is taken away",          "", "099-000 003-020", "lblReset_0", "003-020"},
        {"operator display",               "", "",                "updnDisplay=10", "000-010"},
        {"back to 0 is written too",       "", "000-005",         "updnDisplay=0", "000-000"},
        {"the last of two takes it",       "", "000-005 000-006", "updnDisplay=7", "000-005 000-007"},
        {"copy of water",                  "", "003-020", "lblCopy_0 lblCopy_2", "080-017 003-020"},
        {"exchange of water",              "", "", "lblCopy_0 lblCopy_1 lblCopy_2", "080-049"},
        {"copy of lights from B",          "", "", "lblCopy_1 lblCopy_3", "080-034"},
        {"a copy grows in place",          "", "080-017 003-020", "lblCopy_3", "080-019 003-020"},
        {"water without a direction",      "", "", "lblCopy_2", ""},
        {"a direction without content",    "", "", "lblCopy_0", ""},
        {"a copy loses its content",       "", "080-017", "lblCopy_2", ""},
        {"a time that resets takes none",  "", "099-000", "lblCopy_0 lblCopy_2", "099-000"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, TurnsHalfACopyOff)
{
    for (const char* edits : {"lblCopy_2", "lblCopy_0 lblCopy_1", "lblCopy_2 lblCopy_3"}) {
        Desk desk("", "");
        desk.Do(edits);
        document::Commands commands;
        panel::EncodePanel(commands, desk.panel, {desk.before, 400});
        for (const panel::ColorLabel& label : desk.panel.lblCopy)
            EXPECT_FALSE(label.Lit()) << edits;
    }
}

TEST(EncodePanel, WaterOfTheGroups)
{
    const Row rows[] = {
        {"ring 3 of Group A",            "", "", "updnRings_4=4", "003-020"},
        {"ring 3 of Group B",            "", "", "updnRings_5=4", "003-036"},
        {"off is a level",               "003-020", "", "updnRings_4=0", "003-016"},
        {"replaced where it stands",     "", "003-020 004-017", "updnRings_4=2", "003-018 004-017"},
        {"other group is kept",          "", "003-033", "updnRings_4=2", "003-033 003-018"},
        {"half of a command for both",   "", "003-052", "updnRings_4=2", "003-018 003-036"},
        {"the last of several takes it", "", "003-017 003-018", "updnRings_4=4", "003-017 003-020"},
        {"in order of the devices",      "", "",
         "updnCandelabra_1=3 updnSweeps_0=2 updnRings_9=1 updnRings_1=1 updnRings_0=4",
         "001-020 001-033 005-033 006-018 008-035"},
        {"the rest behind them",         "", "",
         "lblVoice updnSpout=2 updnBazookas=1 updnCurtain_0=3 updnRings_1=1",
         "001-033 009-019 007-017 007-034 054-001"},
        {"bazookas beside the spout",    "", "007-051", "updnBazookas=1", "007-017 007-035"},
        {"voice off",                    "054-001", "", "lblVoice", "054-000"},
        {"set back is no edit",          "", "", "updnRings_4=4 updnRings_4=0 lblVoice lblVoice", ""},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, Joins)
{
    const Row rows[] = {
        {"a level with its join",        "003-064", "", "updnRings_4=4", "003-084"},
        {"join and level together",      "", "", "lblBypass_3 updnRings_5=4", "003-064 003-100"},
        {"join alone, nothing stored",   "", "", "lblBypass_3", "003-064"},
        {"join alone, on what is stored", "", "003-017 003-034", "lblBypass_3", "003-081 003-098"},
        {"join taken away",              "003-064", "", "lblBypass_3", "003-000"},
        {"taken off what is stored",     "", "008-081 008-098", "lblBypass_8", "008-017 008-034"},
        {"sweeps",                       "", "006-017", "lblBypass_6", "006-081"},
        {"clicked twice",                "", "", "lblBypass_3 lblBypass_3", ""},
        {"all take the join that shows", "", "003-081 003-034", "updnCandelabra_0=1",
         "003-017 003-034 008-017"},
        {"but not for an edit of lights", "", "003-081 003-034", "lblLight_0",
         "003-081 003-034 017-001"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, MultiValve)
{
    const Row rows[] = {
        {"sets its group alone",           "", "", "updnMultiValve_0=3", "048-019"},
        {"both groups",                    "", "", "updnMultiValve_1=1 updnMultiValve_0=2",
         "048-018 048-033"},
        {"a ring at the level it gives",   "", "", "updnMultiValve_0=3 updnRings_4=3", "048-019"},
        {"a ring at another level",        "", "", "updnMultiValve_0=3 updnRings_4=2",
         "048-019 003-018"},
        {"ring 3 in the wedding cake",     "", "", "updnMultiValve_0=6 updnRings_4=3", "048-022"},
        {"ring 3 out of it",               "", "", "updnMultiValve_0=6 updnRings_4=2",
         "048-022 003-018"},
        {"sweeps are at 5 in it",          "", "", "updnMultiValve_0=6 updnSweeps_0=5", "048-022"},
        {"sweeps out of it",               "", "", "updnMultiValve_0=6 updnSweeps_0=4",
         "048-022 006-020"},
        {"the other group's ring",         "", "", "updnMultiValve_0=3 updnRings_5=3",
         "048-019 003-035"},
        {"goes ahead of what it sets",     "", "003-020", "updnMultiValve_0=2", "048-018 003-018"},
        {"behind other devices it stays",  "", "008-017 006-017", "updnMultiValve_1=2",
         "008-017 048-034 006-017"},
        {"two become the last",            "", "048-017 003-020 048-018", "updnRings_4=4",
         "048-018 003-020"},
        {"settles with a join as well",    "", "003-020 048-018", "lblBypass_1",
         "048-018 003-018 001-064"},
        {"but not with other water",       "", "003-020 048-018", "updnSpout=1",
         "003-020 048-018 007-033"},
        {"back on its own value",          "048-019 003-021", "",
         "updnMultiValve_0=4 updnMultiValve_0=3", "003-019"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, CurtainsAndPeacock)
{
    const Row rows[] = {
        {"front",                          "", "", "updnCurtain_0=3", "009-019"},
        {"back",                           "", "", "updnCurtain_1=2", "009-034"},
        {"peacock",                        "", "", "updnPeacock=3", "009-099"},
        {"in order",                       "", "", "updnPeacock=1 updnCurtain_0=3", "009-019 009-097"},
        {"peacock for the back curtain",   "", "009-034", "updnPeacock=3", "009-099"},
        {"which ran from before",          "009-034", "", "updnPeacock=3", "009-032 009-099"},
        {"back curtain for the peacock",   "009-099", "", "updnCurtain_1=2", "009-034"},
        {"front keeps the peacock up",     "009-099", "", "updnCurtain_0=2", "009-018 009-099"},
        {"as it was before, nothing",      "009-018", "009-019", "updnCurtain_0=2", ""},
        {"what is stored is written anew", "", "009-034 009-018", "updnCurtain_1=1",
         "009-018 009-033"},
        {"others untouched leave it",      "", "009-034 009-018", "updnSpout=1",
         "009-034 009-018 007-033"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, ModulesAndGroups)
{
    const Row rows[] = {
        {"a module",                       "", "", "lblLight_0", "017-001"},
        {"all lamps of module 7",          "", "", "lblLight_24 lblLight_25 lblLight_26 lblLight_27",
         "023-015"},
        {"off again",                      "017-001", "", "lblLight_0", "017-000"},
        {"clicked twice",                  "", "", "lblLight_0 lblLight_0", ""},
        {"Group A",                        "", "", "lblLight_28", "049-001"},
        {"Group B",                        "", "", "lblLight_35", "050-008"},
        {"equal groups",                   "", "", "lblLight_28 lblLight_32", "051-001"},
        {"both off",                       "049-001", "", "lblLight_28", "051-000"},
        {"become equal",                   "", "049-001 050-002", "lblLight_28 lblLight_29", "051-002"},
        {"no longer equal",                "", "051-001", "lblLight_29", "049-003 050-001"},
        {"one of two",                     "", "049-001 050-002", "lblLight_30",
         "050-002 049-005"},
        {"a group clears its modules",     "", "017-002 018-002", "lblLight_29",
         "018-002 049-002"},
        {"but what they had is kept",      "", "017-002 018-002", "lblLight_28",
         "018-002 049-001 017-003"},
        {"equal groups clear all modules", "", "017-001 018-001", "lblLight_28 lblLight_32", "051-001"},
        {"a module beside its group",      "", "049-001", "lblLight_1", "049-001 017-003"},
        {"a module like its group again",  "", "049-001 017-003", "lblLight_1", "049-001"},
        {"the group stood behind it",      "", "017-003 049-001", "lblLight_1", "049-001 017-003"},
        {"module of the other group",      "", "049-001", "lblLight_4", "049-001 018-001"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, WhitesCurtainAndPeacockLights)
{
    const Row rows[] = {
        {"bazooka white",                  "", "", "lblLight_39", "016-004"},
        {"cross",                          "", "", "lblLight_46", "016-002"},
        {"all modules white",              "", "", "lblLight_43", "016-008"},
        {"all three",                      "", "", "lblLight_39 lblLight_43 lblLight_46", "016-014"},
        {"one goes, the other stays",      "", "016-006", "lblLight_46", "016-004"},
        {"ahead of the lamps",             "", "003-020 017-001", "lblLight_39",
         "003-020 016-004 017-001"},
        {"moved ahead of a group",         "", "051-001 016-002", "lblLight_39",
         "016-006 051-001"},
        {"the last when there are none",   "", "003-020", "lblLight_39", "003-020 016-004"},
        {"a module's white survives it",   "017-008", "", "lblLight_39", "016-004 017-008"},
        {"all white but one",              "", "", "lblLight_43 lblLight_3", "016-008 017-000"},
        {"curtain green",                  "", "", "lblLight_44", "024-016"},
        {"curtain amber",                  "", "", "lblLight_45", "024-032"},
        {"curtain loses its green",        "024-048", "", "lblLight_44", "024-032"},
        {"peacock Group A",                "", "", "lblLight_36 lblLight_38", "025-005"},
        {"peacock Group B",                "", "", "lblLight_41", "026-002"},
        {"instead of its other address",   "", "041-004 003-020", "lblLight_40", "003-020 026-005"},
        {"in order",                       "", "",
         "lblLight_40 lblLight_36 lblLight_44 lblLight_0 lblLight_32 lblLight_39",
         "016-004 050-001 017-001 024-016 025-001 026-001"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, LightMovement)
{
    const Row rows[] = {
        {"a shift to the right",           "", "", "lblLightMotion_0", "085-017"},
        {"to the left",                    "", "", "lblLightMotion_1", "085-018"},
        {"left with wrapping",             "", "", "lblLightMotion_2", "085-034"},
        {"right with wrapping",            "", "", "lblLightMotion_3", "085-033"},
        {"another choice",                 "", "085-017 003-020", "lblLightMotion_1",
         "003-020 085-018"},
        {"timed",                          "", "", "lblLightMotion_3 lblTimer", "085-097 086-004"},
        {"timed by itself stops",          "", "", "lblTimer", "085-000 086-004"},
        {"its time alone",                 "", "", "updnRotateTime_0+", "086-014"},
        {"its time comes first then",      "", "", "updnRotateTime_0+ lblLightMotion_3 lblTimer",
         "086-014 085-097"},
        {"its time set back",              "", "", "updnRotateTime_0+ updnRotateTime_0-", ""},
        {"movement off, timer on",         "085-097", "", "lblLightMotion_3", "085-000 086-004"},
        {"timer off takes its time along", "085-097", "086-020", "lblTimer", "085-033"},
        {"a timer that was off does not",  "", "086-020", "lblLightMotion_0", "086-020 085-017"},
        {"no shift, the lamps stay",       "", "017-001 085-017", "lblLightMotion_0",
         "017-001 085-000"},
        {"lamps are those without shift",  "", "017-001 085-017", "lblLightMotion_1 lblLight_8",
         "017-001 019-001 085-018"},
        {"a lamp that a shift had moved",  "", "017-001 085-017", "lblLightMotion_0 lblLight_0",
         "017-001 085-000"},
        {"a shift stays under a lamp",     "", "017-001 085-017", "lblLight_8",
         "017-001 085-017 019-001"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, SweepMotion)
{
    const Row rows[] = {
        {"medium",                       "", "", "lblMotion_2", "033-065"},
        {"fast by the spinner",          "", "", "updnSweepSpeed=3", "033-097"},
        {"slow and long",                "", "", "lblMotion_1 lblSweepTravel", "033-035"},
        {"opposed",                      "", "", "lblMotion_5 lblMotion_1", "034-033"},
        {"opposed in place of together", "", "033-065 003-020", "lblMotion_5", "003-020 034-065"},
        {"and back",                     "", "034-065", "lblMotion_4", "033-065"},
        {"stop",                         "033-065", "", "lblMotion_0", "033-000"},
        {"stop while opposed",           "034-067", "", "updnSweepSpeed=0", "034-000"},
        {"travel of stopped sweeps",     "", "", "lblSweepTravel", "033-000"},
        {"travel 2 becomes long",        "", "033-066", "lblMotion_1", "033-035"},
    };
    ExpectRows(rows);
}

TEST(EncodePanel, Pulsation)
{
    const Row rows[] = {
        {"upward",                     "", "", "updnSweepPulsate_0=2", "069-016"},
        {"downward",                   "", "", "updnSweepPulsate_1=3", "069-096"},
        {"both",                       "", "", "updnSweepPulsate_1=2 updnSweepPulsate_0=3",
         "069-080 069-032"},
        {"stop",                       "006-017 069-016", "", "updnSweepPulsate_0=1", "069-000"},
        {"the other group goes on",    "006-049 069-048", "", "updnSweepPulsate_0=1",
         "069-000 069-032"},
        {"no command",                 "", "006-017 069-016", "updnSweepPulsate_0=0", "006-017"},
        {"behind the water it sets",   "006-017", "069-016 003-020", "updnRings_4=2",
         "003-018 069-016"},
        {"not for an edit of lights",  "006-017", "069-016 003-020", "lblLight_0",
         "069-016 003-020 017-001"},
        {"a stored stop stays",        "", "069-000 003-020", "updnRings_4=2", "003-018 069-000"},
        {"and restarts who pulsates",  "", "006-017 069-000 069-016", "updnSweeps_0=2",
         "006-018 069-000 069-016"},
        {"an inherited one is its own", "006-017 069-016", "", "updnRings_4=2", "003-018"},
        {"a start without water would let it run on", "006-017 069-016", "006-016 069-016",
         "updnCandelabra_0=1", "006-016 008-017 069-000"},
        {"behind the motion",          "", "006-017 069-016", "updnSweepPulsate_0=3 lblMotion_1",
         "006-017 033-033 069-080"},
    };
    ExpectRows(rows);
}
// clang-format on

// A panel whose every control shows what the time gives writes nothing, whatever is stored there.
TEST(EncodePanel, AnUnchangedPanelWritesNothing)
{
    for (const char* stored :
         {"", "099-000", "080-051 048-022 003-018", "003-017 003-018 003-081", "017-003 049-001",
          "085-017 017-001", "069-016 006-017", "041-004 026-002", "009-099 009-018", "086-255"}) {
        Desk desk("006-049 069-048 | 085-097 086-003", stored);
        EXPECT_FALSE(panel::HasPendingEdits(desk.panel)) << stored;
        document::Commands commands = Packed(stored);
        panel::EncodePanel(commands, desk.panel, {desk.before, desk.fountain.tmrLights.Interval()});
        EXPECT_EQ(document::CommandText(commands), stored);
    }
}

}  // namespace
