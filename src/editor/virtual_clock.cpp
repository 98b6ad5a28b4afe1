#include "editor/virtual_clock.h"

#include <limits>

namespace editor {
namespace {

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

Editor::TimerName NameOf(std::size_t index)
{
    return static_cast<Editor::TimerName>(index);
}

}  // namespace

VirtualClock::VirtualClock(Editor& editor) : editor_(editor)
{
    Observe();
}

// A timer whose period began anew since the last look ends it one interval from now.
void VirtualClock::Observe()
{
    for (std::size_t i = 0; i < due_.size(); ++i) {
        const fountain::Timer& timer = editor_.TimerOf(NameOf(i));
        if (timer.Periods() == due_[i].periods)
            continue;
        due_[i] = {timer.Periods(), now_ + timer.Interval()};
    }
}

std::int64_t VirtualClock::NextDue() const
{
    std::int64_t next = kNever;
    for (std::size_t i = 0; i < due_.size(); ++i)
        if (editor_.TimerOf(NameOf(i)).Ticks())
            next = std::min(next, due_[i].at);
    return next;
}

void VirtualClock::TickAllDue()
{
    for (std::size_t i = 0; i < due_.size(); ++i) {
        const Editor::TimerName name = NameOf(i);
        if (!editor_.TimerOf(name).Ticks() || due_[i].at > now_)
            continue;
        due_[i].at = now_ + editor_.TimerOf(name).Interval();
        editor_.Tick(name);
        Observe();
    }
}

void VirtualClock::Advance(std::int64_t duration)
{
    Observe();
    const std::int64_t end = now_ + duration;
    for (std::int64_t next = NextDue(); next <= end; next = NextDue()) {
        now_ = next;
        TickAllDue();
    }
    now_ = end;
}

void VirtualClock::PlayUpTo(std::int32_t time)
{
    editor_.mmEditing_PlayClick();
    if (!editor_.Playback().tmrControlFile.Enabled())
        return;
    const std::int32_t whole = time - editor_.Timeline().CurrentTime();
    if (whole > 0)
        Advance(whole - whole % timeline::kStatusInterval);
    editor_.mmEditing_ClearClick();
}

}  // namespace editor
