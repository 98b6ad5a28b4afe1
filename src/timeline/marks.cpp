#include "timeline/marks.h"

#include <algorithm>

namespace timeline {
namespace {

constexpr std::int32_t kTenth = 100;  // ms
constexpr std::size_t kDigits = 5;

}  // namespace

std::int32_t Marks::SelectedTime() const
{
    return tenths[static_cast<std::size_t>(std::max(selected, 0))] * kTenth;
}

void AddMark(Marks& marks, std::int32_t time)
{
    const std::int32_t mark = time / kTenth;
    const auto place = std::ranges::lower_bound(marks.tenths, mark);
    const auto index = static_cast<std::int32_t>(place - marks.tenths.begin());
    if (place != marks.tenths.end() && *place == mark) {
        marks.selected = index;
        return;
    }
    marks.tenths.insert(place, mark);
    if (marks.selected >= index)
        ++marks.selected;  // the selected mark stays selected
}

void SelectNext(Marks& marks)
{
    const auto last = static_cast<std::int32_t>(marks.tenths.size()) - 1;
    marks.selected = std::min(marks.selected + 1, last);
}

void SelectPrevious(Marks& marks)
{
    marks.selected = std::max(marks.selected - 1, 0);
}

std::string MarkText(std::int32_t tenths)
{
    std::string text = std::to_string(tenths);
    text.insert(0, kDigits - std::min(kDigits, text.size()), '0');
    return text;
}

}  // namespace timeline
