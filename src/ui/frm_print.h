#pragma once

#include <QDialog>

class QProgressBar;
class QPushButton;

namespace ui {

/// Stands on the screen while a script is printed, and takes nothing away from the other windows.
/// Cancel, Escape and closing it clear `gblnPrint`.
class frmPrint final : public QDialog {
    Q_OBJECT

 public:
    /// Printing takes `steps` steps.
    frmPrint(const QString& document, int steps, QWidget* window);

    /// One more step is done; whatever has happened on the screen meanwhile is handled.
    void Advance();
    /// The `steps` that follow can no longer be cancelled.
    void BeginSending(int steps);

    void reject() override;

 private:
    QProgressBar* progress_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    bool sending_ = false;
};

}  // namespace ui
