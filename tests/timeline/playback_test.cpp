#include "timeline/playback.h"

#include <gtest/gtest.h>

#include "desk.h"
#include "document/random_show.h"

namespace {

using testing_support::Desk;
using testing_support::Show;
using timeline::PlayerMode;

class Commits final : public timeline::PanelCommitter {
 public:
    int count = 0;
    void CommitPanel() override { ++count; }
};

/// A desk with transports; the music is open unless told otherwise.
struct Stage : Desk {
    explicit Stage(document::Choreography choreography, bool music = true)
        : Desk(std::move(choreography))
    {
        if (music)
            player.Open("show.mp3");
        playback.ResetPlayback();
        player.TakeCalls();
    }

    Commits commits;
    timeline::Playback playback{show, timeline, player, commits};

    void Play()
    {
        playback.mmSong_PlayClick();
        player.Poll();
    }
    [[nodiscard]] std::string Menus() const
    {
        const auto& masks = playback.GetTransport().menuMasks;
        return std::to_string(masks[timeline::kFileMenu]) + ' ' +
               std::to_string(masks[timeline::kHelpMenu]);
    }
    /// The enabled ones of: prev Play pause stop | play add prev next clear | spinners panel.
    [[nodiscard]] std::string Enabled() const
    {
        const timeline::Transport& all = playback.GetTransport();
        std::string text;
        const auto add = [&text](bool enabled, const char* name) {
            if (enabled)
                text += (text.empty() ? "" : " ") + std::string(name);
        };
        add(all.mmSong.prev, "<<");
        add(all.mmSong.play, "Play");
        add(all.mmSong.pause, "Pause");
        add(all.mmSong.stop, "Stop");
        add(all.mmEditing.play, "play");
        add(all.mmEditing.add, "add");
        add(all.mmEditing.prev, "prev");
        add(all.mmEditing.next, "next");
        add(all.mmEditing.clear, "clear");
        add(all.updnTimeEnabled, "time");
        add(all.fraControlsEnabled, "panel");
        return text;
    }
};

const document::Choreography kShow = Show({
    {0, "001-017"},
    {1000, "001-018"},
    {1050, "001-019"},
    {2000, "099-000 000-010 002-017"},
});

constexpr const char* kEditing = "<< Play play time panel";
constexpr const char* kPlaying = "<< Pause Stop add";

TEST(Playing, FollowsTheMusic)
{
    Stage stage(kShow);
    stage.Play();
    const struct {
        const char* name;
        std::int32_t advance;
        const char* readout;
        const char* codes;
        const char* state;
    } rows[] = {
        {"the start", 50, "00:00.0", "001-017", "ring1 1/0"},
        {"just before a command", 900, "00:00.9", "001-017", "ring1 1/0"},
        {"exactly at a command", 50, "00:01.0", "001-018", "ring1 2/0"},
        {"off the grid", 50, "00:01.0", "001-019", "ring1 3/0"},
        {"the codes line keeps the last ones", 900, "00:01.9", "001-019", "ring1 3/0"},
        {"a reset", 100, "00:02.0", "099-000 000-010 002-017", "ring2 1/0"},
    };
    for (const auto& row : rows) {
        stage.player.Advance(row.advance);
        EXPECT_EQ(stage.timeline.lblTime(), row.readout) << row.name;
        EXPECT_EQ(stage.timeline.lblABCodes(), row.codes) << row.name;
        EXPECT_EQ(stage.State(), row.state) << row.name;
    }
    EXPECT_EQ(stage.panel.updnDisplay.Value, 10);
}

TEST(Playing, AppliesOnceAndNeverGoesBack)
{
    Stage stage(kShow);
    stage.Play();
    stage.player.Advance(1100);
    stage.fountain.DrawRing(0, 1, 5);
    stage.player.SetPosition(500);
    stage.player.Advance(100);
    EXPECT_EQ(stage.State(), "ring1 5/0");
    EXPECT_EQ(stage.timeline.Position(), (document::Position{600, 3}));
}

// Playing up to a time leads where a move to it leads.
TEST(Playing, ArrivesWhereAMoveArrives)
{
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        testing_support::Random random(seed);
        Stage stage(testing_support::RandomShow(random, {}));
        Desk desk(stage.show);
        for (int stop = 0; stop < 5; ++stop) {
            stage.Play();
            stage.player.Advance(50 * random.Below(300));
            stage.playback.mmSong_StopClick();
            desk.timeline.GoToTime(stage.timeline.CurrentTime());
            ASSERT_EQ(stage.fountain.State(), desk.fountain.State()) << "seed " << seed << '\n'
                                                                     << stage.State() << '\n'
                                                                     << desk.State();
            ASSERT_EQ(stage.panel, desk.panel) << "seed " << seed;
            ASSERT_EQ(stage.timeline.lblABCodes(), desk.timeline.lblABCodes()) << "seed " << seed;
        }
    }
}

/// A player whose music plays on while it is asked: each look at the position finds it later.
class RunningPlayer final : public timeline::MusicPlayer {
 public:
    std::int32_t position = 0;
    PlayerMode mode = PlayerMode::Playing;
    timeline::MusicEvents* events = nullptr;
    bool nested = false;

    std::int32_t Position() override
    {
        if (nested)
            events->mmSong_StatusUpdate();
        position += 500;
        return position;
    }
    bool Open(const std::filesystem::path&) override { return true; }
    void Close() override {}
    [[nodiscard]] const std::filesystem::path& FileName() const override { return name_; }
    [[nodiscard]] std::int32_t Length() const override { return 60'000; }
    [[nodiscard]] PlayerMode Mode() override { return mode; }
    void SetFrom(std::int32_t) override {}
    void SetTo(std::int32_t) override {}
    void Play() override {}
    void Pause() override {}
    void Stop() override {}
    void SetUpdateInterval(std::int32_t) override {}
    void SetEvents(timeline::MusicEvents* receiver) override { events = receiver; }
    void Poll() override {}
    [[nodiscard]] std::int32_t PollDelay() const override { return -1; }
    [[nodiscard]] bool Silent() const override { return false; }
    [[nodiscard]] const std::string& LastError() const override { return error_; }

 private:
    std::filesystem::path name_;
    std::string error_;
};

TEST(Playing, ReadsThePositionAnewForEverySlot)
{
    for (const bool nested : {false, true}) {
        fountain::Fountain fountain;
        panel::PanelState panel;
        RunningPlayer player;
        Commits commits;
        timeline::Timeline timeline(kShow, fountain, panel, player);
        timeline::Playback playback(kShow, timeline, player, commits);
        player.nested = nested;
        playback.mmSong_StatusUpdate();
        EXPECT_EQ(timeline.CurrentTime(), 500) << "the readout keeps the first reading";
        EXPECT_EQ(timeline.Position().mlngNextSlot, 4) << "1000, 1500, 2000 have passed since";
        player.mode = PlayerMode::Paused;
        playback.mmSong_StatusUpdate();
        EXPECT_EQ(timeline.CurrentTime(), 500) << "only while playing";
    }
}

TEST(Playing, EnablesWhatMayBeUsed)
{
    Stage stage(kShow);
    EXPECT_EQ(stage.Enabled(), kEditing);
    EXPECT_EQ(stage.Menus(), "691 11");
    stage.timeline.GoToTime(500);
    stage.player.TakeCalls();

    stage.playback.mmSong_PlayClick();
    EXPECT_EQ(stage.commits.count, 1);
    EXPECT_EQ(stage.player.TakeCalls(), (std::vector<std::string>{"from 500", "play"}));
    stage.player.Poll();
    EXPECT_EQ(stage.player.TakeCalls(), std::vector<std::string>{"interval 50"});
    EXPECT_EQ(stage.Enabled(), kPlaying);
    EXPECT_EQ(stage.Menus(), "0 0");
    EXPECT_TRUE(stage.playback.Playing());

    stage.player.Advance(75);
    stage.player.TakeCalls();
    stage.playback.mmSong_StopClick();
    EXPECT_EQ(stage.player.TakeCalls(),
              (std::vector<std::string>{"interval 0", "stop", "from 500"}));
    EXPECT_EQ(stage.Enabled(), kEditing);
    EXPECT_EQ(stage.Menus(), "691 11");
    EXPECT_EQ(stage.timeline.CurrentTime(), 500) << "back on the grid";
    EXPECT_EQ(stage.player.Mode(), PlayerMode::Stopped);
    EXPECT_FALSE(stage.playback.Playing());
}

TEST(Playing, PausesAndGoesOn)
{
    Stage stage(kShow);
    stage.Play();
    stage.player.Advance(1050);
    stage.playback.mmSong_PauseClick();
    stage.player.Poll();
    EXPECT_EQ(stage.Enabled(), "<< Play Stop add");
    EXPECT_EQ(stage.commits.count, 2);
    stage.player.TakeCalls();

    stage.Play();
    EXPECT_EQ(stage.player.TakeCalls(), (std::vector<std::string>{"play", "interval 50"}))
        << "from where it paused";
    EXPECT_EQ(stage.Enabled(), kPlaying);
    stage.player.Advance(50);
    EXPECT_EQ(stage.timeline.CurrentTime(), 1100);
    stage.playback.mmSong_PauseClick();
    stage.player.Poll();
    stage.playback.mmSong_StopClick();
    EXPECT_EQ(stage.Enabled(), kEditing);
}

TEST(Playing, PausedBehindAResetLeavesNothingToCommit)
{
    Stage stage(Show({{0, "051-015 001-064 033-099"}, {100, "099-000 000-010"}}));
    stage.Play();
    stage.player.Advance(100);
    stage.playback.mmSong_PauseClick();
    stage.player.Poll();
    EXPECT_FALSE(panel::HasPendingEdits(stage.panel));
}

TEST(Playing, ReturnsToTheStart)
{
    for (const bool playing : {false, true}) {
        Stage stage(kShow);
        if (playing)
            stage.Play();
        stage.player.Advance(1500);
        stage.timeline.GoToTime(1500);
        const int commits = stage.commits.count;
        stage.playback.mmSong_PrevClick();
        EXPECT_EQ(stage.commits.count - commits, playing ? 0 : 1);
        EXPECT_EQ(stage.timeline.Position(), (document::Position{0, 1}));
        EXPECT_EQ(stage.State(), "ring1 1/0");
        EXPECT_EQ(stage.Enabled(), kEditing);
        stage.Play();
        EXPECT_EQ(stage.player.Position(), 0);
    }
}

TEST(Playing, EndsHoweverItEnds)
{
    const struct {
        const char* name;
        void (*happens)(Stage& stage);
        std::int32_t settled;
        const char* enabled;
    } rows[] = {
        {"the end of the music", [](Stage& stage) { stage.player.Advance(60'000); }, 59'900,
         kEditing},
        {"the music breaks off",
         [](Stage& stage) {
             stage.player.Advance(1170);
             stage.player.BreakOff();
             stage.player.Poll();
         },
         1'100, kEditing},
        {"the music is lost while it pauses",
         [](Stage& stage) {
             stage.player.Advance(200);
             stage.player.Close();
             stage.playback.mmSong_PauseCompleted();
         },
         200, "play time panel"},
    };
    for (const auto& row : rows) {
        Stage stage(kShow);
        stage.Play();
        row.happens(stage);
        EXPECT_EQ(stage.timeline.CurrentTime(), row.settled) << row.name;
        EXPECT_EQ(stage.Enabled(), row.enabled) << row.name;
        EXPECT_EQ(stage.Menus(), "691 11") << row.name;
    }
}

TEST(Playing, FailsToStart)
{
    Stage stage(kShow);
    stage.timeline.GoToTime(1000);
    stage.player.playFails = true;
    stage.playback.mmSong_PlayClick();
    EXPECT_EQ(stage.playback.GetTransport().updnTimeEnabled, false);
    stage.player.TakeCalls();
    stage.player.Poll();
    EXPECT_EQ(stage.player.TakeCalls(), std::vector<std::string>{"interval 0"});
    EXPECT_EQ(stage.Enabled(), kEditing);
    EXPECT_EQ(stage.Menus(), "691 11");
    EXPECT_EQ(stage.timeline.CurrentTime(), 1000);
}

TEST(Playing, EndsWithinTheTimesThatCanBeEdited)
{
    document::Choreography late = Show({{5'399'900, "001-017"}, {5'500'000, "001-018"}});
    Stage stage(late);
    stage.player.musicLength = 6'500'000;
    stage.player.Open("long.mp3");
    stage.Play();
    stage.player.Elapse(6'200'000);
    stage.player.Advance(50);
    EXPECT_EQ(stage.timeline.lblTime(), "103:20.0");
    stage.playback.mmSong_StopClick();
    EXPECT_EQ(stage.timeline.CurrentTime(), 5'399'900);
    EXPECT_EQ(stage.State(), "ring1 1/0");
}

TEST(ControlFilePlayback, TicksBy50Milliseconds)
{
    Stage stage(kShow, false);
    EXPECT_EQ(stage.Enabled(), "play time panel");
    stage.playback.mmEditing_PlayClick();
    EXPECT_EQ(stage.commits.count, 1);
    EXPECT_EQ(stage.Enabled(), "clear");
    EXPECT_EQ(stage.Menus(), "512 0");
    EXPECT_EQ(stage.playback.tmrControlFile.Interval(), 50);
    EXPECT_TRUE(stage.playback.tmrControlFile.Enabled());

    for (int tick = 1; tick <= 21; ++tick) {
        stage.playback.tmrControlFile_Timer();
        EXPECT_EQ(stage.timeline.CurrentTime(), 50 * tick);
    }
    EXPECT_EQ(stage.timeline.lblTime(), "00:01.0");
    EXPECT_EQ(stage.State(), "ring1 3/0") << "the command at exactly 1050 ms";

    stage.playback.mmEditing_ClearClick();
    EXPECT_EQ(stage.timeline.CurrentTime(), 1000);
    EXPECT_EQ(stage.Enabled(), "play time panel");
    EXPECT_EQ(stage.Menus(), "691 11");
    EXPECT_FALSE(stage.playback.tmrControlFile.Ticks());
}

TEST(ControlFilePlayback, StopsBeforeTheLimit)
{
    Stage stage(kShow, false);
    stage.timeline.GoToTime(timeline::kLastSettledTime);
    stage.playback.mmEditing_PlayClick();
    stage.playback.tmrControlFile_Timer();
    EXPECT_EQ(stage.timeline.CurrentTime(), 5'399'950);
    stage.playback.tmrControlFile_Timer();
    EXPECT_EQ(stage.timeline.CurrentTime(), 5'399'900);
    EXPECT_EQ(stage.Enabled(), "play time panel");
}

TEST(Snippet, PlaysThreeSecondsAndReturns)
{
    Stage stage(kShow);
    stage.timeline.GoToTime(1000);
    stage.player.TakeCalls();
    stage.playback.mmEditing_PlayClick();
    EXPECT_EQ(stage.player.TakeCalls(), (std::vector<std::string>{"from 1000", "to 4000", "play"}));
    EXPECT_EQ(stage.commits.count, 1);
    EXPECT_TRUE(stage.playback.SnippetPlays());
    EXPECT_TRUE(stage.playback.Playing());
    EXPECT_EQ(stage.Enabled(), "play time panel") << "the player's own buttons are off";

    stage.playback.mmEditing_PlayClick();
    EXPECT_TRUE(stage.player.TakeCalls().empty()) << "once is enough";
    stage.player.Advance(2999);
    stage.playback.StepSnippet();
    stage.playback.mmSong_StatusUpdate();
    EXPECT_TRUE(stage.playback.SnippetPlays());
    EXPECT_EQ(stage.State(), "ring1 2/0") << "the fountain stands still";

    stage.player.Advance(1);
    stage.playback.StepSnippet();
    EXPECT_FALSE(stage.playback.SnippetPlays());
    EXPECT_EQ(stage.timeline.CurrentTime(), 1000);
    EXPECT_EQ(stage.player.TakeCalls(), std::vector<std::string>{"from 1000"});
    EXPECT_EQ(stage.Enabled(), kEditing);
    stage.Play();
    stage.player.Advance(5000);
    EXPECT_EQ(stage.timeline.CurrentTime(), 6000) << "its end was for the snippet alone";
}

TEST(Snippet, EndsWhenTheMusicDoes)
{
    const struct {
        const char* name;
        std::int32_t from;
        bool fails;
        std::int32_t advance;
    } rows[] = {
        {"shortly before the end", 59'000, false, 1000},
        {"behind the end", 70'000, false, 1},
        {"it cannot be played", 1000, true, 0},
    };
    for (const auto& row : rows) {
        Stage stage(kShow);
        stage.timeline.GoToTime(row.from);
        stage.player.playFails = row.fails;
        stage.playback.mmEditing_PlayClick();
        stage.player.Elapse(row.advance);
        stage.playback.StepSnippet();
        EXPECT_FALSE(stage.playback.SnippetPlays()) << row.name;
        EXPECT_EQ(stage.timeline.CurrentTime(), row.from) << row.name;
        EXPECT_EQ(stage.Enabled(), kEditing) << row.name;
        stage.player.TakeCalls();
        stage.player.Poll();
        EXPECT_TRUE(stage.player.TakeCalls().empty()) << row.name << ": no late news";
    }
}

TEST(Buttons, DoNothingWhenDisabled)
{
    Stage stage(kShow, false);
    stage.playback.mmSong_PlayClick();
    stage.playback.mmSong_PauseClick();
    stage.playback.mmSong_StopClick();
    stage.playback.mmSong_PrevClick();
    stage.playback.mmEditing_ClearClick();
    EXPECT_TRUE(stage.player.TakeCalls().empty());
    EXPECT_EQ(stage.commits.count, 0);

    Stage playing(kShow);
    playing.Play();
    playing.player.TakeCalls();
    playing.playback.mmSong_PlayClick();
    playing.playback.mmEditing_PlayClick();
    playing.playback.mmEditing_ClearClick();
    EXPECT_TRUE(playing.player.TakeCalls().empty());
}

TEST(RefreshMenus, FollowsTheDocument)
{
    const struct {
        const char* name;
        document::Choreography show;
        bool changed;
        const char* file;
        const char* menus;
    } rows[] = {
        {"empty", {}, false, "show.ctl", "515 11"},
        {"empty and changed", {}, true, "show.ctl", "515 11"},
        {"as it was saved", kShow, false, "show.ctl", "691 11"},
        {"changed", kShow, true, "show.ctl", "699 11"},
        {"changed without a name", kShow, true, "", "691 11"},
        {"changed with the bare extension", kShow, true, ".ctl", "691 11"},
    };
    for (const auto& row : rows) {
        Stage stage(row.show);
        stage.show.blnChanged = row.changed;
        stage.show.fileName = row.file;
        stage.playback.RefreshMenus();
        EXPECT_EQ(stage.Menus(), row.menus) << row.name;
    }
    Stage stage(kShow);
    EXPECT_TRUE(stage.playback.GetTransport().ItemEnabled(timeline::kFileMenu, 9));
    EXPECT_FALSE(stage.playback.GetTransport().ItemEnabled(timeline::kFileMenu, 3));
}

}  // namespace
