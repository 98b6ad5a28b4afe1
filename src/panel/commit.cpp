#include "panel/commit.h"

#include <utility>

#include "document/prune.h"
#include "panel/encoder.h"
#include "panel/list_edit.h"

namespace panel {
namespace {

using document::Choreography;
using document::Commands;

std::size_t At(std::int32_t slot)
{
    return static_cast<std::size_t>(slot);
}

// Counted in characters, two a command: this count has always been kept so.
void CountCharacters(Choreography& choreography, std::size_t before, std::size_t after)
{
    choreography.intCommandCount[1] +=
        static_cast<std::int32_t>(after) - static_cast<std::int32_t>(before);
}

/// Where the commands of a time stand, or would stand.
struct Place {
    std::int32_t slot = 0;
    bool stored = false;
    Commands commands;
};

Place PlaceOf(const Choreography& choreography, std::int32_t time)
{
    const std::int32_t before = document::SlotAtOrBefore(choreography, time);
    if (before >= 0 && choreography.lngTime[At(before)] == time)
        return {before, true, choreography.strCommands[At(before)]};
    return {before + 1, false, {}};
}

}  // namespace

bool DeleteTime(Choreography& choreography, std::int32_t time)
{
    const std::int32_t slot = document::SlotAt(choreography, time);
    if (slot < 0)
        return false;
    document::EraseSlot(choreography, slot);
    choreography.blnChanged = true;
    return true;
}

bool EraseAddresses(Choreography& choreography, std::int32_t time, int first, int last)
{
    const std::int32_t slot = document::SlotAt(choreography, time);
    if (slot < 0)
        return false;
    Commands commands = choreography.strCommands[At(slot)];
    for (int address = first; address <= last; ++address)
        document::RemoveCommand(commands, address, document::Which::All);
    if (commands.empty())
        return DeleteTime(choreography, time);
    document::StoreCommands(choreography, slot, std::move(commands));
    choreography.blnChanged = true;
    return true;
}

fountain::Fountain FountainBefore(const Choreography& choreography, std::int32_t time)
{
    const std::int32_t end = document::SlotAtOrBefore(choreography, time - 1) + 1;
    std::int32_t slot = end;
    while (slot > 0 && (slot == end || !choreography.blnReset[At(slot)]))
        --slot;
    fountain::Fountain fountain;
    for (; slot < end; ++slot)
        Apply(fountain, choreography.strCommands[At(slot)]);
    return fountain;
}

Commands ComposeCommands(const Choreography& choreography, std::int32_t time, PanelState& panel,
                         std::int32_t lightTimer, const fountain::Fountain& before)
{
    const Place place = PlaceOf(choreography, time);
    Commands commands = place.commands;
    document::SplitCommands(commands);
    EncodePanel(commands, panel, {before, lightTimer});
    document::MergeCommands(commands);
    document::PruneCommands(commands, choreography, place.slot, time);
    return commands;
}

Commit CommitPanel(Choreography& choreography, std::int32_t time, PanelState& panel,
                   const fountain::Fountain& fountain)
{
    const std::int32_t lightTimer = fountain.tmrLights.Interval();
    if (!HasPendingEdits(panel) && lightTimer == panel.lngLightTimerTag)
        return panel.blnTouched ? Commit::Touched : Commit::Nothing;

    const Place place = PlaceOf(choreography, time);
    Commands commands =
        ComposeCommands(choreography, time, panel, lightTimer, FountainBefore(choreography, time));
    if (commands == place.commands)
        return Commit::Touched;
    if (!place.stored && choreography.IsFull())
        return Commit::Full;
    CountCharacters(choreography, place.commands.size(), commands.size());
    choreography.blnChanged = true;
    if (commands.empty()) {
        DeleteTime(choreography, time);
    } else if (place.stored) {
        document::StoreCommands(choreography, place.slot, std::move(commands));
    } else {
        document::InsertSlot(choreography, place.slot, time, std::move(commands));
        ++choreography.intTimeCount[1];
    }
    return Commit::Stored;
}

}  // namespace panel
