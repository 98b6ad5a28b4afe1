#pragma once

#include <cstdint>

#include "document/indexed_array.h"

namespace fountain {

/// Modules 1, 3, 5, 7 are Group A, modules 2, 4, 6 Group B.
enum Group : int { kGroupA = 0, kGroupB = 1 };

template <typename T>
using PerGroup = document::IndexedArray<T, 0, 1>;

/// The decoded state of every device; the initial values are those of a reset fountain.
/// Levels are 0..5 (6 on the multi-valve: Wedding Cake), light values four bits (see `Lamp`).
struct FountainState {
    document::IndexedArray<std::int16_t, 1, 7> mintModuleLights;
    PerGroup<std::int16_t> mintGroupLights;    ///< value last given to the group
    PerGroup<std::int16_t> mintPeacockLights;  ///< value last set for the group, 0..7
    std::int16_t mintCurtainLights = 0;        ///< 0 off, 1 green, 2 amber, 3 both
    bool mblnCrossWhite = false;
    bool mblnBazookaWhite = false;
    bool mblnVoice = false;

    document::IndexedArray<bool, 1, 8> mblnJoined;  ///< rings 1..5, sweeps 6, candelabras 8
    document::IndexedArray<std::int16_t, 0, 9> mintRingLevel;  ///< ring r of group g at 2(r-1)+g
    PerGroup<std::int16_t> mintSweepLevel;
    PerGroup<std::int16_t> mintCandelabraLevel;
    PerGroup<std::int16_t> mintMultiValveLevel;
    PerGroup<std::int16_t> mintCurtainLevel;  ///< front, back
    std::int16_t mintBazookaLevel = 0;
    std::int16_t mintSpoutLevel = 0;
    std::int16_t mintPeacockLevel = 0;

    bool mblnLightsMoving = false;
    bool mblnLightsRight = true;
    bool mblnLightsWrap = false;
    bool mblnLightsTimed = false;
    std::int16_t mintLightTimer = 400;  ///< ms

    std::int16_t mintSweepSpeed = 0;     ///< 0 stopped, 1 slow, 2 medium, 3 fast
    bool mblnSweepsOpposed = false;      ///< a reset leaves it as it was
    std::int16_t mintSweepPosition = 3;  ///< 3 is upright, each step leans by 10 degrees
    std::int16_t mintSweepDirection = 1;
    std::int16_t mintSweepLow = 2;  ///< ends of the swing: 3 -/+ travel
    std::int16_t mintSweepHigh = 4;
    PerGroup<std::int16_t> mintPulseStep;  ///< top level, negative for downward, 0 for no pulsation
    PerGroup<std::int16_t> mintPulseBase;  ///< level last drawn
    PerGroup<bool> mblnPulseDown;

    friend bool operator==(const FountainState&, const FountainState&) = default;
};

[[nodiscard]] constexpr int RingIndex(int ring, int group)
{
    return 2 * (ring - 1) + group;
}

/// The group of a module 1..7.
[[nodiscard]] constexpr int GroupOfModule(int module)
{
    return (module - 1) % 2;
}

/// What is drawn, as far as the state does not tell: heights in half levels, because joined groups
/// are drawn at the mean of their levels, and settings as they were when the device was drawn.
struct Drawing {
    struct Sweeps {
        std::int16_t halves = 0;    ///< height drawn, in half levels
        std::int16_t position = 3;  ///< `mintSweepPosition` when drawn
        bool opposed = false;       ///< `mblnSweepsOpposed` when drawn

        friend bool operator==(const Sweeps&, const Sweeps&) = default;
    };

    document::IndexedArray<std::int16_t, 0, 9> ringHalves{};  ///< 0 hides the bar
    document::IndexedArray<std::int16_t, 0, 9> ringShown{
        ///< last height but 0: a hidden bar keeps it
        {10, 10, 10, 10, 10, 10, 10, 10, 10, 10}};
    PerGroup<std::int16_t> candelabraHalves{};
    PerGroup<Sweeps> sweeps{};
    std::int16_t peacockLights = 0;  ///< last light value of either group

    friend bool operator==(const Drawing&, const Drawing&) = default;
};

}  // namespace fountain
