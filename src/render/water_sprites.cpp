#include "render/water_sprites.h"

#include <QRgb>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace render {
namespace {

constexpr std::size_t kMostTints = 64;

struct Lit {
    std::array<std::uint32_t, 3> channels;
};

// Light on saturated water goes towards white; on the dark colours that would turn red and amber
// to grey, so that these are only raised.
Lit LitUp(fountain::Color color, int light)
{
    const std::array<int, 3> base{color.red, color.green, color.blue};
    const bool dark = std::ranges::max(base) < 160;
    Lit lit{};
    for (std::size_t i = 0; i < 3; ++i) {
        const int raised = dark ? base[i] + (base[i] * 11 / 10 + 14) * light / 255
                                : base[i] + (255 - base[i]) * light / 255;
        lit.channels[i] = static_cast<std::uint32_t>(std::min(255, raised));
    }
    return lit;
}

QImage Colored(const Mask& mask, fountain::Color color)
{
    std::array<Lit, 256> lights;
    for (int light = 0; light < 256; ++light)
        lights[static_cast<std::size_t>(light)] = LitUp(color, light);
    QImage image(mask.width, mask.height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    const Mask::Point* point = mask.points.data();
    for (int y = 0; y < mask.height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < mask.width; ++x, ++point) {
            const std::uint32_t alpha = point->alpha;
            const auto& lit = lights[point->light].channels;
            line[x] = alpha << 24 | (lit[0] * alpha + 127) / 255 << 16 |
                      (lit[1] * alpha + 127) / 255 << 8 | (lit[2] * alpha + 127) / 255;
        }
    }
    return image;
}

fountain::Color Shaded(fountain::Color color)
{
    const auto shaded = [](std::uint8_t value) { return static_cast<std::uint8_t>(value * 5 / 8); };
    return {shaded(color.red), shaded(color.green), shaded(color.blue)};
}

}  // namespace

Tint::Tint(fountain::Color color, WaterMasks& masks)
    : color_(color),
      masks_(&masks),
      plumes_(2 * WaterMasks::kPlumes),
      streaks_(WaterMasks::kStreaks),
      veils_(9)
{
}

const QImage& Tint::Filled(QImage& image, const Mask& mask) const
{
    image = Colored(mask, color_);
    return image;
}

const QImage& Tint::Plume(Depth depth, int variant)
{
    const bool back = depth == Depth::Back;
    QImage& image = plumes_[static_cast<std::size_t>(variant + (back ? WaterMasks::kPlumes : 0))];
    if (image.isNull())
        image = Colored(masks_->Plume(variant), back ? Shaded(color_) : color_);
    return image;
}

const QImage& Tint::Streak(int thickness, double dx, double dy, double x, double y)
{
    constexpr int kDirections = WaterMasks::kDirections;
    constexpr int kSubpixels = WaterMasks::kSubpixels;
    const double turn = std::atan2(dy, dx) / std::numbers::pi * kDirections;
    const int direction = (static_cast<int>(std::lround(turn)) + 2 * kDirections) % kDirections;
    const int subX = static_cast<int>((x - std::floor(x)) * kSubpixels);
    const int subY = static_cast<int>((y - std::floor(y)) * kSubpixels);
    const int index =
        ((thickness * kDirections + direction) * kSubpixels + subX) * kSubpixels + subY;
    QImage& image = streaks_[static_cast<std::size_t>(index)];
    return image.isNull() ? Filled(image, masks_->Streak(index)) : image;
}

const QImage& Tint::Veil(VeilStyle style, VeilPart part)
{
    QImage& image = veils_[static_cast<std::size_t>(style) * 3 + static_cast<std::size_t>(part)];
    return image.isNull() ? Filled(image, masks_->Veil(style, part)) : image;
}

const QImage& Tint::Pool()
{
    return pool_.isNull() ? Filled(pool_, masks_->Pool()) : pool_;
}

const QImage& Tint::Aura()
{
    return aura_.isNull() ? Filled(aura_, masks_->Aura()) : aura_;
}

const QImage& Tint::Mist()
{
    return mist_.isNull() ? Filled(mist_, masks_->Mist()) : mist_;
}

const QImage& Tint::Halo()
{
    return halo_.isNull() ? Filled(halo_, masks_->Halo()) : halo_;
}

WaterSprites::WaterSprites() : masks_(std::make_unique<WaterMasks>(PixelScale{})) {}

void WaterSprites::SetScale(PixelScale scale)
{
    if (scale == Scale())
        return;
    tints_.clear();
    masks_ = std::make_unique<WaterMasks>(scale);
}

Tint& WaterSprites::Of(fountain::Color color)
{
    const std::uint32_t key = qRgb(color.red, color.green, color.blue);
    if (tints_.size() >= kMostTints && !tints_.contains(key))
        tints_.clear();
    return tints_.try_emplace(key, color, *masks_).first->second;
}

}  // namespace render
