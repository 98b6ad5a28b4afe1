#include "render/scenery.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>

namespace render {
namespace {

using fountain::kDesignWidth;

// Places in pixels of the design screen, below the top of the view.
constexpr double kWidth = kDesignWidth;
constexpr double kHeight = 372;
constexpr double kFarRim = 284;
constexpr double kFrontRim = 332;
constexpr double kRimHeight = 7;

void PaintSky(QPainter& painter)
{
    QLinearGradient sky(0, 0, 0, kFarRim);
    sky.setColorAt(0, QColor(3, 5, 18));
    sky.setColorAt(0.45, QColor(7, 12, 38));
    sky.setColorAt(0.8, QColor(17, 26, 66));
    sky.setColorAt(1, QColor(33, 40, 84));
    painter.fillRect(QRectF(0, 0, kWidth, kFarRim + 2), sky);

    painter.setPen(Qt::NoPen);
    for (std::uint32_t star = 0; star < 150; ++star) {
        const double y = 210 * std::pow(Scatter(star, 2), 1.4);
        const double radius = 0.35 + 0.6 * std::pow(Scatter(star, 3), 5);
        const double faint = (1 - y / 250) * (0.25 + 0.6 * Scatter(star, 4));
        painter.setBrush(QColor(214, 224, 255, static_cast<int>(255 * faint)));
        painter.drawEllipse(QPointF(kWidth * Scatter(star, 1), y), radius, radius);
    }
}

// Round at any proportions of the view.
void PaintMoon(QPainter& painter, PixelScale scale)
{
    painter.save();
    painter.translate(148, 58);
    painter.scale(scale.Smaller() / scale.x, scale.Smaller() / scale.y);
    QRadialGradient shine(QPointF(0, 0), 150);
    shine.setColorAt(0, QColor(170, 190, 240, 56));
    shine.setColorAt(0.1, QColor(140, 165, 230, 32));
    shine.setColorAt(0.4, QColor(125, 150, 230, 9));
    shine.setColorAt(1, QColor(120, 150, 230, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawEllipse(QPointF(0, 0), 150, 150);
    QPainterPath disc;
    disc.addEllipse(QPointF(0, 0), 13, 13);
    QPainterPath shadow;
    shadow.addEllipse(QPointF(6.5, -3), 12, 12);
    painter.setBrush(QColor(226, 230, 240));
    painter.drawPath(disc.subtracted(shadow));
    painter.restore();
}

// The moon's light on the ripples.
void PaintGlitter(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    for (std::uint32_t spark = 0; spark < 60; ++spark) {
        const double depth = Scatter(spark, 41);
        const double aside = (Scatter(spark, 42) - 0.5) * (16 + 40 * depth);
        painter.setBrush(QColor(190, 206, 245, static_cast<int>(18 + 70 * Scatter(spark, 43))));
        painter.drawEllipse(QPointF(148 + aside, kFarRim + 3 + 44 * depth),
                            2 + 5 * Scatter(spark, 44), 0.5);
    }
}

double FarHill(double x)
{
    return 236 - 30 * std::exp(-std::pow((x - 190) / 190, 2)) -
           18 * std::exp(-std::pow((x - 560) / 150, 2)) - 4 * std::sin(x / 61) -
           2 * std::sin(x / 23);
}

// The cross stands on its top.
double NearHill(double x, const fountain::Box& cross)
{
    const double top = cross.Bottom() / fountain::kUnitsPerPixel;
    const double middle = (cross.left + cross.width / 2) / fountain::kUnitsPerPixel;
    const double away = (x - middle) / (x < middle ? 150 : 190);
    const double peak = (266 - top) / std::pow(1 + away * away, 1.5);
    return 266 - peak + (2 * std::sin(x / 17) + 3 * std::sin(x / 47)) * std::min(1.0, away * away);
}

// Slender trees along the near slope.
void PaintTrees(QPainter& painter, const fountain::Box& cross)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(4, 8, 20));
    const double middle = (cross.left + cross.width / 2) / fountain::kUnitsPerPixel;
    for (std::uint32_t tree = 0; tree < 64; ++tree) {
        const double x = kWidth * (static_cast<double>(tree) + Scatter(tree, 21)) / 64;
        if (std::abs(x - middle) < 34)
            continue;
        const double tall = 7 + 17 * Scatter(tree, 22) * Scatter(tree, 23);
        const double foot = NearHill(x, cross) + 4;
        QPainterPath shape(QPointF(x, foot - tall));
        shape.cubicTo(x + tall * 0.2, foot - tall * 0.5, x + tall * 0.2, foot, x, foot);
        shape.cubicTo(x - tall * 0.2, foot, x - tall * 0.2, foot - tall * 0.5, x, foot - tall);
        painter.drawPath(shape);
    }
}

template <typename TopAt>
void PaintHill(QPainter& painter, TopAt topAt, QColor top, QColor bottom)
{
    QPainterPath hill(QPointF(0, kFarRim + 2));
    for (double x = 0; x <= kWidth; x += 4)
        hill.lineTo(x, topAt(x));
    hill.lineTo(kWidth, kFarRim + 2);
    QLinearGradient shade(0, 130, 0, kFarRim);
    shade.setColorAt(0, top);
    shade.setColorAt(1, bottom);
    painter.fillPath(hill, shade);
}

void PaintPool(QPainter& painter)
{
    QLinearGradient water(0, kFarRim, 0, kFrontRim);
    water.setColorAt(0, QColor(13, 23, 52));
    water.setColorAt(0.4, QColor(8, 17, 42));
    water.setColorAt(1, QColor(4, 9, 27));
    painter.fillRect(QRectF(0, kFarRim, kWidth, kFrontRim - kFarRim), water);
    painter.setPen(Qt::NoPen);
    for (std::uint32_t ripple = 0; ripple < 190; ++ripple) {
        const double depth = Scatter(ripple, 11);
        const double length = 8 + 34 * Scatter(ripple, 12);
        const double y = kFarRim + 3 + (kFrontRim - kFarRim - 4) * depth;
        painter.setBrush(QColor(110, 140, 205, static_cast<int>(8 + 26 * Scatter(ripple, 13))));
        painter.drawEllipse(QPointF(kWidth * Scatter(ripple, 14), y), length * (0.5 + depth),
                            0.35 + 0.45 * depth);
    }
    painter.fillRect(QRectF(0, kFarRim - 2, kWidth, 2), QColor(34, 40, 62));
    painter.fillRect(QRectF(0, kFarRim, kWidth, 1), QColor(5, 8, 20));
}

void PaintNozzles(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    for (int module = 1; module <= 7; ++module) {
        const double middle = kWidth / 2 + 128.0 * (module - 4);
        painter.setBrush(QColor(3, 6, 18));
        painter.drawEllipse(QPointF(middle, 303.5), 58, 7.5);
        painter.setBrush(QColor(24, 31, 54));
        painter.drawEllipse(QPointF(middle, 302), 57, 6.6);
        painter.setBrush(QColor(12, 18, 38));
        painter.drawEllipse(QPointF(middle, 301.7), 52, 5.4);
    }
}

// Wet flagstones before the basin, where the lamps' letters stand.
void PaintTerrace(QPainter& painter)
{
    QLinearGradient stone(0, kFrontRim, 0, kHeight);
    stone.setColorAt(0, QColor(24, 28, 46));
    stone.setColorAt(1, QColor(9, 11, 22));
    painter.fillRect(QRectF(0, kFrontRim, kWidth, kHeight - kFrontRim), stone);
    painter.setPen(QPen(QColor(0, 0, 0, 70), 0.8));
    for (int joint = -20; joint <= 20; ++joint)
        painter.drawLine(QPointF(kWidth / 2 + joint * 40, kFrontRim + kRimHeight),
                         QPointF(kWidth / 2 + joint * 52, kHeight));
    painter.drawLine(QPointF(0, 353), QPointF(kWidth, 353));

    QLinearGradient rim(0, kFrontRim, 0, kFrontRim + kRimHeight);
    rim.setColorAt(0, QColor(66, 74, 100));
    rim.setColorAt(0.25, QColor(44, 50, 74));
    rim.setColorAt(1, QColor(14, 17, 32));
    painter.fillRect(QRectF(0, kFrontRim, kWidth, kRimHeight), rim);
}

// The few dark shades of a night sky stand in visible bands unless they are mixed at the borders.
void Dither(QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const auto place =
                static_cast<std::uint32_t>(y) * 0x10000U + static_cast<std::uint32_t>(x);
            const auto more = static_cast<int>(Scatter(place, 31) * 3);
            line[x] =
                qRgb(std::min(255, qRed(line[x]) + more), std::min(255, qGreen(line[x]) + more),
                     std::min(255, qBlue(line[x]) + more));
        }
    }
}

}  // namespace

const QImage& Scenery::Picture(int width, int height, PixelScale scale, const fountain::Box& cross)
{
    if (picture_.width() == width && picture_.height() == height && scale == scale_ &&
        cross == cross_)
        return picture_;
    scale_ = scale;
    cross_ = cross;
    picture_ = QImage(width, height, QImage::Format_RGB32);
    QPainter painter(&picture_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale.x, scale.y);
    PaintSky(painter);
    PaintMoon(painter, scale);
    PaintHill(painter, FarHill, QColor(12, 18, 44), QColor(15, 23, 52));
    PaintHill(
        painter, [&cross](double x) { return NearHill(x, cross); }, QColor(5, 9, 24),
        QColor(8, 13, 32));
    PaintTrees(painter, cross);
    PaintPool(painter);
    PaintGlitter(painter);
    PaintNozzles(painter);
    PaintTerrace(painter);
    painter.end();
    Dither(picture_);
    return picture_;
}

}  // namespace render
