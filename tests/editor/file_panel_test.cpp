#include "editor/file_panel.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "document/control_file.h"
#include "editor/editor.h"
#include "editor/studio.h"
#include "editor/summary.h"

namespace {

namespace fs = std::filesystem;
using editor::FilePanelMode;
using testing_support::Folder;
using testing_support::Studio;
using Names = std::vector<std::string>;

constexpr const char* kShow = "ct0-381\r\n00:00.0001-017\r\n00:02.0002-018\r\n";

TEST(BaseOfName, IsCutAtTheFirstDotOfItsLastComponent)
{
    const struct {
        const char* name;
        const char* base;
    } rows[] = {
        {"show", "show"},
        {"show.xyz", "show"},
        {"show.2024.ctl", "show"},
        {"  show .ctl ", "show"},
        {"my show", "my show"},
        {"/media/disc.one/show.mp3", "/media/disc.one/show"},
        {"disc.one/show", "disc.one/show"},
        {"../show.wav", "../show"},
        {"", ""},
        {"   ", ""},
        {".ctl", ""},
        {"..", ""},
        {"folder/", ""},
        {"folder/.ctl", ""},
        {"folder/ .ctl", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(editor::BaseOfName(row.name), row.base) << row.name;
}

TEST(AddBackslash, AddsNoSecondSeparator)
{
    EXPECT_EQ(editor::AddBackslash("/shows").string(), "/shows/");
    EXPECT_EQ(editor::AddBackslash("/shows/").string(), "/shows/");
    EXPECT_EQ(editor::AddBackslash("/").string(), "/");
}

TEST(EnterFolder, ListsWhatFitsTheFilter)
{
    Folder folder;
    for (const char* file : {"b.ctl", "A.CTL", "c.mp3", "D.Wav", ".ctl", "ctl", "e.ctl.bak"})
        folder.Add(file, "");
    for (const char* name : {"Sub", "another", ".hidden", "music.mp3"})
        fs::create_directory(folder / name);
    ASSERT_EQ(mkfifo((folder / "pipe.ctl").c_str(), 0600), 0);

    editor::FilePanel panel;
    const struct {
        int filter;
        Names files;
    } rows[] = {{0, {"c.mp3"}}, {1, {"D.Wav"}}, {2, {"A.CTL", "b.ctl"}}};
    for (const auto& row : rows) {
        panel.cboFileSelect = row.filter;
        ASSERT_TRUE(editor::EnterFolder(panel, folder / ""));
        EXPECT_EQ(panel.files, row.files) << row.filter;
        EXPECT_EQ(panel.folders, (Names{"..", "another", "music.mp3", "Sub"})) << row.filter;
        EXPECT_EQ(panel.folder, (folder / "x").parent_path()) << "no separator at its end";
    }
}

TEST(EnterFolder, LeavesTheListsWhereAFolderCannotBeRead)
{
    Folder folder;
    folder.Add("show.mp3", "");
    fs::create_directory(folder / "sub");
    editor::FilePanel panel;
    panel.drvFileSelect = {"/", folder / "sub", "/nowhere"};
    ASSERT_TRUE(editor::EnterFolder(panel, folder / "sub"));
    EXPECT_EQ(panel.drive, 1) << "the innermost volume";
    ASSERT_TRUE(editor::EnterFolder(panel, ".."));
    EXPECT_EQ(panel.drive, 0);
    const editor::FilePanel before = panel;
    for (const char* name : {"gone", "show.mp3", "/nowhere"})
        EXPECT_FALSE(editor::EnterFolder(panel, name)) << name;
    EXPECT_EQ(panel, before);

    ASSERT_TRUE(editor::EnterFolder(panel, "/"));
    EXPECT_TRUE(panel.folders.empty() || panel.folders[0] != "..") << "nothing is above the root";

    ASSERT_TRUE(editor::EnterFolder(panel, folder / "sub"));
    fs::remove(folder / "sub");
    editor::RefreshLists(panel);
    EXPECT_EQ(panel.files, Names{"show.mp3"}) << "the folder above one that is gone";
}

TEST(Summary, CountsInSevenCharacters)
{
    const std::string blank = "\xC2\xA0";
    const struct {
        int count;
        int blanks;
        const char* digits;
    } rows[] = {{0, 6, "0"},
                {7, 6, "7"},
                {999, 4, "999"},
                {1000, 2, "1,000"},
                {1234, 2, "1,234"},
                {54'000, 1, "54,000"},
                {123'456, 0, "123,456"},
                {-1234, 1, "-1,234"},
                {-999, 3, "-999"},
                {12'345'678, 0, "12,345,678"}};
    for (const auto& row : rows) {
        std::string text;
        for (int k = 0; k < row.blanks; ++k)
            text += blank;
        EXPECT_EQ(editor::FormatCount(row.count), text + row.digits) << row.count;
    }
}

TEST(Summary, TellsOfMusicAndChoreography)
{
    const std::string blanks = "\xC2\xA0\xC2\xA0";
    const std::string five = blanks + blanks + "\xC2\xA0";
    document::Choreography unsaved;
    document::Choreography loaded;
    loaded.fileExists = true;
    loaded.fileName = "/Shows/Gala.CTL";
    loaded.intTimeCount = {1234, 12};
    loaded.intCommandCount = {5678, 99};
    const std::string counts = "/shows/gala.ctl\r\n" + blanks + "1,234 active times loaded\n" +
                               five + "12 active times currently\n" + blanks +
                               "5,678 commands loaded\n" + five + "99 commands currently\n\n";
    document::Choreography changed = loaded;
    changed.blnChanged = true;
    unsaved.blnChanged = true;

    EXPECT_EQ(editor::Summary(unsaved, "", 0), "No music file\n\nNo control file");
    EXPECT_EQ(editor::Summary(loaded, "", 0), "No music file\n\n" + counts);
    EXPECT_EQ(editor::Summary(changed, "", 0),
              "No music file\n\n" + counts + "New choreography has not been saved.");

    const struct {
        int length;
        const char* time;
    } rows[] = {{187'460, "3 minutes 7.5 seconds"}, {187'000, "3 minutes 7 seconds"},
                {187'049, "3 minutes 7 seconds"},   {187'050, "3 minutes 7.1 seconds"},
                {0, "0 minutes 0 seconds"},         {59'960, "0 minutes 60 seconds"}};
    for (const auto& row : rows)
        EXPECT_EQ(editor::Summary(unsaved, "/Music/Gala.MP3", row.length),
                  "/music/gala.mp3\n" + blanks + "Play time: " + row.time + "\n\nNo control file");
}

/// The panel, open over a show.
struct Desk : Studio {
    explicit Desk(FilePanelMode mode)
    {
        folder.Add("show.ctl", kShow);
        folder.Add("show.mp3", "");
        fs::create_directory(folder / "disc.one");
        editor.Form_Activate(folder / "show");
        editor.OpenStartMusic();
        editor.FinishStartUp();
        editor.ShowFilePanel(mode);
    }
    void Type(const std::string& name)
    {
        editor.txtFileSelect_Change(name);
        editor.cmdFileSelect_Click(0);
    }
    [[nodiscard]] const editor::FilePanel& Panel() const { return editor.fraFileSelect(); }
    [[nodiscard]] std::string Shown() const
    {
        return editor.Choreography().fileName.filename().string();
    }

    Folder folder;
};

TEST(FilePanel, OpensWithItsSummaryInTheFolderOfTheShow)
{
    Desk desk(FilePanelMode::Open);
    EXPECT_TRUE(desk.Panel().visible);
    EXPECT_EQ(desk.Panel().folder, (desk.folder / "show").parent_path());
    EXPECT_EQ(desk.Panel().files, Names{"show.mp3"});
    EXPECT_TRUE(desk.Panel().cboFileSelectEnabled);
    EXPECT_EQ(desk.Panel().lblFileSelect,
              editor::Summary(desk.editor.Choreography(), desk.player.FileName(), 60'000));
    EXPECT_EQ(editor::ActionCaption(desk.Panel().mode), "&Open");

    Desk save(FilePanelMode::Save);
    EXPECT_EQ(save.Panel().files, Names{"show.ctl"});
    EXPECT_FALSE(save.Panel().cboFileSelectEnabled);
    save.editor.cboFileSelect_Click(1);
    EXPECT_EQ(save.Panel().cboFileSelect, editor::kControlFilter);
    EXPECT_EQ(save.editor.MusicExtension(), ".MP3");
    EXPECT_EQ(editor::ActionCaption(save.Panel().mode), "&Save");
}

TEST(FilePanel, LeavesNothingElseToBeUsed)
{
    Desk desk(FilePanelMode::Open);
    const timeline::Transport held = desk.editor.Transport();
    EXPECT_EQ(held.menuMasks, (std::array<std::uint16_t, 3>{512, 0, 0}));
    EXPECT_EQ(held.mmSong, timeline::SongButtons{});
    EXPECT_EQ(held.mmEditing, timeline::EditingButtons{.play = false});
    desk.editor.MoveTo(2000);
    desk.editor.OpenShiftPanel();
    desk.editor.mmSong_PlayClick();
    desk.editor.mmEditing_PlayClick();
    desk.editor.mnuFileAction_Click(editor::kUndoAllItem);
    desk.editor.OpenRecent(0);
    EXPECT_FALSE(desk.editor.OpenDropped(desk.folder / "show.ctl"));
    EXPECT_FALSE(desk.editor.SetSpinner("updnSpout", 0, 4));
    EXPECT_EQ(desk.editor.Timeline().CurrentTime(), 0);
    EXPECT_EQ(desk.editor.Transport(), held);
    EXPECT_TRUE(desk.prompts.questions.empty());
    EXPECT_TRUE(desk.editor.Form_QueryUnload(editor::UnloadMode::Code));

    desk.editor.cmdFileSelect_Click(1);
    EXPECT_FALSE(desk.Panel().visible);
    EXPECT_EQ(desk.editor.Transport().menuMasks, (std::array<std::uint16_t, 3>{691, 63, 11}));
    EXPECT_TRUE(desk.editor.SetSpinner("updnSpout", 0, 4));
    desk.editor.cmdFileSelect_Click(0);
    desk.editor.drvFileSelect_Change(0);
    desk.editor.txtFileSelect_Change("show");
    EXPECT_EQ(desk.Panel().txtFileSelect, "") << "closed";
}

TEST(FilePanel, PairsAControlFileWithTheMusicOfTheFilter)
{
    const struct {
        const char* name;
        int filter;
        const char* typed;
        const char* control;
        const char* music;
    } rows[] = {
        {"typed extensions are dropped", 1, "gala.mp3", "gala.ctl", "Gala.Wav"},
        {"mp3", 0, "gala.xyz", "gala.ctl", "gala.mp3"},
        {"the control filter keeps the music", 2, " gala ", "gala.ctl", "gala.mp3"},
        {"a folder with a dot", 0, "disc.one/solo", "solo.ctl", ""},
        {"names of other case", 1, "GALA", "gala.ctl", "Gala.Wav"},
        {"nothing there", 0, "none", "none.ctl", ""},
        {"no name", 0, " .ctl", "show.ctl", "show.mp3"},
    };
    for (const auto& row : rows) {
        Desk desk(FilePanelMode::Open);
        for (const char* file : {"gala.ctl", "gala.mp3", "Gala.Wav", "disc.one/solo.ctl"})
            desk.folder.Add(file, kShow);
        desk.editor.cboFileSelect_Click(row.filter);
        desk.Type(row.typed);
        EXPECT_EQ(desk.Shown(), row.control) << row.name;
        EXPECT_EQ(desk.player.FileName().filename(), row.music) << row.name;
    }
}

TEST(FilePanel, TakesRelativeNamesFromItsFolder)
{
    Desk desk(FilePanelMode::Save);
    ASSERT_EQ(desk.Panel().folders, (Names{"..", "disc.one"}));
    desk.editor.dirFileSelect_Change(1);
    desk.Type("copy");
    EXPECT_TRUE(document::FileExists(desk.folder / "disc.one/copy.ctl"));
    EXPECT_FALSE(desk.Panel().visible);
    desk.editor.ShowFilePanel(FilePanelMode::Open);
    EXPECT_EQ(desk.Panel().folder, desk.folder / "disc.one");
    desk.editor.cboFileSelect_Click(editor::kControlFilter);
    EXPECT_EQ(desk.Panel().files, Names{"copy.ctl"});
    desk.editor.SetVolumes({"/", desk.folder / "gone", desk.folder / "disc.one"});
    EXPECT_EQ(desk.Panel().drive, 2);
    desk.editor.drvFileSelect_Change(1);
    EXPECT_EQ(desk.Panel().drive, 2) << "back on the drive of the folder";
    desk.editor.filFileSelect_DblClick(0);
    EXPECT_EQ(desk.Panel().txtFileSelect, (desk.folder / "disc.one/copy.ctl").string());
    EXPECT_EQ(desk.Shown(), "copy.ctl");
    EXPECT_FALSE(desk.Panel().visible);
}

TEST(FilePanel, StaysOpenUntilTheShowIsWritten)
{
    Desk desk(FilePanelMode::Save);
    desk.prompts.yes = false;
    desk.editor.filFileSelect_DblClick(0);
    desk.Type("SHOW");
    const std::string path = (desk.folder / "show.ctl").string();
    const std::string question = ": Do you want to replace the existing file named\n" + path + "?";
    EXPECT_EQ(desk.prompts.questions, (Names{question, question})) << "whatever its case";
    EXPECT_TRUE(desk.Panel().visible);
    EXPECT_FALSE(document::FileExists(document::BackupName(path, 1)));

    desk.prompts.yes = true;
    desk.Type("no-such-folder/show");
    EXPECT_TRUE(desk.Panel().visible) << "unchanged, but not written either";
    EXPECT_EQ(desk.editor.Transport().menuMasks[timeline::kFileMenu], 512);
    EXPECT_EQ(desk.editor.LastSave().outcome, document::SaveOutcome::OpenFailed);
    desk.Type("show");
    EXPECT_FALSE(desk.Panel().visible);
    EXPECT_TRUE(document::FileExists(document::BackupName(path, 1)));
    EXPECT_FALSE(desk.prompts.questions.size() > 3);
}

}  // namespace
