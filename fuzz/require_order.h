#pragma once

#include <cstddef>
#include <cstdlib>

#include "document/choreography.h"

namespace fuzzing {

inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}

inline void RequireOrder(const document::Choreography& show)
{
    Require(show.lngTime.size() == show.strCommands.size());
    Require(show.lngTime.size() == show.blnReset.size());
    Require(show.lngTime.back() == document::kEndSentinel);
    for (std::size_t slot = 0; slot < show.lngTime.size(); ++slot) {
        Require(slot == 0 || show.lngTime[slot - 1] < show.lngTime[slot]);
        Require((show.blnReset[slot] != 0) == document::BeginsWithReset(show.strCommands[slot]));
    }
}

}  // namespace fuzzing
