#include "ui/mark_list.h"

#include <algorithm>

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "document/time_text.h"

namespace ui {
namespace {

constexpr int kTenth = 100;  // ms
constexpr QColor kHint(96, 98, 108);

}  // namespace

MarkList::MarkList(QWidget* parent) : QListWidget(parent)
{
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            emit Chosen(row);
    });
    connect(this, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { emit Opened(row(item)); });
}

void MarkList::ShowMarks(const timeline::Marks& marks)
{
    if (marks == shown_)
        return;
    const QSignalBlocker quiet(this);
    if (marks.tenths != shown_.tenths) {
        clear();
        for (const std::int32_t tenth : marks.tenths) {
            const std::string time = document::ReadoutText(tenth * kTenth);
            auto* item = new QListWidgetItem(QString::fromStdString(timeline::MarkText(tenth)));
            item->setToolTip(QString::fromStdString(time));
            item->setData(Qt::AccessibleTextRole,
                          QStringLiteral("Mark at %1").arg(QString::fromStdString(time)));
            addItem(item);
        }
    }
    // A mark that was just set is the one to see, although another one may be selected.
    const bool added = marks.tenths.size() == shown_.tenths.size() + 1;
    const auto difference = std::ranges::mismatch(marks.tenths, shown_.tenths).in1;
    const int seen = added ? static_cast<int>(difference - marks.tenths.begin()) : marks.selected;
    shown_ = marks;
    setCurrentRow(marks.selected);
    if (seen >= 0)
        scrollToItem(item(seen));
    viewport()->update();
}

void MarkList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(kHint);
    painter.drawText(viewport()->rect().adjusted(4, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("No marks yet: press M while the music plays"));
}

// Only the keys that walk along the list stay here; the others are meant for the window.
void MarkList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            QListWidget::keyPressEvent(event);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (currentRow() >= 0)
                emit Opened(currentRow());
            break;
        default:
            event->ignore();
    }
}

// A mark stays selected until another one is: not unselected by Ctrl or by a click beside them.
QItemSelectionModel::SelectionFlags MarkList::selectionCommand(const QModelIndex& index,
                                                               const QEvent* /*event*/) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void MarkList::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    QScrollBar* bar = horizontalScrollBar();
    bar->setValue(bar->value() - (turned.x() != 0 ? turned.x() : turned.y()));
    event->accept();
}

}  // namespace ui
