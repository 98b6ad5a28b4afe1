#pragma once

#include "fountain/scene.h"

class QPainter;

namespace render {

/// Paints the letters of every module's lit lamps as large as their boxes allow, if the scene shows
/// them. `unit` is the length of a layout unit on the painter's device, in its pixels.
void PaintLampLetters(QPainter& painter, const fountain::Scene& scene, double unit);

}  // namespace render
