#pragma once

#include <cstdint>
#include <vector>

#include "document/choreography.h"

namespace timeline {

inline constexpr std::int32_t kNoSlot = -1;

/// For every slot of `before` the slot of `after` that it became, or `kNoSlot`. Times that were
/// moved as a block stay together; two slots at one time, or moved alike with their neighbours, are
/// the same slot though their commands differ.
[[nodiscard]] std::vector<std::int32_t> AlignSlots(const document::Choreography& before,
                                                   const document::Choreography& after);

}  // namespace timeline
