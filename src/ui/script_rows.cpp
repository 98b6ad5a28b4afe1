#include "ui/script_rows.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace ui {
namespace {

constexpr int kBeforeMark = 5;  // what stands ahead of the mark takes one part in so many

}  // namespace

ScriptRows::ScriptRows(ScriptModel& model, QWidget* parent) : QListView(parent), list_(model.List())
{
    setModel(&model);
    setSelectionMode(SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAutoScroll(false);  // a row that is pressed stays under the pointer
    setUniformItemSizes(true);
    verticalScrollBar()->setSingleStep(1);
    connect(verticalScrollBar(), &QAbstractSlider::actionTriggered, this,
            [this] { emit MovedByHand(); });
    connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, &ScriptRows::HoldTop);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &ScriptRows::doItemsLayout);
    Measure();
}

void ScriptRows::SetMark(Mark mark)
{
    if (mark == mark_)
        return;
    UpdateMark();
    mark_ = mark;
    UpdateMark();
}

// The line between two times lies half in each of them.
void ScriptRows::UpdateMark()
{
    const QModelIndex index = model()->index(mark_.row, 0);
    const QRect rect = index.isValid() ? visualRect(index) : QRect(0, 0, viewport()->width(), 0);
    viewport()->update(rect.adjusted(0, -columns_.line / 2, 0, columns_.line / 2));
}

bool ScriptRows::ShowsMark() const
{
    const std::vector<int>& starts = Starts();
    const int top = verticalScrollBar()->value();
    const auto row = static_cast<std::size_t>(std::max(mark_.row, 0));
    if (row + 1 >= starts.size())
        return true;
    const int end = std::min(starts[row + 1], starts[row] + LinesInView());
    return starts[row] >= top && end <= top + LinesInView();
}

void ScriptRows::RevealMark(bool turnPage)
{
    if (ShowsMark())
        return;
    const int row = std::max(mark_.row, 0);
    const int line = Starts()[static_cast<std::size_t>(row)];
    const int inView = line - verticalScrollBar()->value();
    if (!turnPage && inView >= 0 && inView < LinesInView())
        scrollTo(model()->index(row, 0));
    else
        verticalScrollBar()->setValue(line - LinesInView() / kBeforeMark);
}

std::pair<int, int> ScriptRows::Top() const
{
    const int top = verticalScrollBar()->value();
    const int row = std::min(RowAtLine(top), list_.RowCount() - 1);
    return {row, row < 0 ? 0 : top - Starts()[static_cast<std::size_t>(row)]};
}

void ScriptRows::SetTop(int row, int line)
{
    if (row >= 0 && row < list_.RowCount())
        verticalScrollBar()->setValue(Starts()[static_cast<std::size_t>(row)] + line);
}

void ScriptRows::SetEmptyText(const QString& text)
{
    if (text == emptyText_)
        return;
    emptyText_ = text;
    setAccessibleDescription(text);
    viewport()->update();
}

const std::vector<int>& ScriptRows::Starts() const
{
    if (startsKnown_)
        return starts_;
    startsKnown_ = true;
    starts_.clear();
    starts_.reserve(static_cast<std::size_t>(list_.RowCount()) + 1);
    int line = 0;
    for (int row = 0; row < list_.RowCount(); ++row) {
        starts_.push_back(line);
        line += list_.LineCount(row);
    }
    starts_.push_back(line);
    return starts_;
}

// -1 ahead of the first line, the number of rows behind the last.
int ScriptRows::RowAtLine(int line) const
{
    const std::vector<int>& starts = Starts();
    return static_cast<int>(std::ranges::upper_bound(starts, line) - starts.begin()) - 1;
}

int ScriptRows::LinesInView() const
{
    return std::max(1, viewport()->height() / columns_.line);
}

int ScriptRows::LineAt(int y) const
{
    return verticalScrollBar()->value() + (y < 0 ? -1 : y / columns_.line);
}

int ScriptRows::verticalOffset() const
{
    return verticalScrollBar()->value() * columns_.line;
}

QRect ScriptRows::visualRect(const QModelIndex& index) const
{
    const std::vector<int>& starts = Starts();
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row + 1 >= starts.size())
        return {};
    // What lies far outside is nobody's business, and would not fit an int in pixels.
    constexpr int kFar = 100'000;
    const int top = std::clamp(starts[row] - verticalScrollBar()->value(), -kFar, kFar);
    const int lines = std::min(starts[row + 1] - starts[row], kFar);
    return {0, top * columns_.line, viewport()->width(), lines * columns_.line};
}

QModelIndex ScriptRows::indexAt(const QPoint& point) const
{
    const int row = RowAtLine(LineAt(point.y()));
    return row < 0 || row >= list_.RowCount() ? QModelIndex() : model()->index(row, 0);
}

void ScriptRows::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const std::vector<int>& starts = Starts();
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row + 1 >= starts.size())
        return;
    const int top = verticalScrollBar()->value();
    const int atEnd = std::min(starts[row], starts[row + 1] - LinesInView());
    int wanted = std::clamp(top, atEnd, starts[row]);
    if (hint == PositionAtTop)
        wanted = starts[row];
    else if (hint == PositionAtBottom)
        wanted = atEnd;
    else if (hint == PositionAtCenter)
        wanted = (starts[row] + atEnd) / 2;
    verticalScrollBar()->setValue(wanted);
}

void ScriptRows::updateGeometries()
{
    const int lines = Starts().back();
    verticalScrollBar()->setPageStep(LinesInView());
    verticalScrollBar()->setRange(0, std::max(0, lines - LinesInView()));
    QAbstractItemView::updateGeometries();  // NOLINT(bugprone-parent-virtual-call)
}

void ScriptRows::doItemsLayout()
{
    startsKnown_ = false;
    updateGeometries();
    if (std::exchange(holdsTop_, false))
        SetTop(topRow_.row(), topLine_);
    QAbstractItemView::doItemsLayout();  // NOLINT(bugprone-parent-virtual-call)
}

void ScriptRows::reset()
{
    startsKnown_ = false;
    holdsTop_ = false;
    mark_ = {};
    pressedRow_ = -1;
    QAbstractItemView::reset();  // NOLINT(bugprone-parent-virtual-call)
    doItemsLayout();
}

// Rows that change above those in view do not move them. To be called before the lines of the rows
// are counted anew.
void ScriptRows::HoldTop()
{
    if (verticalScrollBar()->value() == 0 || std::exchange(holdsTop_, true))
        return;
    const auto [row, line] = Top();
    topRow_ = model()->index(row, 0);
    topLine_ = line;
}

void ScriptRows::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                             const QList<int>& roles)
{
    HoldTop();
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::dataChanged(topLeft, bottomRight, roles);
    doItemsLayout();
}

void ScriptRows::rowsInserted(const QModelIndex& parent, int start, int end)
{
    startsKnown_ = false;
    QAbstractItemView::rowsInserted(parent, start, end);  // NOLINT(bugprone-parent-virtual-call)
    doItemsLayout();
}

void ScriptRows::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end)
{
    HoldTop();
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::rowsAboutToBeRemoved(parent, start, end);
}

void ScriptRows::resizeEvent(QResizeEvent* event)
{
    Measure();
    QAbstractItemView::resizeEvent(event);  // NOLINT(bugprone-parent-virtual-call)
}

void ScriptRows::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    viewport()->update();
}

void ScriptRows::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    Measure();
    doItemsLayout();
}

void ScriptRows::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int row = currentIndex().row();
    switch (plain ? event->key() : 0) {
        case Qt::Key_Up:
            return MoveCurrent(-1);
        case Qt::Key_Down:
            return MoveCurrent(1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (row >= 0)
                emit RowChosen(row);
            return;
        default:
            event->ignore();
    }
}

void ScriptRows::MoveCurrent(int rows)
{
    const int from =
        currentIndex().isValid() ? currentIndex().row() : std::max(mark_.row, 0) - rows;
    const QModelIndex to =
        model()->index(std::clamp(from + rows, 0, std::max(0, list_.RowCount() - 1)), 0);
    if (!to.isValid())
        return;
    setCurrentIndex(to);
    scrollTo(to);
    emit MovedByHand();
}

void ScriptRows::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    pressedRow_ = event->button() == Qt::LeftButton ? index.row() : -1;
    if (pressedRow_ >= 0)
        setCurrentIndex(index);
}

void ScriptRows::mouseMoveEvent(QMouseEvent* /*event*/) {}

void ScriptRows::mouseReleaseEvent(QMouseEvent* event)
{
    const int pressed = std::exchange(pressedRow_, -1);
    if (event->button() == Qt::LeftButton && pressed >= 0 &&
        indexAt(event->position().toPoint()).row() == pressed)
        emit RowChosen(pressed);
}

// The second press of two quick clicks.
void ScriptRows::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

bool ScriptRows::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QListView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (!ShowLineTip(help->pos(), help->globalPos()))
        QToolTip::hideText();
    return true;
}

// Tells what is wrong, and whatever does not fit in its line.
bool ScriptRows::ShowLineTip(const QPoint& at, const QPoint& globalAt)
{
    const QModelIndex index = indexAt(at);
    if (!index.isValid())
        return false;
    const QRect row = visualRect(index);
    const int first = (at.y() - row.top()) / columns_.line;
    const std::vector<timeline::ScriptLine> lines = list_.Lines(index.row(), first, 1);
    if (lines.empty())
        return false;
    const timeline::ScriptLine& line = lines.front();
    const QRect rect(0, row.top() + first * columns_.line, viewport()->width(), columns_.line);
    const QString text = QString::fromStdString(line.text);
    const bool cut =
        QFontMetrics(FontOf(line)).horizontalAdvance(text) > TextRect(line, rect).width();
    const bool command = line.kind == timeline::ScriptLine::Kind::Command;
    if (command && !cut && columns_.showsCodes)
        return false;
    const QString codes =
        command ? QString::fromStdString(line.codes) + QStringLiteral("  ") : QString();
    QToolTip::showText(globalAt, codes + text, viewport(), rect);
    return true;
}

void ScriptRows::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous);  // NOLINT(bugprone-parent-virtual-call)
    if (!QAccessible::isActive() || !current.isValid())
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(current.row());
    QAccessible::updateAccessibility(&event);
}

void ScriptRows::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::selectionChanged(selected, deselected);
}

// Where the focus comes to when nothing is selected: the keys are answered elsewhere.
QModelIndex ScriptRows::moveCursor(CursorAction /*action*/, Qt::KeyboardModifiers /*modifiers*/)
{
    return currentIndex().isValid() ? currentIndex() : model()->index(std::max(mark_.row, 0), 0);
}

void ScriptRows::setSelection(const QRect& /*rect*/, QItemSelectionModel::SelectionFlags command)
{
    selectionModel()->select(currentIndex(), command);
}

QRegion ScriptRows::visualRegionForSelection(const QItemSelection& selection) const
{
    QRegion region;
    for (const QModelIndex& index : selection.indexes())
        region += visualRect(index);
    return region;
}

}  // namespace ui
