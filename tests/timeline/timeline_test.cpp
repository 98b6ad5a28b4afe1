#include "timeline/timeline.h"

#include <gtest/gtest.h>

#include "desk.h"
#include "document/prune.h"
#include "document/random_show.h"
#include "panel/load_panel.h"

namespace {

using fountain::Fountain;
using testing_support::Desk;
using testing_support::Random;
using testing_support::Show;
using timeline::Direction;

TEST(ShowTime, TruncatesToTheTenth)
{
    const struct {
        std::int32_t time;
        const char* text;
    } rows[] = {{0, "00:00.0"},         {99, "00:00.0"},        {100, "00:00.1"},
                {754'321, "12:34.3"},   {754'399, "12:34.3"},   {5'399'999, "89:59.9"},
                {5'400'000, "90:00.0"}, {6'000'000, "100:00.0"}};
    Desk desk;
    for (const auto& row : rows) {
        desk.timeline.ShowTime(row.time);
        EXPECT_EQ(desk.timeline.lblTime(), row.text);
    }
}

TEST(GoToTime, SettlesOnTheGridAndTellsTheMusic)
{
    const struct {
        const char* name;
        std::int32_t time;
        std::int32_t settled;
        const char* from;
    } rows[] = {{"snapped down", 123'456, 123'400, "from 123456"},
                {"below 0", -1, 0, "from 0"},
                {"last", 5'399'999, 5'399'900, "from 5399999"},
                {"at the limit", 5'400'000, 5'399'900, "from 5399999"}};
    for (const auto& row : rows) {
        Desk desk;
        desk.timeline.GoToTime(row.time);
        EXPECT_EQ(desk.timeline.CurrentTime(), row.settled) << row.name;
        EXPECT_EQ(desk.player.TakeCalls(), std::vector<std::string>{row.from}) << row.name;
    }
}

// clang-format off
TEST(GoToTime, RebuildsTheState)
{
    const document::Choreography show = Show({
        {200,  "001-017 034-067"},
        {500,  "099-000 002-018"},
        {700,  "003-019"},
        {1000, "099-000 004-020"},
        {1200, "005-021"},
    });
    const struct {
        const char* name;
        std::vector<std::int32_t> moves;
        int cursor;
        const char* state;
    } rows[] = {
        {"before the first command",      {100},        0, ""},
        {"one short of a slot",           {199},        0, ""},
        {"exactly at a slot",             {200},        1, "ring1 1/0 speed 2 opposed 0..6 tmrSweeps 375"},
        {"forward over resets",           {1300},       5, "ring4 4/0 ring5 5/0 opposed"},
        {"back to exactly a reset",       {1300, 500},  2, "ring2 2/0 opposed"},
        {"back behind a reset",           {1300, 800},  3, "ring2 2/0 ring3 3/0 opposed"},
        {"a later reset is no anchor",    {1000, 700},  3, "ring2 2/0 ring3 3/0 opposed"},
        {"back before every reset",       {1300, 400},  1, "ring1 1/0 speed 2 opposed 0..6 tmrSweeps 375"},
        {"back before every command",     {1300, 100},  0, "opposed"},
        {"there and back",                {800, 0, 800}, 3, "ring2 2/0 ring3 3/0 opposed"},
        {"to where it stands",            {800, 800},   3, "ring2 2/0 ring3 3/0 opposed"},
    };
    for (const auto& row : rows) {
        Desk desk(show);
        for (const std::int32_t time : row.moves)
            desk.timeline.GoToTime(time);
        EXPECT_EQ(desk.State(), row.state) << row.name;
        EXPECT_EQ(desk.timeline.Position().mlngNextSlot, row.cursor) << row.name;
    }
}

TEST(GoToTime, ShowsCodesOperatorDisplayAndSingleShift)
{
    const document::Choreography show = Show({
        {0,    "000-007"},
        {500,  "099-000 017-001 085-033"},
        {800,  "000-010"},
        {1100, "099-000 085-097"},
    });
    const struct {
        const char* name;
        std::vector<std::int32_t> moves;
        const char* codes;
        int display;
        bool moving;
    } rows[] = {
        {"at the start",                       {0},          "000-007",                 7,  false},
        {"between two times",                  {400},        "",                        7,  false},
        {"a single shift at its time",         {500},        "099-000 017-001 085-033", 7,  true},
        {"a single shift behind its time",     {500, 600},   "",                        7,  false},
        {"a later display",                    {800},        "000-010",                 10, false},
        {"a reset keeps the display",          {1100},       "099-000 085-097",         10, true},
        {"timed movement goes on",             {1300},       "",                        10, true},
        {"back from an anchor to a display",   {1300, 900},  "",                        10, false},
        {"back to an anchor behind a display", {1300, 500},  "099-000 017-001 085-033", 7,  true},
        {"back without an anchor",             {1300, 300},  "",                        7,  false},
    };
    for (const auto& row : rows) {
        Desk desk(show);
        for (const std::int32_t time : row.moves)
            desk.timeline.GoToTime(time);
        EXPECT_EQ(desk.timeline.lblABCodes(), row.codes) << row.name;
        EXPECT_EQ(desk.panel.updnDisplay.Value, row.display) << row.name;
        EXPECT_EQ(desk.fountain.State().mblnLightsMoving, row.moving) << row.name;
    }
}
// clang-format on

TEST(GoToTime, ToTheSameTimeChangesNoDevice)
{
    Desk desk(Show({{100, "006-019 033-097"}}));
    desk.timeline.GoToTime(100);
    desk.fountain.tmrSweeps_Timer();
    desk.fountain.DrawSpout(3);
    desk.timeline.GoToTime(100);
    EXPECT_EQ(desk.State(), "sweeps 3/0 spout 3 speed 3 at 4 tmrSweeps 250");
    EXPECT_EQ(desk.panel.updnSpout.Value, 3) << "the panel is refreshed";
}

TEST(RewindToStart, AppliesTheCommandsOfTimeZero)
{
    Desk desk(Show({{0, "001-017"}, {100, "001-018"}}));
    desk.timeline.GoToTime(100);
    desk.player.TakeCalls();
    desk.timeline.RewindToStart();
    EXPECT_EQ(desk.State(), "ring1 1/0");
    EXPECT_EQ(desk.timeline.Position(), (document::Position{0, 1}));
    EXPECT_EQ(desk.timeline.lblTime(), "00:00.0");
    EXPECT_TRUE(desk.player.TakeCalls().empty()) << "the music is not told";
}

TEST(RebuildState, SnapsTheTimeAndKeepsTheState)
{
    Desk desk(Show({{100, "001-017"}, {500, "001-018"}}));
    desk.timeline.ShowTime(549);
    desk.timeline.ApplySlotsUpTo(549);
    desk.fountain.DrawSpout(1);
    desk.timeline.RebuildState(Direction::Same);
    EXPECT_EQ(desk.timeline.Position(), (document::Position{500, 2}));
    EXPECT_EQ(desk.State(), "ring1 2/0 spout 1");
    EXPECT_EQ(desk.timeline.lblABCodes(), "001-018");
}

/// What a show does at a time, worked out from nothing and without a timeline.
struct Plain {
    Fountain fountain;
    testing_support::Listener listener;
    document::Commands stored;
    bool motionKnown = false;  ///< the direction of the sweeps follows from the show alone

    Plain(const document::Choreography& show, std::int32_t time)
    {
        fountain.ResetDevices(listener);
        for (std::int32_t slot = 0; slot < show.lngLastSlot(); ++slot) {
            const auto k = static_cast<std::size_t>(slot);
            if (show.lngTime[k] > time)
                break;
            if (show.blnReset[k] != 0)
                motionKnown = false;
            motionKnown |= document::HasAddress(show.strCommands[k], 33) ||
                           document::HasAddress(show.strCommands[k], 34);
            fountain.ApplyCommands(show.strCommands[k], listener);
            if (show.lngTime[k] == time)
                stored = show.strCommands[k];
        }
        if (stored.empty())
            fountain.EndSingleLightShift();
    }
};

void ExpectPlain(const Desk& desk, const std::string& walk)
{
    const Plain plain(desk.show, desk.timeline.CurrentTime());
    fountain::FountainState expected = plain.fountain.State();
    if (!plain.motionKnown)  // a reset leaves the direction, whichever way one came
        expected.mblnSweepsOpposed = desk.fountain.State().mblnSweepsOpposed;
    ASSERT_EQ(desk.fountain.State(), expected) << walk << '\n'
                                               << desk.State() << '\n'
                                               << testing_support::StateText(plain.fountain);
    for (const auto timer : {&Fountain::tmrSweeps, &Fountain::tmrPulsate, &Fountain::tmrLights}) {
        ASSERT_EQ((desk.fountain.*timer).Enabled(), (plain.fountain.*timer).Enabled()) << walk;
        ASSERT_EQ((desk.fountain.*timer).Interval(), (plain.fountain.*timer).Interval()) << walk;
    }
    ASSERT_EQ(desk.fountain.Drawn().ringHalves, plain.fountain.Drawn().ringHalves) << walk;
    ASSERT_EQ(desk.fountain.Drawn().candelabraHalves, plain.fountain.Drawn().candelabraHalves);
    ASSERT_EQ(desk.fountain.Drawn().peacockLights, plain.fountain.Drawn().peacockLights) << walk;
    ASSERT_EQ(desk.timeline.lblABCodes(), document::CommandText(plain.stored)) << walk;

    panel::PanelState panel = desk.panel;
    panel::SetOperatorDisplay(panel,
                              static_cast<std::uint8_t>(std::max(plain.listener.display, 0)));
    panel::LoadPanel(panel, desk.fountain, plain.stored);
    ASSERT_EQ(desk.panel, panel) << walk;
}

// Wherever one comes from, a time looks as if the show had been replayed up to it.
TEST(GoToTime, LooksAsIfReplayedFromNothing)
{
    for (std::uint64_t seed = 1; seed <= 600; ++seed) {
        Random random(seed);
        Desk desk(testing_support::RandomShow(random, {}));
        const std::int32_t end = desk.show.lngTime[desk.show.lngTime.size() - 2] / 100 + 5;
        std::string walk = "seed " + std::to_string(seed) + ":";
        for (int move = 0; move < 30; ++move) {
            const std::int32_t time = 100 * random.Below(end);
            walk += ' ' + std::to_string(time);
            desk.timeline.GoToTime(time);
            ExpectPlain(desk, walk);
            if (HasFatalFailure())
                return;
        }
    }
}

/// The state but for what the fountain itself does not show: the direction of stopped sweeps, the
/// pulse base of a group that does not pulsate, a light period that is too short to be.
fountain::FountainState Seen(fountain::FountainState state)
{
    constexpr std::int16_t kShortestPeriod = 400;
    if (state.mintSweepSpeed == 0)
        state.mblnSweepsOpposed = false;
    for (int group = 0; group <= 1; ++group)
        if (state.mintPulseStep[group] == 0)
            state.mintPulseBase[group] = 0;
    state.mintLightTimer = std::max(state.mintLightTimer, kShortestPeriod);
    return state;
}

// The law of pruning: the fountain does the same without what pruning takes away.
TEST(Pruning, ChangesNothingThatTheFountainDoes)
{
    int removed = 0;
    for (std::uint64_t seed = 1; seed <= 8000; ++seed) {
        Random random(seed);
        const document::Choreography whole =
            testing_support::RandomShow(random, {.times = 25, .mostCommands = 8});
        document::Choreography pruned = whole;
        removed += document::PruneChoreography(pruned).commands;
        testing_support::Listener listeners[2];
        Fountain fountains[2];
        for (std::int32_t slot = 0; slot < whole.lngLastSlot(); ++slot) {
            const auto k = static_cast<std::size_t>(slot);
            fountains[0].ApplyCommands(whole.strCommands[k], listeners[0]);
            const std::int32_t kept = document::SlotAt(pruned, whole.lngTime[k]);
            const document::Commands none;
            fountains[1].ApplyCommands(
                kept < 0 ? none : pruned.strCommands[static_cast<std::size_t>(kept)], listeners[1]);
            ASSERT_EQ(Seen(fountains[0].State()), Seen(fountains[1].State()))
                << "seed " << seed << ", time " << whole.lngTime[k] << '\n'
                << testing_support::StateText(fountains[0]) << '\n'
                << testing_support::StateText(fountains[1]);
            ASSERT_EQ(fountains[0].Drawn().ringHalves, fountains[1].Drawn().ringHalves);
            ASSERT_EQ(fountains[0].Drawn().candelabraHalves, fountains[1].Drawn().candelabraHalves);
            ASSERT_EQ(fountains[0].Drawn().peacockLights, fountains[1].Drawn().peacockLights);
            ASSERT_EQ(std::max(listeners[0].display, 0), std::max(listeners[1].display, 0));
            for (const auto timer :
                 {&Fountain::tmrSweeps, &Fountain::tmrPulsate, &Fountain::tmrLights})
                ASSERT_EQ((fountains[0].*timer).Enabled(), (fountains[1].*timer).Enabled())
                    << "seed " << seed << ", time " << whole.lngTime[k];
        }
    }
    EXPECT_GT(removed, 10'000) << "the shows give pruning something to do";
}

}  // namespace
