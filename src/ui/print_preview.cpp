#include "ui/print_preview.h"

#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <utility>

#include "render/script_pages.h"
#include "timeline/script.h"

namespace ui {
namespace {

constexpr double kMargin = 36;  // points
constexpr double kZoomStep = 1.25;
constexpr QSize kWindow(860, 1040);
constexpr double kOfScreen = 0.9;

void SetUpPaper(QPrinter& printer)
{
    printer.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Point);
}

bool HasPrinter()
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

/// Stops the printing behind the last page that the preview shows.
class FirstPages final : public timeline::Printer {
 public:
    explicit FirstPages(QPrinter& printer) : pages_(printer) {}

    void SetFont(std::string_view name, int size) override { pages_.SetFont(name, size); }
    void SetBold(bool bold) override { pages_.SetBold(bold); }
    void PrintText(std::string_view text) override
    {
        if (page_ <= kPreviewPages)
            pages_.PrintText(text);
    }
    void NewPage() override
    {
        if (++page_ <= kPreviewPages)
            pages_.NewPage();
        else
            timeline::gblnPrint = false;
    }
    void EndDocument() override { pages_.EndDocument(); }
    void AbandonDocument() override { pages_.EndDocument(); }

 private:
    render::ScriptPages pages_;
    int page_ = 1;
};

}  // namespace

PrintPreview::PrintPreview(document::Choreography show, QWidget* window)
    : QDialog(window), show_(std::move(show))
{
    setObjectName(QStringLiteral("frmPrintPreview"));
    setWindowTitle(QStringLiteral("Print Preview - %1").arg(DocumentName(show_)));
    setAccessibleName(QStringLiteral("Print preview"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);

    BuildPages();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(BuildTools());
    layout->addWidget(pages_, 1);
    layout->addLayout(BuildButtons());
    resize(kWindow.boundedTo(screen()->availableSize() * kOfScreen));
    pages_->setFocus();
}

void PrintPreview::BuildPages()
{
    paper_.setOutputFormat(QPrinter::PdfFormat);
    paper_.setPageSize(QPageSize(QPageSize::A4));
    SetUpPaper(paper_);
    pages_ = new QPrintPreviewWidget(&paper_, this);
    pages_->setObjectName(QStringLiteral("pages"));
    pages_->setAccessibleName(QStringLiteral("Pages of the script"));
    pages_->fitToWidth();
    connect(pages_, &QPrintPreviewWidget::paintRequested, this, &PrintPreview::PaintPages);
    connect(pages_, &QPrintPreviewWidget::previewChanged, this, &PrintPreview::ShowPage);
}

QPushButton* PrintPreview::AddButton(const char* name, const char* caption, const char* toolTip,
                                     const QKeySequence& key)
{
    auto* button = new QPushButton(QString::fromUtf8(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    QString tip = QString::fromLatin1(toolTip);
    button->setAccessibleName(tip);
    button->setAutoDefault(false);
    if (!key.isEmpty()) {
        button->setShortcut(key);
        tip += QStringLiteral(" (%1)").arg(key.toString(QKeySequence::NativeText));
    }
    button->setToolTip(tip);
    return button;
}

QLayout* PrintPreview::BuildTools()
{
    cmdPageUp_ = AddButton("cmdPageUp", "Previous", "Previous page", Qt::Key_PageUp);
    cmdPageDown_ = AddButton("cmdPageDown", "Next", "Next page", Qt::Key_PageDown);
    updnPage_ = new QSpinBox(this);
    updnPage_->setObjectName(QStringLiteral("updnPage"));
    updnPage_->setAccessibleName(QStringLiteral("Page"));
    updnPage_->setToolTip(QStringLiteral("The page that is shown"));
    updnPage_->setKeyboardTracking(false);
    auto* zoomIn = AddButton("cmdZoomIn", "Zoom In", "Show the page larger", QKeySequence::ZoomIn);
    auto* zoomOut =
        AddButton("cmdZoomOut", "Zoom Out", "Show the page smaller", QKeySequence::ZoomOut);
    auto* fitWidth = AddButton("cmdFitWidth", "Fit Width", "Show the page as wide as the window",
                               QKeySequence(Qt::CTRL | Qt::Key_1));
    auto* fitPage = AddButton("cmdFitPage", "Fit Page", "Show the whole page",
                              QKeySequence(Qt::CTRL | Qt::Key_0));

    connect(cmdPageUp_, &QPushButton::clicked, this, [this] { TurnTo(updnPage_->value() - 1); });
    connect(cmdPageDown_, &QPushButton::clicked, this, [this] { TurnTo(updnPage_->value() + 1); });
    connect(updnPage_, &QSpinBox::valueChanged, this, &PrintPreview::TurnTo);
    connect(zoomIn, &QPushButton::clicked, this, [this] { pages_->zoomIn(kZoomStep); });
    connect(zoomOut, &QPushButton::clicked, this, [this] { pages_->zoomOut(kZoomStep); });
    connect(fitWidth, &QPushButton::clicked, pages_, &QPrintPreviewWidget::fitToWidth);
    connect(fitPage, &QPushButton::clicked, pages_, &QPrintPreviewWidget::fitInView);

    auto* tools = new QHBoxLayout;
    for (QWidget* widget : {static_cast<QWidget*>(cmdPageUp_), static_cast<QWidget*>(updnPage_),
                            static_cast<QWidget*>(cmdPageDown_)})
        tools->addWidget(widget);
    tools->addStretch(1);
    for (QWidget* widget : {zoomOut, zoomIn, fitWidth, fitPage})
        tools->addWidget(widget);
    return tools;
}

QLayout* PrintPreview::BuildButtons()
{
    const bool printer = HasPrinter();
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const int count = ScriptPageCount(show_);
    QStringList notes;
    if (count > kPreviewPages)
        notes << QStringLiteral("The first %1 of %2 pages; all of them are printed.")
                     .arg(english.toString(kPreviewPages), english.toString(count));
    if (!printer)
        notes << QStringLiteral("No printer is set up here: save the script as a PDF file.");
    auto* lblNote = new QLabel(notes.join(QLatin1Char('\n')), this);
    lblNote->setObjectName(QStringLiteral("lblNote"));
    lblNote->setAccessibleName(QStringLiteral("Note"));
    lblNote->setWordWrap(true);

    auto* savePdf = AddButton("cmdSavePdf", "&Save as PDF...", "Save the script as a PDF file",
                              QKeySequence::Save);
    auto* print =
        AddButton("cmdPrint", "&Print...", "Choose a printer and print", QKeySequence::Print);
    auto* close = AddButton("cmdClose", "&Close", "Close without printing", {});
    print->setEnabled(printer);
    (printer ? print : savePdf)->setDefault(true);
    connect(savePdf, &QPushButton::clicked, this, &PrintPreview::cmdSavePdf_Click);
    connect(print, &QPushButton::clicked, this, &PrintPreview::cmdPrint_Click);
    connect(close, &QPushButton::clicked, this, &PrintPreview::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lblNote, 1);
    for (QWidget* widget : {savePdf, print, close})
        buttons->addWidget(widget);
    return buttons;
}

void PrintPreview::PaintPages(QPrinter* printer)
{
    FirstPages pages(*printer);
    const bool whole = timeline::ScriptPrint(show_, ScriptDateOfNow(), pages, [] {}).PrintScript();
    Q_ASSERT(whole == (ScriptPageCount(show_) <= kPreviewPages));
}

void PrintPreview::TurnTo(int page)
{
    pages_->setCurrentPage(page);
    ShowPage();
}

void PrintPreview::ShowPage()
{
    const int count = pages_->pageCount();
    const QSignalBlocker quiet(updnPage_);
    updnPage_->setRange(1, count);
    updnPage_->setSuffix(QStringLiteral(" of %1").arg(count));
    updnPage_->setValue(pages_->currentPage());
    cmdPageUp_->setEnabled(pages_->currentPage() > 1);
    cmdPageDown_->setEnabled(pages_->currentPage() < count);
}

void PrintPreview::cmdPrint_Click()
{
    QPrinter printer(QPrinter::HighResolution);
    SetUpPaper(printer);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(QStringLiteral("Print"));
    // A file has its own button, whose file is either whole or not there.
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
    dialog.setMinMax(1, ScriptPageCount(show_));
    if (dialog.exec() != QDialog::Accepted)
        return;
    hide();
    const QPointer<PrintPreview> self(this);
    const PrintOutcome outcome = PrintToPrinter(show_, printer, parentWidget());
    if (self != nullptr)
        Finish(outcome);
}

void PrintPreview::cmdSavePdf_Click()
{
    const QString name = AskPdfName();
    if (name.isEmpty())
        return;
    hide();
    const QPointer<PrintPreview> self(this);
    const PrintOutcome outcome = PrintToPdf(show_, name, parentWidget());
    if (self != nullptr)
        Finish(outcome);
}

QString PrintPreview::AskPdfName()
{
    const QString suffix = QStringLiteral(".pdf");
    const QString suggested = SuggestedPdfName(show_);
    QFileDialog dialog(this, QStringLiteral("Save as PDF"), QFileInfo(suggested).absolutePath(),
                       QStringLiteral("PDF files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(suggested);
    while (dialog.exec() == QDialog::Accepted) {
        QString name = dialog.selectedFiles().value(0);
        if (name.endsWith(suffix, Qt::CaseInsensitive))
            return name;
        // A control file that was named by mistake is not written over; a PDF only when asked.
        name += suffix;
        if (!QFile::exists(name))
            return name;
        dialog.selectFile(name);
    }
    return {};
}

void PrintPreview::Finish(PrintOutcome outcome)
{
    const QWidget* window = parentWidget();
    if (outcome == PrintOutcome::Printed || (window != nullptr && !window->isVisible()))
        done(outcome == PrintOutcome::Printed ? Accepted : Rejected);
    else
        open();
}

void PrintShow(const document::Choreography& show, QWidget* window)
{
    if (show.lngLastSlot() == 0 || timeline::gblnPrint)
        return;
    (new PrintPreview(show, window))->open();
}

}  // namespace ui
