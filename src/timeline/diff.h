#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/choreography.h"

namespace timeline {

enum class ChangeKind { Shifted, Removed, Added, Changed };

/// Something that differs between two choreographies.
struct Change {
    ChangeKind kind = ChangeKind::Changed;
    std::int32_t time = 0;              ///< ms; of a shift or a removal the time that was
    std::int32_t lastTime = 0;          ///< of a shift, the last time that was
    std::int32_t shift = 0;             ///< ms, of a shift
    std::vector<std::string> settings;  ///< "Ring 3 on Group A: level 2 -> level 4"

    friend bool operator==(const Change&, const Change&) = default;
};

/// What changed from `before` to `after`, in order of time; empty when nothing did.
[[nodiscard]] std::vector<Change> Diff(const document::Choreography& before,
                                       const document::Choreography& after);

/// The change in English, a line or more, each with its line end.
[[nodiscard]] std::string ChangeText(const Change& change);

/// "+2.5 s": tenths, and more places only where `ms` is finer than the tenth.
[[nodiscard]] std::string SecondsText(std::int32_t ms);

/// How much changed, in a few words: "2 times changed, 1 time added", "nothing changed".
[[nodiscard]] std::string DiffSummary(const std::vector<Change>& changes);

}  // namespace timeline
