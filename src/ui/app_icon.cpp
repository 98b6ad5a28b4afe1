#include "ui/app_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace ui {
namespace {

// The numbers of packaging/icons/choreographer.svg, in a square of 64.
constexpr qreal kSide = 64;
constexpr qreal kMargin = 2;
constexpr qreal kCorner = 13;
constexpr qreal kJetWidth = 6;
constexpr qreal kLampRadius = 5;
constexpr QPointF kNozzle(32, 46);
constexpr QPointF kTop(32, 11);
constexpr QRgb kNight = 0xff12213f;
constexpr QRgb kArcColor = 0xff5cb8ff;
constexpr QRgb kJetColor = 0xffffffff;

constexpr struct {
    QPointF rise, fall, end;
} kArcs[] = {{{31, 20}, {12, 14}, {11, 36}}, {{33, 20}, {52, 14}, {53, 36}}};

constexpr struct {
    QPointF centre;
    QRgb color;
} kLamps[] = {{{14, 52}, 0xffff5a4f}, {{32, 52}, 0xffffc83d}, {{50, 52}, 0xff6fe08a}};

QPixmap Paint(int side)
{
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / kSide, side / kSide);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kNight));
    painter.drawRoundedRect(
        QRectF(0, 0, kSide, kSide).adjusted(kMargin, kMargin, -kMargin, -kMargin), kCorner,
        kCorner);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(kArcColor), kJetWidth, Qt::SolidLine, Qt::RoundCap));
    for (const auto& arc : kArcs) {
        QPainterPath path(kNozzle);
        path.cubicTo(arc.rise, arc.fall, arc.end);
        painter.drawPath(path);
    }
    painter.setPen(QPen(QColor(kJetColor), kJetWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(kNozzle, kTop);

    painter.setPen(Qt::NoPen);
    for (const auto& lamp : kLamps) {
        painter.setBrush(QColor(lamp.color));
        painter.drawEllipse(lamp.centre, kLampRadius, kLampRadius);
    }
    return picture;
}

}  // namespace

QIcon AppIcon()
{
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128})
        icon.addPixmap(Paint(side));
    return icon;
}

}  // namespace ui
