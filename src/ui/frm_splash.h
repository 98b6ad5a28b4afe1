#pragma once

#include <QDialog>
#include <QString>
#include <QTimer>

#include "render/scene_painter.h"

class QLabel;
class QPushButton;

namespace ui {

/// How long the splash stays when nobody clicks, in ms.
inline constexpr int kSplashTime = 5'000;

/// "Version 3.81", with " Revision n" where there is one.
[[nodiscard]] QString VersionText(int major, int minor, int revision);

/// What stands in `lblCredits`: the legal notice, what the program is, and who painted the picture.
[[nodiscard]] QString CreditsText();

/// The start-up screen, and the About box of the Help menu: `tmrSplash` has interval 0 in the box,
/// which then shows its button and stays. Deletes itself when it is closed.
class frmSplash final : public QDialog {
    Q_OBJECT

 public:
    explicit frmSplash(QWidget* window);

    /// Shows the start-up screen, lets the program go on behind it and returns at once. What the
    /// user does to the main window meanwhile only closes it.
    void ShowAtStartUp();
    /// Shows the About box.
    void ShowAbout();

 signals:
    /// It is on the screen for the first time, or has gone without that.
    void Shown();

 protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    QLabel* AddLabel(const char* name, const QString& text, int pixels);
    void BuildTexts();
    void BuildButton();
    [[nodiscard]] bool AtStartUp() const { return tmrSplash_.interval() != 0; }

    QTimer tmrSplash_;
    QPushButton* cmdOK_ = nullptr;
    render::SceneCache cache_;
    bool shown_ = false;
};

}  // namespace ui
