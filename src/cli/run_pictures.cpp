// The subcommands that paint: frame, and the script as pages.
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "cli/offscreen.h"
#include "cli/run.h"
#include "cli/show.h"
#include "render/scene_painter.h"
#include "render/script_pages.h"
#include "timeline/script.h"

namespace cli {
namespace {

std::string DateNow()
{
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    return timeline::ScriptDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                local.tm_hour, local.tm_min, local.tm_sec);
}

// A picture or pages in the place of the show that they are made of would be its end.
bool IsTheShow(const document::Choreography& choreography, const std::string& out)
{
    std::error_code ignored;
    return std::filesystem::equivalent(choreography.fileName, out, ignored);
}

QImage Frame(const editor::Editor& editor, Size size)
{
    const fountain::SceneLayout& design = fountain::DesignLayout();
    const double unitWidth = size.width * double{fountain::kUnitsPerPixel};
    const double unitHeight = size.height * double{fountain::kUnitsPerPixel};
    const fountain::SceneLayout layout = fountain::Fitted(
        design, {unitWidth / design.fraView.width, unitHeight / design.fraView.height});

    QImage frame(size.width, size.height, QImage::Format_RGB32);
    if (frame.isNull())
        return frame;
    frame.fill(Qt::black);
    QPainter painter(&frame);
    render::SceneCache cache;
    render::PaintScene(painter, editor.BuildScene(layout, fountain::Measure(layout)), cache);
    return frame;
}

}  // namespace

int RunScript(const std::string& file, const std::string& pdf, int argc, char** argv)
{
    document::Choreography choreography;
    if (const std::string error = ReadChoreography(choreography, file); !error.empty())
        return Fail(error);
    if (pdf.empty()) {
        Print(timeline::ScriptText(choreography));
        return Finished(kSuccess);
    }
    if (IsTheShow(choreography, pdf))
        return Fail(pdf + ": expected another file than the show itself");
    const Offscreen offscreen(argc, argv);
    if (render::WriteScriptPdf(choreography, pdf, DateNow(), [] {}) != render::PdfOutcome::Written)
        return Fail(pdf + ": cannot be written");
    return kSuccess;
}

int RunFrame(const std::string& file, std::int32_t time, const std::string& out, Size size,
             int argc, char** argv)
{
    Show show;
    if (const std::string error = show.Open(file, Saving::Never); !error.empty())
        return Fail(error);
    if (IsTheShow(show.Editor().Choreography(), out))
        return Fail(out + ": expected another file than the show itself");
    show.Editor().MoveTo(time);
    const Offscreen offscreen(argc, argv);
    QBuffer png;
    if (!Frame(show.Editor(), size).save(&png, "PNG"))
        return Fail("a picture of this size does not fit the memory");
    if (!render::WriteWholeFile(out, png.data()))
        return Fail(out + ": cannot be written");
    return kSuccess;
}

}  // namespace cli
