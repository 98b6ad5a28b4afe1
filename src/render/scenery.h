#pragma once

#include <QImage>

#include "fountain/scene_layout.h"
#include "render/water_masks.h"

namespace render {

/// What never moves: the sky, the hills with the dark cross, the pool and its stone. Painted once
/// per size.
class Scenery {
 public:
    /// The picture for a view of `width` x `height` device pixels.
    const QImage& Picture(int width, int height, PixelScale scale, const fountain::Box& cross);

 private:
    QImage picture_;
    PixelScale scale_;
    fountain::Box cross_;
};

}  // namespace render
