#include "document/prune.h"

#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace document {
namespace {

/// A set of addresses.
using AddressSet = std::array<std::uint64_t, 4>;

constexpr void Insert(AddressSet& set, std::size_t address)
{
    set[address / 64] |= std::uint64_t{1} << address % 64;
}

constexpr bool Contains(const AddressSet& set, std::size_t address)
{
    return (set[address / 64] >> address % 64 & 1U) != 0;
}

/// A device of `first`..`last` may also have been switched on at one of the `sources`.
struct Sources {
    std::uint8_t first;
    std::uint8_t last;
    std::uint8_t step;
    std::initializer_list<std::uint8_t> sources;
};

// For every address the addresses whose devices a command there can switch on.
constexpr auto kSwitchedOnBy = [] {
    // clang-format off
    const Sources table[] = {
        { 1,  6, 1, {48, 80}},
        { 8,  8, 1, {80}},
        {16, 16, 1, {17, 18, 19, 20, 21, 22, 23, 49, 50, 51, 80, 85}},
        {17, 23, 2, {16, 49, 51, 80, 85}},
        {18, 22, 2, {16, 50, 51, 80, 85}},
        {25, 25, 1, {26, 41}},
        {26, 26, 1, {25, 41}},
        {48, 48, 1, {1, 2, 3, 4, 5, 6, 80}},
        {49, 49, 1, {16, 17, 19, 21, 23, 51, 80, 85}},
        {50, 50, 1, {16, 18, 20, 22, 51, 80, 85}},
        {51, 51, 1, {16, 17, 18, 19, 20, 21, 22, 23, 49, 50, 80, 85}},
    };
    // clang-format on
    std::array<AddressSet, 256> effects{};
    for (std::size_t address = 0; address < 256; ++address)
        Insert(effects[address], address);
    for (const Sources& row : table)
        for (std::size_t address = row.first; address <= row.last; address += row.step)
            for (const std::uint8_t source : row.sources)
                Insert(effects[source], address);
    return effects;
}();

// The data bits of an "off" command are all 0 under its address's mask. The bit above the data
// stands for addresses that know no "off".
constexpr unsigned kNeverOff = 0x100;
constexpr auto kOnMasks = [] {
    std::array<std::uint16_t, 256> masks{};
    masks.fill(kNeverOff);
    for (std::size_t address = 0; address <= 9; ++address)
        masks[address] = 0xCF;
    masks[48] = 0xCF;
    for (std::size_t address = 16; address <= 26; ++address)
        masks[address] = 0xFF;
    for (const std::size_t address :
         std::initializer_list<std::size_t>{33, 34, 49, 50, 51, 54, 69, 80, 85})
        masks[address] = 0xFF;
    masks[86] = 0xFC;  // a period below 0.4 s
    return masks;
}();

constexpr bool IsOff(Command command)
{
    return ((command.data | kNeverOff) & kOnMasks[command.address]) == 0;
}

constexpr bool IsSweepMotion(std::uint8_t address)
{
    return address == 33 || address == 34;
}

/// What has been switched on so far.
class Seen {
 public:
    [[nodiscard]] bool Has(std::uint8_t address) const { return Contains(set_, address); }
    void Note(Command command)
    {
        if (command.data == 0)
            return;
        const AddressSet& effects = kSwitchedOnBy[command.address];
        for (std::size_t k = 0; k < set_.size(); ++k)
            set_[k] |= effects[k];
    }
    void Note(const Commands& commands)
    {
        for (int k = 0; k < CommandCount(commands); ++k)
            Note(CommandAt(commands, k));
    }

 private:
    AddressSet set_{1};  // the operator's display, which a reset does not clear
};

/// Removes from `list` what `seen` says changes nothing, and adds to `seen` what the rest
/// switches on. True when the list differs then.
bool PruneList(Commands& list, Seen& seen)
{
    bool exchanged = false;
    std::size_t kept = 0;
    std::size_t at = 0;
    for (; at + 1 < list.size(); at += 2) {
        Command command{static_cast<std::uint8_t>(list[at]),
                        static_cast<std::uint8_t>(list[at + 1])};
        if (IsOff(command) && !seen.Has(command.address)) {
            if (!IsSweepMotion(command.address))
                continue;
            const auto other = static_cast<std::uint8_t>(67 - command.address);
            if (!seen.Has(other))
                continue;
            const std::string_view view = list;
            const bool beside =
                HasAddress(view.substr(0, kept), other) || HasAddress(view.substr(at), other);
            if (!beside) {
                command.address = other;
                exchanged = true;
            }
        }
        seen.Note(command);
        list[kept++] = static_cast<char>(command.address);
        list[kept++] = static_cast<char>(command.data);
    }
    const bool removed = kept < at;
    list.erase(kept, at - kept);
    return exchanged || removed;
}

/// Takes the slots with empty lists out.
void EraseEmptySlots(Choreography& choreography)
{
    std::size_t kept = 0;
    for (std::size_t slot = 0; slot < choreography.lngTime.size(); ++slot) {
        const bool sentinel = slot + 1 == choreography.lngTime.size();
        if (choreography.strCommands[slot].empty() && !sentinel)
            continue;
        if (kept < slot) {
            choreography.lngTime[kept] = choreography.lngTime[slot];
            choreography.strCommands[kept] = std::move(choreography.strCommands[slot]);
            choreography.blnReset[kept] = choreography.blnReset[slot];
        }
        ++kept;
    }
    choreography.lngTime.resize(kept);
    choreography.strCommands.resize(kept);
    choreography.blnReset.resize(kept);
}

/// The slot where the walk back from `slot` ends.
std::int32_t WalkBack(const Commands& list, const Choreography& choreography, std::int32_t slot,
                      std::int32_t currentTime)
{
    const bool later = choreography.lngTime[static_cast<std::size_t>(slot)] > currentTime;
    const bool ownResetCounts = BeginsWithReset(list) && !(later && slot > 0);
    std::int32_t reset = slot;
    if (reset > 0 && !ownResetCounts)
        --reset;
    while (reset > 0 && choreography.blnReset[static_cast<std::size_t>(reset)] == 0)
        --reset;
    return reset;
}

}  // namespace

void PruneCommands(Commands& list, const Choreography& choreography, std::int32_t slot,
                   std::int32_t currentTime)
{
    Seen seen;
    for (std::int32_t k = WalkBack(list, choreography, slot, currentTime); k <= slot; ++k)
        seen.Note(choreography.strCommands[static_cast<std::size_t>(k)]);
    PruneList(list, seen);
}

PruneResult PruneChoreography(Choreography& choreography)
{
    PruneResult result;
    Seen seen;
    const auto slots = static_cast<std::size_t>(choreography.lngLastSlot());
    for (std::size_t slot = 0; slot < slots; ++slot) {
        Commands& list = choreography.strCommands[slot];
        const int before = CommandCount(list);
        result.changed |= PruneList(list, seen);
        result.commands += before - CommandCount(list);
        if (list.empty())
            ++result.times;
        if (choreography.blnReset[slot] != 0) {
            seen = Seen{};
            seen.Note(list);
        }
    }
    if (result.times > 0) {
        EraseEmptySlots(choreography);
        result.changed = true;
    }
    return result;
}

}  // namespace document
