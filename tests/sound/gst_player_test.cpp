#include "sound/gst_player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <sstream>
#include <thread>

#include "music_files.h"

namespace sound {
namespace {

using timeline::PlayerMode;

// Writes the events down, with the mode in which each finds the player.
class Listener final : public timeline::MusicEvents {
 public:
    explicit Listener(GstPlayer& player) : player_(player) { player.SetEvents(this); }

    void mmSong_PlayCompleted() override { Note("play"); }
    void mmSong_PauseCompleted() override { Note("pause"); }
    void mmSong_StatusUpdate() override { statuses.push_back(player_.Position()); }
    void mmSong_PlayingEnded() override
    {
        Note("end");
        onEnd();
    }

    std::string events;
    std::vector<std::int32_t> statuses;
    std::function<void()> onEnd = [] {};

 private:
    void Note(const char* event)
    {
        events += events.empty() ? "" : " ";
        events += event + std::to_string(static_cast<int>(player_.Mode()));
    }

    GstPlayer& player_;
};

// Drives the player as a window does until `done`; false when that takes over 5 s.
bool PollUntil(GstPlayer& player, const std::function<bool()>& done)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!done()) {
        if (std::chrono::steady_clock::now() > limit) {
            return false;
        }
        std::this_thread::sleep_for(
            std::chrono::milliseconds(std::clamp(player.PollDelay(), 1, 10)));
        player.Poll();
    }
    return true;
}

bool PollToEnd(GstPlayer& player)
{
    return PollUntil(player, [&] { return player.Mode() != PlayerMode::Playing; }) &&
           PollUntil(player, [&] { return player.PollDelay() == -1; });
}

TEST(GstPlayer, OpensMusicUnderAnyName)
{
    const MusicFolder folder;
    const std::string wav = WavBytes(300);
    const std::string mp3 = DataBytes("cover_no_header_tag.mp3");
    const struct {
        const char* name;
        const std::string& bytes;
        std::int32_t atLeast;
        std::int32_t atMost;
    } cases[] = {
        {"show.wav", wav, 300, 300},
        {"SHOW.WAV", wav, 300, 300},
        {"with blanks.wav", wav, 300, 300},
        {"H\xC3\xB6rprobe.wav", wav, 300, 300},
        {"H\xF6rprobe, Latin 1.wav", wav, 300, 300},
        {"100%25 #1?.wav", wav, 300, 300},
        {"show.mp3", mp3, 1500, 1580},
        {"SHOW.MP3", mp3, 1500, 1580},
        {"mpeg named.wav", mp3, 1500, 1580},
    };
    GstPlayer player(Sink::Silent);
    for (const auto& c : cases) {
        const std::filesystem::path file = folder.Add(c.name, c.bytes);
        ASSERT_TRUE(player.Open(file)) << c.name << ": " << player.LastError();
        EXPECT_EQ(player.FileName(), file);
        EXPECT_EQ(player.LastError(), "") << c.name;
        EXPECT_EQ(player.Mode(), PlayerMode::Stopped) << c.name;
        EXPECT_GE(player.Length(), c.atLeast) << c.name;
        EXPECT_LE(player.Length(), c.atMost) << c.name;
        EXPECT_EQ(player.Position(), 0) << c.name;
        EXPECT_EQ(player.PollDelay(), -1) << c.name;
        EXPECT_TRUE(player.Silent());
    }
    EXPECT_TRUE(player.Open(player.FileName()));
}

TEST(GstPlayer, StaysClosedForWhatIsNoMusic)
{
    const MusicFolder folder;
    const std::filesystem::path music = folder.Add("music.wav", WavBytes(100));
    GstPlayer player(Sink::Silent);
    const auto expectRefused = [&](const std::filesystem::path& file, const char* problem) {
        ASSERT_TRUE(player.Open(music));
        EXPECT_FALSE(player.Open(file)) << file;
        EXPECT_NE(player.LastError().find(problem), std::string::npos) << player.LastError();
        EXPECT_EQ(player.Mode(), PlayerMode::NotReady) << file;
        EXPECT_EQ(player.FileName(), "") << file;
        EXPECT_EQ(player.Length(), 0) << file;
    };
    for (const NotMusic& file : NotMusicFiles()) {
        expectRefused(folder.Add(file.name, file.bytes), file.problem);
    }
    expectRefused(music.parent_path() / "gone.mp3", "There is no file \"gone.mp3\"");
    expectRefused(music.parent_path(), "is a folder");
    expectRefused("/dev/zero", "cannot be read");
    expectRefused("", "There is no file");
}

// Commands, one after the other without a wait, on 300 ms of music; then one poll.
TEST(GstPlayer, ObeysEachCommandInEachMode)
{
    const MusicFolder folder;
    const std::filesystem::path music = folder.Add("music.wav", WavBytes(300));
    const struct {
        const char* commands;
        PlayerMode mode;
        const char* events;
    } cases[] = {
        {"close stop pause", PlayerMode::NotReady, ""},
        {"close play", PlayerMode::NotReady, "play524"},
        {"stop pause", PlayerMode::Stopped, ""},
        {"play", PlayerMode::Playing, "play526"},
        {"play play", PlayerMode::Playing, "play526"},
        {"play pause", PlayerMode::Paused, "pause529"},
        {"play pause pause", PlayerMode::Paused, "pause529"},
        {"play pause play", PlayerMode::Playing, "play526"},
        {"play pause stop", PlayerMode::Stopped, ""},
        {"play stop stop", PlayerMode::Stopped, ""},
        {"play stop play", PlayerMode::Playing, "play526"},
        {"play close", PlayerMode::NotReady, ""},
        {"from 300 play", PlayerMode::Stopped, "play526 end525"},
        {"from 99999 play", PlayerMode::Stopped, "play526 end525"},
        {"from 200 to 100 play", PlayerMode::Stopped, "play526 end525"},
        {"from 300 play stop", PlayerMode::Stopped, ""},
        {"play pause to 0 play", PlayerMode::Stopped, "play526 end525"},
        {"from -5 to -7 play", PlayerMode::Stopped, "play526 end525"},
    };
    GstPlayer player(Sink::Silent);
    for (const auto& c : cases) {
        ASSERT_TRUE(player.Open(music));
        Listener listener(player);
        std::istringstream commands(c.commands);
        for (std::string command; commands >> command;) {
            std::int32_t time = 0;
            if (command == "play") {
                player.Play();
            } else if (command == "pause") {
                player.Pause();
            } else if (command == "stop") {
                player.Stop();
            } else if (command == "close") {
                player.Close();
            } else if (command == "from") {
                commands >> time;
                player.SetFrom(time);
            } else {
                commands >> time;
                player.SetTo(time);
            }
        }
        player.Poll();
        EXPECT_EQ(player.Mode(), c.mode) << c.commands;
        EXPECT_EQ(listener.events, c.events) << c.commands;
        player.SetEvents(nullptr);
    }
}

TEST(GstPlayer, PlaysARangeOnceAndThenToTheEnd)
{
    const MusicFolder folder;
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"range.wav", WavBytes(1540)},
        {"range.mp3", DataBytes("no_header_tag.mp3")},
    };
    for (const auto& c : cases) {
        GstPlayer player(Sink::Silent);
        ASSERT_TRUE(player.Open(folder.Add(c.name, c.bytes)));
        Listener listener(player);
        player.SetUpdateInterval(50);
        player.SetFrom(1000);
        player.SetTo(1300);
        const auto start = std::chrono::steady_clock::now();
        player.Play();
        EXPECT_GE(player.Position(), 1000) << c.name;
        ASSERT_TRUE(PollToEnd(player)) << c.name;
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(290));
        EXPECT_EQ(listener.events, "play526 end525") << c.name;
        EXPECT_EQ(player.Position(), 1300) << c.name;
        EXPECT_GE(listener.statuses.size(), 1U) << c.name;
        EXPECT_LE(listener.statuses.size(), 6U) << c.name;
        EXPECT_TRUE(std::ranges::is_sorted(listener.statuses)) << c.name;

        player.SetFrom(1400);
        player.Play();
        ASSERT_TRUE(PollToEnd(player)) << c.name;
        EXPECT_EQ(player.Position(), player.Length()) << c.name;
        for (const std::int32_t status : listener.statuses) {
            EXPECT_TRUE(status >= 1000 && status <= player.Length()) << status;
        }
    }
}

TEST(GstPlayer, KeepsItsPlaceWhilePausedAndAfterAStop)
{
    const MusicFolder folder;
    GstPlayer player(Sink::Silent);
    ASSERT_TRUE(player.Open(folder.Add("music.wav", WavBytes(2000))));
    Listener listener(player);
    player.SetFrom(500);
    player.Play();
    ASSERT_TRUE(PollUntil(player, [&] { return player.Position() > 560; }));
    player.Pause();
    const std::int32_t paused = player.Position();
    EXPECT_GT(paused, 560);
    EXPECT_LT(paused, 2000);
    player.SetFrom(100);  // of no effect on a play that goes on
    player.Poll();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(player.Position(), paused);

    player.Play();
    EXPECT_GE(player.Position(), paused);
    ASSERT_TRUE(PollUntil(player, [&] { return player.Position() > paused + 40; }));
    player.Stop();
    const std::int32_t stopped = player.Position();
    EXPECT_GT(stopped, paused + 40);
    player.Poll();
    EXPECT_EQ(player.Position(), stopped);

    player.Play();
    EXPECT_LT(player.Position(), paused);
    EXPECT_GE(player.Position(), 100);
}

TEST(GstPlayer, LeavesOutTheStatusUpdatesThatWereMissed)
{
    const MusicFolder folder;
    GstPlayer player(Sink::Silent);
    ASSERT_TRUE(player.Open(folder.Add("music.wav", WavBytes(2000))));
    Listener listener(player);
    player.Play();
    player.Poll();
    player.SetUpdateInterval(100);
    std::this_thread::sleep_for(std::chrono::milliseconds(220));
    EXPECT_EQ(player.PollDelay(), 0);
    player.Poll();
    player.Poll();
    EXPECT_EQ(listener.statuses.size(), 1U);
    EXPECT_GT(player.PollDelay(), 0);

    player.SetUpdateInterval(0);
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    player.Poll();
    EXPECT_EQ(listener.statuses.size(), 1U);
}

TEST(GstPlayer, LetsAHandlerDoAsItLikes)
{
    const MusicFolder folder;
    const std::filesystem::path first = folder.Add("first.wav", WavBytes(30));
    const std::filesystem::path second = folder.Add("second.wav", WavBytes(400));
    GstPlayer player(Sink::Silent);
    ASSERT_TRUE(player.Open(first));
    Listener listener(player);
    listener.onEnd = [&] {
        if (player.FileName() != second) {
            EXPECT_TRUE(player.Open(second));
            player.SetFrom(350);
            player.Play();
        }
    };
    player.Play();
    ASSERT_TRUE(PollUntil(player, [&] { return player.FileName() == second; }));
    ASSERT_TRUE(PollToEnd(player));
    EXPECT_EQ(listener.events, "play526 end525 play526 end525");
}

// The way of a caller that looks at nothing but the mode.
TEST(GstPlayer, EndsForAskersOfTheModeToo)
{
    const MusicFolder folder;
    GstPlayer player(Sink::Silent);
    ASSERT_TRUE(player.Open(folder.Add("music.wav", WavBytes(200))));
    for (const std::int32_t from : {150, 200}) {
        player.SetFrom(from);
        player.Play();
        EXPECT_EQ(player.Mode(), PlayerMode::Playing) << from;
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (player.Mode() == PlayerMode::Playing && std::chrono::steady_clock::now() < limit) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        EXPECT_EQ(player.Mode(), PlayerMode::Stopped) << from;
    }
}

}  // namespace
}  // namespace sound
