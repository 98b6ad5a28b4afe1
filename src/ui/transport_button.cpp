#include "ui/transport_button.h"

#include <algorithm>
#include <initializer_list>

#include <QStyleOptionButton>
#include <QStylePainter>

namespace ui {
namespace {

constexpr double kGrid = 24;
constexpr double kShareOfButton = 0.66;
constexpr QColor kInk(28, 36, 72);
constexpr QColor kFaintInk(164, 166, 174);
constexpr QColor kFocus(0, 0, 128);

void AddPolygon(QPainterPath& path, std::initializer_list<QPointF> points)
{
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
    path.closeSubpath();
}

void AddFlag(QPainterPath& path, double x)
{
    path.addRect(x, 3, 2, 18);
    AddPolygon(path, {{x + 3, 3}, {x + 11, 7}, {x + 3, 11}});
}

// A cross of two bars, the second wound the other way round so that none of it is left out.
void AddCross(QPainterPath& path)
{
    AddPolygon(path, {{14, 14.5}, {15.5, 13}, {22, 19.5}, {20.5, 21}});
    AddPolygon(path, {{20.5, 13}, {22, 14.5}, {15.5, 21}, {14, 19.5}});
}

}  // namespace

QPainterPath IconPath(TransportIcon icon)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    switch (icon) {
        case TransportIcon::Previous:
            path.addRect(4, 5, 2.5, 14);
            AddPolygon(path, {{20, 5}, {8, 12}, {20, 19}});
            break;
        case TransportIcon::Play:
            AddPolygon(path, {{6, 4}, {20, 12}, {6, 20}});
            break;
        case TransportIcon::Pause:
            path.addRect(6, 5, 4, 14);
            path.addRect(14, 5, 4, 14);
            break;
        case TransportIcon::Stop:
            path.addRect(5.5, 5.5, 13, 13);
            break;
        case TransportIcon::Listen:
            AddPolygon(path, {{9, 6.5}, {17.5, 12}, {9, 17.5}});
            AddPolygon(path, {{3, 4}, {7, 4}, {7, 6}, {5, 6}, {5, 18}, {7, 18}, {7, 20}, {3, 20}});
            AddPolygon(
                path, {{21, 4}, {17, 4}, {17, 6}, {19, 6}, {19, 18}, {17, 18}, {17, 20}, {21, 20}});
            break;
        case TransportIcon::AddMark:
            AddFlag(path, 4);
            path.addRect(17, 13, 2, 8);
            path.addRect(14, 16, 8, 2);
            break;
        case TransportIcon::PreviousMark:
            AddFlag(path, 12);
            AddPolygon(path, {{9.5, 8}, {2, 13}, {9.5, 18}});
            break;
        case TransportIcon::NextMark:
            AddFlag(path, 2);
            AddPolygon(path, {{14.5, 8}, {22, 13}, {14.5, 18}});
            break;
        case TransportIcon::ClearMarks:
            AddFlag(path, 4);
            AddCross(path);
            break;
    }
    return path;
}

TransportButton::TransportButton(TransportIcon icon, QWidget* parent)
    : QAbstractButton(parent), icon_(icon)
{
    // A click leaves the focus where the keys of the window are.
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void TransportButton::SetTransportIcon(TransportIcon icon)
{
    if (icon == icon_)
        return;
    icon_ = icon;
    update();
}

void TransportButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    option.initFrom(this);
    option.state.setFlag(QStyle::State_HasFocus, false);
    option.state |= isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    painter.setRenderHint(QPainter::Antialiasing);
    if (hasFocus()) {
        painter.setPen(QPen(kFocus, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), 3, 3);
    }
    const double side = std::min(width(), height()) * kShareOfButton;
    painter.translate((width() - side) / 2, (height() - side) / 2);
    painter.scale(side / kGrid, side / kGrid);
    painter.fillPath(IconPath(icon_), isEnabled() ? kInk : kFaintInk);
}

}  // namespace ui
