#include "ui/cover_frame.h"

#include <QKeyEvent>
#include <QPainter>

namespace ui {
namespace {

constexpr QColor kGround(240, 240, 242);
constexpr double kCorner = 6;

}  // namespace

QLabel* CoverFrame::AddLabel(const QString& name, const QColor& ink, Qt::Alignment alignment)
{
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAlignment(alignment);
    label->setTextFormat(Qt::PlainText);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, ink);
    label->setPalette(palette);
    return label;
}

void CoverFrame::DescribeControls(std::span<const FormControl> controls)
{
    QWidget* before = nullptr;
    for (const FormControl& control : controls) {
        auto* widget = findChild<QWidget*>(QString::fromLatin1(control.name));
        widget->setAccessibleName(QString::fromLatin1(control.accessibleName));
        widget->setToolTip(QString::fromLatin1(control.toolTip));
        if (widget->focusPolicy() == Qt::NoFocus)
            continue;
        if (before != nullptr)
            setTabOrder(before, widget);
        before = widget;
    }
}

void CoverFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kCoverEdge, 2));
    painter.setBrush(kGround);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCorner, kCorner);
}

// No key gets through to the window.
void CoverFrame::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Answer(CancelHasFocus() ? 1 : 0);
            break;
        case Qt::Key_Escape:
            Answer(1);
            break;
        default:
            break;
    }
}

}  // namespace ui
