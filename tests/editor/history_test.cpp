// Undo and redo: whatever was done, the way back leads through the very same choreographies.
#include "editor/history.h"

#include <gtest/gtest.h>

#include <fstream>

#include "document/packed.h"
#include "document/patch.h"
#include "edit_walk.h"
#include "editor/history_title.h"
#include "studio.h"

namespace {

using document::Choreography;
using testing_support::Folder;
using testing_support::Packed;
using testing_support::Random;
using testing_support::Step;
using testing_support::Studio;
using testing_support::WalkingEditor;

constexpr const char* kShow =
    "ct0-381\r\n00:01.0003-020\r\n00:02.0099-000 017-001\r\n00:03.0003-018\r\n";

bool SameSlots(const Choreography& a, const Choreography& b)
{
    return a.lngTime == b.lngTime && a.strCommands == b.strCommands && a.blnReset == b.blnReset;
}

// The editor's history as a stack of whole copies.
class Copies {
 public:
    explicit Copies(const Choreography& opened) : states_{opened} {}

    /// One step has been done, if it changed anything.
    void See(const Choreography& now)
    {
        if (SameSlots(now, states_[at_]))
            return;
        states_.resize(++at_);
        states_.push_back(now);
        if (saved_ && *saved_ >= at_)
            saved_.reset();
    }
    void SeeSaved(const Choreography& now)
    {
        states_[at_] = now;
        saved_ = at_;
    }
    bool Undo() { return at_ > 0 && at_-- > 0; }
    bool Redo() { return at_ + 1 < states_.size() && ++at_ > 0; }

    /// Empty when this is how the editor's choreography must look now.
    [[nodiscard]] std::string Differs(const Choreography& now) const
    {
        const Choreography& copy = states_[at_];
        if (!SameSlots(now, copy))
            return "other slots";
        if (document::CountsOf(now) != document::CountsOf(copy))
            return "other counts";
        return now.blnChanged == (saved_ == at_) ? "the dirty flag is wrong" : "";
    }

 private:
    std::vector<Choreography> states_;
    std::size_t at_ = 0;
    std::optional<std::size_t> saved_ = 0;
};

class UndoWalk {
 public:
    UndoWalk(std::uint64_t seed, const std::filesystem::path& file) : random_(seed)
    {
        Choreography show = testing_support::RandomShow(random_, {.times = 6});
        (void)WriteControlFile(show, file);
        walking_.show = file;
        walking_.editor.ReadControlFile(file);
        opened_ = walking_.editor.Choreography();
        copies_.emplace(opened_);
    }

    /// Empty, or what went wrong.
    std::string Go()
    {
        walking_.editor.mnuFile_Click();
        copies_->See(Now());
        const int dice = random_.Below(30);
        if (dice < 8)
            return Travel(copies_->Undo(), walking_.editor.Undo());
        if (dice < 12)
            return Travel(copies_->Redo(), walking_.editor.Redo());
        if (dice == 12)
            return Do({Step::Kind::Save, "", 0, 0});
        if (dice > 15)
            return Do(testing_support::RandomWalk(random_, 1).front());
        Shift();
        copies_->See(Now());
        return "";
    }

    /// Undoes all that was done.
    std::string GoHome()
    {
        walking_.editor.mnuFile_Click();
        copies_->See(Now());
        while (copies_->Undo())
            if (!walking_.editor.Undo())
                return "the history is too short";
        if (walking_.editor.Undo())
            return "the history is too long";
        const bool home =
            SameSlots(Now(), opened_) && document::CountsOf(Now()) == document::CountsOf(opened_);
        return home ? copies_->Differs(Now()) : "not the file as opened";
    }

 private:
    [[nodiscard]] const Choreography& Now() const { return walking_.editor.Choreography(); }

    std::string Do(const Step& step)
    {
        walking_.Do(step);
        if (step.kind != Step::Kind::Save) {
            copies_->See(Now());
            return "";
        }
        copies_->SeeSaved(Now());
        return copies_->Differs(Now());
    }

    void Shift()
    {
        walking_.editor.OpenShiftPanel();
        for (int press = random_.Below(8); press > 0; --press)
            walking_.editor.updnShiftTime_Press(1 + random_.Below(2), random_.OneIn(2) ? 1 : -1);
        walking_.editor.cmdShift_Click(random_.OneIn(4) ? 1 : 0);
    }

    std::string Travel(bool expected, bool done)
    {
        if (expected != done)
            return "not what the stack of copies says";
        const std::string differs = done ? copies_->Differs(Now()) : "";
        if (!differs.empty())
            return differs;
        const std::string disorder = testing_support::Disorder(Now());
        return disorder.empty() ? walking_.LeaveAndReturn() : disorder;
    }

    Random random_;
    WalkingEditor walking_;
    Choreography opened_;
    std::optional<Copies> copies_;
};

TEST(History, EveryWayBackAndForthIsThatOfWholeCopies)
{
    Folder folder;
    const char* asked = std::getenv("LAW_WALKS");
    const int walks = asked != nullptr ? std::atoi(asked) : 40;
    for (int seed = 1; seed <= walks; ++seed) {
        UndoWalk walk(static_cast<std::uint64_t>(seed), folder / "walk.ctl");
        for (int step = 0; step < 120; ++step) {
            const std::string wrong = walk.Go();
            ASSERT_EQ(wrong, "") << "seed " << seed << ", step " << step;
        }
        ASSERT_EQ(walk.GoHome(), "") << "seed " << seed;
    }
}

TEST(History, StepsAreNamedInEnglish)
{
    using Lists = std::optional<document::Commands>;
    const auto change = [](const char* before, const char* after) {
        const Lists none;
        return document::SlotChange{65'300, *before != '\0' ? Packed(before) : none,
                                    *after != '\0' ? Packed(after) : none};
    };
    const struct {
        document::Patch patch;
        const char* title;
    } cases[] = {
        {{0, 0, {change("003-018", "003-020")}, {}, {}}, "Ring 3 on Group A to level 4 at 01:05.3"},
        {{0, 0, {change("003-018", "003-016")}, {}, {}}, "Ring 3 on Group A dropped at 01:05.3"},
        {{0, 0, {change("", "054-001")}, {}, {}}, "Voice light and water on at 01:05.3"},
        {{0, 0, {change("003-018", "003-020 004-017 017-001")}, {}, {}},
         "Ring 3 on Group A to level 4 and 2 more at 01:05.3"},
        {{0, 0, {change("003-018 004-017", "004-017")}, {}, {}},
         "Ring 3 on Group A removed at 01:05.3"},
        {{0, 0, {change("003-018", "")}, {}, {}}, "Ring 3 on Group A removed at 01:05.3"},
        {{0, 0, {change("003-018 004-017", "")}, {}, {}}, "Clear 01:05.3"},
        {{0, 0, {change("003-018", "099-000")}, {}, {}}, "Reset at 01:05.3"},
        {{0, 0, {change("099-000", "")}, {}, {}}, "Reset Fountain removed at 01:05.3"},
        {{0, 0, {change("003-018 004-017", "004-017 003-018")}, {}, {}},
         "Order of the commands at 01:05.3"},
        {{65'300, 500, {}, {}, {}}, "Shift from 01:05.3 by +0.5 s"},
        {{65'300, -60'100, {}, {}, {}}, "Shift from 01:05.3 by -60.1 s"},
        {{0, 0, {change("003-018", ""), change("", "003-018")}, {}, {}}, "Changes at 2 times"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(editor::EditTitle(c.patch), c.title);
}

class HistoryOfAShow : public testing::Test {
 protected:
    HistoryOfAShow()
    {
        folder_.Add("show.ctl", kShow);
        editor_.OpenShow(folder_ / "show");
    }
    // What is stored at `time`, or "-".
    [[nodiscard]] std::string At(std::int32_t time) const
    {
        const auto list = document::ListAt(editor_.Choreography(), time);
        return list ? document::CommandText(*list) : "-";
    }
    [[nodiscard]] std::int32_t Time() const { return editor_.Timeline().CurrentTime(); }

    Folder folder_;
    Studio studio_;
    editor::Editor& editor_ = studio_.editor;
};

TEST_F(HistoryOfAShow, WhatIsPendingIsUndoneFirst)
{
    EXPECT_FALSE(editor_.CanUndo());
    EXPECT_EQ(editor_.UndoText(), "Undo");
    EXPECT_FALSE(editor_.Undo());
    editor_.MoveTo(1000);
    editor_.SetSpinner("updnRings", 4, 2);
    EXPECT_TRUE(editor_.CanUndo());
    EXPECT_EQ(editor_.UndoText(), "Undo Ring 3 on Group A to level 2 at 00:01.0");
    EXPECT_FALSE(editor_.CanRedo());
    EXPECT_TRUE(editor_.Undo());
    EXPECT_EQ(At(1000), "003-020");
    EXPECT_EQ(editor_.Panel().updnRings[4].Value, 4);
    EXPECT_EQ(editor_.RedoText(), "Redo Ring 3 on Group A to level 2 at 00:01.0");
    editor_.MoveTo(9000);
    EXPECT_TRUE(editor_.Redo());
    EXPECT_EQ(At(1000), "003-018");
    EXPECT_EQ(Time(), 1000);
    EXPECT_EQ(editor_.Panel().updnRings[4].Value, 2);
}

TEST_F(HistoryOfAShow, TheViewFollowsAShift)
{
    editor_.MoveTo(2000);
    editor_.OpenShiftPanel();
    EXPECT_FALSE(editor_.CanUndo());
    editor_.updnShiftTime_Press(1, 1);
    EXPECT_FALSE(editor_.Undo());
    editor_.cmdShift_Click(0);
    EXPECT_EQ(At(3000), "099-000 017-001");
    editor_.MoveTo(0);
    EXPECT_EQ(editor_.UndoText(), "Undo Shift from 00:02.0 by +1.0 s");
    EXPECT_TRUE(editor_.Undo());
    EXPECT_EQ(Time(), 2000);
    EXPECT_EQ(At(3000), "003-018");
    EXPECT_TRUE(editor_.Redo());
    EXPECT_EQ(Time(), 3000);
}

TEST_F(HistoryOfAShow, AResetIsOneStep)
{
    editor_.MoveTo(1000);
    editor_.lblReset_Click(0);
    EXPECT_EQ(At(1000), "099-000");
    EXPECT_EQ(editor_.UndoText(), "Undo Reset at 00:01.0");
    EXPECT_TRUE(editor_.Undo());
    EXPECT_EQ(At(1000), "003-020");
    EXPECT_FALSE(editor_.Undo());
    EXPECT_FALSE(editor_.Choreography().blnChanged);
}

TEST_F(HistoryOfAShow, WhatIsSavedIsCleanFromBothSides)
{
    editor_.MoveTo(1000);
    editor_.SetSpinner("updnRings", 4, 2);
    editor_.SaveTo(folder_ / "show.ctl");
    editor_.Undo();
    EXPECT_TRUE(editor_.Choreography().blnChanged);
    editor_.Redo();
    EXPECT_FALSE(editor_.Choreography().blnChanged);
    editor_.Undo();
    editor_.SetSpinner("updnRings", 4, 3);
    editor_.Undo();
    EXPECT_TRUE(editor_.Choreography().blnChanged) << "what was saved cannot be reached any more";
    EXPECT_TRUE(editor_.CanRedo());
}

// Without the ring of 00:01.0 its off command at 00:03.0 does nothing: saving takes it away.
TEST_F(HistoryOfAShow, WhatASaveTidiedUpComesBackWithTheStepBefore)
{
    folder_.Add("tidy.ctl", "ct0-381\r\n00:01.0017-001\r\n00:03.0017-000\r\n");
    editor_.OpenShow(folder_ / "tidy");
    editor_.MoveTo(1000);
    editor_.lblReset_Click(2);
    EXPECT_EQ(At(3000), "017-000");
    editor_.MoveTo(5000);
    editor_.SetSpinner("updnSpout", 0, 1);
    editor_.Undo();
    EXPECT_TRUE(editor_.SaveTo(folder_ / "tidy.ctl").pruned);
    EXPECT_EQ(At(3000), "-");
    EXPECT_FALSE(editor_.Choreography().blnChanged);
    EXPECT_TRUE(editor_.Redo());
    EXPECT_EQ(At(3000), "017-000");
    EXPECT_NE(At(5000), "-");
    EXPECT_TRUE(editor_.Undo());
    EXPECT_EQ(At(3000), "-");
    EXPECT_FALSE(editor_.Choreography().blnChanged);
    EXPECT_TRUE(editor_.Undo());
    EXPECT_EQ(At(3000), "017-000");
    EXPECT_EQ(At(1000), "017-001");
    EXPECT_TRUE(editor_.Choreography().blnChanged);
}

TEST_F(HistoryOfAShow, AnotherShowHasAHistoryOfItsOwn)
{
    editor_.MoveTo(1000);
    editor_.lblReset_Click(2);
    folder_.Add("older.ctl", "ct0-381\r\n00:01.0052-001\r\n");
    editor_.OpenShow(folder_ / "older");
    EXPECT_FALSE(editor_.CanUndo());
    EXPECT_TRUE(editor_.Choreography().blnChanged) << "it was converted";
    editor_.MoveTo(1000);
    editor_.lblReset_Click(2);
    editor_.Undo();
    EXPECT_TRUE(editor_.Choreography().blnChanged) << "the file is as old as before";
}

}  // namespace
