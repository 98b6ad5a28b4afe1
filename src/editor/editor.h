#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/choreography.h"
#include "document/control_file.h"
#include "editor/history.h"
#include "fountain/fountain.h"
#include "fountain/scene.h"
#include "panel/panel_state.h"
#include "timeline/music_player.h"
#include "timeline/playback.h"
#include "timeline/shift.h"
#include "timeline/stepping.h"
#include "timeline/timeline.h"

namespace editor {

/// The questions and messages that the editor puts to the user.
class Prompts {
 public:
    virtual ~Prompts() = default;
    /// A message with an exclamation mark and an OK button.
    virtual void Warn(const std::string& text) = 0;
    /// A question with Yes and No, No the default; true for Yes.
    [[nodiscard]] virtual bool Ask(const std::string& text, const std::string& title) = 0;
};

/// Items of the File menu, by index.
enum FileItem : int { kSaveItem = 3, kPrintItem = 7, kExitItem = 9 };

/// Items of the Display menu, by index.
enum DisplayItem : int {
    kLegendsItem = 0,
    kCandelabrasItem = 2,
    kBackCurtainItem = 3,
    kABCodesItem = 5
};

/// The application without a window. A handler is named after its control and the event.
class Editor : private timeline::PanelCommitter {
 public:
    /// `mmSong` and `prompts` outlive the editor.
    Editor(timeline::MusicPlayer& mmSong, Prompts& prompts);

    /// Opens the control file and the music of a base name. A control or music extension that was
    /// typed along is dropped; a show without files is an empty, unsaved choreography.
    void OpenShow(const std::filesystem::path& base);
    /// The two halves of `OpenShow`, for a start that paints its window in between.
    void OpenControlFile(const std::filesystem::path& base);
    void OpenMusicOf(const std::filesystem::path& name);
    /// The control file alone, under its full name.
    void ReadControlFile(const std::filesystem::path& name);
    /// The music alone, like its control file; a missing or broken one leaves the player closed.
    void OpenMusicFile(const std::filesystem::path& name);
    /// Start-up is over: warnings that were held back are shown now.
    void FinishStartUp();

    [[nodiscard]] const document::Choreography& Choreography() const { return choreography_; }
    /// Grows whenever what is stored may have changed, through an edit, a save that tidied it, or
    /// another choreography that was read. Who shows the choreography looks again only then.
    [[nodiscard]] std::uint64_t Version() const { return version_; }
    [[nodiscard]] const document::ReadReport& LastRead() const { return lastRead_; }
    /// How the last save since the reading went.
    [[nodiscard]] const document::SaveReport& LastSave() const { return lastSave_; }
    [[nodiscard]] const fountain::Fountain& Fountain() const { return fountain_; }
    [[nodiscard]] const panel::PanelState& Panel() const { return panel_; }
    [[nodiscard]] const timeline::Timeline& Timeline() const { return timeline_; }
    [[nodiscard]] const timeline::Playback& Playback() const { return playback_; }
    [[nodiscard]] const timeline::Transport& Transport() const { return playback_.GetTransport(); }
    [[nodiscard]] timeline::MusicPlayer& mmSong() { return mmSong_; }
    [[nodiscard]] const fountain::DisplayOptions& DisplayOptions() const { return options_; }
    /// Length of the show in ms: of its music, else the time of its last command.
    [[nodiscard]] std::int32_t ShowLength() const;

    /// The picture of now in a fitted layout.
    [[nodiscard]] fountain::Scene BuildScene(const fountain::SceneLayout& layout,
                                             const fountain::Measures& measures) const;

    /// Moves to `time` in ms, as a user's move does; refused while something plays.
    void MoveTo(std::int32_t time);
    void StepDown(timeline::TimeField field, timeline::StepMode mode);
    void StepUp(timeline::TimeField field, timeline::StepMode mode);

    /// One press of a time spinner's arrow, `updnTime`: commits first. In command-step mode every
    /// step leads to the neighbouring command.
    void StepTimeDown(timeline::TimeField field, std::int32_t multiplier);
    void StepTimeUp(timeline::TimeField field, std::int32_t multiplier);
    void SetCommandStepMode(bool flag) { commandStep_ = flag; }
    [[nodiscard]] bool CommandStepMode() const { return commandStep_; }
    /// Any button but the left one on the readout.
    void lblTime_RightClick() { SetCommandStepMode(!commandStep_); }

    void ToggleDisplayOption(int item);

    /// Commits, then saves under the present name; nothing while there is nothing to save.
    void Save();
    /// Commits, then saves as `name`; failures are told to the user.
    document::SaveReport SaveTo(const std::filesystem::path& name);
    /// The File menu opens: what is pending is written first, so that its entries fit.
    void mnuFile_Click();
    /// The unsaved-changes prompt; true when the user chose not to proceed.
    [[nodiscard]] bool ConfirmDiscard();
    /// True when the window may close: not while the music plays, and not against the user.
    [[nodiscard]] bool QueryUnload();

    /// Takes the last edit back, or does it again, and goes to its time. What is pending on the
    /// panel is written first, and so is what is undone first. False, and nothing is done, while
    /// something plays or shifts, and when there is nothing to undo or redo.
    bool Undo();
    bool Redo();
    [[nodiscard]] bool CanUndo() const;
    [[nodiscard]] bool CanRedo() const;
    /// "Undo Ring 3 on Group A to level 4 at 01:05.3"; "Undo" when there is nothing to undo.
    [[nodiscard]] std::string UndoText() const;
    [[nodiscard]] std::string RedoText() const;

    /// In English, what leaving the time would change there; empty when nothing is pending.
    [[nodiscard]] std::string PendingText() const;
    /// In English, what is stored at the current time.
    [[nodiscard]] std::string StoredText() const;

    /// The panel's controls by name and index. False when no control has this name and index, or
    /// when the panel is disabled because something plays.
    bool SetSpinner(std::string_view name, int index, int value);
    bool PressSpinner(std::string_view name, int index, int direction);
    bool ClickLabel(std::string_view name, int index);

    void lblErase_Click(int index);
    void lblOperator_Click();
    void lblReset_Click(int index);
    void updnRotateTime_Press(int index, int direction);
    [[nodiscard]] bool EraseMode() const { return eraseMode_; }

    void mmSong_PrevClick() { playback_.mmSong_PrevClick(); }
    void mmSong_PlayClick() { playback_.mmSong_PlayClick(); }
    void mmSong_PauseClick() { playback_.mmSong_PauseClick(); }
    void mmSong_StopClick() { playback_.mmSong_StopClick(); }
    void mmEditing_PlayClick() { playback_.mmEditing_PlayClick(); }
    void mmEditing_AddClick() { playback_.mmEditing_AddClick(); }
    void mmEditing_PrevClick() { playback_.mmEditing_PrevClick(); }
    void mmEditing_NextClick() { playback_.mmEditing_NextClick(); }
    /// Clears the marks after a question; without music, stops the choreography that plays.
    void mmEditing_ClearClick();
    /// Goes to mark `index` of `lstMarks`.
    void lstMarks_DblClick(std::int32_t index) { playback_.GoToMark(index); }

    /// F9, or the left button on the readout: commits, then opens the shift panel where commands
    /// lie at the current time.
    void OpenShiftPanel();
    [[nodiscard]] const timeline::ShiftPanel& ShiftPanel() const { return shift_; }
    /// `updnShiftTime`: index 0 minutes, 1 seconds, 2 tenths; direction +1 or -1.
    void updnShiftTime_Press(int index, int direction);
    /// `cmdShift`: 0 sets, 1 cancels; both close the panel.
    void cmdShift_Click(int index);
    void StepSnippet() { playback_.StepSnippet(); }

    /// The timers, in the order in which they tick when several are due at once.
    enum TimerName : int { kControlFile, kSweeps, kPulsate, kLights, kTimerCount };
    [[nodiscard]] const fountain::Timer& TimerOf(TimerName name) const;
    /// One tick of a timer; nothing when it does not tick.
    void Tick(TimerName name);

 private:
    /// The one door for changes of what is stored. `change` makes it and says whether it did; so
    /// does the result. What happens within `change` is one step of the history, under `title` or,
    /// when that is empty, under the words for what it did.
    bool Store(Reach reach, const std::function<bool()>& change, std::string_view title = {});
    void Remember(Reach reach, const ChangeWatch& watch, std::string_view title);
    [[nodiscard]] bool MayTravel() const;
    bool Travel(const std::vector<document::Patch>& patches, std::int32_t time,
                void (History::*step)());
    [[nodiscard]] std::optional<document::Commands> PendingCommands() const;
    [[nodiscard]] std::optional<document::Patch> PendingPatch() const;
    void CommitPanel() override;
    [[nodiscard]] bool MayMove() const;
    [[nodiscard]] bool PanelEnabled() const;
    void ToggleEraseMode();
    void EraseAddresses(int first, int last);
    bool DeleteTime();
    void ToggleReset();
    void WarnOfRead();

    timeline::MusicPlayer& mmSong_;
    Prompts& prompts_;
    document::Choreography choreography_;
    std::uint64_t version_ = 0;
    History history_;
    bool storing_ = false;
    document::ReadReport lastRead_;
    document::SaveReport lastSave_;
    fountain::Fountain fountain_;
    panel::PanelState panel_;
    fountain::DisplayOptions options_;
    timeline::Timeline timeline_;
    timeline::Playback playback_;
    bool started_ = false;
    timeline::ShiftPanel shift_;
    bool eraseMode_ = false;
    bool commandStep_ = false;
    mutable std::optional<fountain::Fountain> before_;  ///< for `PendingText`, while an edit lasts
};

}  // namespace editor
