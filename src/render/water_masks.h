#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace render {

/// Device pixels per pixel of the design screen.
struct PixelScale {
    double x = 1;
    double y = 1;

    [[nodiscard]] double Smaller() const { return x < y ? x : y; }
    friend bool operator==(const PixelScale&, const PixelScale&) = default;
};

/// A number 0..1 that looks random and is always the same for the same arguments: water needs
/// irregularity, a picture has to be repeatable.
[[nodiscard]] float Scatter(std::uint32_t first, std::uint32_t second);

/// A piece of water without its colour.
struct Mask {
    struct Point {
        std::uint8_t alpha = 0;  ///< how much it covers
        std::uint8_t light = 0;  ///< how far it shines beyond its colour
    };

    int width = 0;
    int height = 0;
    std::vector<Point> points;
};

enum class VeilStyle { Solid, Lines, Sheer };
enum class VeilPart { Left, Middle, Right };

/// The pieces that all water is put together from, at one scale. Each is made when first asked for
/// and serves all colours. Sizes are in pixels of the design screen.
class WaterMasks {
 public:
    static constexpr int kPlumes = 4;       ///< variants
    static constexpr int kThicknesses = 8;  ///< of a streak, 0 the thinnest
    static constexpr int kDirections = 24;  ///< of a streak, in half a turn
    static constexpr int kSubpixels = 2;    ///< places of a streak within a pixel, each way
    static constexpr int kStreaks = kThicknesses * kDirections * kSubpixels * kSubpixels;
    static constexpr double kPlumeHalfWidth = 5.2;
    static constexpr double kMistRadius = 15;
    static constexpr double kVeilWidth = 96;
    static constexpr double kTallest = 290;

    explicit WaterMasks(PixelScale scale);

    [[nodiscard]] PixelScale Scale() const { return scale_; }
    const Mask& Plume(int variant);
    const Mask& Streak(int index);
    const Mask& Veil(VeilStyle style, VeilPart part);
    const Mask& Pool();
    const Mask& Aura();
    const Mask& Mist();
    const Mask& Halo();

    [[nodiscard]] static double StreakRadius(int thickness);

 private:
    PixelScale scale_;
    std::array<Mask, kPlumes> plumes_;
    std::vector<Mask> streaks_;
    std::array<Mask, 9> veils_;
    Mask pool_;
    Mask aura_;
    Mask mist_;
    Mask halo_;
};

}  // namespace render
