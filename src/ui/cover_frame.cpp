#include "ui/cover_frame.h"

#include <QKeyEvent>
#include <QPainter>

namespace ui {
namespace {

constexpr QColor kGround(240, 240, 242);
constexpr double kCorner = 6;

}  // namespace

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
