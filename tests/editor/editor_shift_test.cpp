#include <gtest/gtest.h>

#include <algorithm>

#include "document/control_file.h"
#include "editor/edit_walk.h"
#include "editor/studio.h"

namespace {

using testing_support::Folder;
using testing_support::Studio;
using timeline::PlayerMode;

constexpr const char* kShow =
    "ct0-381\r\n00:01.0099-000 001-017\r\n00:02.0002-018\r\n00:05.0003-019\r\n";

struct OpenStudio : Studio {
    explicit OpenStudio(bool music)
    {
        folder.Add("show.ctl", kShow);
        if (music)
            folder.Add("show.mp3", "music");
        editor.OpenShow(folder / "show");
        editor.FinishStartUp();
    }
    [[nodiscard]] std::vector<std::int32_t> Times() const
    {
        auto times = editor.Choreography().lngTime;
        times.pop_back();
        return times;
    }
    [[nodiscard]] std::uint16_t Mask(timeline::Menu menu) const
    {
        return editor.Transport().menuMasks[menu];
    }

    Folder folder;
};

TEST(Shift, TakesAPendingEditAlongAndFollowsTheCommands)
{
    OpenStudio studio(false);
    editor::Editor& editor = studio.editor;
    editor.MoveTo(2000);
    ASSERT_TRUE(editor.SetSpinner("updnSpout", 0, 4));
    editor.OpenShiftPanel();
    ASSERT_TRUE(editor.ShiftPanel().visible);
    EXPECT_EQ(editor.Timeline().lblABCodes(), "002-018 007-036") << "committed before it opens";
    editor.updnShiftTime_Press(1, +1);
    EXPECT_EQ(studio.Times(), (std::vector{1000, 2000, 5000})) << "nothing moves before Set";
    editor.cmdShift_Click(0);
    EXPECT_FALSE(editor.ShiftPanel().visible);
    EXPECT_EQ(studio.Times(), (std::vector{1000, 3000, 6000}));
    EXPECT_EQ(editor.Timeline().CurrentTime(), 3000);
    EXPECT_EQ(editor.Timeline().lblABCodes(), "002-018 007-036");
    EXPECT_EQ(editor.Panel().updnSpout.Value, 4);

    editor.OpenShiftPanel();
    editor.updnShiftTime_Press(1, -1);
    editor.cmdShift_Click(0);
    EXPECT_EQ(studio.Times(), (std::vector{1000, 2000, 5000}));
    EXPECT_EQ(editor.Timeline().Position().mlngNextSlot, 2);
    EXPECT_EQ(editor.Fountain().State().mintRingLevel[0], 1);
}

TEST(Shift, LeavesNothingElseToOperateWhileItIsOpen)
{
    OpenStudio studio(true);
    editor::Editor& editor = studio.editor;
    editor.MoveTo(1000);
    const timeline::Transport before = editor.Transport();
    editor.OpenShiftPanel();
    editor.MoveTo(5000);
    EXPECT_EQ(editor.Timeline().CurrentTime(), 1000);
    EXPECT_FALSE(editor.SetSpinner("updnSpout", 0, 4));
    editor.mmSong_PlayClick();
    editor.mmEditing_PlayClick();
    EXPECT_EQ(studio.player.Mode(), PlayerMode::Stopped);
    EXPECT_EQ(studio.Mask(timeline::kFileMenu), 512);
    EXPECT_EQ(studio.Mask(timeline::kDisplayMenu), 0);
    EXPECT_EQ(studio.Mask(timeline::kHelpMenu), 0);
    editor.cmdShift_Click(1);
    EXPECT_EQ(editor.Transport(), before) << "Cancel brings everything back";
    EXPECT_FALSE(editor.Choreography().blnChanged);
}

TEST(Shift, StaysClosedWithoutCommandsAndWhilePlaying)
{
    OpenStudio studio(true);
    studio.editor.MoveTo(1500);
    studio.editor.OpenShiftPanel();
    EXPECT_FALSE(studio.editor.ShiftPanel().visible);
    studio.editor.MoveTo(1000);
    studio.editor.mmSong_PlayClick();
    studio.player.Poll();
    studio.editor.OpenShiftPanel();
    EXPECT_FALSE(studio.editor.ShiftPanel().visible);
}

TEST(EditingButtons, MarksAreSetWhileListeningAndVisitedAfterwards)
{
    OpenStudio studio(true);
    editor::Editor& editor = studio.editor;
    editor.mmSong_PlayClick();
    studio.player.Poll();
    studio.player.Advance(1230);
    editor.mmEditing_AddClick();
    studio.player.Advance(2000);
    editor.mmEditing_AddClick();
    editor.mmSong_StopClick();
    EXPECT_EQ(editor.Playback().lstMarks(), (timeline::Marks{{12, 32}, 0}));
    EXPECT_EQ(editor.Timeline().CurrentTime(), 1200) << "a stop returns to the first mark";
    editor.mmEditing_NextClick();
    EXPECT_EQ(editor.Timeline().CurrentTime(), 3200);
    editor.mmEditing_PrevClick();
    EXPECT_EQ(editor.Timeline().CurrentTime(), 1200);
    editor.lstMarks_DblClick(1);
    EXPECT_EQ(editor.Timeline().CurrentTime(), 3200);
    editor.lstMarks_DblClick(2);
    EXPECT_EQ(editor.Timeline().CurrentTime(), 3200) << "there is no such mark";

    studio.prompts.yes = false;
    editor.mmEditing_ClearClick();
    EXPECT_FALSE(editor.Playback().lstMarks().Empty());
    studio.prompts.yes = true;
    editor.mmEditing_ClearClick();
    EXPECT_TRUE(editor.Playback().lstMarks().Empty());
    EXPECT_EQ(studio.prompts.questions.back(), "Clear Marks: Are you sure?");
    EXPECT_FALSE(editor.Transport().mmEditing.next);
    EXPECT_FALSE(editor.Transport().mmEditing.clear);
}

/// A walk of edits, moves and shifts over a show; the editor is left at time 0.
void WalkWithShifts(testing_support::WalkingEditor& walking, testing_support::Random& random)
{
    editor::Editor& editor = walking.editor;
    for (const testing_support::Step& step : testing_support::RandomWalk(random, 40)) {
        walking.Do(step);
        if (random.Below(4) != 0)
            continue;
        editor.OpenShiftPanel();
        for (int presses = random.Below(12); presses > 0; --presses)
            editor.updnShiftTime_Press(random.Below(3), random.Below(2) == 0 ? -1 : +1);
        editor.cmdShift_Click(random.Below(5) == 0 ? 1 : 0);
        ASSERT_EQ(testing_support::Disorder(editor.Choreography()), "");
        ASSERT_FALSE(editor.ShiftPanel().visible);
    }
    editor.MoveTo(0);
}

/// What the fountain does and what the panel shows, at each time of a show and behind it.
void ExpectSameShow(editor::Editor& one, editor::Editor& other)
{
    ASSERT_EQ(one.Choreography().lngTime, other.Choreography().lngTime);
    ASSERT_EQ(one.Choreography().strCommands, other.Choreography().strCommands);
    one.MoveTo(timeline::kLastSettledTime);
    other.MoveTo(timeline::kLastSettledTime);
    for (const std::int32_t slot : one.Choreography().lngTime) {
        const std::int32_t time = std::min(slot, timeline::kLastSettledTime);
        one.MoveTo(time);
        other.MoveTo(time);
        ASSERT_EQ(one.Timeline().lblABCodes(), other.Timeline().lblABCodes()) << time;
        ASSERT_EQ(one.Fountain().State(), other.Fountain().State()) << time;
    }
}

TEST(Shift, WalksOfShiftsAndEditsAreWhatAPlainReopeningShows)
{
    const Folder folder;
    for (std::uint64_t seed = 1; seed <= 25 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        testing_support::Random random(seed);
        testing_support::WalkingEditor walking;
        walking.show = folder / "walk.ctl";
        auto show = testing_support::ComposedShow(random);
        (void)document::WriteControlFile(show, walking.show);
        walking.editor.ReadControlFile(walking.show);
        WalkWithShifts(walking, random);
        (void)walking.editor.SaveTo(walking.show);

        testing_support::WalkingEditor reopened;
        reopened.editor.ReadControlFile(walking.show);
        ExpectSameShow(walking.editor, reopened.editor);
    }
}

}  // namespace
