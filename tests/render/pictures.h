#pragma once

#include <QImage>
#include <QRect>
#include <ostream>

#include "fountain/scene.h"
#include "render/scene_painter.h"

struct WindowSize {
    int width;
    int height;
};

inline std::ostream& operator<<(std::ostream& out, WindowSize size)
{
    return out << size.width << "x" << size.height;
}

inline constexpr WindowSize kSizes[] = {{1024, 768},  {1366, 768}, {1920, 1080},
                                        {2560, 1440}, {640, 1200}, {400, 300}};

/// A fountain without water and lights.
fountain::Scene IdleScene(WindowSize size = {1024, 768});

/// Everything that can be on, at its highest level, the sweeps leaning.
fountain::Scene FullScene(WindowSize size, int sweepPosition, bool opposed);

/// The view painted on its own; `phase` as in `PaintScene`.
QImage Picture(const fountain::Scene& scene, double ratio = 1, int phase = 0);

/// The device pixels of a box of the scene.
QRect PixelsOf(const fountain::Box& box, double ratio = 1);
/// The water of a line is at least eight pixels wide.
QRect PixelsOf(const fountain::Segment& line, double ratio = 1);

/// The smallest rectangle around all pixels that differ; null when none does.
QRect ChangedPixels(const QImage& before, const QImage& after);

/// How different two pixels are, 0..765.
int Difference(QRgb one, QRgb other);
