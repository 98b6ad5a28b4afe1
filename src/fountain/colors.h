#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "document/indexed_array.h"

namespace fountain {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend constexpr bool operator==(Color, Color) = default;
};

/// Bits of a light value: the lamps of a module.
enum Lamp : std::int16_t { kRed = 1, kBlue = 2, kAmber = 4, kWhite = 8 };

/// Entries of `mlngColors` that the back curtain's lights use.
inline constexpr int kCurtainGreenColor = 6;
inline constexpr int kCurtainAmberColor = 4;
inline constexpr int kCurtainBothColor = 16;

inline constexpr Color kPanelOff{192, 192, 192};
inline constexpr Color kPanelOn{255, 255, 255};

struct LegendEntry {
    Color color;               ///< `lblLegend`
    std::string_view caption;  ///< `lblLegendKey`
};

/// One display colour per light value, and entry 16 for the back curtain's green and amber.
// clang-format off
inline constexpr document::IndexedArray<LegendEntry, 0, 16> kLegend{{{
    {{ 64,  64,  64}, " no lights"},
    {{255,   0,   0}, " red"},
    {{  0,   0, 255}, " blue"},
    {{255,   0, 255}, " red and blue"},
    {{255, 255,   0}, " amber"},
    {{255, 128,   0}, " red and amber"},
    {{  0, 255,   0}, " blue and amber"},
    {{ 64,   0,   0}, " red, blue, and amber"},
    {{255, 255, 255}, " white"},
    {{255, 128, 128}, " red and white"},
    {{128, 128, 255}, " blue and white"},
    {{255, 128, 255}, " red, blue, and white"},
    {{255, 255, 128}, " amber and white"},
    {{255, 192, 128}, " red, amber, and white"},
    {{128, 255, 128}, " blue, amber, and white"},
    {{128,  64,  64}, " red, blue, amber, and white"},
    {{192, 224,  48}, " green and amber (curtain)"},
}}};
// clang-format on

/// The display colour of a light value 0..15, or of the curtain's entry 16.
constexpr Color mlngColors(int index)
{
    return kLegend[index].color;
}

/// The notes of the legend frame, `lblNotes`.
extern const std::array<std::string_view, 3> kLegendNotes;

}  // namespace fountain
