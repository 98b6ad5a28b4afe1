#pragma once

#include <cstdint>
#include <vector>

namespace timeline {

/// Points in the music, `lstMarks`: sorted tenths of a second, none twice.
struct Marks {
    std::vector<std::int32_t> tenths;
    std::int32_t selected = -1;  ///< index of the selected mark, -1 for none

    friend bool operator==(const Marks&, const Marks&) = default;
};

}  // namespace timeline
