#include "editor/virtual_clock.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "fountain_text.h"
#include "support/hand_player.h"

namespace {

namespace fs = std::filesystem;

class NoPrompts final : public editor::Prompts {
 public:
    void Warn(const std::string&) override {}
    [[nodiscard]] bool Ask(const std::string&, const std::string&, editor::Icon) override
    {
        return true;
    }
};

/// An editor without music on a virtual clock, with a show of these lines.
struct Booth {
    explicit Booth(const std::string& lines)
    {
        const fs::path base =
            fs::temp_directory_path() / ("virtual_clock_test_" + std::to_string(getpid()));
        fs::path file = base;
        file += ".ctl";
        std::ofstream(file, std::ios::binary) << "ct0-381\r\n" << lines;
        editor.OpenShow(base);
        fs::remove(file);
    }

    [[nodiscard]] std::string State() const
    {
        return testing_support::StateText(editor.Fountain());
    }
    [[nodiscard]] std::string Modules() const
    {
        const std::string state = State();
        const std::size_t at = state.find("modules ");
        return at == std::string::npos ? "0000000" : state.substr(at + 8, 7);
    }

    support::HandPlayer player;
    NoPrompts prompts;
    editor::Editor editor{player, prompts};
    editor::VirtualClock clock{editor};
};

TEST(VirtualClock, TicksAtExactlyTheirInstants)
{
    const struct {
        const char* name;
        int wait;
        const char* state;
    } rows[] = {
        {"one short of the first", 249, "sweeps 5/0 speed 3 tmrSweeps 250"},
        {"the first", 250, "sweeps 5/0 speed 3 at 4 tmrSweeps 250"},
        {"one short of the second", 499, "sweeps 5/0 speed 3 at 4 tmrSweeps 250"},
        {"the second", 500, "sweeps 5/0 speed 3 back tmrSweeps 250"},
        {"a minute is 240 ticks", 60'000, "sweeps 5/0 speed 3 tmrSweeps 250"},
    };
    for (const auto& row : rows) {
        Booth booth("00:00.0006-021 033-097\r\n");
        booth.clock.Advance(row.wait);
        EXPECT_EQ(booth.State(), row.state) << row.name;
        EXPECT_EQ(booth.clock.Now(), row.wait);
    }
}

TEST(VirtualClock, AddsUpPartsOfAPeriod)
{
    Booth booth("00:00.0017-001 085-081\r\n");
    for (int part = 0; part < 8; ++part)
        booth.clock.Advance(50);
    EXPECT_EQ(booth.Modules(), "0100000") << "400 ms in eight parts";
    booth.clock.Advance(400);
    EXPECT_EQ(booth.Modules(), "0010000");
}

TEST(VirtualClock, PlaysWithoutMusic)
{
    const struct {
        const char* name;
        const char* lines;
        int time;
        int settled;
        const char* modules;
    } rows[] = {
        {"a command at the last instant", "00:01.0017-001\r\n", 1000, 1000, "1000000"},
        {"a command just behind it", "00:01.0017-001\r\n", 950, 900, "0000000"},
        {"an effect due at the last instant ticks", "00:00.0017-001 085-081\r\n", 400, 400,
         "0100000"},
        {"and none before", "00:00.0017-001 085-081\r\n", 350, 300, "1000000"},
        {"effects begin with their command", "00:00.2017-001 085-081\r\n", 600, 600, "0100000"},
        {"half a tick is none", "00:00.1017-001\r\n", 99, 0, "0000000"},
        {"to where it stands", "00:00.0017-001\r\n", 0, 0, "1000000"},
        // The command is applied first and begins the period anew, so the light stays.
        {"the choreography ticks before an effect", "00:00.0017-001 085-081\r\n00:00.4086-004\r\n",
         400, 400, "1000000"},
        {"a period begins anew when it is written", "00:00.0017-001 085-081\r\n00:00.3086-004\r\n",
         650, 600, "1000000"},
        {"and ends an interval later", "00:00.0017-001 085-081\r\n00:00.3086-004\r\n", 700, 700,
         "0100000"},
        {"a shorter period counts at once", "00:00.0017-001 085-081 086-010\r\n00:00.1086-004\r\n",
         500, 500, "0100000"},
        {"enabling a running timer does nothing", "00:00.0017-001 085-081\r\n00:00.3085-113\r\n",
         400, 400, "0100000"},
        {"a period of 0 stands still", "00:00.0017-001 085-081 086-010\r\n00:00.1086-000\r\n", 3000,
         3000, "1000000"},
    };
    for (const auto& row : rows) {
        Booth booth(row.lines);
        booth.clock.PlayUpTo(row.time);
        EXPECT_EQ(booth.Modules(), row.modules) << row.name;
        EXPECT_EQ(booth.editor.Timeline().CurrentTime(), row.settled) << row.name;
        EXPECT_FALSE(booth.editor.Playback().Playing()) << row.name;
        EXPECT_TRUE(booth.editor.Transport().updnTimeEnabled) << row.name;
    }
}

// Both are due at 500 ms: the swing draws the level that stood, then pulsation draws its own, and
// both see the motion of now.
TEST(VirtualClock, TicksSweepsBeforePulsation)
{
    Booth booth("00:00.0006-021 033-033 069-016\r\n");
    booth.clock.Advance(500);
    EXPECT_EQ(booth.State(), "speed 1 at 4 step 5/0 tmrSweeps 500 tmrPulsate 500");
    EXPECT_EQ(booth.editor.Fountain().Drawn().sweeps[0].position, 4);
    booth.clock.Advance(500);
    EXPECT_EQ(booth.editor.Fountain().Drawn().sweeps[0].halves, 2);
}

TEST(VirtualClock, EffectsGoOnWhileNothingPlays)
{
    Booth booth("00:00.0017-001 085-097\r\n");
    booth.clock.Advance(7 * 400);
    EXPECT_EQ(booth.Modules(), "1000000");
    EXPECT_EQ(booth.editor.Timeline().CurrentTime(), 0);
    booth.editor.MoveTo(100);
    booth.clock.Advance(400);
    EXPECT_EQ(booth.Modules(), "0100000") << "a move forward does not begin the period anew";
}

TEST(VirtualClock, StopsAtTheLastTime)
{
    Booth booth("00:00.0017-001\r\n");
    booth.editor.MoveTo(5'399'800);
    booth.clock.PlayUpTo(5'500'000);
    EXPECT_EQ(booth.editor.Timeline().CurrentTime(), 5'399'900);
    EXPECT_FALSE(booth.editor.Playback().Playing());
}

}  // namespace
