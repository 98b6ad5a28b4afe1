#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "document/merge_key.h"

namespace document {

/// The commands of one time, packed: two 8-bit characters per command, the address and
/// the data, in the order in which the fountain executes them. An odd last character is no command.
using Commands = std::string;

inline constexpr int kMostCommands =
    11;  ///< commands that the fountain's controller takes at one time
inline constexpr std::uint8_t kResetAddress = 99;
inline constexpr std::uint8_t kCopyAddress = 80;

struct Command {
    std::uint8_t address = 0;
    std::uint8_t data = 0;

    friend bool operator==(const Command&, const Command&) = default;
};

[[nodiscard]] inline int CommandCount(std::string_view commands)
{
    return static_cast<int>(commands.size() / 2);
}

/// Command `k`, counted from 0. `k` must be below `CommandCount`.
[[nodiscard]] inline Command CommandAt(std::string_view commands, int k)
{
    const auto at = static_cast<std::size_t>(k) * 2;
    return {static_cast<std::uint8_t>(commands[at]), static_cast<std::uint8_t>(commands[at + 1])};
}

/// One request to change the commands of a time.
struct CommandList {
    std::int16_t Address = 0;
    std::int16_t Data = 0;
    std::int16_t Mask = 0;     ///< data bits that tell apart commands of one address
    std::int16_t Replace = 0;  ///< bits of the old data that give way to the new data
    std::int16_t Merge = 0;    ///< 0 append; 1 update, else append; other values update only
};

/// Applies `request` to `commands`. A request with an address outside 0..255 is dropped.
/// When it may update, the reset marker (99) and the copy command (80) go to the front
/// instead of the end; a time that resets the fountain takes no copy command, and a reset
/// that comes to a time with a copy command takes its place.
void AddCommand(Commands& commands, const CommandList& request);

/// True when some command has this address.
[[nodiscard]] bool HasAddress(std::string_view commands, int address);

/// True when the list begins with the reset marker.
[[nodiscard]] bool BeginsWithReset(std::string_view commands);

enum class Which { First, All };

/// Removes the first command or all commands with this address; none if it is outside 0..255.
void RemoveCommand(Commands& commands, int address, Which which);

/// Normalisation, first pass: a command of a water device for both groups becomes two.
void SplitCommands(Commands& commands);

/// Normalisation, second pass: one command per address, group and device.
void MergeCommands(Commands& commands);

/// Builds the list that `MergeCommands` would make of the commands added so far, in constant time
/// a command however long the list is.
class ListMerger {
 public:
    void Add(Command command);
    void Add(std::string_view commands);

    [[nodiscard]] int Count() const { return CommandCount(front_) + CommandCount(body_); }

    /// Hands the list out and begins a new one.
    [[nodiscard]] Commands Take();

 private:
    Commands front_;  // the reset marker or the copy command, if any
    Commands body_;
    std::array<std::uint16_t, kMergeKeys> places_{};  // by key: command of `body_` counted from 1
};

/// "003-020 099-000": three-digit address and data of every command; empty for an empty list.
[[nodiscard]] std::string CommandText(std::string_view commands);

/// Appends the `CommandText` to `text`.
void AppendCommandText(std::string& text, std::string_view commands);

}  // namespace document
