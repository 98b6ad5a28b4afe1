#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace document {

/// How two commands of one address combine.
enum class MergeKind : std::uint8_t {
    LastWins,  ///< one command survives, with the data of the last
    Water,     ///< alike in 0x8F: groups and joining add up
    Curtains,  ///< alike in 0xCF: groups add up
    Pulsation  ///< as the curtains, but a stop (data 0) never meets a start
};

namespace detail {

inline constexpr std::array<std::uint8_t, 4> kMergeMasks = {0, 0x8F, 0xCF, 0xCF};
inline constexpr std::array<std::uint16_t, 4> kKeysOfKind = {1, 32, 64, 65};

constexpr MergeKind KindOf(int address)
{
    if ((address >= 1 && address <= 8) || address == 48)
        return MergeKind::Water;
    if (address == 9)
        return MergeKind::Curtains;
    return address == 69 ? MergeKind::Pulsation : MergeKind::LastWins;
}

/// The bits of `data` under `mask`, moved together.
constexpr std::uint8_t Squeeze(unsigned data, unsigned mask)
{
    unsigned squeezed = 0;
    unsigned width = 0;
    for (unsigned bit = 0; bit < 8; ++bit)
        if ((mask >> bit & 1U) != 0)
            squeezed |= (data >> bit & 1U) << width++;
    return static_cast<std::uint8_t>(squeezed);
}

struct MergeTables {
    std::array<MergeKind, 256> kinds{};
    std::array<std::uint16_t, 256> firstKeys{};
    std::array<std::array<std::uint8_t, 256>, 4> keys{};  // by kind and data, from the first on
    int keyCount = 0;
};

constexpr MergeTables MakeMergeTables()
{
    MergeTables tables;
    for (std::size_t address = 0; address < 256; ++address) {
        tables.kinds[address] = KindOf(static_cast<int>(address));
        tables.firstKeys[address] = static_cast<std::uint16_t>(tables.keyCount);
        tables.keyCount += kKeysOfKind[static_cast<std::size_t>(tables.kinds[address])];
    }
    for (std::size_t kind = 0; kind < 4; ++kind)
        for (unsigned data = 0; data < 256; ++data)
            tables.keys[kind][data] = Squeeze(data, kMergeMasks[kind]);
    tables.keys[static_cast<std::size_t>(MergeKind::Pulsation)][0] = 64;
    return tables;
}

inline constexpr MergeTables kMergeTables = MakeMergeTables();

}  // namespace detail

inline constexpr int kMergeKeys = detail::kMergeTables.keyCount;

[[nodiscard]] constexpr MergeKind MergeKindOf(std::uint8_t address)
{
    return detail::kMergeTables.kinds[address];
}

/// 0..kMergeKeys-1. `MergeCommands` combines two commands exactly when their keys are equal; the
/// keys of the reset marker and of the copy command only tell them apart from the others.
[[nodiscard]] constexpr std::uint16_t MergeKey(std::uint8_t address, std::uint8_t data)
{
    const auto kind = static_cast<std::size_t>(detail::kMergeTables.kinds[address]);
    return static_cast<std::uint16_t>(detail::kMergeTables.firstKeys[address] +
                                      detail::kMergeTables.keys[kind][data]);
}

}  // namespace document
