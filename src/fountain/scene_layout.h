#pragma once

#include <cstdint>

#include "document/indexed_array.h"

namespace fountain {

/// All coordinates are layout units, 1/12 of a design pixel; y grows downward.
inline constexpr int kUnitsPerPixel = 12;
inline constexpr int kDesignWidth = 1024;  ///< pixels of the design screen
inline constexpr int kDesignHeight = 768;

struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double Bottom() const { return top + height; }
    friend bool operator==(const Box&, const Box&) = default;
};

struct Segment {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;

    friend bool operator==(const Segment&, const Segment&) = default;
};

/// The design positions of the elements of the view, relative to the view frame's corner.
/// `RingLabel(module, ring)` and its companions give the indices.
struct SceneLayout {
    Box fraView;  ///< the frame in the window
    document::IndexedArray<Box, 1, 35> lblRing;
    document::IndexedArray<Segment, 0, 41> linCandelabra;  ///< level 1
    document::IndexedArray<Segment, 0, 13> linSweep;       ///< level 5, upright, from the nozzle up
    document::IndexedArray<Segment, 0, 9> linBazooka;
    Segment linSpout;                                   ///< level 5, (x2, y2) at the bottom
    document::IndexedArray<Segment, 0, 12> linPeacock;  ///< level 1
    Segment linVoice;
    Segment linBase;
    document::IndexedArray<Box, 0, 1> shpCurtain;  ///< front, back; level 5
    Box lblCross;
    document::IndexedArray<Box, 0, 1> lblCurtainLight;  ///< green, amber
    document::IndexedArray<Box, 1, 7> lblLamps;         ///< the modules' lamp letters

    friend bool operator==(const SceneLayout&, const SceneLayout&) = default;
};

[[nodiscard]] constexpr int RingLabel(int module, int ring)
{
    return (module - 1) * 5 + ring;
}
[[nodiscard]] constexpr int CandelabraLine(int module, int jet)
{
    return (module - 1) * 6 + jet;
}
[[nodiscard]] constexpr int SweepLine(int module, int side)
{
    return (module - 1) * 2 + side;
}

struct Vector {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend bool operator==(const Vector&, const Vector&) = default;
};

/// What device drawing needs of a layout, rounded to whole units.
struct Measures {
    document::IndexedArray<std::int32_t, 1, 5> ringUnit;    ///< a sixth of the full bar
    document::IndexedArray<Vector, 0, 5> candelabraVector;  ///< (x1 - x2, y1 - y2) at level 1
    document::IndexedArray<Vector, 0, 12> peacockVector;
    std::int32_t spoutLength = 0;
    std::int32_t sweepLength = 0;
    std::int32_t curtainUnit = 0;  ///< a sixth of the full back curtain

    friend bool operator==(const Measures&, const Measures&) = default;
};

/// The layout of the design screen, 1024 x 768 pixels.
[[nodiscard]] const SceneLayout& DesignLayout();

struct ScaleFactors {
    double x = 1;
    double y = 1;

    friend bool operator==(const ScaleFactors&, const ScaleFactors&) = default;
};

/// How a window of `width` x `height` pixels scales the design screen.
[[nodiscard]] ScaleFactors FitToScreen(double width, double height);

/// The layout with every position and size scaled.
[[nodiscard]] SceneLayout Fitted(const SceneLayout& layout, ScaleFactors scale);

[[nodiscard]] Measures Measure(const SceneLayout& layout);

}  // namespace fountain
