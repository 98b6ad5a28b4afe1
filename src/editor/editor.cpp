#include "editor/editor.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "document/ascii.h"

namespace editor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kControlExtension = ".ctl";
constexpr std::array<std::string_view, 2> kMusicExtensions{".mp3", ".wav"};

fs::path WithoutKnownExtension(const fs::path& name)
{
    std::string extension = name.extension().string();
    std::ranges::transform(extension, extension.begin(), document::LowerAscii);
    const bool known = extension == kControlExtension ||
                       std::ranges::find(kMusicExtensions, extension) != kMusicExtensions.end();
    return known ? fs::path(name).replace_extension() : name;
}

fs::path Append(fs::path base, std::string_view extension)
{
    base += extension;
    return base;
}

}  // namespace

Editor::Editor(timeline::MusicPlayer& mmSong, Prompts& prompts)
    : mmSong_(mmSong),
      prompts_(prompts),
      timeline_(choreography_, fountain_, panel_, mmSong),
      playback_(choreography_, timeline_, mmSong, *this)
{
}

void Editor::OpenShow(const fs::path& base)
{
    OpenControlFile(base);
    OpenMusicOf(base);
    if (started_)
        WarnOfRead();
}

void Editor::OpenControlFile(const fs::path& base)
{
    mmSong_.Close();
    ReadControlFile(Append(WithoutKnownExtension(base), kControlExtension));
}

void Editor::OpenMusicOf(const fs::path& name)
{
    const fs::path base = WithoutKnownExtension(name);
    const bool mp3 = document::FindFile(Append(base, kMusicExtensions[0])).has_value();
    OpenMusicFile(Append(base, kMusicExtensions[mp3 ? 0 : 1]));
}

void Editor::ReadControlFile(const fs::path& name)
{
    before_.reset();
    lastSave_ = {};
    Store(Reach::AnotherShow, [&] {
        lastRead_ =
            document::ReadControlFile(choreography_, document::FindFile(name).value_or(name));
        return true;
    });
    playback_.ResetPlayback();
}

void Editor::OpenMusicFile(const fs::path& name)
{
    mmSong_.Stop();
    mmSong_.Close();
    if (const auto file = document::FindFile(name))
        mmSong_.Open(*file);
    playback_.ResetPlayback();
}

void Editor::FinishStartUp()
{
    started_ = true;
    WarnOfRead();
}

void Editor::WarnOfRead()
{
    if (choreography_.blnTooMany)
        prompts_.Warn("At least one time contains too many actions.");
    if (lastRead_.timesLeftOut > 0)
        prompts_.Warn("The control file holds more times than the 54,000 that fit: " +
                      std::to_string(lastRead_.timesLeftOut) + " of them were left out.");
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
