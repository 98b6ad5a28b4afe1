#include "document/choreography.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace document {

void InsertSlot(Choreography& choreography, std::int32_t index, std::int32_t time,
                Commands commands)
{
    assert(index >= 0 && index <= choreography.lngLastSlot() && !choreography.IsFull());
    assert(index == 0 || choreography.lngTime[static_cast<std::size_t>(index) - 1] < time);
    assert(time < choreography.lngTime[static_cast<std::size_t>(index)]);
    const bool reset = BeginsWithReset(commands);
    choreography.lngTime.insert(choreography.lngTime.begin() + index, time);
    choreography.strCommands.insert(choreography.strCommands.begin() + index, std::move(commands));
    choreography.blnReset.insert(choreography.blnReset.begin() + index, reset ? 1 : 0);
}

void StoreCommands(Choreography& choreography, std::int32_t index, Commands commands)
{
    assert(index >= 0 && index < choreography.lngLastSlot());
    const auto slot = static_cast<std::size_t>(index);
    choreography.blnReset[slot] = BeginsWithReset(commands) ? 1 : 0;
    choreography.strCommands[slot] = std::move(commands);
}

void ShiftSlots(Choreography& choreography, std::int32_t index, std::int32_t amount)
{
    const auto last = static_cast<std::size_t>(choreography.lngLastSlot());
    for (auto slot = static_cast<std::size_t>(index); slot < last; ++slot)
        choreography.lngTime[slot] += amount;
}

void EraseSlot(Choreography& choreography, std::int32_t index)
{
    assert(index >= 0 && index < choreography.lngLastSlot());
    choreography.lngTime.erase(choreography.lngTime.begin() + index);
    choreography.strCommands.erase(choreography.strCommands.begin() + index);
    choreography.blnReset.erase(choreography.blnReset.begin() + index);
}

std::int32_t SlotAtOrBefore(const Choreography& choreography, std::int32_t time)
{
    const auto first = choreography.lngTime.begin();
    return static_cast<std::int32_t>(std::upper_bound(first, choreography.lngTime.end() - 1, time) -
                                     first) -
           1;
}

std::int32_t CommandTotal(const Choreography& choreography)
{
    std::int32_t total = 0;
    for (const Commands& commands : choreography.strCommands)
        total += CommandCount(commands);
    return total;
}

std::int32_t SlotAt(const Choreography& choreography, std::int32_t time)
{
    const std::int32_t slot = SlotAtOrBefore(choreography, time);
    const bool exact = slot >= 0 && choreography.lngTime[static_cast<std::size_t>(slot)] == time;
    return exact ? slot : -1;
}

std::string ControlFileCaption(const Choreography& choreography)
{
    if (!choreography.fileExists)
        return "unsaved choreography";
    std::string caption = choreography.fileName.string();
    for (char& c : caption)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return caption;
}

}  // namespace document
