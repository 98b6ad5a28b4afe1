#include "render/water_masks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace render {
namespace {

/// How much of the water's colour a point shows and how far it is lit up beyond it, 0..1.
struct Shine {
    double alpha = 0;
    double light = 0;
};

double Smooth(double from, double to, double value)
{
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double Square(double value)
{
    return value * value;
}

double Distance(double x, double y)
{
    return std::sqrt(x * x + y * y);
}

std::uint8_t Byte(double share)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
}

template <typename ShineAt>
Mask Make(double width, double height, ShineAt shineAt)
{
    Mask mask;
    mask.width = std::max(1, static_cast<int>(std::ceil(width)));
    mask.height = std::max(1, static_cast<int>(std::ceil(height)));
    mask.points.reserve(static_cast<std::size_t>(mask.width) *
                        static_cast<std::size_t>(mask.height));
    for (int y = 0; y < mask.height; ++y) {
        for (int x = 0; x < mask.width; ++x) {
            const Shine shine = shineAt(x + 0.5, y + 0.5);
            mask.points.push_back({Byte(shine.alpha), Byte(shine.light)});
        }
    }
    return mask;
}

// Smooth irregularity along one axis; `period` 0 never repeats.
double Wave(double position, std::uint32_t seed, std::uint32_t period = 0)
{
    const double floor = std::floor(position);
    auto cell = static_cast<std::uint32_t>(static_cast<std::int32_t>(floor));
    auto next = cell + 1;
    if (period != 0) {
        cell %= period;
        next %= period;
    }
    const double t = Smooth(0, 1, position - floor);
    return Scatter(cell, seed) * (1 - t) + Scatter(next, seed) * t;
}

// A slender core that opens into mist near its top.
Shine PlumeShine(double x, double y, int variant)
{
    const auto seed = static_cast<std::uint32_t>(variant) * 31;
    const double away = x - (Wave(y / 26, seed + 1) - 0.5) * 1.1;
    const double open = (1 - Smooth(16, 95, y)) * Smooth(0, 20, y);
    const double mistWidth = 1.5 + 2.3 * open + 0.9 * Wave(y / 6, seed + 2);
    const double mist = std::exp(-1.5 * Square(away / mistWidth));
    const auto column = static_cast<std::uint32_t>(std::floor(x / 1.2) + 40);
    const double grain = Wave(y / 2.6 + 7 * Scatter(column, seed), seed + 3 + column);
    const double core = std::exp(-Square(away / 1.15)) * Smooth(3, 24, y);
    const double glow =
        0.13 * Square(std::max(0.0, 1 - std::abs(away) / WaterMasks::kPlumeHalfWidth));
    const double top = Smooth(0, 9, y);
    const double alpha = top * std::max({mist * (0.35 + 0.6 * grain), 1.1 * core, glow});
    return {alpha,
            0.34 * core * Smooth(0.3, 0.9, Wave(y / 11, seed + 4)) * (1 - Smooth(60, 190, y)) +
                0.22 * mist * Smooth(0.8, 1, grain)};
}

Shine VeilShine(double x, double y, VeilStyle style)
{
    constexpr auto kCells = static_cast<std::uint32_t>(WaterMasks::kVeilWidth / 3);
    const double crest = 6 * Wave(x / 6, 7, kCells / 2) + 4 * Wave(x / 3, 8, kCells);
    const double under = y - crest;
    const double edge = Smooth(0, 7, under);
    const double strand = 0.6 * Wave(x / 3, 9, kCells) + 0.4 * Wave(x / 1.5, 10, kCells * 2);
    const double fall = Wave(y / 19 + 11 * Wave(x / 3, 12, kCells), 20);
    const double foam = 1 - Smooth(0, 30, under);
    const double light =
        0.4 * foam * strand + 0.3 * Smooth(0.62, 0.95, strand * 0.55 + fall * 0.45);
    if (style == VeilStyle::Sheer)
        return {edge * (0.1 + 0.2 * strand * strand + 0.1 * fall * strand + 0.4 * foam * strand),
                0.5 * strand + 0.8 * foam};
    if (style == VeilStyle::Solid)
        return {edge * (0.74 + 0.18 * strand + 0.12 * fall) * (1 - 0.15 * Smooth(60, 190, y)),
                light};
    const double line = std::exp(-Square((std::fmod(x, 8.0) - 4) / 1.25));
    const double drops = Smooth(0.05, 0.5, Wave(y / 13 + 5 * std::floor(x / 8), 21));
    return {edge * std::max(line * (0.72 + 0.28 * drops), 0.1 + 0.35 * foam * strand),
            light * line};
}

// How a curtain fades out at its sides.
double SideFade(double x, VeilPart part)
{
    constexpr double kFade = 18;
    if (part == VeilPart::Left)
        return Smooth(0, kFade, x);
    return part == VeilPart::Right
               ? 1 - Smooth(WaterMasks::kVeilWidth - kFade, WaterMasks::kVeilWidth, x)
               : 1;
}

}  // namespace

float Scatter(std::uint32_t first, std::uint32_t second)
{
    std::uint32_t bits = first * 0x9E3779B1U ^ (second + 0x7F4A7C15U) * 0x85EBCA77U;
    bits = (bits ^ (bits >> 15)) * 0x2C1B3C6DU;
    bits = (bits ^ (bits >> 12)) * 0x297A2D39U;
    return static_cast<float>((bits ^ (bits >> 15)) >> 8) / 16777216.0F;
}

WaterMasks::WaterMasks(PixelScale scale) : scale_(scale), streaks_(kStreaks) {}

double WaterMasks::StreakRadius(int thickness)
{
    return 0.9 * std::pow(1.27, thickness);
}

const Mask& WaterMasks::Plume(int variant)
{
    Mask& mask = plumes_[static_cast<std::size_t>(variant)];
    if (!mask.points.empty())
        return mask;
    const double width = std::ceil(2 * kPlumeHalfWidth * scale_.x);
    mask = Make(width, kTallest * scale_.y, [&](double x, double y) {
        return PlumeShine((x - width / 2) / scale_.x, y / scale_.y, variant);
    });
    return mask;
}

const Mask& WaterMasks::Streak(int index)
{
    Mask& mask = streaks_[static_cast<std::size_t>(index)];
    if (!mask.points.empty())
        return mask;
    const int subY = index % kSubpixels;
    const int subX = index / kSubpixels % kSubpixels;
    const int direction = index / (kSubpixels * kSubpixels) % kDirections;
    const int thickness = index / (kSubpixels * kSubpixels * kDirections);
    const double radius = StreakRadius(thickness) * scale_.Smaller();
    const double size = 2 * std::ceil(4.2 * radius) + 1;
    const double angle = direction * std::numbers::pi / kDirections;
    const double middleX = std::floor(size / 2) + (subX + 0.5) / kSubpixels;
    const double middleY = std::floor(size / 2) + (subY + 0.5) / kSubpixels;
    mask = Make(size, size, [=](double x, double y) {
        const double along = (x - middleX) * std::cos(angle) + (y - middleY) * std::sin(angle);
        const double across = (y - middleY) * std::cos(angle) - (x - middleX) * std::sin(angle);
        const double body = Distance(along / 4, across) / radius;
        const double glow = Distance(along / 1.5, across) / radius;
        return Shine{
            std::max(1 - Smooth(0.45, 1.05, body), 0.16 * Square(std::max(0.0, 1 - glow / 2.7))),
            0.18 * (1 - Smooth(0, 0.5, body))};
    });
    return mask;
}

const Mask& WaterMasks::Veil(VeilStyle style, VeilPart part)
{
    const auto first = static_cast<std::size_t>(style) * 3;
    Mask& mask = veils_[first + static_cast<std::size_t>(part)];
    if (!mask.points.empty())
        return mask;
    if (part != VeilPart::Middle) {
        mask = Veil(style, VeilPart::Middle);
        for (std::size_t i = 0; i < mask.points.size(); ++i) {
            const auto column = static_cast<double>(i % static_cast<std::size_t>(mask.width));
            const double fade = SideFade((column + 0.5) / scale_.x, part);
            mask.points[i].alpha = Byte(mask.points[i].alpha / 255.0 * fade);
        }
        return mask;
    }
    mask = Make(std::ceil(kVeilWidth * scale_.x) + 1, kTallest * scale_.y, [&](double x, double y) {
        return VeilShine(std::fmod(x / scale_.x, kVeilWidth), y / scale_.y, style);
    });
    return mask;
}

const Mask& WaterMasks::Pool()
{
    if (!pool_.points.empty())
        return pool_;
    pool_ = Make(128 * scale_.x, 44 * scale_.y, [&](double px, double py) {
        const double x = px / scale_.x - 64;
        const double y = py / scale_.y - 20;
        const double around = Distance(x / 62, y / 20);
        const double strand = Wave((x + 64) / 3.2, 77);
        const double ripple = Wave(y / 1.7 + 3 * strand, 78);
        const double below = std::max(0.0, 1 - Distance(x / 58, (y - 4) / 20));
        return Shine{0.42 * Square(std::max(0.0, 1 - around)) +
                     (y > 0 ? 0.75 * below * strand * (0.35 + 0.65 * ripple) : 0.0)};
    });
    return pool_;
}

const Mask& WaterMasks::Aura()
{
    if (!aura_.points.empty())
        return aura_;
    const double halfWidth = std::ceil(84 * scale_.x);
    const double halfHeight = std::ceil(100 * scale_.y);
    aura_ = Make(2 * halfWidth, 2 * halfHeight, [=](double x, double y) {
        const double away = Distance(x / halfWidth - 1, y / halfHeight - 1);
        return Shine{0.3 * Square(std::max(0.0, 1 - away))};
    });
    return aura_;
}

const Mask& WaterMasks::Mist()
{
    if (!mist_.points.empty())
        return mist_;
    const double half = std::ceil(kMistRadius * scale_.Smaller());
    mist_ = Make(2 * half, 2 * half, [half](double x, double y) {
        const double away = Distance(x - half, y - half) / half;
        const double grain =
            Scatter(static_cast<std::uint32_t>(x * 0.7), static_cast<std::uint32_t>(y * 0.5) + 500);
        return Shine{0.17 * Square(std::max(0.0, 1 - Square(away))) * (0.6 + 0.8 * grain)};
    });
    return mist_;
}

const Mask& WaterMasks::Halo()
{
    if (!halo_.points.empty())
        return halo_;
    const double half = std::ceil(40 * scale_.Smaller());
    halo_ = Make(2 * half, 2 * half, [half](double x, double y) {
        const double near = std::max(0.0, 1 - Distance(x - half, y - half) / half);
        return Shine{0.6 * Square(Square(near)) + 0.15 * Square(near)};
    });
    return halo_;
}

}  // namespace render
