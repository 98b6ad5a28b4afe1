#pragma once

#include <QDialog>
#include <QPrinter>

#include "document/choreography.h"
#include "ui/print_job.h"

class QLabel;
class QPrintPreviewWidget;
class QPushButton;
class QSpinBox;

namespace ui {

/// Pages of a script that the preview shows at the most; printed are all of them.
inline constexpr int kPreviewPages = 1000;

/// The script of a show as it will be printed, with the ways to print it. It holds up `window`
/// until it is closed, but not while it prints. It goes when the script is printed, and comes back
/// when the printing was cancelled or failed.
class PrintPreview final : public QDialog {
    Q_OBJECT

 public:
    PrintPreview(document::Choreography show, QWidget* window);

 private:
    void BuildPages();
    QLayout* BuildTools();
    QLayout* BuildButtons();
    QPushButton* AddButton(const char* name, const char* caption, const char* toolTip,
                           const QKeySequence& key);

    void PaintPages(QPrinter* printer);
    void TurnTo(int page);
    void ShowPage();
    void cmdPrint_Click();
    void cmdSavePdf_Click();
    [[nodiscard]] QString AskPdfName();
    void Finish(PrintOutcome outcome);

    document::Choreography show_;
    QPrinter paper_{QPrinter::HighResolution};
    QPrintPreviewWidget* pages_ = nullptr;
    QSpinBox* updnPage_ = nullptr;
    QPushButton* cmdPageUp_ = nullptr;
    QPushButton* cmdPageDown_ = nullptr;
};

/// File > Print: opens the preview of what `show` holds now. Nothing for an empty one, and while a
/// script is being printed.
void PrintShow(const document::Choreography& show, QWidget* window);

}  // namespace ui
