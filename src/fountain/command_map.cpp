#include "fountain/command_map.h"

#include <algorithm>
#include <iterator>

#include "document/command_list.h"

namespace fountain {
namespace {

struct Entry {
    int first;
    int count;
    CommandRule rule;
};

// clang-format off
using enum Device;
constexpr Entry kEntries[] = {
    // first                  count  device          index level     group  join
    {kOperatorDisplayAddress,    1, {OperatorDisplay,   0,  255,        0,   0}},
    {1,                          5, {Ring,              1,    7,    16|32,  64}},
    {kSweepsAddress,             1, {Sweeps,            0,    7,    16|32,  64}},
    // 16 bazookas, 32 spout
    {kBazookasSpoutAddress,      1, {BazookasSpout,     0,    7,    16|32,   0}},
    {kCandelabrasAddress,        1, {Candelabras,       0,    7,    16|32,  64}},
    // 16 front, 32 back, 32 + 64 peacock
    {kCurtainsPeacockAddress,    1, {CurtainsPeacock,   0,    7, 16|32|64,   0}},
    // 2 cross, 4 bazookas, 8 modules
    {kWhiteLightsAddress,        1, {WhiteLights,       0,   14,        0,   0}},
    {kFirstModuleAddress,        7, {ModuleLights,      1,   15,        0,   0}},
    {kCurtainLightsAddress,      1, {CurtainLights,     0,   48,        0,   0}},  // 16 green, 32 amber
    {kPeacockALightsAddress,     2, {PeacockLights,     0,    7,        0,   0}},
    {kSynchronizedMotionAddress, 2, {SweepMotion,       0, 96|3,        0,   0}},  // speed, travel
    {kPeacockBTooAddress,        1, {PeacockLights,     1,    7,        0,   0}},
    {kMultiValveAddress,         1, {MultiValve,        0,    7,    16|32,   0}},
    {kGroupALightsAddress,       3, {GroupLights,       0,   15,        0,   0}},
    {kVoiceAddress,              1, {Voice,             0,  255,        0,   0}},
    {kSweepPulsationAddress,     1, {SweepPulsation,    0,   64,    16|32,   0}},  // 64 downward
    {document::kCopyAddress,     1, {Copy,              0,    3,    16|32,   0}},  // 1 water, 2 lights
    {kLightMovementAddress,      1, {LightMovement,     0,  127,        0,   0}},
    {kLightTimerAddress,         1, {LightTimer,        0,  255,        0,   0}},  // tenths of a second
    {document::kResetAddress,    1, {Reset,             0,    0,        0,   0}},
};
// clang-format on
static_assert(std::ranges::adjacent_find(kEntries,
                                         [](const Entry& a, const Entry& b) {
                                             return a.first + a.count > b.first;
                                         }) == std::end(kEntries),
              "addresses ascend and never overlap");

}  // namespace

constexpr std::array<CommandRule, 256> kCommandRules = [] {
    std::array<CommandRule, 256> rules{};
    for (const Entry& entry : kEntries) {
        for (int k = 0; k < entry.count; ++k) {
            CommandRule& rule = rules[static_cast<std::size_t>(entry.first + k)] = entry.rule;
            rule.index = static_cast<std::uint8_t>(rule.index + k);
        }
    }
    return rules;
}();

}  // namespace fountain
