#pragma once

#include <cstdint>

#include "document/choreography.h"
#include "fountain/timer.h"
#include "timeline/marks.h"
#include "timeline/music_player.h"
#include "timeline/timeline.h"
#include "timeline/transport.h"

namespace timeline {

inline constexpr std::int32_t kStatusInterval = 50;   ///< ms
inline constexpr std::int32_t kSnippetLength = 3000;  ///< ms

/// Writes what is pending on the panel before anything plays or moves.
class PanelCommitter {
 public:
    virtual ~PanelCommitter() = default;
    virtual void CommitPanel() = 0;
};

/// Plays the music, or the choreography without music, and keeps what may be operated in line.
/// Handlers are named after the control and the event. A button that is disabled does nothing.
class Playback : public MusicEvents {
 public:
    Playback(const document::Choreography& choreography, Timeline& timeline, MusicPlayer& mmSong,
             PanelCommitter& committer);
    ~Playback() override;
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    [[nodiscard]] const Transport& GetTransport() const { return transport_; }
    [[nodiscard]] const Marks& lstMarks() const { return lstMarks_; }

    void mmSong_PrevClick();
    void mmSong_PlayClick();
    void mmSong_PauseClick();
    void mmSong_StopClick();
    void mmEditing_PlayClick();
    void mmEditing_AddClick();
    void mmEditing_PrevClick();
    void mmEditing_NextClick();
    /// Without music, the stop of the choreography that plays; marks are cleared by `ClearMarks`.
    void mmEditing_ClearClick();
    void ClearMarks();
    /// Goes to mark `index` of the list and selects it; nothing while something plays.
    void GoToMark(std::int32_t index);
    /// Selects mark `index`, to which a stop returns; nothing where there is none.
    void SelectMark(std::int32_t index);

    /// While the shift panel or the file selection panel is open nothing but its own controls and
    /// Exit can be used.
    void SetPanelOpen(bool open);
    /// Stops what plays or pauses.
    void BringToRest();

    void mmSong_PlayCompleted() override;
    void mmSong_PauseCompleted() override;
    void mmSong_StatusUpdate() override;
    void mmSong_PlayingEnded() override;

    /// Ticks every 50 ms while the choreography plays without music.
    fountain::Timer tmrControlFile{0};
    void tmrControlFile_Timer();

    /// The three seconds from the current time that one listens to. While they play the user's
    /// input must be refused; call `StepSnippet` often, until it is over.
    [[nodiscard]] bool SnippetPlays() const { return snippetPlays_; }
    void StepSnippet();

    void StopPlayback();
    /// Ends whatever plays and rewinds: for a new choreography or new music.
    void ResetPlayback();
    void RefreshMenus();
    void SetMenuMask(Menu menu, std::uint16_t mask);

    /// True while the music or the choreography runs, or a snippet does.
    [[nodiscard]] bool Playing() const;

 private:
    void EnableTimeSpinners(bool flag) { transport_.updnTimeEnabled = flag; }
    void RefreshSongButtons();
    void BeginPlaying();
    void ReturnToEditing();
    void HoldAllButExit();
    void StopControlFile();
    void BeginSnippet();
    void PlayControlFile();
    void GoToSelectedMark();

    const document::Choreography& choreography_;
    Timeline& timeline_;
    MusicPlayer& mmSong_;
    PanelCommitter& committer_;

    Transport transport_;
    Marks lstMarks_;
    bool panelOpen_ = false;
    bool snippetPlays_ = false;
    std::int32_t snippetStart_ = 0;
    bool statusBusy_ = false;
};

}  // namespace timeline
