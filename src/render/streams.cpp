#include "render/streams.h"

#include <QPainter>
#include <QRect>
#include <algorithm>
#include <array>
#include <cmath>

namespace render {
namespace {

constexpr double kSpeed = 0.16;          ///< design pixels a millisecond
constexpr double kMostStretches = 2000;  ///< a view may be of any size

// Evenly spaced places that travel along a curve; a place keeps its number while it travels.
struct Places {
    int count = 0;
    double spacing = 0;  ///< as a part of the way
    double offset = 0;
    std::uint32_t first = 0;

    [[nodiscard]] double At(int index) const { return offset + index * spacing; }
    [[nodiscard]] std::uint32_t Number(int index) const
    {
        return first + static_cast<std::uint32_t>(index);
    }
};

Places PlacesOn(const Curve& curve, double spacing, const Moment& moment)
{
    const double length = std::max(1.0, curve.Length());
    const double step = std::max(spacing, length / kMostStretches);
    const double travelled = moment.phase * kSpeed * moment.scale.Smaller() / step;
    const double whole = std::floor(travelled);
    Places places;
    places.spacing = step / length;
    places.offset = (travelled - whole) * places.spacing;
    places.count = static_cast<int>(std::floor((1 - places.offset) / places.spacing)) + 1;
    places.first = 0U - static_cast<std::uint32_t>(static_cast<std::int64_t>(whole));
    return places;
}

void PaintStretch(QPainter& painter, Tint& tint, int thickness, QPointF at, QPointF direction)
{
    const QImage& image = tint.Streak(thickness, direction.x(), direction.y(), at.x(), at.y());
    painter.drawImage(QPoint(static_cast<int>(std::floor(at.x())) - image.width() / 2,
                             static_cast<int>(std::floor(at.y())) - image.height() / 2),
                      image);
}

void PaintDrops(QPainter& painter, Tint& tint, const Curve& curve, const Flow& flow,
                const Moment& moment)
{
    const double depth = std::min(curve.Length() * 0.3, 40 * moment.scale.Smaller());
    const QPointF ahead = (curve.end - curve.endPull) * 0.55;
    for (int drop = 0; drop < flow.drops; ++drop) {
        const auto number = static_cast<std::uint32_t>(drop);
        const double age = std::fmod(Scatter(number, moment.seed) + moment.phase / 900.0, 1.0);
        const double aside = (Scatter(number, moment.seed + 1) - 0.5) * 9 * moment.scale.Smaller();
        const QPointF at =
            curve.end + ahead * (age * (1 - 0.55 * age)) + QPointF(aside * age, age * age * depth);
        PaintStretch(painter, tint, drop % 2, at, QPointF(0.2 * aside * age, 1));
    }
}

}  // namespace

QPointF Curve::At(double t) const
{
    const double u = 1 - t;
    return u * u * u * start + 3 * u * u * t * startPull + 3 * u * t * t * endPull +
           t * t * t * end;
}

QPointF Curve::DirectionAt(double t) const
{
    const double u = 1 - t;
    return u * u * (startPull - start) + 2 * u * t * (endPull - startPull) +
           t * t * (end - endPull);
}

double Curve::Length() const
{
    const auto length = [](QPointF line) { return std::hypot(line.x(), line.y()); };
    return (length(end - start) + length(startPull - start) + length(endPull - startPull) +
            length(end - endPull)) /
           2;
}

Curve Straight(QPointF start, QPointF end)
{
    return {start, start + (end - start) / 3, end - (end - start) / 3, end};
}

Curve Bent(QPointF start, QPointF end)
{
    const QPointF way = end - start;
    return {start, start + QPointF(way.x() * 0.22, way.y() * 0.72),
            start + QPointF(way.x() * 0.58, way.y() * 1.12), end};
}

void PaintStream(QPainter& painter, Tint& tint, const Curve& curve, const Flow& flow,
                 const Moment& moment)
{
    const double radius = WaterMasks::StreakRadius(static_cast<int>(std::min(flow.from, flow.to))) *
                          moment.scale.Smaller();
    const Places places = PlacesOn(curve, 3.9 * radius, moment);
    for (int i = 0; i < places.count; ++i) {
        const double t = std::min(1.0, places.At(i));
        const double loose =
            flow.scattering > 0 ? std::max(0.0, (t - 1 + flow.scattering) / flow.scattering) : 0;
        const float chance = Scatter(places.Number(i), moment.seed);
        if (chance < 0.36 * loose)
            continue;
        const double thickness = flow.from + (flow.to - flow.from) * t - 1.5 * loose * chance;
        const QPointF direction = curve.DirectionAt(t);
        QPointF at = curve.At(t);
        if (loose > 0) {
            const double length = std::max(1e-6, std::hypot(direction.x(), direction.y()));
            const double aside = (chance - 0.5) * 3 * loose * moment.scale.Smaller() / length;
            at += QPointF(-direction.y(), direction.x()) * aside;
        }
        PaintStretch(
            painter, tint,
            std::clamp(static_cast<int>(std::lround(thickness)), 0, WaterMasks::kThicknesses - 1),
            at, direction);
    }
    PaintDrops(painter, tint, curve, flow, moment);
}

void PaintInvertedStream(QPainter& painter, QColor color, const Curve& curve, const Moment& moment)
{
    // Drops apart from one another: where two met they would cancel each other out.
    const int size = std::max(2, static_cast<int>(std::lround(2 * moment.scale.Smaller())));
    const Places places = PlacesOn(curve, 2.2 * size, moment);
    std::array<QRect, static_cast<std::size_t>(kMostStretches) + 2> drops;
    int count = 0;
    for (int i = 0; i < places.count; ++i) {
        const QPointF at = curve.At(std::min(1.0, places.At(i)));
        drops[static_cast<std::size_t>(count++)] =
            QRect(static_cast<int>(std::floor(at.x())) - size / 2,
                  static_cast<int>(std::floor(at.y())) - size / 2, size, size);
    }
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRects(drops.data(), count);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace render
