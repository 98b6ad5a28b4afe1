#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace timeline {

/// Points in the music, `lstMarks`: sorted tenths of a second, none twice.
struct Marks {
    std::vector<std::int32_t> tenths;
    std::int32_t selected = -1;  ///< index of the selected mark, -1 for none

    [[nodiscard]] bool Empty() const { return tenths.empty(); }
    /// ms of the selected mark, of the first where none is; there must be one.
    [[nodiscard]] std::int32_t SelectedTime() const;

    friend bool operator==(const Marks&, const Marks&) = default;
};

/// Puts a mark in its place; one that is there already is selected instead. `time` in ms.
void AddMark(Marks& marks, std::int32_t time);

/// Selects the mark behind or ahead of the selected one, as far as there is one.
void SelectNext(Marks& marks);
void SelectPrevious(Marks& marks);

/// The mark's text in the list: tenths of a second in five digits, so that text sorts as time.
[[nodiscard]] std::string MarkText(std::int32_t tenths);

}  // namespace timeline
