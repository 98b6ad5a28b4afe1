#pragma once

#include <QColor>
#include <QPointF>
#include <cstdint>

#include "render/water_sprites.h"

class QPainter;

namespace render {

/// A cubic curve in device pixels.
struct Curve {
    QPointF start;
    QPointF startPull;
    QPointF endPull;
    QPointF end;

    [[nodiscard]] QPointF At(double t) const;
    [[nodiscard]] QPointF DirectionAt(double t) const;
    [[nodiscard]] double Length() const;  ///< about
};

[[nodiscard]] Curve Straight(QPointF start, QPointF end);

/// The way of a jet that rises steeply and bends over.
[[nodiscard]] Curve Bent(QPointF start, QPointF end);

/// How a stream looks along its way.
struct Flow {
    double from = 0;        ///< thickness at the nozzle, `WaterMasks::kThicknesses`
    double to = 0;          ///< thickness at the tip
    double scattering = 0;  ///< last part of the way on which the stream falls apart, 0..1
    int drops = 0;          ///< that fall from the tip
};

/// Where and when: `seed` tells like streams apart, `phase` is in milliseconds.
struct Moment {
    PixelScale scale;
    std::uint32_t seed = 0;
    int phase = 0;
};

void PaintStream(QPainter& painter, Tint& tint, const Curve& curve, const Flow& flow,
                 const Moment& moment);

/// The stream as a row of drops that invert what lies below them, without antialiasing.
void PaintInvertedStream(QPainter& painter, QColor color, const Curve& curve, const Moment& moment);

}  // namespace render
