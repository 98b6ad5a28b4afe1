#pragma once

#include <cstdint>

#include "document/choreography.h"
#include "fountain/fountain.h"
#include "panel/panel_state.h"

namespace panel {

enum class Commit {
    Nothing,  ///< no control had been touched
    Touched,  ///< controls had been touched, and what is stored stays as it was
    Stored,   ///< what is stored has changed
    Full      ///< the edit needs a new time, and every slot is taken: nothing was written
};

/// Writes what is pending on the panel into the choreography at `time` (ms, on the grid). The
/// panel and the fountain must then be rebuilt, unless nothing was done.
[[nodiscard]] Commit CommitPanel(document::Choreography& choreography, std::int32_t time,
                                 PanelState& panel, const fountain::Fountain& fountain);

/// The commands that `CommitPanel` would leave at `time`. `before` is the fountain just before it.
/// A copy that is left half set goes off on the panel.
[[nodiscard]] document::Commands ComposeCommands(const document::Choreography& choreography,
                                                 std::int32_t time, PanelState& panel,
                                                 std::int32_t lightTimer,
                                                 const fountain::Fountain& before);

/// Takes out the slot at exactly `time`, if there is one. The count of times stays, as it always
/// has been in this count.
bool DeleteTime(document::Choreography& choreography, std::int32_t time);

/// Removes every command with an address in first..last from the slot at exactly `time`, and the
/// slot with its last command. False when there is no such slot.
bool EraseAddresses(document::Choreography& choreography, std::int32_t time, int first, int last);

/// The fountain just before `time`: the slots before it replayed from the nearest reset.
[[nodiscard]] fountain::Fountain FountainBefore(const document::Choreography& choreography,
                                                std::int32_t time);

}  // namespace panel
