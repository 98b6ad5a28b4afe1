#pragma once

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QLabel>
#include <QMenuBar>
#include <QTimer>
#include <QWidget>
#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "editor/editor.h"
#include "editor/settings.h"
#include "sound/peaks.h"
#include "ui/control_panel.h"
#include "ui/design_form.h"
#include "ui/edit_menu.h"
#include "ui/file_select_panel.h"
#include "ui/help_desk.h"
#include "ui/mark_list.h"
#include "ui/recent_items.h"
#include "ui/shift_frame.h"
#include "ui/time_spinner.h"
#include "ui/time_strip.h"
#include "ui/timer_driver.h"
#include "ui/transport_button.h"
#include "ui/view_area.h"

namespace ui {

class MenuBarStyle;

/// The name of the program, which is the window's caption.
inline constexpr const char* kCaption = "Velmora Musical Fountain Animated Choreographer";

/// The main window. It shows the editor and hands it what the user does; nothing is kept here.
class frmFountain final : public QWidget {
    Q_OBJECT

 public:
    /// `editor` outlives the window.
    explicit frmFountain(editor::Editor& editor, QWidget* parent = nullptr);

    /// What the window remembers is in `settings`, which outlives it. To be called before it opens.
    void UseSettings(editor::SettingsStore& settings);
    /// The outline of the music comes from `peaks`, which outlives the window.
    void UsePeaks(sound::PeakReader& peaks) { peaks_ = &peaks; }

    /// Opens the window where and as it was closed, for the first time over the whole screen.
    void ShowOnScreen();

    /// The manual, empty when there is none, and where its collection is kept.
    void UseHelp(const QString& helpFile, const QString& userFolder);

    /// The music of the show is still to be opened; the status line says so.
    void SetMusicPending(bool pending);

    /// The session of the user ends: false when the user, who may be asked only if `mayAsk`, would
    /// rather go on. Otherwise the window then closes whatever plays.
    [[nodiscard]] bool EndSession(bool mayAsk);

    /// Shows the editor as it is now, and lets its timers run. Follows every event.
    void Refresh();

 signals:
    /// The window has been on the screen for the first time.
    void FirstPainted();
    /// The window shows what there is now.
    void Refreshed();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

 private:
    void BuildMenus();
    void BuildFileMenus();
    void BuildHelp();
    void BuildView();
    void BuildMarks();
    void BuildTransport();
    void BuildStatus();
    void BuildPanel();
    void BuildTimeSpinners();
    void DescribeControls();

    void FitForm();
    void PlaceControl(const FormControl& control, fountain::ScaleFactors scale);
    void PlaceView(fountain::ScaleFactors scale);
    void FillScript();
    void KeepFrameOnScreens();
    void SaveSettings();
    void PlaceMenus(fountain::ScaleFactors scale);

    QLabel* AddLabel(const char* name, Qt::Alignment alignment);
    TransportButton* AddButton(const char* name, TransportIcon icon,
                               void (editor::Editor::*handler)());
    void mnuFileAction_Click(int item);
    void mnuDisplayAction_Click(int item);
    void mnuHelpAction_Click(int item);

    [[nodiscard]] bool Covered() const;
    [[nodiscard]] bool MayDrop(const QMimeData& dragged) const;
    [[nodiscard]] bool IsOurs(const QWidget* widget) const;
    bool ActOnKey(const QKeyEvent& key, const QWidget* watched);
    bool MoveByKey(int key);
    bool MarkByKey(const QKeyEvent& key, const QWidget* watched);
    void lblTime_MouseDown(Qt::MouseButton button);
    void GoToChosen(std::int32_t time);
    void StopControlFile();
    void OpenShiftPanel();
    void FindInScript();
    void ShowTimeStrip(bool shown);
    void ShowScript(bool shown);
    bool LagsBehind(const QKeyEvent& key);
    void StepTime(int field, int direction);
    void TypeTime(int field, int value);
    void GoToTypedTime();
    void TogglePlaying();
    void Transact(const std::function<void()>& operation);
    void TransactFile(const std::function<void()>& operation);
    void Enable(QWidget* widget, bool enabled);

    void RefreshTransport();
    void RefreshMarks();
    void RefreshShift();
    void RefreshFiles();
    void RefreshStrip();
    void RefreshScript();
    void FollowMusic();
    void RefreshMenus();
    [[nodiscard]] bool MayUse(timeline::Menu menu, int item) const;
    void RefreshView();
    void RefreshTexts();
    void RefreshPanel();
    void RefreshReadout();
    void RefreshTitle();
    void ShowText(QLabel* label, const char* name, const QString& text,
                  Qt::TextElideMode cut = Qt::ElideNone);
    [[nodiscard]] QString FileProblem() const;
    [[nodiscard]] QString MusicText() const;

    editor::Editor& editor_;
    TimerDriver driver_;

    QMenuBar* mnuBar_ = nullptr;
    MenuBarStyle* menuBarStyle_ = nullptr;
    std::array<QMenu*, 3> menus_{};
    std::array<std::vector<QAction*>, 3> actions_;
    RecentItems* mnuRecent_ = nullptr;
    EditMenu* mnuEdit_ = nullptr;
    ViewArea* viewArea_ = nullptr;
    HelpDesk* help_ = nullptr;
    ViewWidget* fraView_ = nullptr;
    TimeStrip* timeStrip_ = nullptr;
    MarkList* lstMarks_ = nullptr;
    ShiftFrame* fraShift_ = nullptr;            // built when it is opened for the first time
    FileSelectPanel* fraFileSelect_ = nullptr;  // likewise
    QLabel* lblTime_ = nullptr;
    QLabel* lblABCodes_ = nullptr;
    QLabel* lblControlFile_ = nullptr;
    QLabel* lblMusic_ = nullptr;
    QLabel* lblCounts_ = nullptr;
    ControlPanel* fraControls_ = nullptr;
    QLabel* lblStored_ = nullptr;
    QLabel* lblPending_ = nullptr;
    std::array<TimeSpinner*, 3> updnTime_{};
    QWidget* cmdFocus_ = nullptr;
    std::array<TransportButton*, 4> mmSong_{};
    std::array<TransportButton*, 5> mmEditing_{};

    editor::SettingsStore* settings_ = nullptr;
    sound::PeakReader* peaks_ = nullptr;
    std::uint64_t peaksOf_ = 0;  // the opening of music that they belong to
    QTimer peaksPoll_;
    bool stripShown_ = true;

    std::optional<timeline::Transport> shownTransport_;
    std::optional<std::int32_t> chosenTime_;  // what was chosen last on the strip while it lagged
    bool movedLately_ = false;
    bool musicPending_ = false;
    bool painted_ = false;
    bool behind_ = false;  // a held key has not been answered on the screen yet
    bool pendingShown_ = false;
    QBasicTimer sessionCalledOff_;
    std::uint64_t givenUp_ = 0;      // the version of the choreography then
    QDeadlineTimer sessionEnds_{0};  // until then the window closes for the end of the session
};

}  // namespace ui
