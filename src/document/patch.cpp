#include "document/patch.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>

namespace document {
namespace {

// Beyond this, building the arrays anew costs less than moving their ends for every slot.
constexpr std::size_t kFewChanges = 8;

std::size_t At(std::int32_t slot)
{
    return static_cast<std::size_t>(slot);
}

bool Fits(const Choreography& choreography, const std::vector<SlotChange>& slots)
{
    std::int64_t count = choreography.lngLastSlot();
    std::int32_t earliest = 0;
    for (const SlotChange& change : slots) {
        if (change.time < earliest || change.time >= kEndSentinel ||
            ListAt(choreography, change.time) != change.before)
            return false;
        earliest = change.time + 1;
        count += (change.after ? 1 : 0) - (change.before ? 1 : 0);
    }
    return count <= kMostSlots;
}

void ChangeSlot(Choreography& choreography, const SlotChange& change)
{
    const std::int32_t slot = SlotAtOrBefore(choreography, change.time);
    if (change.before)
        StoreCommands(choreography, slot, *change.after);
    else
        InsertSlot(choreography, slot + 1, change.time, *change.after);
}

void Append(Choreography& choreography, std::int32_t time, Commands commands)
{
    choreography.lngTime.push_back(time);
    choreography.blnReset.push_back(BeginsWithReset(commands) ? 1 : 0);
    choreography.strCommands.push_back(std::move(commands));
}

void RebuildSlots(Choreography& choreography, const std::vector<SlotChange>& slots)
{
    const std::vector<std::int32_t> times = std::exchange(choreography.lngTime, {});
    std::vector<Commands> lists = std::exchange(choreography.strCommands, {});
    choreography.blnReset.clear();
    auto change = slots.begin();
    for (std::size_t slot = 0; slot < times.size(); ++slot) {
        bool replaced = false;
        for (; change != slots.end() && change->time <= times[slot]; ++change) {
            replaced = change->time == times[slot];
            if (change->after)
                Append(choreography, change->time, *change->after);
        }
        if (!replaced)
            Append(choreography, times[slot], std::move(lists[slot]));
    }
}

bool ChangeSlots(Choreography& choreography, const std::vector<SlotChange>& slots)
{
    if (!Fits(choreography, slots))
        return false;
    if (slots.size() > kFewChanges) {
        RebuildSlots(choreography, slots);
        return true;
    }
    // What goes makes room for what comes.
    for (const SlotChange& change : slots)
        if (change.before && !change.after)
            EraseSlot(choreography, SlotAt(choreography, change.time));
    for (const SlotChange& change : slots)
        if (change.after)
            ChangeSlot(choreography, change);
    return true;
}

bool Shift(Choreography& choreography, std::int32_t from, std::int32_t amount)
{
    const std::int32_t slot = SlotAt(choreography, from);
    if (slot < 0)
        return false;
    const std::int64_t first = std::int64_t{from} + amount;
    const std::int64_t earliest = slot > 0 ? choreography.lngTime[At(slot - 1)] + 1 : 0;
    const std::int64_t last =
        std::int64_t{choreography.lngTime[At(choreography.lngLastSlot() - 1)]} + amount;
    if (first < earliest || last >= kEndSentinel)
        return false;
    ShiftSlots(choreography, slot, amount);
    return true;
}

}  // namespace

Counts CountsOf(const Choreography& choreography)
{
    return {choreography.intTimeCount, choreography.intCommandCount, choreography.blnTooMany};
}

std::optional<Commands> ListAt(const Choreography& choreography, std::int32_t time)
{
    const std::int32_t slot = SlotAt(choreography, time);
    if (slot < 0)
        return std::nullopt;
    return choreography.strCommands[At(slot)];
}

std::int32_t TimeOf(const Patch& patch)
{
    if (patch.shift != 0)
        return patch.shiftFrom + patch.shift;
    return patch.changes.empty() ? 0 : patch.changes.front().time;
}

Patch ComparePatch(const Choreography& before, const Choreography& after)
{
    Patch patch;
    patch.countsBefore = CountsOf(before);
    patch.countsAfter = CountsOf(after);
    const std::size_t slotsBefore = At(before.lngLastSlot());
    const std::size_t slotsAfter = At(after.lngLastSlot());
    std::size_t b = 0;
    std::size_t a = 0;
    // The sentinels' time, which ends both, is later than any other.
    while (b < slotsBefore || a < slotsAfter) {
        SlotChange change;
        change.time = std::min(before.lngTime[b], after.lngTime[a]);
        if (before.lngTime[b] == change.time)
            change.before = before.strCommands[b++];
        if (after.lngTime[a] == change.time)
            change.after = after.strCommands[a++];
        if (change.before != change.after)
            patch.changes.push_back(std::move(change));
    }
    return patch;
}

Patch Reversed(Patch patch)
{
    std::swap(patch.countsBefore, patch.countsAfter);
    for (SlotChange& change : patch.changes)
        std::swap(change.before, change.after);
    patch.shiftFrom += patch.shift;
    patch.shift = -patch.shift;
    return patch;
}

bool ApplyPatch(Choreography& choreography, const Patch& patch)
{
    if (patch.shift != 0
            ? !patch.changes.empty() || !Shift(choreography, patch.shiftFrom, patch.shift)
            : !ChangeSlots(choreography, patch.changes))
        return false;
    choreography.intTimeCount = patch.countsAfter.intTimeCount;
    choreography.intCommandCount = patch.countsAfter.intCommandCount;
    choreography.blnTooMany = patch.countsAfter.blnTooMany;
    return true;
}

bool ApplyPatches(Choreography& choreography, const std::vector<Patch>& patches)
{
    for (auto patch = patches.begin(); patch != patches.end(); ++patch) {
        if (ApplyPatch(choreography, *patch))
            continue;
        bool back = true;  // what was just done can be taken back
        while (patch != patches.begin())
            back = ApplyPatch(choreography, Reversed(*--patch)) && back;
        assert(back);
        static_cast<void>(back);
        return false;
    }
    return true;
}

}  // namespace document
