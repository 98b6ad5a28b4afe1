#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "document/choreography.h"

namespace document {

/// The commands of one time before and after a change; nothing where no slot lay there.
struct SlotChange {
    std::int32_t time = 0;
    std::optional<Commands> before;
    std::optional<Commands> after;

    friend bool operator==(const SlotChange&, const SlotChange&) = default;
};

/// What a choreography counts beside its slots.
struct Counts {
    std::array<std::int32_t, 2> intTimeCount{};
    std::array<std::int32_t, 2> intCommandCount{};
    bool blnTooMany = false;

    friend bool operator==(const Counts&, const Counts&) = default;
};

/// A change of a choreography: either all slots from one time on move, or single times change.
struct Patch {
    std::int32_t shiftFrom = 0;       ///< ms, the time of the first slot that moves
    std::int32_t shift = 0;           ///< ms, 0 when none does
    std::vector<SlotChange> changes;  ///< by increasing time; beside a shift none
    Counts countsBefore;
    Counts countsAfter;

    /// True when no slot changes.
    [[nodiscard]] bool Empty() const { return shift == 0 && changes.empty(); }
    friend bool operator==(const Patch&, const Patch&) = default;
};

[[nodiscard]] Counts CountsOf(const Choreography& choreography);

/// The commands of the slot at exactly `time`, if there is one.
[[nodiscard]] std::optional<Commands> ListAt(const Choreography& choreography, std::int32_t time);

/// ms, where one looks for what the patch did.
[[nodiscard]] std::int32_t TimeOf(const Patch& patch);

/// What makes `after` of `before`, time by time.
[[nodiscard]] Patch ComparePatch(const Choreography& before, const Choreography& after);

/// The patch that takes `patch` back.
[[nodiscard]] Patch Reversed(Patch patch);

/// Changes slots and counts. False when the patch is not one of this choreography as it stands, or
/// would not leave it in order: nothing is changed then. The flags and the file name stay.
[[nodiscard]] bool ApplyPatch(Choreography& choreography, const Patch& patch);

/// All of them one after another, or none.
[[nodiscard]] bool ApplyPatches(Choreography& choreography, const std::vector<Patch>& patches);

}  // namespace document
