#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "document/choreography.h"
#include "document/control_file.h"
#include "document/journal.h"
#include "editor/file_panel.h"
#include "editor/history.h"
#include "editor/prompts.h"
#include "editor/recent.h"
#include "editor/settings.h"
#include "editor/show_guard.h"
#include "fountain/fountain.h"
#include "fountain/scene.h"
#include "panel/panel_state.h"
#include "timeline/music_player.h"
#include "timeline/playback.h"
#include "timeline/shift.h"
#include "timeline/stepping.h"
#include "timeline/timeline.h"

namespace editor {

/// Items of the File menu, by index.
enum FileItem : int {
    kNewItem = 0,
    kOpenItem = 1,
    kSaveItem = 3,
    kSaveAsItem = 4,
    kUndoAllItem = 5,
    kPrintItem = 7,
    kExitItem = 9
};

/// Why the window closes, by the platform's numbers.
enum class UnloadMode { ControlMenu = 0, Code = 1, SessionEnds = 2, TaskManager = 3 };

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
    /// All outlive the editor. Without `settings` nothing is remembered.
    Editor(timeline::MusicPlayer& mmSong, Prompts& prompts, SettingsStore* settings = nullptr);

    /// Start-up in three steps, so that the window can be painted in between. The first restores
    /// the display options and reads the control file of the base name on the command line, or
    /// else of the show that was open last; the second opens its music; from the third on warnings
    /// are shown at once, and those that were held back now.
    void Form_Activate(const std::filesystem::path& commandLine);
    void OpenStartMusic() { OpenMusicOf(startBase_); }
    void FinishStartUp();
    /// The base name that start-up opens; empty for none.
    [[nodiscard]] const std::filesystem::path& StartBase() const { return startBase_; }

    /// Opens the control file and the music of a base name without a question. A control or music
    /// extension that was typed along is dropped; a show without files is an empty, unsaved
    /// choreography.
    void OpenShow(const std::filesystem::path& name);
    /// The two halves of `OpenShow`, for a base name without such an extension.
    void OpenControlFile(const std::filesystem::path& base);
    void OpenMusicOf(const std::filesystem::path& base);
    /// The control file alone, under its full name; an empty name gives an empty choreography.
    void ReadControlFile(const std::filesystem::path& name);
    /// The music alone, like its control file; a missing or broken one leaves the player closed.
    void OpenMusicFile(const std::filesystem::path& name);

    [[nodiscard]] const document::Choreography& Choreography() const { return choreography_; }
    /// Grows whenever what is stored may have changed, through an edit, a save that tidied it, or
    /// another choreography that was read. Who shows the choreography looks again only then.
    [[nodiscard]] std::uint64_t Version() const { return version_; }
    /// Grows with every opening of music, of the same file anew too.
    [[nodiscard]] std::uint64_t MusicVersion() const { return musicVersion_; }
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
    /// An item of the File menu, by its shortcut too. Print is left to the face: `MayPrint`.
    void mnuFileAction_Click(int item);
    /// Commits first; true when there is a script to print and the menu offers it.
    [[nodiscard]] bool MayPrint();
    /// The unsaved-changes prompt; true when the user chose not to proceed.
    [[nodiscard]] bool ConfirmDiscard();
    /// True when the window may close: not while the music plays unless the session ends, and not
    /// against the user.
    [[nodiscard]] bool Form_QueryUnload(UnloadMode mode);
    /// The window closes: all comes to rest, the settings are saved.
    void Form_Unload();
    [[nodiscard]] bool Unloaded() const { return unloaded_; }

    /// The file selection panel. While it is open nothing but its own controls and Exit can be
    /// used.
    [[nodiscard]] const FilePanel& fraFileSelect() const { return files_; }
    /// What the drive list offers from now on.
    void SetVolumes(std::vector<std::filesystem::path> volumes);
    void ShowFilePanel(FilePanelMode mode);
    void HideFilePanel();
    /// Handlers of the panel's controls; nothing while it is closed or with an index that is not
    /// there. A folder that cannot be read leaves the lists where they are.
    void cboFileSelect_Click(int index);
    void drvFileSelect_Change(int index);
    void dirFileSelect_Change(int index);
    void filFileSelect_DblClick(int index);
    void cmdFileSelect_Click(int index);
    void txtFileSelect_Change(const std::string& text);
    /// ".MP3" or ".WAV", as the filter box last said.
    [[nodiscard]] const std::string& MusicExtension() const { return musicExtension_; }

    /// The shows at the end of the File menu.
    [[nodiscard]] const RecentFiles& Recent() const { return recent_; }
    /// Opens one of them after the question that opening asks. One that is gone is told and taken
    /// from the list.
    void OpenRecent(int index);
    /// Opens a control file, which may be missing, and its music, after the questions that opening
    /// asks. False when one of them was answered against it, or the File menu is closed.
    bool OpenFile(const std::filesystem::path& controlFile);
    /// True for a name that `OpenDropped` may open: of a control or music file.
    [[nodiscard]] static bool IsShowFile(const std::filesystem::path& name);
    /// Opens the show of a file dropped on the window, after the question that opening asks; a
    /// music file is the music then. False when it is no file of a show or the File menu is closed.
    bool OpenDropped(const std::filesystem::path& name);
    /// The status line shall say `notice`, until the next file is read or saved.
    void Tell(std::string notice) { fileNotice_ = std::move(notice); }
    /// What else the status line shall say of the control file, in English; mostly empty.
    [[nodiscard]] const std::string& FileNotice() const { return fileNotice_; }

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

    /// Puts other times and commands in place of all that are stored, as one edit under `title`: a
    /// backup, or what was recovered. False while something plays or shifts, and when they are the
    /// same.
    bool Replace(const document::Choreography& show, std::string_view title);
    /// False while something plays or shifts, or a panel covers the window: then nothing can be put
    /// in place of what is stored.
    [[nodiscard]] bool MayReplace() const { return MayTravel(); }
    /// Reads the control file again, which others have changed, as one edit. What is pending is
    /// written first. False when `MayReplace` is, or there is no such file.
    bool Reload();
    /// The control file is no more what was read or saved: what is stored counts as changed.
    void KeepMine();
    /// Asks `guard`, which may be null, before files are opened and written.
    void SetGuard(ShowGuard* guard) { guard_ = guard; }
    /// From now on what is not saved is kept in `journal`, which outlives the editor.
    void SetJournal(document::Journal& journal);

    /// What leaving the time would store there, empty when the time would go; nothing when nothing
    /// is pending.
    [[nodiscard]] std::optional<document::Commands> PendingCommands() const;
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
    /// Selects mark `index` of `lstMarks`.
    void lstMarks_Click(std::int32_t index) { playback_.SelectMark(index); }
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
    [[nodiscard]] std::optional<document::Patch> PendingPatch() const;
    void NotePending();
    void NoteSaved();
    void CommitPanel() override;
    [[nodiscard]] bool MayMove() const;
    [[nodiscard]] bool PanelEnabled() const;
    void ToggleEraseMode();
    void EraseAddresses(int first, int last);
    bool DeleteTime();
    void ToggleReset();
    void WarnOfRead();

    void Read(Reach reach, const std::filesystem::path& name, std::string_view title = {});
    [[nodiscard]] bool FileItemWorks(int item);
    [[nodiscard]] bool KeepsChanges();
    [[nodiscard]] bool MayOpen(const std::filesystem::path& file);
    void New();
    void UndoAll();
    void OpenOrSave(const std::string& name);
    void SaveAs(const std::filesystem::path& path);
    void SelectFilter(int index);
    void AddToRecent(const std::filesystem::path& controlFile);

    timeline::MusicPlayer& mmSong_;
    Prompts& prompts_;
    SettingsStore* settings_;
    document::Choreography choreography_;
    std::uint64_t version_ = 0;
    std::uint64_t musicVersion_ = 0;
    History history_;
    bool storing_ = false;
    document::Journal* journal_ = nullptr;
    ShowGuard* guard_ = nullptr;
    document::ReadReport lastRead_;
    document::SaveReport lastSave_;
    fountain::Fountain fountain_;
    panel::PanelState panel_;
    fountain::DisplayOptions options_;
    timeline::Timeline timeline_;
    timeline::Playback playback_;
    std::filesystem::path startBase_;
    bool started_ = false;
    bool unloaded_ = false;
    FilePanel files_;
    std::string musicExtension_;
    RecentFiles recent_;
    std::string fileNotice_;
    timeline::ShiftPanel shift_;
    bool eraseMode_ = false;
    bool commandStep_ = false;
    mutable std::optional<fountain::Fountain> before_;  ///< for `PendingText`, while an edit lasts
};

}  // namespace editor
