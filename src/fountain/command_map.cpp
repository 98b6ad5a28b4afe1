#include "fountain/command_map.h"

#include <algorithm>
#include <iterator>

namespace fountain {
namespace {

struct Entry {
    int first;
    int last;
    CommandRule rule;
};

// clang-format off
using enum Device;
constexpr Entry kEntries[] = {
    // from  to   device          index level  group  join
    {   0,   0, {OperatorDisplay,  0, 255,      0,     0}},
    {   1,   5, {Ring,             1,   7,  16|32,    64}},  // the index counts up with the address
    {   6,   6, {Sweeps,           0,   7,  16|32,    64}},
    {   7,   7, {BazookasSpout,    0,   7,  16|32,     0}},  // 16 bazookas, 32 spout
    {   8,   8, {Candelabras,      0,   7,  16|32,    64}},
    {   9,   9, {CurtainsPeacock,  0,   7,  16|32|64,  0}},  // 16 front, 32 back, 32 + 64 peacock
    {  16,  16, {WhiteLights,      0,  14,      0,     0}},  // 2 cross, 4 bazookas, 8 modules
    {  17,  23, {ModuleLights,     1,  15,      0,     0}},
    {  24,  24, {CurtainLights,    0,  48,      0,     0}},  // 16 green, 32 amber
    {  25,  26, {PeacockLights,    0,   7,      0,     0}},
    {  33,  34, {SweepMotion,      0,  96|3,    0,     0}},  // speed, travel
    {  41,  41, {PeacockLights,    1,   7,      0,     0}},  // a second address of Group B, meant so
    {  48,  48, {MultiValve,       0,   7,  16|32,     0}},
    {  49,  51, {GroupLights,      0,  15,      0,     0}},
    {  54,  54, {Voice,            0, 255,      0,     0}},
    {  69,  69, {SweepPulsation,   0,  64,  16|32,     0}},  // 64 downward
    {  80,  80, {Copy,             0,   3,  16|32,     0}},  // 1 water, 2 lights
    {  85,  85, {LightMovement,    0, 127,      0,     0}},
    {  86,  86, {LightTimer,       0, 255,      0,     0}},  // tenths of a second
    {  99,  99, {Reset,            0,   0,      0,     0}},
};
// clang-format on
static_assert(std::ranges::adjacent_find(kEntries,
                                         [](const Entry& a, const Entry& b) {
                                             return a.last >= b.first;
                                         }) == std::end(kEntries),
              "addresses ascend and never overlap");

}  // namespace

constexpr std::array<CommandRule, 256> kCommandRules = [] {
    std::array<CommandRule, 256> rules{};
    for (const Entry& entry : kEntries) {
        for (int address = entry.first; address <= entry.last; ++address) {
            CommandRule& rule = rules[static_cast<std::size_t>(address)] = entry.rule;
            rule.index = static_cast<std::uint8_t>(rule.index + address - entry.first);
        }
    }
    return rules;
}();

}  // namespace fountain
