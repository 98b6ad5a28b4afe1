#pragma once

#include <QMainWindow>

#include "fountain/scene_layout.h"
#include "ui/legends_frame.h"
#include "ui/script_view.h"
#include "ui/view_widget.h"
#include "ui/window_place.h"

class QDockWidget;

namespace ui {

/// The row of the view: the fountain with its legends, and the script docked at a side of it or
/// floating. A part of the window, although it has docks.
class ViewArea final : public QMainWindow {
    Q_OBJECT

 public:
    explicit ViewArea(QWidget* parent);

    [[nodiscard]] ViewWidget* View() { return fraView_; }
    [[nodiscard]] LegendsFrame* Legends() { return fraLegends_; }
    /// Null until the script is shown for the first time.
    [[nodiscard]] ScriptView* Script() { return scriptView_; }
    [[nodiscard]] QDockWidget* Dock() { return dock_; }
    /// The script's own window where it floats, else null.
    [[nodiscard]] const QWidget* FloatingScript() const;

    void Fit(fountain::ScaleFactors scale);
    void ShowLegends(bool shown);

    void ShowScript(bool shown);
    [[nodiscard]] bool ScriptShown() const;
    /// Where the script is, or will be when it is shown.
    [[nodiscard]] DockPlace ScriptPlace() const;
    /// To be called before the script is shown for the first time.
    void SetScriptPlace(const DockPlace& place) { place_ = place; }

 signals:
    /// The view was fitted to another size, in which its scene is to be built.
    void ViewFitted();
    /// There is a script to be filled now.
    void ScriptBuilt();
    /// The user has closed the script at its dock.
    void ScriptClosed();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void BuildDock();
    void PlaceDock();
    void Arrange();

    QWidget* center_ = nullptr;
    ViewWidget* fraView_ = nullptr;
    LegendsFrame* fraLegends_ = nullptr;
    QDockWidget* dock_ = nullptr;
    ScriptView* scriptView_ = nullptr;
    fountain::ScaleFactors scale_;
    DockPlace place_;
    bool legends_ = false;
};

}  // namespace ui
