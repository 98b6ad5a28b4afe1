#pragma once

#include <QLabel>
#include <QMenuBar>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "editor/editor.h"
#include "ui/control_panel.h"
#include "ui/design_form.h"
#include "ui/legends_frame.h"
#include "ui/position_bar.h"
#include "ui/time_spinner.h"
#include "ui/timer_driver.h"
#include "ui/transport_button.h"
#include "ui/view_widget.h"

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

    /// Opens the window over the whole screen.
    void ShowOnScreen();

    /// The music of the show is still to be opened; the status line says so.
    void SetMusicPending(bool pending);

    /// Shows the editor as it is now, and lets its timers run. Follows every event.
    void Refresh();

 signals:
    /// The window has been on the screen for the first time.
    void FirstPainted();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    void BuildMenus();
    void BuildView();
    void BuildTransport();
    void BuildStatus();
    void BuildPanel();
    void BuildTimeSpinners();
    void DescribeControls();

    void FitForm();
    void PlaceView(fountain::ScaleFactors scale);
    void PlaceMenus(fountain::ScaleFactors scale);

    QLabel* AddLabel(const char* name, Qt::Alignment alignment);
    TransportButton* AddButton(const char* name, TransportIcon icon,
                               void (editor::Editor::*handler)());
    void mnuFileAction_Click(int item);
    void mnuDisplayAction_Click(int item);

    bool MoveByKey(int key);
    bool LagsBehind(const QKeyEvent& key);
    void StepTime(int field, int direction);
    void TypeTime(int field, int value);
    void GoToTypedTime();
    void TogglePlaying();
    void Transact(const std::function<void()>& operation);
    void Enable(QWidget* widget, bool enabled);

    void RefreshTransport();
    void RefreshMenus();
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
    ViewWidget* fraView_ = nullptr;
    LegendsFrame* fraLegends_ = nullptr;
    PositionBar* positionBar_ = nullptr;
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

    std::optional<timeline::Transport> shownTransport_;
    bool musicPending_ = false;
    bool painted_ = false;
    bool behind_ = false;  // a held key has not been answered on the screen yet
    bool pendingShown_ = false;
};

}  // namespace ui
