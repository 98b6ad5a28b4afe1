#pragma once

#include <array>
#include <cstdint>

namespace fountain {

/// The device family that an address drives.
enum class Device : std::uint8_t {
    Unknown,
    OperatorDisplay,
    Ring,  ///< index 1..5
    Sweeps,
    BazookasSpout,
    Candelabras,
    CurtainsPeacock,
    WhiteLights,
    ModuleLights,  ///< index 1..7
    CurtainLights,
    PeacockLights,  ///< index 0 Group A, 1 Group B
    SweepMotion,    ///< index 0 synchronized, 1 opposed
    MultiValve,
    GroupLights,  ///< index 0 Group A, 1 Group B, 2 both
    Voice,
    SweepPulsation,
    Copy,
    LightMovement,
    LightTimer,
    Reset
};

/// The addresses that the code names; `document` names those of the reset and the copy, which it
/// keeps ahead of all others. What every address drives is in `kCommandRules`.
inline constexpr int kOperatorDisplayAddress = 0;
inline constexpr int kSweepsAddress = 6;  ///< rings 1..5 are their own addresses
inline constexpr int kBazookasSpoutAddress = 7;
inline constexpr int kCandelabrasAddress = 8;
inline constexpr int kCurtainsPeacockAddress = 9;
inline constexpr int kWhiteLightsAddress = 16;
inline constexpr int kFirstModuleAddress = 17;
inline constexpr int kLastModuleAddress = 23;
inline constexpr int kCurtainLightsAddress = 24;
inline constexpr int kPeacockALightsAddress = 25;
inline constexpr int kPeacockBLightsAddress = 26;
inline constexpr int kSynchronizedMotionAddress = 33;
inline constexpr int kOpposedMotionAddress = 34;
inline constexpr int kPeacockBTooAddress = 41;  ///< as 26, and meant to
inline constexpr int kMultiValveAddress = 48;
inline constexpr int kGroupALightsAddress = 49;
inline constexpr int kGroupBLightsAddress = 50;
inline constexpr int kBothLightsAddress = 51;
inline constexpr int kVoiceAddress = 54;
inline constexpr int kSweepPulsationAddress = 69;
inline constexpr int kLightMovementAddress = 85;
inline constexpr int kLightTimerAddress = 86;

/// Data bits that several devices share.
inline constexpr int kLevelBits = 7;
inline constexpr int kGroupABit = 16;
inline constexpr int kGroupBBit = 32;
inline constexpr int kGroupBits = kGroupABit | kGroupBBit;
inline constexpr int kJoinBit = 64;
inline constexpr int kPeacockBit = 64;  ///< with `kGroupBBit`: the peacock, not the back curtain
inline constexpr int kLampBits = 15;
inline constexpr int kHighestLevel = 5;
inline constexpr int kWeddingCakeLevel = 6;  ///< multi-valve only

/// Sweep motion: 0 stop, 1 slow, 2 medium, 3 fast.
[[nodiscard]] constexpr int SweepSpeedOf(int data)
{
    return (data & 96) / 32;
}

/// Sweep motion: steps of ten degrees to either side, 0..3.
[[nodiscard]] constexpr int SweepTravelOf(int data)
{
    return data & 3;
}

/// The data bit of group 0 (A) or 1 (B).
[[nodiscard]] constexpr int GroupBit(int group)
{
    return kGroupABit << group;
}

/// Which bits of the data say what; 0 where the device has no such bits.
struct CommandRule {
    Device device = Device::Unknown;
    std::uint8_t index = 0;  ///< which one of the family
    std::uint8_t level = 0;  ///< level or light value
    std::uint8_t group = 0;  ///< which group, or which of the devices of the address
    std::uint8_t join = 0;   ///< joins both groups

    friend bool operator==(const CommandRule&, const CommandRule&) = default;
};

extern const std::array<CommandRule, 256> kCommandRules;

/// The rule of an address; an address that drives nothing has `Device::Unknown`. A replay asks it
/// for every command of a show, so it is inline.
[[nodiscard]] inline const CommandRule& RuleFor(std::uint8_t address)
{
    return kCommandRules[address];
}

}  // namespace fountain
