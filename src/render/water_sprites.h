#pragma once

#include <QImage>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "fountain/colors.h"
#include "render/water_masks.h"

namespace render {

enum class Depth { Front, Back };

/// Pictures of water of one colour. Putting copies of them side by side is many times faster than
/// drawing glowing strokes. Each is made when first asked for.
class Tint {
 public:
    /// `masks` must outlive the tint.
    Tint(fountain::Color color, WaterMasks& masks);

    /// A jet, its top at the top edge, as long as the longest jet: use as much of it as is needed.
    const QImage& Plume(Depth depth, int variant);
    /// A stretch of a slender stream in the direction of (dx, dy) for the place (x, y): to be drawn
    /// with its middle pixel on the pixel that holds the place.
    const QImage& Streak(int thickness, double dx, double dy, double x, double y);
    /// A strip of a water curtain that fits to itself, its crest at the top edge.
    const QImage& Veil(VeilStyle style, VeilPart part);
    /// The light on the pool around a module and its water's reflection.
    const QImage& Pool();
    /// The lit mist around a module.
    const QImage& Aura();
    /// A round puff of spray; several overlap.
    const QImage& Mist();
    /// A round glow, 40 design pixels to every side.
    const QImage& Halo();

 private:
    const QImage& Filled(QImage& image, const Mask& mask) const;

    fountain::Color color_;
    WaterMasks* masks_;
    std::vector<QImage> plumes_;
    std::vector<QImage> streaks_;
    std::vector<QImage> veils_;
    QImage pool_;
    QImage aura_;
    QImage mist_;
    QImage halo_;
};

/// The tints of all colours at one scale.
class WaterSprites {
 public:
    WaterSprites();

    /// Drops all sprites when the scale is another one.
    void SetScale(PixelScale scale);
    [[nodiscard]] PixelScale Scale() const { return masks_->Scale(); }
    /// Valid until the next `SetScale` or `Of`.
    Tint& Of(fountain::Color color);

 private:
    std::unique_ptr<WaterMasks> masks_;
    std::unordered_map<std::uint32_t, Tint> tints_;
};

}  // namespace render
