#include "ui/print_job.h"

#include <QDateTime>
#include <QDir>
#include <QEventLoopLocker>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrinter>
#include <QStandardPaths>
#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "document/command_list.h"
#include "render/script_pages.h"
#include "timeline/script.h"
#include "ui/dialog_look.h"
#include "ui/frm_print.h"

namespace ui {
namespace {

void Tell(QWidget* window, const QString& text)
{
    QMessageBox box(QMessageBox::Warning,
                    window != nullptr ? window->window()->windowTitle() : QString(), text,
                    QMessageBox::Ok, window);
    box.setTextFormat(Qt::PlainText);
    box.setFont(DialogFont(window));
    box.exec();
}

/// Keeps the pages as text.
class KeptPages final : public timeline::Printer {
 public:
    struct Line {
        std::string text;
        bool bold = false;
    };
    using Page = std::vector<Line>;

    [[nodiscard]] const std::vector<Page>& Pages() const { return pages_; }
    [[nodiscard]] const std::string& FontName() const { return fontName_; }
    [[nodiscard]] int FontSize() const { return fontSize_; }

    void SetFont(std::string_view name, int size) override
    {
        fontName_ = name;
        fontSize_ = size;
    }
    void SetBold(bool bold) override { bold_ = bold; }
    void PrintText(std::string_view text) override
    {
        pages_.back().push_back({std::string(text), bold_});
    }
    void NewPage() override { pages_.emplace_back(); }
    void EndDocument() override {}
    void AbandonDocument() override { pages_.clear(); }

 private:
    std::vector<Page> pages_{Page{}};
    std::string fontName_;
    int fontSize_ = 0;
    bool bold_ = false;
};

/// The part of the pages that the printer is set to.
std::span<const KeptPages::Page> Chosen(const std::vector<KeptPages::Page>& pages,
                                        const QPrinter& printer)
{
    if (printer.printRange() != QPrinter::PageRange || printer.fromPage() == 0)
        return pages;
    const auto count = static_cast<int>(pages.size());
    const int first = std::clamp(printer.fromPage(), 1, count);
    const int last = std::clamp(printer.toPage(), first, count);
    return std::span(pages).subspan(static_cast<std::size_t>(first - 1),
                                    static_cast<std::size_t>(last - first + 1));
}

/// False when the printer failed.
bool Send(const KeptPages& kept, QPrinter& printer, frmPrint& form)
{
    const std::span<const KeptPages::Page> chosen = Chosen(kept.Pages(), printer);
    form.BeginSending(static_cast<int>(chosen.size()) * timeline::kScriptPageLines);
    render::ScriptPages pages(printer);
    pages.SetFont(kept.FontName(), kept.FontSize());
    bool first = true;
    for (const KeptPages::Page& page : chosen) {
        if (!std::exchange(first, false))
            pages.NewPage();
        for (const KeptPages::Line& line : page) {
            pages.SetBold(line.bold);
            pages.PrintText(line.text);
            form.Advance();
        }
    }
    pages.EndDocument();
    return !pages.Failed();
}

}  // namespace

PrintOutcome PrintToPdf(const document::Choreography& asked, const QString& name, QWidget* window)
{
    if (timeline::gblnPrint)
        return PrintOutcome::Cancelled;
    const document::Choreography show = asked;  // which may change, or go, with any event
    const QEventLoopLocker programStays;
    render::PdfOutcome outcome{};
    {
        frmPrint form(DocumentName(show), document::CommandTotal(show), window);
        form.show();
        outcome = render::WriteScriptPdf(show, name.toStdString(), ScriptDateOfNow(),
                                         [&form] { form.Advance(); });
    }
    if (outcome == render::PdfOutcome::Failed)
        Tell(window, QStringLiteral("The script could not be saved as\n%1\n\nIs there such a "
                                    "folder, may you write to it, and is there room on the disk?")
                         .arg(QDir::toNativeSeparators(name)));
    switch (outcome) {
        case render::PdfOutcome::Written:
            return PrintOutcome::Printed;
        case render::PdfOutcome::Cancelled:
            return PrintOutcome::Cancelled;
        case render::PdfOutcome::Failed:
            break;
    }
    return PrintOutcome::Failed;
}

PrintOutcome PrintToPrinter(const document::Choreography& asked, QPrinter& printer, QWidget* window)
{
    if (timeline::gblnPrint)
        return PrintOutcome::Cancelled;
    const document::Choreography show = asked;  // which may change, or go, with any event
    const QEventLoopLocker programStays;
    printer.setDocName(DocumentName(show));
    bool sent = false;
    {
        frmPrint form(DocumentName(show), document::CommandTotal(show), window);
        form.show();
        KeptPages kept;
        timeline::ScriptPrint print(show, ScriptDateOfNow(), kept, [&form] { form.Advance(); });
        if (!print.PrintScript())
            return PrintOutcome::Cancelled;
        timeline::gblnPrint = true;
        sent = Send(kept, printer, form);
        timeline::gblnPrint = false;
    }
    if (sent)
        return PrintOutcome::Printed;
    Tell(window, QStringLiteral("The script of %1 could not be printed on %2.")
                     .arg(DocumentName(show), printer.printerName()));
    return PrintOutcome::Failed;
}

QString DocumentName(const document::Choreography& show)
{
    const std::string file = show.fileName.filename().string();
    return QString::fromStdString(file.empty() ? document::ControlFileCaption(show) : file);
}

QString SuggestedPdfName(const document::Choreography& show)
{
    const QString file = QString::fromStdString(show.fileName.string());
    const QFileInfo control(file);
    if (file.isEmpty() || control.completeBaseName().isEmpty())
        return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
            .filePath(QStringLiteral("Script.pdf"));
    return control.absoluteDir().filePath(control.completeBaseName() + QStringLiteral(".pdf"));
}

std::string ScriptDateOfNow()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return timeline::ScriptDate(date.year(), date.month(), date.day(), time.hour(), time.minute(),
                                time.second());
}

int ScriptPageCount(const document::Choreography& show)
{
    constexpr int kLines = timeline::kScriptPageLines - timeline::kScriptHeaderLines;
    return (document::CommandTotal(show) + show.lngLastSlot()) / kLines + 1;
}

}  // namespace ui
