#pragma once

#include <cstdint>

namespace document {

/// Where the editor stands in the choreography.
struct Position {
    std::int32_t mlngCurrentTime = 0;  ///< ms from the start of the music
    std::int32_t mlngNextSlot = 0;     ///< first slot whose commands have not been applied

    friend bool operator==(const Position&, const Position&) = default;
};

}  // namespace document
