#include "timeline/timeline.h"

#include <algorithm>

#include "document/time_text.h"
#include "fountain/command_map.h"
#include "panel/load_panel.h"

namespace timeline {
namespace {

const document::Commands kNoCommands;

}  // namespace

Timeline::Timeline(const document::Choreography& choreography, fountain::Fountain& fountain,
                   panel::PanelState& panel, MusicPlayer& mmSong)
    : choreography_(choreography), fountain_(fountain), panel_(panel), mmSong_(mmSong)
{
    RewindToStart();
}

void Timeline::ShowTime(std::int32_t time)
{
    position_.mlngCurrentTime = time;
    lblTime_ = document::ReadoutText(time);
}

void Timeline::GoToTime(std::int32_t time)
{
    time = std::clamp(time, 0, kTimeLimit - 1);
    const Direction direction = time < CurrentTime()   ? Direction::Back
                                : time > CurrentTime() ? Direction::Forward
                                                       : Direction::Same;
    ShowTime(time);
    RebuildState(direction);
    mmSong_.SetFrom(time);
}

void Timeline::RewindToStart()
{
    fountain_.ResetDevices(*this);
    operatorDisplay_ = 0;
    position_.mlngNextSlot = 0;
    ShowTime(0);
    ApplySlotsUpTo(0);
    RebuildState(Direction::Same);
}

void Timeline::RebuildState(Direction direction)
{
    position_.mlngCurrentTime -= position_.mlngCurrentTime % kGrid;
    if (direction != Direction::Same)
        Replay(direction == Direction::Back && WalkBackToAnchor());
    // A single light shift is shown at its own time only.
    if (StoredCommands().empty())
        fountain_.EndSingleLightShift();
    RefreshPanel();
    lblABCodes_ = document::CommandText(StoredCommands());
}

// An anchor is a slot at or before the current time that resets the fountain.
bool Timeline::WalkBackToAnchor()
{
    // Times may have been taken out since the cursor was set.
    position_.mlngNextSlot = std::min(position_.mlngNextSlot, choreography_.lngLastSlot());
    while (position_.mlngNextSlot > 0) {
        --position_.mlngNextSlot;
        const auto slot = static_cast<std::size_t>(position_.mlngNextSlot);
        if (choreography_.lngTime[slot] <= CurrentTime() && choreography_.blnReset[slot])
            return true;
    }
    return false;
}

void Timeline::Replay(bool anchored)
{
    const std::int32_t first = position_.mlngNextSlot;
    operatorDisplaySeen_ = false;
    if (first == 0 && !anchored) {
        fountain_.ResetDevices(*this);
        operatorDisplay_ = 0;
    }
    // Straight to the fountain: the codes line and the panel are brought up to date once, at the
    // end.
    while (SlotIsDue(CurrentTime())) {
        fountain_.ApplyCommands(
            choreography_.strCommands[static_cast<std::size_t>(position_.mlngNextSlot)], *this);
        ++position_.mlngNextSlot;
    }
    // The anchor's reset does not bring the operator's number back.
    if (anchored && !operatorDisplaySeen_)
        FindOperatorDisplayBefore(first);
}

void Timeline::FindOperatorDisplayBefore(std::int32_t slot)
{
    operatorDisplay_ = 0;
    while (slot-- > 0) {
        const document::Commands& commands =
            choreography_.strCommands[static_cast<std::size_t>(slot)];
        for (int k = document::CommandCount(commands); k-- > 0;) {
            const document::Command command = document::CommandAt(commands, k);
            if (command.address != fountain::kOperatorDisplayAddress)
                continue;
            operatorDisplay_ = command.data;
            return;
        }
    }
}

bool Timeline::SlotIsDue(std::int32_t time) const
{
    return position_.mlngNextSlot < choreography_.lngLastSlot() &&
           choreography_.lngTime[static_cast<std::size_t>(position_.mlngNextSlot)] <= time;
}

void Timeline::ApplyNextSlot()
{
    const document::Commands& commands =
        choreography_.strCommands[static_cast<std::size_t>(position_.mlngNextSlot)];
    fountain_.ApplyCommands(commands, *this);
    lblABCodes_ = document::CommandText(commands);
    ++position_.mlngNextSlot;
}

void Timeline::ApplySlotsUpTo(std::int32_t time)
{
    while (SlotIsDue(time))
        ApplyNextSlot();
}

const document::Commands& Timeline::StoredCommands() const
{
    const std::int32_t slot = document::SlotAt(choreography_, CurrentTime());
    return slot < 0 ? kNoCommands : choreography_.strCommands[static_cast<std::size_t>(slot)];
}

void Timeline::RefreshPanel()
{
    panel::SetOperatorDisplay(panel_, operatorDisplay_);
    panel::LoadPanel(panel_, fountain_, StoredCommands());
}

void Timeline::OnOperatorDisplay(std::uint8_t number)
{
    operatorDisplay_ = number;
    operatorDisplaySeen_ = true;
    panel::SetOperatorDisplay(panel_, number);
    panel_.updnDisplay.Tag = number;  // while playing nothing loads the panel, and this is no edit
}

void Timeline::OnResetDevices()
{
    panel::BlankPanel(panel_);
}

}  // namespace timeline
