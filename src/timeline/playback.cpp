#include "timeline/playback.h"

#include <algorithm>

namespace timeline {
namespace {

// Menu masks: bit i is item i of the menu.
constexpr std::uint16_t kFileAll = 691;  // all but Save
constexpr std::uint16_t kFileAllAndSave = 699;
constexpr std::uint16_t kFileEmpty = 515;  // New, Open, Exit
constexpr std::uint16_t kFileExitOnly = 512;
constexpr std::uint16_t kDisplayAll = 63;
constexpr std::uint16_t kHelpAll = 11;
constexpr std::uint16_t kNone = 0;

constexpr std::string_view kUnnamedFile = ".ctl";

bool HasMark(const Marks& marks, std::int32_t index)
{
    return index >= 0 && index < static_cast<std::int32_t>(marks.tenths.size());
}

}  // namespace

Playback::Playback(const document::Choreography& choreography, Timeline& timeline,
                   MusicPlayer& mmSong, PanelCommitter& committer)
    : choreography_(choreography), timeline_(timeline), mmSong_(mmSong), committer_(committer)
{
    mmSong_.SetEvents(this);
    RefreshMenus();
}

Playback::~Playback()
{
    mmSong_.SetEvents(nullptr);
}

bool Playback::Playing() const
{
    return snippetPlays_ || tmrControlFile.Enabled() || mmSong_.Mode() == PlayerMode::Playing;
}

void Playback::SetMenuMask(Menu menu, std::uint16_t mask)
{
    transport_.menuMasks[static_cast<std::size_t>(menu)] = mask;
}

void Playback::RefreshMenus()
{
    if (panelOpen_) {
        HoldAllButExit();
        return;
    }
    std::uint16_t file = kFileEmpty;
    std::uint16_t help = kHelpAll;
    if (choreography_.lngTime.front() < document::kEndSentinel) {
        const bool named =
            !choreography_.fileName.empty() && choreography_.fileName != kUnnamedFile;
        file = named && choreography_.blnChanged ? kFileAllAndSave : kFileAll;
    }
    const PlayerMode mode = mmSong_.Mode();
    if (mode == PlayerMode::NotReady && transport_.mmEditing.clear) {
        file = kFileExitOnly;
        help = kNone;
    } else if (mode == PlayerMode::Playing) {
        file = kNone;
        help = kNone;
    }
    SetMenuMask(kFileMenu, file);
    SetMenuMask(kHelpMenu, help);
    RefreshSongButtons();
}

void Playback::RefreshSongButtons()
{
    const PlayerMode mode = mmSong_.Mode();
    const bool open = mode != PlayerMode::NotReady && !snippetPlays_ && !panelOpen_;
    transport_.mmSong = {.prev = open,
                         .play = open && mode != PlayerMode::Playing,
                         .pause = open && mode == PlayerMode::Playing,
                         .stop = open && mode != PlayerMode::Stopped};
}

void Playback::BeginPlaying()
{
    EnableTimeSpinners(false);
    transport_.fraControlsEnabled = false;
    transport_.mmEditing = {.play = false, .add = true};
}

// The way back from playing to editing, without a move. With no music open the button that clears
// the marks has another job, so it stays off.
void Playback::ReturnToEditing()
{
    const bool marks = !lstMarks_.Empty();
    const bool music = mmSong_.Mode() != PlayerMode::NotReady;
    transport_.mmEditing = {
        .play = true, .add = false, .prev = marks, .next = marks, .clear = marks && music};
    if (timeline_.CurrentTime() < kTimeLimit)
        timeline_.RebuildState(Direction::Same);
    else
        timeline_.GoToTime(kLastSettledTime);  // longer music may play on, editing ends here
    EnableTimeSpinners(true);
    transport_.fraControlsEnabled = true;
    RefreshMenus();
}

void Playback::mmSong_PlayClick()
{
    if (!transport_.mmSong.play)
        return;
    committer_.CommitPanel();
    BeginPlaying();
    timeline_.RebuildState(Direction::Same);
    if (mmSong_.Mode() == PlayerMode::Stopped)
        mmSong_.SetFrom(timeline_.CurrentTime());
    mmSong_.Play();
    RefreshMenus();
}

void Playback::mmSong_PlayCompleted()
{
    if (snippetPlays_)
        return;
    if (mmSong_.Mode() == PlayerMode::Playing) {
        transport_.fraControlsEnabled = false;
        mmSong_.SetUpdateInterval(kStatusInterval);
        RefreshMenus();
        return;
    }
    mmSong_.SetUpdateInterval(0);
    ReturnToEditing();
}

void Playback::mmSong_PauseClick()
{
    if (transport_.mmSong.pause)
        mmSong_.Pause();
}

void Playback::mmSong_PauseCompleted()
{
    if (mmSong_.Mode() == PlayerMode::NotReady) {
        StopPlayback();  // the music was lost on the way
        return;
    }
    if (mmSong_.Mode() == PlayerMode::Paused)
        committer_.CommitPanel();
    RefreshSongButtons();
}

void Playback::mmSong_PrevClick()
{
    if (!transport_.mmSong.prev)
        return;
    if (mmSong_.Mode() != PlayerMode::Playing)
        committer_.CommitPanel();
    ResetPlayback();
}

void Playback::ResetPlayback()
{
    tmrControlFile.Disable();
    tmrControlFile.SetInterval(0);
    snippetPlays_ = false;
    mmSong_.SetUpdateInterval(0);
    mmSong_.Stop();
    timeline_.RewindToStart();
    mmSong_.SetFrom(0);
    ReturnToEditing();
}

void Playback::mmSong_StatusUpdate()
{
    if (statusBusy_ || snippetPlays_)
        return;
    statusBusy_ = true;
    if (mmSong_.Mode() == PlayerMode::Playing) {
        timeline_.ShowTime(mmSong_.Position());
        while (timeline_.SlotIsDue(mmSong_.Position()))
            timeline_.ApplyNextSlot();
    }
    statusBusy_ = false;
}

void Playback::mmSong_StopClick()
{
    if (transport_.mmSong.stop)
        StopPlayback();
}

void Playback::mmSong_PlayingEnded()
{
    if (!snippetPlays_)
        StopPlayback();
}

void Playback::StopPlayback()
{
    mmSong_.SetUpdateInterval(0);
    mmSong_.Stop();
    if (!lstMarks_.Empty()) {
        lstMarks_.selected = std::max(lstMarks_.selected, 0);
        timeline_.GoToTime(lstMarks_.SelectedTime());
    }
    ReturnToEditing();
    mmSong_.SetFrom(timeline_.CurrentTime());
}

void Playback::mmEditing_AddClick()
{
    if (transport_.mmEditing.add && mmSong_.Mode() == PlayerMode::Playing)
        AddMark(lstMarks_, mmSong_.Position());
}

void Playback::mmEditing_NextClick()
{
    if (!transport_.mmEditing.next)
        return;
    SelectNext(lstMarks_);
    GoToSelectedMark();
}

void Playback::mmEditing_PrevClick()
{
    if (!transport_.mmEditing.prev)
        return;
    SelectPrevious(lstMarks_);
    GoToSelectedMark();
}

void Playback::GoToMark(std::int32_t index)
{
    if (!transport_.updnTimeEnabled || !HasMark(lstMarks_, index))
        return;
    SelectMark(index);
    GoToSelectedMark();
}

void Playback::SelectMark(std::int32_t index)
{
    if (HasMark(lstMarks_, index))
        lstMarks_.selected = index;
}

void Playback::GoToSelectedMark()
{
    committer_.CommitPanel();
    timeline_.GoToTime(lstMarks_.SelectedTime());
    EnableTimeSpinners(true);
}

void Playback::ClearMarks()
{
    lstMarks_ = {};
    transport_.mmEditing.prev = false;
    transport_.mmEditing.next = false;
    transport_.mmEditing.clear = false;
}

void Playback::SetPanelOpen(bool open)
{
    panelOpen_ = open;
    if (open) {
        HoldAllButExit();
        return;
    }
    SetMenuMask(kDisplayMenu, kDisplayAll);
    ReturnToEditing();
}

void Playback::HoldAllButExit()
{
    EnableTimeSpinners(false);
    transport_.fraControlsEnabled = false;
    transport_.mmEditing = {.play = false};
    transport_.mmSong = {};
    SetMenuMask(kFileMenu, kFileExitOnly);
    SetMenuMask(kDisplayMenu, kNone);
    SetMenuMask(kHelpMenu, kNone);
}

void Playback::BringToRest()
{
    if (tmrControlFile.Enabled())
        StopControlFile();
    const PlayerMode mode = mmSong_.Mode();
    if (mode == PlayerMode::Playing || mode == PlayerMode::Paused)
        StopPlayback();
}

void Playback::mmEditing_PlayClick()
{
    if (!transport_.mmEditing.play || snippetPlays_)
        return;
    switch (mmSong_.Mode()) {
        case PlayerMode::Stopped:
            BeginSnippet();
            break;
        case PlayerMode::NotReady:
            PlayControlFile();
            break;
        case PlayerMode::Playing:
        case PlayerMode::Paused:
            break;
    }
}

void Playback::BeginSnippet()
{
    committer_.CommitPanel();
    snippetStart_ = timeline_.CurrentTime();
    snippetPlays_ = true;
    RefreshSongButtons();
    mmSong_.SetFrom(snippetStart_);
    mmSong_.SetTo(snippetStart_ + kSnippetLength);
    mmSong_.Play();
}

void Playback::StepSnippet()
{
    if (!snippetPlays_ || mmSong_.Mode() == PlayerMode::Playing)
        return;
    mmSong_.Poll();  // what the snippet itself caused must not arrive later as news
    snippetPlays_ = false;
    timeline_.GoToTime(snippetStart_);
    RefreshSongButtons();
}

void Playback::PlayControlFile()
{
    committer_.CommitPanel();
    EnableTimeSpinners(false);
    transport_.fraControlsEnabled = false;
    transport_.mmEditing = {.play = false, .clear = true};
    RefreshMenus();
    tmrControlFile.SetInterval(kStatusInterval);
    tmrControlFile.Enable();
}

void Playback::tmrControlFile_Timer()
{
    if (timeline_.CurrentTime() + kStatusInterval >= kTimeLimit) {
        StopControlFile();
        return;
    }
    timeline_.ShowTime(timeline_.CurrentTime() + kStatusInterval);
    timeline_.ApplySlotsUpTo(timeline_.CurrentTime());
}

void Playback::mmEditing_ClearClick()
{
    if (transport_.mmEditing.clear && tmrControlFile.Enabled())
        StopControlFile();
}

void Playback::StopControlFile()
{
    tmrControlFile.Disable();
    tmrControlFile.SetInterval(0);
    ReturnToEditing();
}

}  // namespace timeline
