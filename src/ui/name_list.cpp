#include "ui/name_list.h"

#include <utility>

#include <QAbstractListModel>
#include <QFile>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

namespace ui {

namespace {

constexpr int kRowsPerSpace = 12;  // a row is so many times as high as the space around it

}  // namespace

class NameModel final : public QAbstractListModel {
 public:
    NameModel(QIcon icon, QObject* parent) : QAbstractListModel(parent), icon_(std::move(icon)) {}

    void Take(std::vector<std::string> names)
    {
        beginResetModel();
        names_ = std::move(names);
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(names_.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == Qt::DecorationRole && !icon_.isNull())
            return icon_;
        if (role != Qt::DisplayRole || !index.isValid())
            return {};
        const std::string& name = names_[static_cast<std::size_t>(index.row())];
        return QFile::decodeName(QByteArray::fromStdString(name));
    }

 private:
    QIcon icon_;
    std::vector<std::string> names_;
};

NameList::NameList(const QIcon& icon, QWidget* parent)
    : QListView(parent), names_(new NameModel(icon, this))
{
    setModel(names_);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    const auto choose = [this](const QModelIndex& index) {
        if (index.isValid())
            emit Chosen(index.row());
    };
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, choose);
    connect(this, &QListView::clicked, this, choose);
    connect(this, &QListView::doubleClicked, this,
            [this](const QModelIndex& index) { emit Opened(index.row()); });
}

void NameList::ShowNames(std::vector<std::string> names)
{
    names_->Take(std::move(names));
    scrollToTop();
}

void NameList::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    const int height = fontMetrics().height();
    setIconSize({height, height});
    setSpacing(height / kRowsPerSpace);
}

void NameList::SetEmptyText(const QString& text)
{
    if (std::exchange(emptyText_, text) != text)
        viewport()->update();
}

void NameList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (currentIndex().isValid())
                emit Opened(currentIndex().row());
            else
                event->ignore();
            break;
        case Qt::Key_Escape:
            event->ignore();
            break;
        case Qt::Key_Backspace:
            emit Up();
            break;
        default:
            QListView::keyPressEvent(event);
    }
}

void NameList::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (names_->rowCount() > 0 || emptyText_.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    const int margin = fontMetrics().averageCharWidth();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

bool NameList::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QListView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const QString name = index.data().toString();
    const bool cut = index.isValid() && sizeHintForColumn(0) > viewport()->width() &&
                     sizeHintForIndex(index).width() > viewport()->width();
    QToolTip::showText(help->globalPos(), cut ? name : toolTip(), this);
    return true;
}

}  // namespace ui
