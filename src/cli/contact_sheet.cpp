#include "cli/contact_sheet.h"

#include <QFont>
#include <QPainter>
#include <algorithm>

#include "editor/virtual_clock.h"
#include "fountain/scene_layout.h"
#include "render/scene_painter.h"

namespace cli {
namespace {

constexpr int kColumns = 4;
constexpr int kRows = 3;
constexpr int kMoments = kColumns * kRows;
constexpr int kFrameWidth = 512;  // half the design size
constexpr int kFrameHeight = 186;
constexpr int kCaptionHeight = 24;
constexpr int kGap = 8;
constexpr int kCellWidth = kFrameWidth + kGap;
constexpr int kCellHeight = kFrameHeight + kCaptionHeight + kGap;

constexpr QColor kPaper(32, 34, 40);
constexpr QColor kInk(232, 232, 232);

struct View {
    fountain::SceneLayout layout =
        fountain::Fitted(fountain::DesignLayout(), fountain::ScaleFactors{0.5, 0.5});
    fountain::Measures measures = fountain::Measure(layout);
    render::SceneCache cache;
};

void PaintMoment(QPainter& painter, const editor::Editor& editor, View& view, int moment)
{
    painter.save();
    const QPoint cell(moment % kColumns * kCellWidth, moment / kColumns * kCellHeight);
    painter.translate(QPoint(kGap, kGap) + cell);
    render::PaintScene(painter, editor.BuildScene(view.layout, view.measures), view.cache);
    painter.setPen(kInk);
    painter.drawText(QRect(0, kFrameHeight, kFrameWidth, kCaptionHeight), Qt::AlignCenter,
                     QString::fromStdString(editor.Timeline().lblTime()));
    painter.restore();
}

}  // namespace

QImage ContactSheet(editor::Editor& editor)
{
    QImage sheet(kGap + kColumns * kCellWidth, kGap + kRows * kCellHeight, QImage::Format_RGB32);
    sheet.fill(kPaper);
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(15);
    painter.setFont(font);

    View view;
    editor::VirtualClock clock(editor);
    const std::int32_t length = editor.ShowLength();
    for (int moment = 0; moment < kMoments; ++moment) {
        const auto due = static_cast<std::int32_t>(std::int64_t{length} * moment / (kMoments - 1));
        if (due > editor.Timeline().CurrentTime())
            clock.PlayUpTo(due);
        PaintMoment(painter, editor, view, moment);
    }
    return sheet;
}

}  // namespace cli
