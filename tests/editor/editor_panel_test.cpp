// What the user does with the panel and the document, on a whole editor.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "document/control_text.h"
#include "editor/studio.h"

namespace {

using testing_support::Folder;
using testing_support::Studio;
using timeline::TimeField;

constexpr const char* kEverything =
    "080-017 000-005 048-018 049-001 017-002 001-019 002-019 003-019 004-019 005-019 006-019 "
    "007-018 007-035 008-018 009-018 009-098 016-004 033-033 054-001 069-016 085-081 086-009";

std::string Show(const std::string& lines)
{
    return "ct0-381\r\n" + lines;
}

/// A studio with a show of one's own, without music, at 00:01.0.
struct Desk : Studio {
    Folder folder;

    explicit Desk(const std::string& lines)
    {
        folder.Add("show.ctl", Show(lines));
        editor.OpenShow(folder / "show");
        editor.FinishStartUp();
        editor.MoveTo(1000);
    }
    [[nodiscard]] std::string Stored() const { return editor.Timeline().lblABCodes(); }
    /// The times and their commands, one line each.
    [[nodiscard]] std::string Text() const
    {
        const document::Choreography& show = editor.Choreography();
        std::string text;
        for (std::size_t slot = 0; slot + 1 < show.lngTime.size(); ++slot)
            text += std::to_string(show.lngTime[slot]) + ": " +
                    document::CommandText(show.strCommands[slot]) + '\n';
        return text;
    }
};

/// The words of `before` that `after` lacks.
std::string Gone(const std::string& before, const std::string& after)
{
    std::istringstream words(before);
    std::string gone;
    for (std::string word; words >> word;)
        if (after.find(word) == std::string::npos)
            gone += (gone.empty() ? "" : " ") + word;
    return gone;
}

TEST(Erase, RemovesWhatItsLabelNames)
{
    const char* const gone[] = {"",
                                "001-019",
                                "002-019",
                                "003-019",
                                "004-019",
                                "005-019",
                                "006-019",
                                "007-018 007-035",
                                "008-018",
                                "009-018 009-098",
                                "009-018 009-098",
                                "009-018 009-098",
                                "007-018 007-035",
                                "054-001",
                                "069-016",
                                "033-033",
                                "085-081 086-009",
                                "080-017",
                                "048-018",
                                "049-001",
                                "000-005"};
    for (int index = 1; index <= 20; ++index) {
        Desk desk(std::string("00:01.0") + kEverything + "\r\n");
        const std::string before = desk.Stored();
        ASSERT_EQ(before, kEverything);
        desk.editor.lblErase_Click(0);
        if (index < 20)
            desk.editor.lblErase_Click(index);
        else
            desk.editor.lblOperator_Click();
        EXPECT_EQ(Gone(before, desk.Stored()), gone[index]) << index;
        EXPECT_TRUE(desk.editor.Choreography().blnChanged) << index;
        EXPECT_FALSE(desk.editor.EraseMode()) << index;
        EXPECT_EQ(desk.editor.Panel().lblErase[0].BackColor, panel::kEraseOff) << index;
    }
}

TEST(Erase, NeedsItsModeAndEndsIt)
{
    Desk desk("00:01.0007-035\r\n");
    desk.editor.SetSpinner("updnBazookas", 0, 1);
    desk.editor.lblErase_Click(12);
    desk.editor.lblOperator_Click();
    EXPECT_EQ(desk.Text(), "1000: 007-035\n") << "neither erased nor committed";
    EXPECT_TRUE(panel::HasPendingEdits(desk.editor.Panel()));

    desk.editor.lblErase_Click(0);
    EXPECT_EQ(desk.editor.Panel().lblErase[0].BackColor, panel::kEraseOn);
    desk.editor.MoveTo(2000);
    EXPECT_TRUE(desk.editor.EraseMode()) << "a move does not end it";
    desk.editor.lblErase_Click(0);
    EXPECT_FALSE(desk.editor.EraseMode());
    EXPECT_EQ(desk.Text(), "1000: 007-035 007-017\n");
}

TEST(Erase, CommitsFirstAndTakesTheTimeOutWithItsLastCommand)
{
    Desk desk("00:01.0007-035\r\n00:02.0001-017\r\n");
    desk.editor.SetSpinner("updnBazookas", 0, 1);
    desk.editor.SetSpinner("updnRings", 4, 2);
    desk.editor.lblErase_Click(0);
    desk.editor.lblErase_Click(12);
    EXPECT_EQ(desk.Text(), "1000: 003-018\n2000: 001-017\n");
    EXPECT_EQ(desk.editor.Panel().updnSpout.Value, 0);
    EXPECT_EQ(desk.editor.Panel().updnBazookas.Value, 0);
    EXPECT_EQ(desk.editor.Panel().updnRings[4].Value, 2);
    desk.editor.lblErase_Click(0);
    desk.editor.lblErase_Click(3);
    EXPECT_EQ(desk.Text(), "2000: 001-017\n");
}

TEST(Reset, LeavesTheLoneResetAndGoesAgain)
{
    Desk desk("00:00.0003-020\r\n00:01.0007-035 054-001\r\n00:02.0001-017\r\n");
    desk.editor.SetSpinner("updnBazookas", 0, 1);
    desk.editor.lblReset_Click(0);
    EXPECT_EQ(desk.Text(), "0: 003-020\n1000: 099-000\n2000: 001-017\n");
    EXPECT_TRUE(desk.editor.Choreography().blnReset[1]);
    EXPECT_TRUE(desk.editor.Panel().lblReset[0].Lit());
    EXPECT_EQ(desk.editor.Panel().updnRings[4].Value, 0);
    EXPECT_FALSE(panel::HasPendingEdits(desk.editor.Panel()));

    desk.editor.SetSpinner("updnBazookas", 0, 1);
    desk.editor.lblReset_Click(0);
    EXPECT_EQ(desk.Text(), "0: 003-020\n1000: 007-017\n2000: 001-017\n");
    EXPECT_FALSE(desk.editor.Choreography().blnReset[1]);
    EXPECT_EQ(desk.editor.Panel().updnRings[4].Value, 4);
}

TEST(Reset, UndoAndClearDropWhatIsPending)
{
    for (const int index : {1, 2}) {
        Desk desk("00:00.0003-020\r\n00:01.0007-035\r\n");
        desk.editor.SetSpinner("updnRings", 4, 2);
        desk.editor.ClickLabel("lblLight", 28);
        desk.editor.updnRotateTime_Press(0, 1);
        EXPECT_NE(desk.editor.PendingText(), "");
        desk.editor.lblReset_Click(index);
        EXPECT_EQ(desk.editor.PendingText(), "") << index;
        EXPECT_EQ(desk.editor.Panel().updnRings[4].Value, 4) << index;
        EXPECT_EQ(desk.editor.Panel().lblRotateTime.Caption, "0.4") << index;
        EXPECT_EQ(desk.editor.Panel().updnSpout.Value, index == 1 ? 3 : 0);
        EXPECT_EQ(desk.editor.Choreography().blnChanged, index == 2);
        desk.editor.MoveTo(2000);
        EXPECT_EQ(desk.Text(), index == 1 ? "0: 003-020\n1000: 007-035\n" : "0: 003-020\n");
    }
}

TEST(Reset, AsksAndTakesNoForAnAnswer)
{
    const char* const titles[] = {"Reset All", "Undo Changes", "Clear (Remove Choreography)"};
    for (int index = 0; index <= 2; ++index) {
        Desk desk("00:01.0007-035\r\n");
        desk.prompts.yes = false;
        desk.editor.SetSpinner("updnBazookas", 0, 1);
        const panel::PanelState set = desk.editor.Panel();
        desk.editor.lblReset_Click(index);
        ASSERT_EQ(desk.prompts.questions.size(), 1U);
        EXPECT_EQ(desk.prompts.questions[0], std::string(titles[index]) + ": Are you sure?");
        EXPECT_EQ(desk.editor.Panel(), set);
        EXPECT_EQ(desk.Text(), "1000: 007-035\n");
    }
}

TEST(Commit, PutsANewTimeWhereItBelongs)
{
    const struct {
        const char* name;
        const char* lines;
        const char* text;
    } rows[] = {
        {"into an empty show", "", "1000: 007-033\n"},
        {"ahead of all others", "00:03.0001-017\r\n", "1000: 007-033\n3000: 001-017\n"},
        {"behind all others", "00:00.5001-017\r\n", "500: 001-017\n1000: 007-033\n"},
        {"between", "00:00.5001-017\r\n00:03.0002-017\r\n",
         "500: 001-017\n1000: 007-033\n3000: 002-017\n"},
        {"into a time that is there", "00:01.0001-017\r\n", "1000: 001-017 007-033\n"},
    };
    for (const auto& row : rows) {
        Desk desk(row.lines);
        desk.editor.SetSpinner("updnSpout", 0, 1);
        EXPECT_FALSE(desk.editor.Choreography().blnChanged) << row.name;
        desk.editor.MoveTo(0);
        EXPECT_EQ(desk.Text(), row.text) << row.name;
        EXPECT_TRUE(desk.editor.Choreography().blnChanged) << row.name;
        desk.editor.MoveTo(1000);
        EXPECT_EQ(desk.editor.Panel().updnSpout.Value, 1) << row.name;
    }
}

// The count of commands goes on in characters, and a time that is taken out stays counted.
TEST(Commit, CountsAsItAlwaysHas)
{
    Desk desk("00:01.0001-017\r\n00:02.0002-017\r\n");
    const auto& counts = desk.editor.Choreography();
    const std::int32_t times = counts.intTimeCount[1];
    const std::int32_t commands = counts.intCommandCount[1];
    EXPECT_EQ(times, 2);
    EXPECT_EQ(commands, 2);
    const auto set = [&desk](std::int32_t time, const char* name, int index, int value) {
        desk.editor.MoveTo(time);
        desk.editor.SetSpinner(name, index, value);
        desk.editor.MoveTo(0);
    };
    set(1000, "updnSpout", 0, 1);
    EXPECT_EQ(counts.intTimeCount[1], times) << "no new time";
    EXPECT_EQ(counts.intCommandCount[1], commands + 2) << "one command more";
    set(1000, "updnSpout", 0, 2);
    EXPECT_EQ(counts.intCommandCount[1], commands + 2) << "another level";
    set(3000, "updnSpout", 0, 3);
    EXPECT_EQ(counts.intTimeCount[1], times + 1) << "a new time";
    EXPECT_EQ(counts.intCommandCount[1], commands + 4) << "a new time with a command";

    desk.editor.MoveTo(3000);
    desk.editor.lblReset_Click(2);
    EXPECT_EQ(counts.lngLastSlot(), 2);
    EXPECT_EQ(counts.intTimeCount[1], times + 1) << "a cleared time stays counted";
    EXPECT_EQ(counts.intCommandCount[1], commands + 4) << "and its commands";
}

// Half a copy is no command, so the time that held the whole one goes.
TEST(Commit, TakesATimeOutThatHoldsNothingMore)
{
    Desk desk("00:00.0001-017\r\n00:01.0080-017\r\n00:02.0002-017\r\n");
    desk.editor.ClickLabel("lblCopy", 2);
    desk.editor.MoveTo(2000);
    EXPECT_EQ(desk.Text(), "0: 001-017\n2000: 002-017\n");
    EXPECT_EQ(desk.editor.Choreography().intCommandCount[1], 3 - 2);
    EXPECT_EQ(desk.editor.Choreography().intTimeCount[1], 3);
    EXPECT_EQ(desk.editor.Panel().updnRings[2].Value, 1) << "the later times still follow";
}

TEST(Commit, SaysWhenEveryTimeIsTaken)
{
    std::string lines;
    for (int tenths = 0; tenths < 54'000; ++tenths) {
        char line[32];
        const int at = tenths == 10 ? 57'000 : tenths;  // 00:01.0 is free, 95:00.0 is not
        (void)std::snprintf(line, sizeof line, "%02d:%02d.%d017-001\r\n", at / 600, at / 10 % 60,
                            at % 10);
        if (tenths != 10)
            lines += line;
    }
    Desk desk(lines + "95:00.0017-001\r\n");
    ASSERT_TRUE(desk.editor.Choreography().IsFull());
    desk.editor.SetSpinner("updnSpout", 0, 1);
    const document::Choreography before = desk.editor.Choreography();
    desk.editor.MoveTo(2000);
    EXPECT_EQ(desk.prompts.warnings,
              std::vector<std::string>{
                  "A choreography holds at most 54,000 times: this one was not added."});
    EXPECT_EQ(desk.editor.Choreography(), before);
    EXPECT_EQ(desk.editor.Timeline().CurrentTime(), 2000);
    EXPECT_EQ(desk.editor.Panel().updnSpout.Value, 0);

    desk.editor.SetSpinner("updnSpout", 0, 1);
    desk.editor.MoveTo(0);
    EXPECT_EQ(desk.editor.Choreography().strCommands[19].size(), 4U) << "a time that is there";
    EXPECT_EQ(desk.prompts.warnings.size(), 1U);
}

TEST(Commit, HappensWhereverTheTimeIsLeft)
{
    const struct {
        const char* name;
        void (*leave)(Desk& desk);
    } rows[] = {
        {"a move", [](Desk& desk) { desk.editor.MoveTo(0); }},
        {"a step", [](Desk& desk) { desk.editor.StepTimeUp(TimeField::Tenths, 1); }},
        {"a step down", [](Desk& desk) { desk.editor.StepTimeDown(TimeField::Minutes, 10); }},
        {"playing the choreography", [](Desk& desk) { desk.editor.mmEditing_PlayClick(); }},
        {"saving", [](Desk& desk) { desk.editor.Save(); }},
        {"the File menu", [](Desk& desk) { desk.editor.mnuFile_Click(); }},
        {"closing",
         [](Desk& desk) { (void)desk.editor.Form_QueryUnload(editor::UnloadMode::ControlMenu); }},
    };
    for (const auto& row : rows) {
        Desk desk("00:01.0001-017\r\n");
        desk.editor.SetSpinner("updnSpout", 0, 1);
        row.leave(desk);
        EXPECT_EQ(desk.Text(), "1000: 001-017 007-033\n") << row.name;
    }
}

TEST(Commit, IsImpossibleWhileSomethingPlays)
{
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
        Desk desk("00:01.0001-017\r\n");
        if (row.music) {
            desk.folder.Add("show.mp3", "");
            desk.editor.OpenShow(desk.folder / "show");
            desk.editor.MoveTo(1000);
        }
        row.begin(desk.editor);
        desk.player.Poll();
        EXPECT_FALSE(desk.editor.SetSpinner("updnSpout", 0, 1)) << row.name;
        EXPECT_FALSE(desk.editor.PressSpinner("updnSpout", 0, 1)) << row.name;
        EXPECT_FALSE(desk.editor.ClickLabel("lblVoice", 0)) << row.name;
        desk.editor.updnRotateTime_Press(0, 1);
        for (const int index : {0, 1, 2})
            desk.editor.lblReset_Click(index);
        desk.editor.lblErase_Click(0);
        desk.editor.lblErase_Click(1);
        desk.editor.mnuFile_Click();
        EXPECT_EQ(desk.Text(), "1000: 001-017\n") << row.name;
        EXPECT_FALSE(desk.editor.Choreography().blnChanged) << row.name;
        EXPECT_FALSE(desk.editor.EraseMode()) << row.name;
        EXPECT_TRUE(desk.prompts.questions.empty()) << row.name;
    }
}

TEST(Panel, RefusesControlsThatItDoesNotHave)
{
    Desk desk("");
    EXPECT_FALSE(desk.editor.SetSpinner("updnRings", 10, 1));
    EXPECT_FALSE(desk.editor.SetSpinner("updnRings", -1, 1));
    EXPECT_FALSE(desk.editor.SetSpinner("lblLight", 0, 1));
    EXPECT_FALSE(desk.editor.PressSpinner("updnSpout", 1, 1));
    EXPECT_FALSE(desk.editor.ClickLabel("lblBypass", 0));
    EXPECT_FALSE(desk.editor.ClickLabel("lblBypass", 9));
    EXPECT_FALSE(desk.editor.ClickLabel("lblLight", 47));
    EXPECT_FALSE(panel::HasPendingEdits(desk.editor.Panel()));
}

TEST(Texts, SayWhatIsStoredAndWhatIsPending)
{
    Desk desk("00:00.0099-000\r\n00:01.0003-019\r\n");
    EXPECT_EQ(desk.editor.StoredText(), "Move Ring 3 on Group A to level 3");
    EXPECT_EQ(desk.editor.PendingText(), "");
    desk.editor.SetSpinner("updnSpout", 0, 1);
    EXPECT_EQ(desk.editor.PendingText(), "Move Spout to level 1");
    desk.editor.SetSpinner("updnRings", 4, 4);
    EXPECT_EQ(
        desk.editor.PendingText(),
        "Move Ring 3 on Group A to level 4; Move Spout to level 1; instead of: Move Ring 3 on "
        "Group A to level 3");
    desk.editor.SetSpinner("updnRings", 4, 3);
    desk.editor.SetSpinner("updnSpout", 0, 0);
    EXPECT_EQ(desk.editor.PendingText(), "") << "all set back";
    desk.editor.MoveTo(0);
    EXPECT_EQ(desk.editor.StoredText(), "Reset Fountain");
    desk.editor.MoveTo(500);
    EXPECT_EQ(desk.editor.StoredText(), "");
}

// What is pending is measured against the show that is open, not against one that was.
TEST(Texts, ForgetTheShowBefore)
{
    Desk desk("00:00.0009-019\r\n");
    desk.editor.SetSpinner("updnCurtain", 0, 2);
    EXPECT_NE(desk.editor.PendingText(), "");
    desk.folder.Add("other.ctl", Show("00:03.0001-017\r\n"));
    desk.editor.OpenShow(desk.folder / "other");
    desk.editor.SetSpinner("updnCurtain", 0, 3);
    EXPECT_EQ(desk.editor.PendingText(), "Move Front Curtain to level 3");
}

TEST(Save, WritesWhatIsPendingToo)
{
    Desk desk("00:01.0001-017\r\n");
    desk.editor.Save();
    EXPECT_FALSE(document::FileExists(desk.folder / "show.001")) << "nothing to save";
    desk.editor.SetSpinner("updnSpout", 0, 1);
    desk.editor.Save();
    EXPECT_TRUE(document::FileExists(desk.folder / "show.001"));
    EXPECT_FALSE(desk.editor.Choreography().blnChanged);
    EXPECT_FALSE(desk.editor.Transport().ItemEnabled(timeline::kFileMenu, 3));
    EXPECT_EQ(desk.editor.Panel().updnSpout.Value, 1);
    Studio other;
    other.editor.OpenShow(desk.folder / "show");
    EXPECT_EQ(document::ControlText(other.editor.Choreography()),
              document::ControlText(desk.editor.Choreography()));
    EXPECT_EQ(other.editor.Choreography().lngLastSlot(), 1);
}

// Once what they switch off is erased, the times after it say nothing any more.
TEST(Save, StandsWhereTimesAreTakenOut)
{
    Desk desk(
        "00:00.0001-017\r\n00:00.5001-016\r\n00:01.0001-016\r\n"
        "00:02.0002-017\r\n00:03.0001-016\r\n00:04.0099-000 001-016\r\n");
    desk.editor.MoveTo(0);
    desk.editor.lblErase_Click(0);
    desk.editor.lblErase_Click(1);
    desk.editor.MoveTo(5000);
    desk.editor.lblReset_Click(0);
    desk.editor.MoveTo(4000);
    desk.editor.lblReset_Click(0);
    desk.editor.MoveTo(3000);
    desk.editor.Save();
    EXPECT_EQ(desk.Text(), "2000: 002-017\n5000: 099-000\n");
    EXPECT_EQ(desk.editor.Timeline().Position().mlngNextSlot, 1);
    EXPECT_EQ(desk.editor.Panel().updnRings[2].Value, 1);
}

TEST(Closing, AsksForAChangedShowAlone)
{
    const std::vector<std::string> asked{
        ": This choregraphy has not been saved. Do you really\nwant to proceed without saving the "
        "changes?"};
    const struct {
        const char* name;
        bool edit;
        bool yes;
        bool closes;
    } rows[] = {
        {"unchanged", false, false, true},
        {"changed, and kept open", true, false, false},
        {"changed, and given up", true, true, true},
    };
    for (const auto& row : rows) {
        Desk desk("00:01.0001-017\r\n");
        desk.prompts.yes = row.yes;
        if (row.edit)
            desk.editor.SetSpinner("updnSpout", 0, 1);
        EXPECT_EQ(desk.editor.Form_QueryUnload(editor::UnloadMode::ControlMenu), row.closes)
            << row.name;
        EXPECT_EQ(desk.prompts.questions, row.edit ? asked : std::vector<std::string>{})
            << row.name;
        EXPECT_EQ(desk.editor.Choreography().blnChanged, row.edit && !row.yes) << row.name;
    }
}

TEST(Closing, IsRefusedWhileTheMusicPlays)
{
    Desk desk("00:01.0001-017\r\n");
    desk.folder.Add("show.mp3", "");
    desk.editor.OpenShow(desk.folder / "show");
    desk.editor.mmSong_PlayClick();
    desk.player.Poll();
    EXPECT_FALSE(desk.editor.Form_QueryUnload(editor::UnloadMode::ControlMenu));
    desk.editor.mmSong_StopClick();
    EXPECT_TRUE(desk.editor.Form_QueryUnload(editor::UnloadMode::ControlMenu));
    EXPECT_TRUE(desk.prompts.questions.empty());
}

TEST(CommandSteps, FollowTheReadout)
{
    Desk desk("00:00.0001-017\r\n00:01.0002-017\r\n00:05.0003-017\r\n");
    desk.editor.StepTimeUp(TimeField::Seconds, 2);
    EXPECT_EQ(desk.editor.Timeline().CurrentTime(), 3000);
    desk.editor.lblTime_RightClick();
    EXPECT_TRUE(desk.editor.CommandStepMode());
    desk.editor.StepTimeUp(TimeField::Minutes, 10);
    EXPECT_EQ(desk.editor.Timeline().CurrentTime(), 5000);
    desk.editor.StepTimeDown(TimeField::Minutes, 10);
    EXPECT_EQ(desk.editor.Timeline().CurrentTime(), 1000);
    desk.editor.lblTime_RightClick();
    EXPECT_FALSE(desk.editor.CommandStepMode());
    desk.editor.StepTimeDown(TimeField::Seconds, 5);
    EXPECT_EQ(desk.editor.Timeline().CurrentTime(), 0);
}

}  // namespace
