// Working against the music: the shift panel and the question before the marks go.
#include "editor/editor.h"

namespace editor {

void Editor::mmEditing_ClearClick()
{
    if (mmSong_.Mode() == timeline::PlayerMode::NotReady)
        playback_.mmEditing_ClearClick();
    else if (Transport().mmEditing.clear &&
             prompts_.Ask("Are you sure?", "Clear Marks", Icon::Question))
        playback_.ClearMarks();
}

void Editor::OpenShiftPanel()
{
    if (!MayMove())
        return;
    CommitPanel();
    shift_ = timeline::OpenedShiftPanel(choreography_, timeline_.CurrentTime());
    if (shift_.visible)
        playback_.SetPanelOpen(true);
}

void Editor::updnShiftTime_Press(int index, int direction)
{
    if (shift_.visible && index >= 0 && index <= 2)
        timeline::PressShiftTime(shift_, index, direction);
}

void Editor::cmdShift_Click(int index)
{
    if (!shift_.visible)
        return;
    const timeline::ShiftPanel panel = shift_;
    shift_ = {};
    before_.reset();
    const auto shift = [&] { return timeline::ApplyShift(choreography_, panel); };
    if (index == 0 && Store(Reach::LaterTimes, shift))
        timeline_.GoToTime(panel.newTime);
    playback_.SetPanelOpen(false);
}

}  // namespace editor
