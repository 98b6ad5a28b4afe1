#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/choreography.h"

namespace timeline {

/// What a show does that a choreographer hardly means. The message follows the slot's time.
struct ShowFault {
    std::int32_t slot = 0;
    std::string message;

    friend bool operator==(const ShowFault&, const ShowFault&) = default;
};

/// Devices that fight, joins and effects that never end, long stretches without a reset, and times
/// beyond `musicLength` (ms, 0 when it is not known).
[[nodiscard]] std::vector<ShowFault> FindShowFaults(const document::Choreography& choreography,
                                                    std::int32_t musicLength);

}  // namespace timeline
