#pragma once

#include "fountain/scene.h"
#include "render/scenery.h"
#include "render/water_sprites.h"

class QPainter;

namespace render {

/// What one view keeps from one painting to the next: pictures for its present size.
struct SceneCache {
    Scenery scenery;
    WaterSprites water;
};

/// Paints the fountain with the corner of its view at the painter's origin, 12 layout units a
/// logical pixel, and nothing outside of the view. The picture depends on the arguments alone;
/// `phase`, in milliseconds, moves the drops within the water, nothing else.
/// The painter must not be rotated or sheared, and paint on a raster device.
void PaintScene(QPainter& painter, const fountain::Scene& scene, SceneCache& cache, int phase = 0);

}  // namespace render
