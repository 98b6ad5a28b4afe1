#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "document/command_list.h"

namespace document {

inline constexpr std::int32_t kMostSlots = 54000;  ///< times a choreography can hold
inline constexpr std::int32_t kEndSentinel =
    7'200'000;  ///< ms, the time of the slot behind the last
inline constexpr std::int32_t kFirstTimeWithoutText = 6'000'000;  ///< ms; mm:ss.t ends at 99:59.9

/// The document: times with their commands. The three arrays always have the same size; their
/// last element is the end sentinel. Times strictly increase, and `blnReset` says exactly whether
/// the slot's list begins with the reset marker. Only the functions below change the arrays.
struct Choreography {
    std::vector<std::int32_t> lngTime{kEndSentinel};  ///< ms from the start of the music
    std::vector<Commands> strCommands{Commands{}};
    std::vector<std::uint8_t> blnReset{0};

    bool blnChanged = false;  ///< differs from the control file on disk
    bool blnTooMany = false;  ///< some time held more than `kMostCommands` when it was read
    std::array<std::int32_t, 2> intTimeCount{};     ///< times: loaded, currently
    std::array<std::int32_t, 2> intCommandCount{};  ///< commands: loaded, currently
    std::filesystem::path fileName;                 ///< the control file, empty when unsaved
    bool fileExists = false;

    /// Index of the end sentinel, which is the number of times.
    [[nodiscard]] std::int32_t lngLastSlot() const
    {
        return static_cast<std::int32_t>(lngTime.size()) - 1;
    }
    [[nodiscard]] bool IsFull() const { return lngLastSlot() >= kMostSlots; }

    friend bool operator==(const Choreography&, const Choreography&) = default;
};

/// Puts a new slot at `index` (0..lngLastSlot); it must keep the times in order and not be full.
void InsertSlot(Choreography& choreography, std::int32_t index, std::int32_t time,
                Commands commands);

/// Replaces the commands of slot `index` (0..lngLastSlot-1) and its reset flag.
void StoreCommands(Choreography& choreography, std::int32_t index, Commands commands);

/// Moves the slots from `index` on (0..lngLastSlot) by `amount` ms; they must stay behind the slot
/// before them, at 0 or later, and ahead of the sentinel.
void ShiftSlots(Choreography& choreography, std::int32_t index, std::int32_t amount);

/// Takes slot `index` (0..lngLastSlot-1) out.
void EraseSlot(Choreography& choreography, std::int32_t index);

/// The last slot at or before `time`, or -1 when every slot is later.
[[nodiscard]] std::int32_t SlotAtOrBefore(const Choreography& choreography, std::int32_t time);

/// The commands of all slots together. Unlike `intCommandCount`, which counts edits in characters.
[[nodiscard]] std::int32_t CommandTotal(const Choreography& choreography);

/// The slot exactly at `time`, or -1.
[[nodiscard]] std::int32_t SlotAt(const Choreography& choreography, std::int32_t time);

/// What `lblControlFile` shows: the file name in lower case, or "unsaved choreography".
[[nodiscard]] std::string ControlFileCaption(const Choreography& choreography);

}  // namespace document
