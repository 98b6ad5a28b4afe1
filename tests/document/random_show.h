#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "document/choreography.h"
#include "document/command_list.h"

namespace testing_support {

/// A small generator whose sequence is the same on every platform.
class Random {
 public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15U + 1) {}

    /// 0 .. `bound` - 1.
    int Below(int bound)
    {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<int>((state_ >> 11) % static_cast<std::uint64_t>(bound));
    }
    bool OneIn(int chances) { return Below(chances) == 0; }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Below(256)); }
    template <std::size_t N>
    std::uint8_t OneOf(const std::array<std::uint8_t, N>& values)
    {
        return values[static_cast<std::size_t>(Below(static_cast<int>(N)))];
    }

 private:
    std::uint64_t state_;
};

/// Every address that drives something, but for the reset marker.
inline constexpr std::array<std::uint8_t, 37> kAddresses = {
    0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  16, 17, 18, 19, 20, 21, 22, 23, 24,
    25, 26, 33, 34, 41, 48, 49, 50, 51, 54, 69, 80, 85, 86, 1,  6,  33, 34};

/// A command with data that means something at its address; one in three switches off.
inline document::Command RandomCommand(Random& random)
{
    const std::uint8_t address = random.OneOf(kAddresses);
    const bool off = random.OneIn(3);
    const int groups = 16 * (1 + random.Below(3));
    int data = off ? 0 : random.Byte();
    if ((address >= 1 && address <= 9) || address == 48)
        data = (off ? 0 : 1 + random.Below(6)) + groups + 64 * random.Below(2);
    else if (address >= 16 && address <= 23)
        data = off ? 0 : 1 + random.Below(15);
    else if (address == 33 || address == 34)
        data = off ? 0 : 32 * (1 + random.Below(3)) + 1 + 2 * random.Below(2);
    else if (address == 69)
        data = off ? 0 : groups + 64 * random.Below(2);
    else if (address == 80)
        data = off ? 0 : groups + 1 + random.Below(3);
    else if (address == 85)
        data = off ? 0 : 1 + random.Below(2) + 16 * (1 + random.Below(2)) + 64 * random.Below(2);
    return {address, static_cast<std::uint8_t>(data)};
}

/// `count` commands as they come, not normalised.
inline document::Commands RandomCommands(Random& random, int count)
{
    document::Commands commands;
    for (int k = 0; k < count; ++k) {
        const document::Command command = RandomCommand(random);
        commands += static_cast<char>(command.address);
        commands += static_cast<char>(command.data);
    }
    return commands;
}

struct ShowOptions {
    int times = 40;
    int mostCommands = 6;  ///< at a time
    int resetOneIn = 8;    ///< times with a reset, 0 for none
};

/// A choreography of merged but not pruned lists, at whole tenths of a second.
inline document::Choreography RandomShow(Random& random, const ShowOptions& options)
{
    document::Choreography show;
    std::int32_t time = 100 * random.Below(20);
    for (int k = 0; k < options.times; ++k) {
        document::Commands commands =
            RandomCommands(random, 1 + random.Below(options.mostCommands));
        if (options.resetOneIn > 0 && random.OneIn(options.resetOneIn))
            commands.insert(0, {static_cast<char>(document::kResetAddress), '\0'});
        document::SplitCommands(commands);
        document::MergeCommands(commands);
        if (!commands.empty())
            document::InsertSlot(show, show.lngLastSlot(), time, std::move(commands));
        time += 100 * (1 + random.Below(30));
    }
    return show;
}

}  // namespace testing_support
