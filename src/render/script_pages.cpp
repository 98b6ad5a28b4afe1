#include "render/script_pages.h"

#include <QBuffer>
#include <QFile>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPdfWriter>
#include <QSaveFile>
#include <algorithm>
#include <system_error>
#include <utility>

namespace render {
namespace {

constexpr int kPdfResolution = 1200;  // dots per inch
constexpr double kPdfMargin = 36;     // points

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

ScriptPages::ScriptPages(QPagedPaintDevice& device) : device_(device)
{
    failed_ = !painter_.begin(&device_);
}

void ScriptPages::SetFont(std::string_view name, int size)
{
    font_ = QFont(Text(name), size);
    font_.setStyleHint(QFont::TypeWriter);
    boldFont_ = font_;
    boldFont_.setBold(true);
    const QFontMetricsF metrics(font_, &device_);
    spacing_ = std::min(metrics.lineSpacing(),
                        static_cast<double>(device_.height()) / timeline::kScriptPageLines);
    ascent_ = metrics.ascent();
    painter_.setFont(font_);
}

void ScriptPages::SetBold(bool bold)
{
    painter_.setFont(bold ? boldFont_ : font_);
}

void ScriptPages::PrintText(std::string_view text)
{
    if (!text.empty() && !failed_)
        painter_.drawText(QPointF(0, line_ * spacing_ + ascent_), Text(text));
    ++line_;
}

void ScriptPages::NewPage()
{
    failed_ = failed_ || !device_.newPage();
    line_ = 0;
}

void ScriptPages::EndDocument()
{
    failed_ = !painter_.end() || failed_;
}

void ScriptPages::AbandonDocument()
{
    painter_.end();
}

bool WriteWholeFile(const std::filesystem::path& name, const QByteArray& content)
{
    const QString text = QString::fromStdString(name.string());
    // A name that is no text would become another name.
    if (QFile::encodeName(text) != name.c_str())
        return false;
    std::error_code ignored;
    const auto kind = std::filesystem::status(name, ignored).type();
    const bool special = kind != std::filesystem::file_type::regular &&
                         kind != std::filesystem::file_type::not_found;
    if (special) {
        QFile device(text);
        return device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
               device.write(content) == content.size();
    }
    QSaveFile file(text);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}

PdfOutcome WriteScriptPdf(const document::Choreography& choreography,
                          const std::filesystem::path& name, std::string date,
                          std::function<void()> letEventsRun)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    bool sent = false;
    bool failed = false;
    {
        QPdfWriter writer(&file);
        writer.setResolution(kPdfResolution);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(kPdfMargin, kPdfMargin, kPdfMargin, kPdfMargin),
                              QPageLayout::Point);
        writer.setTitle(Text(document::ControlFileCaption(choreography)));
        ScriptPages pages(writer);
        sent = timeline::ScriptPrint(choreography, std::move(date), pages, std::move(letEventsRun))
                   .PrintScript();
        failed = pages.Failed();
    }
    if (!sent)
        return PdfOutcome::Cancelled;
    return !failed && WriteWholeFile(name, file.data()) ? PdfOutcome::Written : PdfOutcome::Failed;
}

}  // namespace render
