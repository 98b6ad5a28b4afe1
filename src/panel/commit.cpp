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

Commit CommitPanel(Choreography& choreography, std::int32_t time, PanelState& panel,
                   const fountain::Fountain& fountain)
{
    const std::int32_t lightTimer = fountain.tmrLights.Interval();
    if (!HasPendingEdits(panel) && lightTimer == panel.lngLightTimerTag)
        return panel.blnTouched ? Commit::Touched : Commit::Nothing;

    const std::int32_t before = document::SlotAtOrBefore(choreography, time);
    const bool stored = before >= 0 && choreography.lngTime[At(before)] == time;
    const std::int32_t slot = stored ? before : before + 1;
    const Commands old = stored ? choreography.strCommands[At(slot)] : Commands{};

    Commands commands = old;
    document::SplitCommands(commands);
    EncodePanel(commands, panel, {FountainBefore(choreography, time), lightTimer});
    document::MergeCommands(commands);
    document::PruneCommands(commands, choreography, slot, time);

    if (commands == old)
        return Commit::Touched;
    if (!stored && choreography.IsFull())
        return Commit::Full;
    CountCharacters(choreography, old.size(), commands.size());
    choreography.blnChanged = true;
    if (commands.empty()) {
        DeleteTime(choreography, time);
    } else if (stored) {
        document::StoreCommands(choreography, slot, std::move(commands));
    } else {
        document::InsertSlot(choreography, slot, time, std::move(commands));
        ++choreography.intTimeCount[1];
    }
    return Commit::Stored;
}

}  // namespace panel
