// What is remembered from one run to the next, and the ways to a show beside the panel.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "document/control_text.h"
#include "editor/editor.h"
#include "editor/studio.h"

namespace {

namespace fs = std::filesystem;
using testing_support::Folder;
using testing_support::Settings;
using testing_support::Studio;
using Names = std::vector<std::string>;

constexpr const char* kShow = "ct0-381\r\n00:00.0001-017\r\n00:02.0002-018\r\n";

void Start(editor::Editor& editor, const fs::path& commandLine)
{
    editor.Form_Activate(commandLine);
    editor.OpenStartMusic();
    editor.FinishStartUp();
}

TEST(StartUp, OpensTheCommandLineElseTheLastFile)
{
    const struct {
        const char* name;
        const char* line;
        const char* last;
        const char* control;
        const char* music;
        const char* extension;
        bool notice = false;
    } rows[] = {
        {"first run", "", "", "", "", ".MP3"},
        {"the last show", "", "show", "show.ctl", "show.mp3", ".MP3"},
        {"the last show is gone", "", "gone", "gone.ctl", "", ".MP3", true},
        {"the command line wins", "tango", "show", "tango.ctl", "tango.wav", ".WAV"},
        {"without its extension", "show.CTL", "", "show.ctl", "show.mp3", ".MP3"},
        {"named by its music", "tango.WAV", "", "tango.ctl", "tango.wav", ".WAV"},
        {"mp3 first", "both", "", "both.ctl", "both.mp3", ".MP3"},
        {"without music", "mute", "", "mute.ctl", "", ".MP3"},
        {"a new show", "new", "", "new.ctl", "", ".MP3"},
        {"a dot in the name", "my.show", "", "my.show.ctl", "", ".MP3"},
        {"a name like that of music", "both.mp3.ctl", "", "both.mp3.ctl", "", ".MP3"},
    };
    Folder folder;
    for (const char* file : {"show.ctl", "show.mp3", "tango.ctl", "tango.wav", "both.ctl",
                             "both.mp3", "both.wav", "mute.ctl", "my.show.ctl"})
        folder.Add(file, kShow);
    for (const auto& row : rows) {
        Settings settings;
        if (*row.last != '\0')
            settings.values["LastFile"] = (folder / row.last).string();
        Studio studio(&settings);
        Start(studio.editor, *row.line == '\0' ? fs::path() : folder / row.line);
        EXPECT_EQ(studio.editor.Choreography().fileName.filename(), row.control) << row.name;
        EXPECT_EQ(studio.player.FileName().filename(), row.music) << row.name;
        EXPECT_EQ(studio.editor.MusicExtension(), row.extension) << row.name;
        EXPECT_EQ(!studio.editor.FileNotice().empty(), row.notice) << row.name;
        EXPECT_TRUE(studio.prompts.warnings.empty()) << row.name;
    }
}

TEST(StartUp, RunsOnce)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    Studio studio;
    Start(studio.editor, folder / "show");
    studio.editor.Form_Activate(folder / "other");
    EXPECT_EQ(studio.editor.Choreography().fileName, folder / "show.ctl");
}

TEST(Settings, ComeBackAsTheyWereLeft)
{
    for (int bits = 0; bits < 16; ++bits) {
        Settings settings;
        const fountain::DisplayOptions options{.Legends = (bits & 1) != 0,
                                               .Candelabras = (bits & 2) != 0,
                                               .BackCurtain = (bits & 4) != 0,
                                               .ABCodes = (bits & 8) != 0};
        Studio before(&settings);
        constexpr std::array kItems{editor::kLegendsItem, editor::kCandelabrasItem,
                                    editor::kBackCurtainItem, editor::kABCodesItem};
        for (std::size_t i = 0; i < kItems.size(); ++i)
            if ((bits >> i & 1) != 0)
                before.editor.ToggleDisplayOption(kItems[i]);
        before.editor.Form_Unload();
        EXPECT_EQ(settings.saved,
                  (Names{"Legends", "Candelabras", "BackCurtain", "ABCodes", "LastFile"}));
        EXPECT_EQ(settings.values["ABCodes"], options.ABCodes ? "True" : "False");
        Studio after(&settings);
        Start(after.editor, {});
        EXPECT_EQ(after.editor.DisplayOptions(), options) << bits;
    }
}

TEST(Settings, KeepTheLastFileUpToItsFirstDot)
{
    Folder folder;
    fs::create_directory(folder / "disc.one");
    folder.Add("finale.ctl", kShow);
    folder.Add("finale.two.ctl", kShow);
    folder.Add("disc.one/finale.ctl", kShow);
    const struct {
        const char* name;
        std::string last;
    } rows[] = {{"finale", (folder / "finale").string()},
                {"finale.two", (folder / "finale").string()},
                {"disc.one/finale", (folder / "disc").string()},
                {"never-saved", (folder / "never-saved").string()}};
    for (const auto& row : rows) {
        Settings settings;
        Studio studio(&settings);
        Start(studio.editor, folder / row.name);
        studio.editor.Form_Unload();
        EXPECT_EQ(settings.values["LastFile"], row.last) << row.name;
    }
    Settings settings;
    settings.values["LastFile"] = "before";
    Studio studio(&settings);
    Start(studio.editor, folder / "finale");
    studio.editor.mnuFileAction_Click(editor::kNewItem);
    studio.editor.Form_Unload();
    EXPECT_EQ(settings.values["LastFile"], "") << "a show without a name";
}

TEST(Recent, KeepsTheLastEightOnce)
{
    Folder folder;
    Settings settings;
    {
        Studio studio(&settings);
        for (int show = 0; show < 10; ++show) {
            folder.Add("show" + std::to_string(show) + ".ctl", kShow);
            studio.editor.OpenShow(folder / ("show" + std::to_string(show)));
        }
        studio.editor.OpenShow(folder / "show5");
        studio.editor.OpenShow(folder / "missing");
        studio.editor.SaveTo(folder / "saved.ctl");
        fs::remove(folder / "show9.ctl");
    }
    Names names;
    Studio studio(&settings);
    for (const fs::path& name : studio.editor.Recent())
        names.push_back(name.stem().string());
    EXPECT_EQ(names,
              (Names{"saved", "show5", "show9", "show8", "show7", "show6", "show4", "show3"}));

    studio.editor.OpenRecent(2);
    EXPECT_EQ(studio.prompts.warnings.size(), 1U) << "gone";
    EXPECT_EQ(studio.editor.Recent().size(), 7U);
    studio.editor.OpenRecent(2);
    EXPECT_EQ(studio.editor.Choreography().fileName, folder / "show8.ctl");
    EXPECT_EQ(studio.editor.Recent().front(), folder / "show8.ctl");
    studio.editor.OpenRecent(7);
    studio.editor.OpenRecent(-1);
    EXPECT_EQ(Studio(&settings).editor.Recent(), studio.editor.Recent());
}

TEST(Recent, AsksBeforeChangesAreLost)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    folder.Add("other.ctl", kShow);
    Studio studio;
    studio.editor.OpenShow(folder / "other");
    studio.editor.OpenShow(folder / "show");
    ASSERT_TRUE(studio.editor.SetSpinner("updnSpout", 0, 4));
    studio.prompts.yes = false;
    studio.editor.OpenRecent(1);
    EXPECT_EQ(studio.editor.Choreography().fileName, folder / "show.ctl");
    EXPECT_TRUE(studio.editor.Choreography().blnChanged);
    studio.prompts.yes = true;
    studio.editor.OpenRecent(1);
    EXPECT_EQ(studio.editor.Choreography().fileName, folder / "other.ctl");
    EXPECT_FALSE(studio.editor.Choreography().blnChanged);
    EXPECT_EQ(studio.prompts.questions.size(), 2U);
}

TEST(Drop, OpensTheShowOfAFile)
{
    const struct {
        const char* dropped;
        const char* control;
        const char* music;
        bool taken;
    } rows[] = {
        {"gala.ctl", "gala.ctl", "gala.mp3", true},
        {"gala.wav", "gala.ctl", "gala.wav", true},
        {"solo.MP3", "solo.ctl", "solo.MP3", true},
        {"my.show.CTL", "my.show.CTL", "", true},
        {"notes.txt", "", "", false},
        {"missing.ctl", "", "", false},
        {"folder.ctl", "", "", false},
    };
    Folder folder;
    for (const char* file :
         {"gala.ctl", "gala.mp3", "gala.wav", "solo.MP3", "my.show.CTL", "notes.txt"})
        folder.Add(file, kShow);
    fs::create_directory(folder / "folder.ctl");
    for (const auto& row : rows) {
        Studio studio;
        EXPECT_EQ(studio.editor.OpenDropped(folder / row.dropped), row.taken) << row.dropped;
        EXPECT_EQ(studio.editor.Choreography().fileName.filename(), row.control) << row.dropped;
        EXPECT_EQ(studio.player.FileName().filename(), row.music) << row.dropped;
    }
    EXPECT_TRUE(editor::Editor::IsShowFile("any.WAV"));
    EXPECT_FALSE(editor::Editor::IsShowFile("any.wave"));
}

TEST(Drop, AsksBeforeChangesAreLostAndWaitsForTheMusicToEnd)
{
    Folder folder;
    for (const char* file : {"show.ctl", "show.mp3", "other.ctl", "other.wav"})
        folder.Add(file, kShow);
    Studio studio;
    studio.editor.OpenShow(folder / "show");
    ASSERT_TRUE(studio.editor.SetSpinner("updnSpout", 0, 4));
    studio.prompts.yes = false;
    EXPECT_TRUE(studio.editor.OpenDropped(folder / "other.wav"));
    EXPECT_EQ(studio.editor.Choreography().fileName, folder / "show.ctl");
    EXPECT_EQ(studio.editor.MusicExtension(), ".MP3");
    studio.editor.mmSong_PlayClick();
    studio.player.Poll();
    EXPECT_FALSE(studio.editor.OpenDropped(folder / "other.wav"));
    EXPECT_EQ(studio.prompts.questions.size(), 1U);
}

}  // namespace
