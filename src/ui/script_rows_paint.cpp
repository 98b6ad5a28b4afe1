#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <algorithm>

#include "ui/design_form.h"
#include "ui/script_rows.h"

namespace ui {
namespace {

constexpr QColor kInk(24, 24, 32);
constexpr QColor kSoftInk(98, 100, 112);  // codes, and what the filter does not ask for
constexpr QColor kSeparator(226, 227, 232);
constexpr QColor kMarkGround(220, 230, 252);
constexpr QColor kMark(48, 84, 168);
constexpr QColor kSelected(92, 98, 120);

struct FindingColors {
    QColor ground;
    QColor ink;
    QColor sign;
};
constexpr FindingColors kProblem{QColor(255, 233, 230), QColor(140, 16, 16), QColor(196, 32, 32)};
constexpr FindingColors kWarning{QColor(255, 245, 214), QColor(104, 66, 0), QColor(176, 112, 0)};

constexpr int kBar = 4;  // at the left edge of the marked row
constexpr int kMargin = kBar + 4;
constexpr double kLineHeight = 1.25;  // of the letters'
constexpr int kLeastLetters = 36;     // of a sentence; the codes give way to them

using Kind = timeline::ScriptLine::Kind;

// Shape and color both tell them apart.
void PaintSign(QPainter& painter, Kind kind, const QRectF& place)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kind == Kind::Problem ? kProblem.sign : kWarning.sign);
    if (kind == Kind::Problem)
        painter.drawEllipse(place);
    else
        painter.drawPolygon(QPolygonF{QPointF(place.center().x(), place.top()), place.bottomRight(),
                                      place.bottomLeft()});
    const double thick = place.width() * 0.14;
    const double x = place.center().x() - thick / 2;
    const double top = place.top() + place.height() * (kind == Kind::Problem ? 0.20 : 0.34);
    const double dot = place.top() + place.height() * (kind == Kind::Problem ? 0.68 : 0.78);
    painter.fillRect(QRectF(x, top, thick, dot - top - thick), Qt::white);
    painter.fillRect(QRectF(x, dot, thick, thick), Qt::white);
    painter.restore();
}

}  // namespace

void ScriptRows::Measure()
{
    columns_.bold = font();
    columns_.bold.setBold(true);
    columns_.codesFont = CodesFont();
    columns_.codesFont.setPixelSize(std::max(1, QFontInfo(font()).pixelSize() * 9 / 10));
    const QFontMetrics plain(font());
    const QFontMetrics bold(columns_.bold);
    const QFontMetrics codes(columns_.codesFont);
    const int gap = plain.horizontalAdvance(QLatin1Char('n'));
    columns_.line = std::max(1, static_cast<int>(plain.height() * kLineHeight));
    columns_.time = kMargin;
    columns_.codes = columns_.time + bold.horizontalAdvance(QStringLiteral("00:00.0")) + gap;
    columns_.text = columns_.codes + codes.horizontalAdvance(QStringLiteral("000-000")) + gap;
    columns_.showsCodes =
        viewport()->width() >= columns_.text + plain.averageCharWidth() * kLeastLetters;
    if (!columns_.showsCodes)
        columns_.text = columns_.codes;
}

const QFont& ScriptRows::FontOf(const timeline::ScriptLine& line) const
{
    return line.surplus ? columns_.bold : font();
}

// Of a line that lies in `rect`.
QRect ScriptRows::TextRect(const timeline::ScriptLine& line, const QRect& rect) const
{
    const int left = line.kind == Kind::Command ? columns_.text : columns_.codes + columns_.line;
    return rect.adjusted(left, 0, -kMargin / 2, 0);
}

void ScriptRows::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), Qt::white);
    if (list_.RowCount() == 0)
        return PaintEmpty(painter);
    const std::vector<int>& starts = Starts();
    const int top = verticalScrollBar()->value();
    const int begin = top + event->rect().top() / columns_.line;
    const int end = std::min(starts.back(), top + event->rect().bottom() / columns_.line + 1);
    int row = std::max(0, RowAtLine(begin));
    for (int line = begin; line < end; ++row) {
        const auto at = static_cast<std::size_t>(row);
        const int rowEnd = std::min(starts[at + 1], end);
        // A whole row at least from the top of the view on, where its time stands.
        const int first = std::max(starts[at], top);
        PaintRow(painter, {row, first - starts[at],
                           QRect(0, (first - top) * columns_.line, viewport()->width(),
                                 (rowEnd - first) * columns_.line)});
        line = rowEnd;
    }
    PaintMark(painter);
}

void ScriptRows::PaintEmpty(QPainter& painter) const
{
    painter.setPen(kSoftInk);
    const int margin = columns_.line;
    painter.drawText(viewport()->rect().adjusted(margin, 2 * margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

void ScriptRows::PaintRow(QPainter& painter, const RowInView& view) const
{
    const bool marked = mark_.on && mark_.row == view.row;
    if (marked)
        painter.fillRect(view.rect, kMarkGround);
    const int height = columns_.line;
    QRect rect(0, view.rect.top(), view.rect.width(), height);
    for (const timeline::ScriptLine& line :
         list_.Lines(view.row, view.first, view.rect.height() / height)) {
        PaintLine(painter, line, rect);
        rect.translate(0, height);
    }
    painter.setFont(columns_.bold);
    painter.setPen(marked ? kMark : kInk);
    const QModelIndex index = model()->index(view.row, 0);
    painter.drawText(QRect(columns_.time, view.rect.top(), columns_.codes, height),
                     Qt::AlignLeft | Qt::AlignVCenter, index.data().toString());
    if (view.first == 0)
        painter.fillRect(QRect(0, view.rect.top(), view.rect.width(), 1), kSeparator);
    if (marked)
        painter.fillRect(QRect(0, view.rect.top(), kBar, view.rect.height()), kMark);
    if (!selectionModel()->isSelected(index) || !hasFocus())
        return;
    painter.setPen(QPen(kSelected, 1, Qt::SolidLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(visualRect(index).adjusted(0, 0, -1, -1));
}

void ScriptRows::PaintLine(QPainter& painter, const timeline::ScriptLine& line,
                           const QRect& rect) const
{
    if (line.kind != Kind::Command)
        return PaintFinding(painter, line, rect);
    constexpr int kFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine;
    if (columns_.showsCodes) {
        painter.setFont(columns_.codesFont);
        painter.setPen(kSoftInk);
        painter.drawText(rect.adjusted(columns_.codes, 0, 0, 0), kFlags,
                         QString::fromStdString(line.codes));
    }
    const QFont& font = FontOf(line);
    const QRect place = TextRect(line, rect);
    painter.setFont(font);
    painter.setPen(line.named ? kInk : kSoftInk);
    // A sentence ends in what matters most, the level.
    painter.drawText(place, kFlags,
                     QFontMetrics(font).elidedText(QString::fromStdString(line.text),
                                                   Qt::ElideMiddle, place.width()));
}

void ScriptRows::PaintFinding(QPainter& painter, const timeline::ScriptLine& line,
                              const QRect& rect) const
{
    const FindingColors& colors = line.kind == Kind::Problem ? kProblem : kWarning;
    painter.fillRect(rect.adjusted(columns_.codes - 3, 1, 0, 0), colors.ground);
    const double size = columns_.line * 0.68;
    PaintSign(painter, line.kind,
              {columns_.codes + 0.0, rect.top() + (columns_.line - size) / 2 + 0.5, size, size});
    const QRect place = TextRect(line, rect);
    painter.setFont(font());
    painter.setPen(colors.ink);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font()).elidedText(QString::fromStdString(line.text),
                                                     Qt::ElideRight, place.width()));
}

// Between two times the show stands on the line between them.
void ScriptRows::PaintMark(QPainter& painter) const
{
    if (mark_.on || mark_.row >= list_.RowCount())
        return;
    const int line =
        Starts()[static_cast<std::size_t>(mark_.row + 1)] - verticalScrollBar()->value();
    if (line < 0 || line > LinesInView() + 1)
        return;
    const int y = line * columns_.line;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kMark);
    painter.drawRect(QRectF(0, y - 1, viewport()->width(), 2));
    const double half = columns_.line * 0.25;
    painter.drawPolygon(
        QPolygonF{QPointF(0, y - half), QPointF(half * 1.4, y), QPointF(0, y + half)});
}

}  // namespace ui
