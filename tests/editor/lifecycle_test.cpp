// Every way in which a show is begun, opened, saved, taken back and closed, against all that can
// stand in its way.
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "document/control_text.h"
#include "document/file_io.h"
#include "editor/editor.h"
#include "editor/studio.h"

namespace {

using editor::FilePanelMode;
using editor::UnloadMode;
using testing_support::Folder;
using testing_support::Studio;

constexpr const char* kEmpty = "ct0-381\r\n";
constexpr const char* kShow = "ct0-381\r\n00:00.0001-017\r\n00:02.0002-018\r\n";
constexpr const char* kEdited = "ct0-381\r\n00:00.0001-017\r\n00:02.0002-018\r\n00:05.0007-036\r\n";
constexpr const char* kOther = "ct0-381\r\n00:07.0003-019\r\n";

/// Content by the name that the rules have for it.
std::string NameOf(std::string_view content)
{
    if (content == kEmpty)
        return "empty";
    if (content == kShow)
        return "show";
    if (content == kEdited)
        return "edited";
    return content == kOther ? "other" : std::string(content);
}

std::string OnDisk(const std::filesystem::path& name)
{
    if (!document::FileExists(name))
        return "none";
    return NameOf(document::ReadWholeFile(name).Text());
}

enum class Edit { None, Pending, Stored };
enum class Player { Rests, Plays, Pauses };

struct Case {
    std::string action;
    Edit edit = Edit::None;
    bool yes = false;
    bool there = false;  ///< other.ctl
    bool music = false;  ///< show.mp3 and other.mp3
    Player player = Player::Rests;

    [[nodiscard]] bool Is(const std::string& word) const
    {
        if (word == "changed" || word == "unchanged")
            return (edit != Edit::None) == (word == "changed");
        if (word == "yes" || word == "no")
            return yes == (word == "yes");
        if (word == "there" || word == "missing")
            return there == (word == "there");
        if (word == "music" || word == "silent")
            return music == (word == "music");
        if (word == "playing")
            return player == Player::Plays;
        if (word == "busy")
            return player != Player::Rests;
        ADD_FAILURE() << "no such word: " << word;
        return false;
    }
    friend std::ostream& operator<<(std::ostream& out, const Case& c)
    {
        constexpr std::array kEdits{"unchanged", "pending", "changed"};
        constexpr std::array kPlayers{"rests", "plays", "pauses"};
        return out << c.action << ": " << kEdits[static_cast<std::size_t>(c.edit)]
                   << (c.yes ? ", yes" : ", no") << (c.there ? ", there" : ", missing")
                   << (c.music ? ", music" : ", silent") << ", "
                   << kPlayers[static_cast<std::size_t>(c.player)];
    }
};

/// What can be seen afterwards.
struct Outcome {
    std::string asks;
    std::string holds;
    bool changed = false;
    std::string show = "show";  ///< on the disk
    std::string other;
    std::string music;
    bool panel = false;
    bool closes = false;
    int time = 5000;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Outcome& o)
    {
        return out << "asks '" << o.asks << "' holds " << o.holds << (o.changed ? " changed" : "")
                   << ", show.ctl " << o.show << ", other.ctl " << o.other << ", plays '" << o.music
                   << "'" << (o.panel ? ", panel open" : "") << (o.closes ? ", closes" : "")
                   << ", at " << o.time;
    }
};

/// The first rule of an action whose words all hold says what happens; what it does not name stays.
struct Rule {
    const char* action;
    const char* when;
    const char* then;
};

// clang-format off
constexpr Rule kRules[] = {
    {"New",      "busy",                ""},
    {"New",      "changed no",          "asks=discard time=0"},
    {"New",      "changed yes",         "asks=discard holds=empty clean music= time=0"},
    {"New",      "unchanged",           "holds=empty music= time=0"},
    {"Open",     "busy",                ""},
    {"Open",     "changed no",          "asks=discard"},
    {"Open",     "changed there music", "asks=discard holds=other clean music=other.mp3 time=0"},
    {"Open",     "changed there",       "asks=discard holds=other clean time=0"},
    {"Open",     "changed music",       "asks=discard holds=empty clean music=other.mp3 time=0"},
    {"Open",     "changed",             "asks=discard holds=empty clean time=0"},
    {"Open",     "there music",         "holds=other music=other.mp3 time=0"},
    {"Open",     "there",               "holds=other time=0"},
    {"Open",     "music",               "holds=empty music=other.mp3 time=0"},
    {"Open",     "",                    "holds=empty time=0"},
    {"Save",     "busy",                ""},
    {"Save",     "changed",             "clean show=edited"},
    {"Save",     "unchanged",           ""},
    {"Save As",  "busy",                ""},
    {"Save As",  "there no",            "asks=replace panel"},
    {"Save As",  "there changed",       "asks=replace clean other=edited"},
    {"Save As",  "there",               "asks=replace other=show"},
    {"Save As",  "changed",             "clean other=edited"},
    {"Save As",  "unchanged",           "other=show"},
    {"Undo All", "busy",                ""},
    {"Undo All", "no",                  "asks=reload"},
    {"Undo All", "yes",                 "asks=reload holds=show clean time=0"},
    {"Exit",     "busy music",          ""},
    {"Exit",     "unchanged",           "closes music="},
    {"Exit",     "changed no",          "asks=discard"},
    {"Exit",     "changed yes",         "asks=discard clean closes music="},
    {"Close",    "playing music",       ""},
    {"Close",    "unchanged",           "closes"},
    {"Close",    "changed no",          "asks=discard"},
    {"Close",    "changed yes",         "asks=discard clean closes"},
    {"Log out",  "playing music",       "closes"},
    {"Log out",  "unchanged",           "closes"},
    {"Log out",  "changed no",          "asks=discard"},
    {"Log out",  "changed yes",         "asks=discard clean closes"},
};
// clang-format on

bool Holds(const Rule& rule, const Case& c)
{
    std::istringstream words(rule.when);
    for (std::string word; words >> word;)
        if (!c.Is(word))
            return false;
    return c.action == rule.action;
}

Outcome Expected(const Case& c)
{
    const bool changed = c.edit != Edit::None;
    Outcome outcome{.asks = "",
                    .holds = changed ? "edited" : "show",
                    .changed = changed,
                    .other = c.there ? "other" : "none",
                    .music = c.music ? "show.mp3" : ""};
    for (const Rule& rule : kRules) {
        if (!Holds(rule, c))
            continue;
        std::istringstream words(rule.then);
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            const std::string value =
                equals == std::string::npos ? std::string() : word.substr(equals + 1);
            const std::string key = word.substr(0, equals);
            if (key == "asks")
                outcome.asks = value;
            else if (key == "holds")
                outcome.holds = value;
            else if (key == "show")
                outcome.show = value;
            else if (key == "other")
                outcome.other = value;
            else if (key == "music")
                outcome.music = value;
            else if (key == "time")
                outcome.time = std::stoi(value);
            else if (key == "panel")
                outcome.panel = true;
            else if (key == "closes")
                outcome.closes = true;
            else
                outcome.changed = false;
        }
        return outcome;
    }
    ADD_FAILURE() << "no rule for " << c;
    return outcome;
}

void Type(editor::Editor& editor, const std::string& name)
{
    editor.txtFileSelect_Change(name);
    editor.cmdFileSelect_Click(0);
}

bool Act(editor::Editor& editor, const std::string& action)
{
    if (action == "New")
        editor.mnuFileAction_Click(editor::kNewItem);
    if (action == "Open")
        editor.mnuFileAction_Click(editor::kOpenItem);
    if (action == "Save")
        editor.mnuFileAction_Click(editor::kSaveItem);
    if (action == "Save As")
        editor.mnuFileAction_Click(editor::kSaveAsItem);
    if (action == "Undo All")
        editor.mnuFileAction_Click(editor::kUndoAllItem);
    if (action == "Open" || action == "Save As")
        Type(editor, "other");
    if (action == "Exit")
        editor.mnuFileAction_Click(editor::kExitItem);
    if (action == "Close")
        return editor.Form_QueryUnload(UnloadMode::ControlMenu);
    if (action == "Log out")
        return editor.Form_QueryUnload(UnloadMode::SessionEnds);
    return editor.Unloaded();
}

std::string Asked(const testing_support::Answers& prompts, const std::filesystem::path& other)
{
    const std::array<std::string, 3> texts{
        ": This choregraphy has not been saved. Do you really\nwant to proceed without saving the "
        "changes?",
        ": Do you want to replace the existing file named\n" + other.string() + "?",
        ": Do you want to cancel all changes and\nreload the original choreography?"};
    constexpr std::array kNames{"discard", "replace", "reload"};
    std::string asked;
    for (std::size_t i = 0; i < prompts.questions.size(); ++i)
        for (std::size_t k = 0; k < texts.size(); ++k)
            if (prompts.questions[i] == texts[k] &&
                prompts.icons[i] == (k == 0 ? editor::Icon::Exclamation : editor::Icon::Question))
                asked += (asked.empty() ? "" : " ") + std::string(kNames[k]);
    return prompts.questions.size() > 0 && asked.empty() ? prompts.questions[0] : asked;
}

Outcome Observed(const Case& c)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    if (c.there)
        folder.Add("other.ctl", kOther);
    if (c.music) {
        folder.Add("show.mp3", "");
        folder.Add("other.mp3", "");
    }
    Studio studio;
    editor::Editor& editor = studio.editor;
    editor.Form_Activate(folder / "show");
    editor.OpenStartMusic();
    editor.FinishStartUp();
    editor.MoveTo(5000);
    if (c.edit != Edit::None)
        editor.SetSpinner("updnSpout", 0, 4);
    if (c.edit == Edit::Stored)
        editor.MoveTo(5000);
    if (c.player != Player::Rests)
        c.music ? editor.mmSong_PlayClick() : editor.mmEditing_PlayClick();
    studio.player.Poll();
    if (c.player == Player::Pauses)
        editor.mmSong_PauseClick();
    studio.player.Poll();
    studio.prompts.yes = c.yes;
    const bool closes = Act(editor, c.action);
    return {.asks = Asked(studio.prompts, folder / "other.ctl"),
            .holds = NameOf(document::ControlText(editor.Choreography())),
            .changed = editor.Choreography().blnChanged,
            .show = OnDisk(folder / "show.ctl"),
            .other = OnDisk(folder / "other.ctl"),
            .music = studio.player.FileName().filename().string(),
            .panel = editor.fraFileSelect().visible,
            .closes = closes,
            .time = editor.Timeline().CurrentTime()};
}

TEST(FileMenu, DoesWhatItShallInEveryCase)
{
    for (const char* action :
         {"New", "Open", "Save", "Save As", "Undo All", "Exit", "Close", "Log out"})
        for (const Edit edit : {Edit::None, Edit::Pending, Edit::Stored})
            for (const Player player : {Player::Rests, Player::Plays, Player::Pauses})
                for (const int bits : {0, 1, 2, 3, 4, 5, 6, 7}) {
                    const Case c{.action = action,
                                 .edit = edit,
                                 .yes = (bits & 1) != 0,
                                 .there = (bits & 2) != 0,
                                 .music = (bits & 4) != 0,
                                 .player = player};
                    if (!c.music && player == Player::Pauses)
                        continue;
                    EXPECT_EQ(Observed(c), Expected(c)) << c;
                }
}

// The rewinding of New and Undo All must not take along what stands on the panel.
TEST(FileMenu, LosesNothingThatIsPending)
{
    for (const int item : {editor::kNewItem, editor::kUndoAllItem, editor::kOpenItem}) {
        Folder folder;
        folder.Add("show.ctl", kShow);
        Studio studio;
        studio.editor.OpenShow(folder / "show");
        studio.editor.MoveTo(5000);
        ASSERT_TRUE(studio.editor.SetSpinner("updnSpout", 0, 4));
        studio.prompts.yes = false;
        studio.editor.mnuFileAction_Click(item);
        studio.editor.cmdFileSelect_Click(1);
        EXPECT_EQ(document::ControlText(studio.editor.Choreography()), kEdited) << item;
        EXPECT_TRUE(studio.editor.Choreography().blnChanged) << item;
    }
}

TEST(New, HasNoNameWhateverLiesInTheWorkingFolder)
{
    Folder folder;
    folder.Add(".ctl", kOther);
    folder.Add(".mp3", "");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "");
    Studio studio;
    studio.editor.mnuFileAction_Click(editor::kNewItem);
    studio.editor.Form_Activate({});
    studio.editor.OpenStartMusic();
    std::filesystem::current_path(before);
    EXPECT_EQ(studio.editor.Choreography().lngLastSlot(), 0);
    EXPECT_EQ(studio.player.FileName(), "");
    studio.editor.MoveTo(1000);
    ASSERT_TRUE(studio.editor.SetSpinner("updnSpout", 0, 4));
    studio.editor.mnuFile_Click();
    EXPECT_EQ(studio.editor.Transport().menuMasks[timeline::kFileMenu], 691) << "no Save";
    EXPECT_TRUE(studio.editor.MayPrint());
}

TEST(Print, IsForAShowWithCommands)
{
    Studio studio;
    EXPECT_FALSE(studio.editor.MayPrint());
    ASSERT_TRUE(studio.editor.SetSpinner("updnSpout", 0, 4));
    EXPECT_TRUE(studio.editor.MayPrint()) << "what is pending is printed too";
    studio.editor.mmEditing_PlayClick();
    EXPECT_FALSE(studio.editor.MayPrint());
}

TEST(UndoAll, ReadsTheShowAsItWasSavedLast)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    Studio studio;
    studio.editor.OpenShow(folder / "show");
    folder.Add("show.ctl", kOther);
    studio.editor.mnuFileAction_Click(editor::kUndoAllItem);
    EXPECT_EQ(document::ControlText(studio.editor.Choreography()), kOther);
    std::filesystem::remove(folder / "show.ctl");
    studio.editor.mnuFileAction_Click(editor::kUndoAllItem);
    EXPECT_EQ(document::ControlFileCaption(studio.editor.Choreography()), "unsaved choreography");
}

TEST(UndoAll, CanBeUndoneItself)
{
    Folder folder;
    folder.Add("show.ctl", kShow);
    Studio studio;
    studio.editor.OpenShow(folder / "show");
    studio.editor.MoveTo(5000);
    studio.editor.SetSpinner("updnSpout", 0, 4);
    studio.editor.mnuFileAction_Click(editor::kUndoAllItem);
    EXPECT_EQ(studio.editor.UndoText(), "Undo Undo All");
    ASSERT_TRUE(studio.editor.Undo());
    EXPECT_EQ(document::ControlText(studio.editor.Choreography()), kEdited);
    EXPECT_TRUE(studio.editor.Choreography().blnChanged);
    studio.editor.mnuFileAction_Click(editor::kSaveItem);
    EXPECT_EQ(OnDisk(folder / "show.ctl"), "edited");
    studio.editor.mnuFileAction_Click(editor::kNewItem);
    EXPECT_FALSE(studio.editor.CanUndo()) << "there is no way back into another show";
}

}  // namespace
