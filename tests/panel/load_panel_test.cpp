#include "panel/load_panel.h"

#include <gtest/gtest.h>

#include <vector>

#include "fountain_text.h"

namespace {

using panel::PanelState;
using testing_support::After;
using testing_support::Packed;

PanelState Loaded(const char* times, const char* stored = "")
{
    PanelState panel;
    panel::LoadPanel(panel, After(times), Packed(stored));
    return panel;
}

/// The indices of an array's labels that are lit.
template <typename Labels>
std::string Lit(const Labels& labels)
{
    std::string text;
    for (int index = Labels::kFirst; index <= Labels::kLast; ++index)
        if (labels[index].Lit())
            text += (text.empty() ? "" : " ") + std::to_string(index);
    return text;
}

TEST(LoadPanel, Water)
{
    const PanelState panel =
        Loaded("048-037 001-019 003-064 006-036 008-081 007-018 007-035 009-020 009-099 054-001");
    const int rings[] = {3, 5, 0, 5, 0, 5, 0, 5, 0, 5};
    for (int index = 0; index <= 9; ++index)
        EXPECT_EQ(panel.updnRings[index].Value, rings[index]) << index;
    EXPECT_EQ(panel.updnSweeps[0].Value, 0);
    EXPECT_EQ(panel.updnSweeps[1].Value, 4);
    EXPECT_EQ(panel.updnCandelabra[0].Value, 1);
    EXPECT_EQ(panel.updnMultiValve[1].Value, 5);
    EXPECT_EQ(panel.updnBazookas.Value, 2);
    EXPECT_EQ(panel.updnSpout.Value, 3);
    EXPECT_EQ(panel.updnCurtain[0].Value, 4);
    EXPECT_EQ(panel.updnCurtain[1].Value, 0);
    EXPECT_EQ(panel.updnPeacock.Value, 3);
    EXPECT_EQ(panel.lblVoice.Caption, "X");
    for (int address = 1; address <= 8; ++address)
        EXPECT_EQ(panel.lblBypass[address].Caption, address == 3 || address == 8 ? "X" : "");
}

// clang-format off
TEST(LoadPanel, Lights)
{
    const struct {
        const char* name;
        const char* times;
        const char* lit;
    } rows[] = {
        {"none",                               "",                "" },
        {"module 1",                           "017-015",         "0 1 2 3"},
        {"module 7",                           "023-009",         "24 27"},
        {"Group A with its modules",           "049-002",         "1 9 17 25 29"},
        {"Group B with its modules",           "050-004",         "6 14 22 34"},
        {"peacock",                            "025-005 026-002", "36 38 41"},
        {"bazooka white",                      "016-004",         "39"},
        {"all modules white",                  "016-008",         "3 7 11 15 19 23 27 43"},
        {"all but one white",                  "016-008 023-000", "3 7 11 15 19 23"},
        {"cross",                              "016-002",         "46"},
        {"curtain green",                      "024-016",         "44"},
        {"curtain amber",                      "024-032",         "45"},
        {"shifted lights are those of now",    "017-001 085-017", "4"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Lit(Loaded(row.times).lblLight), row.lit) << row.name;
}

TEST(LoadPanel, SweepMotionAndPulsation)
{
    const struct {
        const char* name;
        const char* times;
        const char* lit;  // of lblMotion
        int speed;
        const char* travel;
        const char* ends;
        int pulsation[2];
    } rows[] = {
        {"reset",             "",                "0 4", 0, "short", "-10 0 +10", {1, 1}},
        {"slow, synchronized", "033-033",        "1 4", 1, "short", "-10 0 +10", {1, 1}},
        {"fast, opposed",     "034-099",         "3 5", 3, "long",  "-30 0 +30", {1, 1}},
        {"travel 2 is long",  "033-066",         "2 4", 2, "long",  "-20 0 +20", {1, 1}},
        {"no travel",         "033-064",         "2 4", 2, "short", "0 0 0",     {1, 1}},
        {"stopped, long",     "034-099 034-000", "0 5", 0, "long",  "-30 0 +30", {1, 1}},
        {"pulsation upward",  "006-049 069-016", "0 4", 0, "short", "-10 0 +10", {2, 1}},
        {"downward",          "006-049 069-096", "0 4", 0, "short", "-10 0 +10", {1, 3}},
        {"no water, no pulsation", "069-048",    "0 4", 0, "short", "-10 0 +10", {1, 1}},
    };
    for (const auto& row : rows) {
        const PanelState panel = Loaded(row.times);
        EXPECT_EQ(Lit(panel.lblMotion), row.lit) << row.name;
        EXPECT_EQ(panel.updnSweepSpeed.Value, row.speed) << row.name;
        EXPECT_EQ(panel.lblSweepTravel.Caption, row.travel) << row.name;
        EXPECT_EQ(panel.lblSweepTo[0].Caption + ' ' + panel.lblSweepTo[1].Caption + ' ' +
                      panel.lblSweepTo[2].Caption, row.ends) << row.name;
        for (int group = 0; group <= 1; ++group)
            EXPECT_EQ(panel.updnSweepPulsate[group].Value, row.pulsation[group]) << row.name;
    }
}

TEST(LoadPanel, LightMovement)
{
    const struct {
        const char* name;
        const char* times;
        const char* lit;
        bool timed;
        const char* period;
    } rows[] = {
        {"none",                   "",                "",  false, "0.4"},
        {"right",                  "085-017",         "0", false, "0.4"},
        {"left",                   "085-018",         "1", false, "0.4"},
        {"left, wrapping, timed",  "085-098",         "2", true,  "0.4"},
        {"right, wrapping, timed", "085-097 086-025", "3", true,  "2.5"},
        {"stopped",                "085-097 085-000", "",  false, "0.4"},
        {"longest period",         "086-255",         "",  false, "25.5"},
    };
    for (const auto& row : rows) {
        const PanelState panel = Loaded(row.times);
        EXPECT_EQ(Lit(panel.lblLightMotion), row.lit) << row.name;
        EXPECT_EQ(panel.lblTimer.Lit(), row.timed) << row.name;
        EXPECT_EQ(panel.lblRotateTime.Caption, row.period) << row.name;
    }
}

TEST(LoadPanel, CommandsOfTheTime)
{
    const struct {
        const char* name;
        const char* stored;
        const char* copy;
        const char* reset;
    } rows[] = {
        {"no slot",                "",                "",        "" },
        {"copy water A to B",      "080-017",         "0 2",     "" },
        {"exchange lights",        "001-017 080-050", "0 1 3",   "" },
        {"the last copy wins",     "080-051 080-033", "1 2",     "" },
        {"reset",                  "099-000 001-017", "",        "0"},
        {"reset behind another",   "001-017 099-000", "",        "" },
    };
    for (const auto& row : rows) {
        const PanelState panel = Loaded("", row.stored);
        EXPECT_EQ(Lit(panel.lblCopy), row.copy) << row.name;
        EXPECT_EQ(Lit(panel.lblReset), row.reset) << row.name;
    }
}
// clang-format on

TEST(SetOperatorDisplay, ShowsHexadecimalDigits)
{
    const struct {
        std::uint8_t number;
        const char* caption;
    } rows[] = {{0, "00"}, {10, "0A"}, {159, "9F"}, {255, "FF"}};
    for (const auto& row : rows) {
        PanelState panel;
        panel::SetOperatorDisplay(panel, row.number);
        EXPECT_EQ(panel.lblDisplay.Caption, row.caption);
        EXPECT_EQ(panel.updnDisplay.Value, row.number);
    }
}

TEST(HasPendingEdits, SeesEveryControl)
{
    const struct {
        const char* name;
        void (*edit)(PanelState& panel);
    } rows[] = {
        {"rings", [](PanelState& panel) { ++panel.updnRings[9].Value; }},
        {"sweeps", [](PanelState& panel) { ++panel.updnSweeps[1].Value; }},
        {"candelabras", [](PanelState& panel) { ++panel.updnCandelabra[0].Value; }},
        {"curtains", [](PanelState& panel) { ++panel.updnCurtain[1].Value; }},
        {"multi-valve", [](PanelState& panel) { ++panel.updnMultiValve[0].Value; }},
        {"pulsation", [](PanelState& panel) { ++panel.updnSweepPulsate[1].Value; }},
        {"bazookas", [](PanelState& panel) { ++panel.updnBazookas.Value; }},
        {"spout", [](PanelState& panel) { ++panel.updnSpout.Value; }},
        {"peacock", [](PanelState& panel) { ++panel.updnPeacock.Value; }},
        {"speed", [](PanelState& panel) { ++panel.updnSweepSpeed.Value; }},
        {"display", [](PanelState& panel) { panel::SetOperatorDisplay(panel, 1); }},
        {"join", [](PanelState& panel) { panel.lblBypass[8].Caption = "X"; }},
        {"voice", [](PanelState& panel) { panel.lblVoice.Caption = "X"; }},
        {"travel", [](PanelState& panel) { panel.lblSweepTravel.Caption = "long"; }},
        {"motion", [](PanelState& panel) { panel.lblMotion[5].BackColor = fountain::kPanelOn; }},
        {"light motion",
         [](PanelState& panel) { panel.lblLightMotion[3].BackColor = fountain::kPanelOn; }},
        {"timer", [](PanelState& panel) { panel.lblTimer.BackColor = fountain::kPanelOn; }},
        {"copy", [](PanelState& panel) { panel.lblCopy[3].BackColor = fountain::kPanelOn; }},
        {"reset", [](PanelState& panel) { panel.lblReset[0].BackColor = fountain::kPanelOn; }},
        {"light", [](PanelState& panel) { panel::ToggleLightLabel(panel, 46, 1); }},
    };
    for (const auto& row : rows) {
        PanelState panel = Loaded("");
        EXPECT_FALSE(panel::HasPendingEdits(panel)) << "before " << row.name;
        row.edit(panel);
        EXPECT_TRUE(panel::HasPendingEdits(panel)) << row.name;
        panel::LoadPanel(panel, After(""), "");
        EXPECT_FALSE(panel::HasPendingEdits(panel)) << row.name << ", loaded again";
    }
}

TEST(BlankPanel, IsNoEdit)
{
    PanelState panel = Loaded("051-015 016-014 001-064 033-099");
    panel::BlankPanel(panel);
    EXPECT_EQ(Lit(panel.lblLight), "");
    EXPECT_EQ(panel.lblBypass[1].Caption, "");
    EXPECT_EQ(panel.lblSweepTravel.Caption, "short");
    EXPECT_FALSE(panel::HasPendingEdits(panel));
}

TEST(ToggleLightLabel, GivesEachLabelItsColour)
{
    const struct {
        int index;
        int entry;  // of the legend, -1 for the panel's white
    } rows[] = {{0, 9},   {1, 10},  {2, 12},  {3, -1},  {26, 12}, {28, 9},  {35, -1}, {36, 9},
                {38, 12}, {39, -1}, {41, 10}, {43, -1}, {44, 14}, {45, 12}, {46, -1}};
    for (const auto& row : rows) {
        PanelState panel;
        const int mode = panel::LightLabelMode(row.index);
        panel::ToggleLightLabel(panel, row.index, mode);
        EXPECT_EQ(panel.lblLight[row.index].BackColor,
                  row.entry < 0 ? fountain::kPanelOn : fountain::mlngColors(row.entry))
            << row.index;
        panel::ToggleLightLabel(panel, row.index, mode);
        EXPECT_FALSE(panel.lblLight[row.index].Lit()) << row.index;
    }
}

}  // namespace
