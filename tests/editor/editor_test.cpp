#include "editor/editor.h"

#include <gtest/gtest.h>

#include <vector>

#include "document/control_text.h"
#include "editor/studio.h"
#include "fountain_text.h"

namespace {

namespace fs = std::filesystem;
using testing_support::Folder;
using testing_support::Studio;
using timeline::PlayerMode;
using timeline::TimeField;

constexpr const char* kShow =
    "ct0-381\r\n00:00.0001-017\r\n00:01.0099-000 006-019 033-097\r\n00:02.0002-018\r\n";

TEST(OpenShow, FindsTheFilesOfABaseName)
{
    const struct {
        const char* name;
        std::vector<const char*> files;
        const char* base;
        int times;
        const char* music;  // file that is open
    } rows[] = {
        {"both kinds of music", {"show.ctl", "show.wav", "show.mp3"}, "show", 3, "show.mp3"},
        {"wav alone", {"show.ctl", "show.wav"}, "show", 3, "show.wav"},
        {"without music", {"show.ctl"}, "show", 3, ""},
        {"music alone", {"show.mp3"}, "show", 0, "show.mp3"},
        {"neither", {"other.ctl", "other.mp3"}, "show", 0, ""},
        {"capitals in the names", {"SHOW.CTL", "Show.MP3"}, "show", 3, "Show.MP3"},
        {"the exact name comes first", {"show.mp3", "SHOW.MP3"}, "show", 0, "show.mp3"},
        {"control extension typed along", {"show.ctl", "show.wav"}, "show.CTL", 3, "show.wav"},
        {"music extension typed along", {"show.ctl", "show.wav"}, "show.mp3", 3, "show.wav"},
        {"another dot is part of the name",
         {"my.show.ctl", "my.show.mp3"},
         "my.show",
         3,
         "my.show.mp3"},
    };
    for (const auto& row : rows) {
        Folder folder;
        for (const char* file : row.files)
            folder.Add(file, kShow);
        Studio studio;
        studio.editor.OpenShow(folder / row.base);
        EXPECT_EQ(studio.editor.Choreography().lngLastSlot(), row.times) << row.name;
        EXPECT_EQ(studio.player.FileName().filename(), row.music) << row.name;
        EXPECT_EQ(studio.player.Mode() == PlayerMode::NotReady, *row.music == '\0') << row.name;
        EXPECT_EQ(studio.editor.Transport().menuMasks[timeline::kFileMenu],
                  row.times > 0 ? 691 : 515)
            << row.name;
    }
}

TEST(OpenShow, ShowsTimeZero)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    folder.Add("show.mp3", "");
    Studio studio;
    studio.editor.OpenShow(folder / "show");
    studio.editor.MoveTo(2000);
    studio.editor.mmSong_PlayClick();
    studio.player.Poll();
    studio.player.Advance(500);
    studio.editor.OpenShow(folder / "show");
    EXPECT_EQ(studio.editor.Timeline().CurrentTime(), 0);
    EXPECT_EQ(testing_support::StateText(studio.editor.Fountain()), "ring1 1/0");
    EXPECT_EQ(studio.player.Mode(), PlayerMode::Stopped);
    EXPECT_TRUE(studio.editor.Transport().updnTimeEnabled);
}

TEST(OpenShow, PlaysTheChoreographyWhenTheMusicIsBroken)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    folder.Add("show.mp3", "no music at all");
    Studio studio;
    studio.player.openFailure = "broken";
    studio.editor.OpenShow(folder / "show");
    EXPECT_EQ(studio.player.Mode(), PlayerMode::NotReady);
    studio.editor.mmEditing_PlayClick();
    EXPECT_TRUE(studio.editor.TimerOf(editor::Editor::kControlFile).Ticks());
}

TEST(OpenShow, HoldsWarningsBackUntilTheStartIsOver)
{
    std::string twelve = "00:01.0";
    for (int module = 17; module <= 23; ++module)
        twelve += "0" + std::to_string(module) + "-001 ";
    twelve += "054-001 086-009 024-016 025-001 026-001\r\n";
    Folder folder;
    folder.Add("full.ctl", "ct0-381\r\n" + twelve);
    folder.Add("show.ctl", kShow);

    Studio studio;
    studio.editor.OpenShow(folder / "full");
    EXPECT_TRUE(studio.prompts.warnings.empty());
    studio.editor.FinishStartUp();
    const std::vector<std::string> once{"At least one time contains too many actions."};
    EXPECT_EQ(studio.prompts.warnings, once);
    studio.editor.OpenShow(folder / "show");
    EXPECT_EQ(studio.prompts.warnings, once);
    studio.editor.OpenShow(folder / "full");
    EXPECT_EQ(studio.prompts.warnings.size(), 2U);
}

TEST(ShowLength, IsThatOfTheMusicElseOfTheCommands)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    Studio studio;
    EXPECT_EQ(studio.editor.ShowLength(), 0);
    studio.editor.OpenShow(folder / "show");
    EXPECT_EQ(studio.editor.ShowLength(), 2000);
    folder.Add("show.mp3", "");
    studio.editor.OpenShow(folder / "show");
    EXPECT_EQ(studio.editor.ShowLength(), 60'000);
    studio.player.musicLength = 6'000'000;
    studio.editor.OpenShow(folder / "show");
    EXPECT_EQ(studio.editor.ShowLength(), 5'399'900);
}

TEST(MoveTo, IsRefusedWhileSomethingPlays)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    const struct {
        const char* name;
        bool music;
        void (*begin)(editor::Editor& editor);
    } rows[] = {
        {"the music", true, [](editor::Editor& editor) { editor.mmSong_PlayClick(); }},
        {"a snippet", true, [](editor::Editor& editor) { editor.mmEditing_PlayClick(); }},
        {"the choreography", false, [](editor::Editor& editor) { editor.mmEditing_PlayClick(); }},
    };
    for (const auto& row : rows) {
        if (row.music)
            folder.Add("show.mp3", "");
        else
            fs::remove(folder / "show.mp3");
        Studio studio;
        studio.editor.OpenShow(folder / "show");
        studio.editor.MoveTo(1000);
        row.begin(studio.editor);
        studio.editor.MoveTo(2000);
        studio.editor.StepUp(TimeField::Seconds, {});
        studio.editor.StepDown(TimeField::Seconds, {});
        EXPECT_EQ(studio.editor.Timeline().CurrentTime(), 1000) << row.name;
    }
}

TEST(Steps, LeadFromCommandToCommand)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    Studio studio;
    studio.editor.OpenShow(folder / "show");
    const timeline::StepMode commands{.multiplier = 1, .commandStep = true};
    studio.editor.StepUp(TimeField::Tenths, commands);
    EXPECT_EQ(studio.editor.Timeline().CurrentTime(), 1000);
    studio.editor.StepUp(TimeField::WholeRange, commands);
    EXPECT_EQ(studio.editor.Timeline().CurrentTime(), 2000);
    studio.editor.StepUp(TimeField::Tenths, commands);
    EXPECT_EQ(studio.editor.Timeline().lblTime(), "89:59.9");
    studio.editor.StepDown(TimeField::WholeRange, commands);
    EXPECT_EQ(studio.editor.Timeline().CurrentTime(), 0);
}

TEST(Steps, SeeWhatLeavingTheTimeWrites)
{
    Studio studio;
    studio.editor.MoveTo(3000);
    ASSERT_TRUE(studio.editor.SetSpinner("updnSpout", 0, 4));
    studio.editor.StepUp(TimeField::WholeRange, {.multiplier = 1, .commandStep = true});
    EXPECT_EQ(studio.editor.Timeline().CurrentTime(), 3000) << "the only command, just written";
}

// While something plays the panel is closed to the user: whatever differs from what was loaded is
// what the show did.
TEST(Playing, WritesNothingIntoTheShow)
{
    Folder folder;
    folder.Add("show.ctl",
               "ct0-381\r\n00:00.0051-015 001-064 000-007 033-099\r\n"
               "00:00.2086-009\r\n00:00.4099-000 000-010\r\n00:00.6085-097 006-021 069-016\r\n");
    folder.Add("show.mp3", "");
    Studio studio;
    studio.editor.OpenShow(folder / "show");
    const std::string before = document::ControlText(studio.editor.Choreography());
    const auto expectUnchanged = [&studio, &before](const char* after) {
        EXPECT_EQ(document::ControlText(studio.editor.Choreography()), before) << after;
        EXPECT_FALSE(studio.editor.Choreography().blnChanged) << after;
    };
    for (const int wait : {250, 200, 170}) {
        studio.editor.mmSong_PlayClick();
        studio.player.Poll();
        studio.player.Advance(wait);
        studio.editor.mmSong_PauseClick();
        studio.player.Poll();
        expectUnchanged("a pause");
    }
    studio.editor.mmSong_PrevClick();
    expectUnchanged("the way back to the start");
}

TEST(ToggleDisplayOption, SwitchesItsItemAlone)
{
    Studio studio;
    const struct {
        int item;
        fountain::DisplayOptions options;
    } rows[] = {{0, {.Legends = true}},
                {2, {.Candelabras = true}},
                {3, {.BackCurtain = true}},
                {5, {.ABCodes = true}},
                {1, {}},
                {6, {}},
                {-1, {}}};
    for (const auto& row : rows) {
        studio.editor.ToggleDisplayOption(row.item);
        EXPECT_EQ(studio.editor.DisplayOptions(), row.options) << row.item;
        studio.editor.ToggleDisplayOption(row.item);
        EXPECT_EQ(studio.editor.DisplayOptions(), fountain::DisplayOptions{}) << row.item;
    }
}

}  // namespace
