#pragma once

#include <QByteArray>
#include <QFont>
#include <QPainter>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "document/choreography.h"
#include "timeline/script.h"

class QPagedPaintDevice;

namespace render {

/// Prints a script on the pages of a device: a printer, a PDF file, a preview. 66 lines fit the
/// printable height of any page. Needs a QGuiApplication for the font.
class ScriptPages final : public timeline::Printer {
 public:
    /// `device` outlives the pages; painting on it begins and ends here.
    explicit ScriptPages(QPagedPaintDevice& device);

    [[nodiscard]] bool Failed() const { return failed_; }

    void SetFont(std::string_view name, int size) override;
    void SetBold(bool bold) override;
    void PrintText(std::string_view text) override;
    void NewPage() override;
    void EndDocument() override;
    void AbandonDocument() override;

 private:
    QPagedPaintDevice& device_;
    QPainter painter_;
    QFont font_;
    QFont boldFont_;
    double spacing_ = 0;
    double ascent_ = 0;
    int line_ = 0;
    bool failed_ = false;
};

/// Writes a file that appears under its name only when it is whole; false when it could not be
/// written. A device or a pipe is written to, never replaced.
[[nodiscard]] bool WriteWholeFile(const std::filesystem::path& name, const QByteArray& content);

enum class PdfOutcome { Written, Cancelled, Failed };

/// Prints the script into a PDF file of A4 pages, which appears under its name only when it is
/// whole. `date` and `letEventsRun` are those of `timeline::ScriptPrint`.
PdfOutcome WriteScriptPdf(const document::Choreography& choreography,
                          const std::filesystem::path& name, std::string date,
                          std::function<void()> letEventsRun);

}  // namespace render
