#pragma once

#include <cstdint>

#include "document/choreography.h"
#include "document/command_list.h"

namespace document {

/// Normalisation, third pass: removes from `list`, which is about to be stored in `slot`, the "off"
/// commands that change nothing because their device was not switched on since the last reset.
/// A stop of sweep motion changes to the address of the motion that runs. `slot` may be
/// lngLastSlot (a new last time). `currentTime` (ms): a slot later than it that resets does not
/// count for its own list.
void PruneCommands(Commands& list, const Choreography& choreography, std::int32_t slot,
                   std::int32_t currentTime);

/// What pruning a whole choreography took away.
struct PruneResult {
    std::int32_t times = 0;     ///< slots that became empty and were taken out
    std::int32_t commands = 0;  ///< commands removed
    bool changed = false;       ///< some list differs

    friend bool operator==(const PruneResult&, const PruneResult&) = default;
};

/// Prunes every slot in order of time, in one pass over the commands. Each list is pruned as if
/// its own slot were still empty and without a reset flag. Does not touch flags and counters.
PruneResult PruneChoreography(Choreography& choreography);

}  // namespace document
