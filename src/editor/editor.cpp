#include "editor/editor.h"

#include <algorithm>

namespace editor {
Editor::Editor(timeline::MusicPlayer& mmSong, Prompts& prompts, SettingsStore* settings)
    : mmSong_(mmSong),
      prompts_(prompts),
      settings_(settings),
      timeline_(choreography_, fountain_, panel_, mmSong),
      playback_(choreography_, timeline_, mmSong, *this)
{
    SelectFilter(0);
    if (settings_ != nullptr)
        recent_ = LoadRecent(*settings_);
}

std::int32_t Editor::ShowLength() const
{
    if (mmSong_.Length() > 0)
        return std::min(mmSong_.Length(), timeline::kLastSettledTime);
    const std::int32_t slots = choreography_.lngLastSlot();
    const std::int32_t last =
        slots > 0 ? choreography_.lngTime[static_cast<std::size_t>(slots - 1)] : 0;
    return std::min(last, timeline::kLastSettledTime);
}

fountain::Scene Editor::BuildScene(const fountain::SceneLayout& layout,
                                   const fountain::Measures& measures) const
{
    return fountain::BuildScene(fountain_.State(), fountain_.Drawn(), options_, layout, measures);
}

bool Editor::MayMove() const
{
    return Transport().updnTimeEnabled && !playback_.SnippetPlays();
}

void Editor::MoveTo(std::int32_t time)
{
    if (!MayMove())
        return;
    CommitPanel();
    timeline_.GoToTime(time);
}

// The commit comes first: what it writes may be the first or the last command to step to.
void Editor::StepDown(timeline::TimeField field, timeline::StepMode mode)
{
    if (!MayMove())
        return;
    CommitPanel();
    timeline_.GoToTime(timeline::StepTimeDown(choreography_, timeline_.Position(), field, mode));
}

void Editor::StepUp(timeline::TimeField field, timeline::StepMode mode)
{
    if (!MayMove())
        return;
    CommitPanel();
    timeline_.GoToTime(timeline::StepTimeUp(choreography_, timeline_.Position(), field, mode));
}

void Editor::ToggleDisplayOption(int item)
{
    switch (item) {
        case kLegendsItem:
            options_.Legends = !options_.Legends;
            break;
        case kCandelabrasItem:
            options_.Candelabras = !options_.Candelabras;
            break;
        case kBackCurtainItem:
            options_.BackCurtain = !options_.BackCurtain;
            break;
        case kABCodesItem:
            options_.ABCodes = !options_.ABCodes;
            break;
        default:
            break;
    }
}

const fountain::Timer& Editor::TimerOf(TimerName name) const
{
    switch (name) {
        case kSweeps:
            return fountain_.tmrSweeps;
        case kPulsate:
            return fountain_.tmrPulsate;
        case kLights:
            return fountain_.tmrLights;
        case kControlFile:
        case kTimerCount:
            break;
    }
    return playback_.tmrControlFile;
}

void Editor::Tick(TimerName name)
{
    if (!TimerOf(name).Ticks())
        return;
    switch (name) {
        case kControlFile:
            playback_.tmrControlFile_Timer();
            break;
        case kSweeps:
            fountain_.tmrSweeps_Timer();
            break;
        case kPulsate:
            fountain_.tmrPulsate_Timer();
            break;
        case kLights:
            fountain_.tmrLights_Timer();
            break;
        case kTimerCount:
            break;
    }
}

}  // namespace editor
