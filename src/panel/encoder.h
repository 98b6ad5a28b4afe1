#pragma once

#include <cstdint>

#include "document/command_list.h"
#include "fountain/fountain.h"
#include "panel/panel_state.h"

namespace panel {

/// What the encoders need beside the panel and the commands that they change.
struct EncodeContext {
    const fountain::Fountain& before;  ///< the fountain just before the time, by replay
    std::int32_t lightTimer = 0;       ///< ms, the interval that the light timer has now
};

/// Writes every control that differs from its Tag into `commands`, the list of the current time,
/// in which no command drives both groups any more (`SplitCommands`). Controls that were not
/// changed write nothing. A copy that was left half set is switched off on the panel.
void EncodePanel(document::Commands& commands, PanelState& panel, const EncodeContext& context);

/// The encoders of the control families, in the order in which `EncodePanel` runs them.
void EncodeReset(document::Commands& commands, const PanelState& panel);
void EncodeDisplay(document::Commands& commands, const PanelState& panel);
void EncodeCopy(document::Commands& commands, PanelState& panel);
void EncodeWater(document::Commands& commands, const PanelState& panel,
                 const EncodeContext& context);
void EncodeLights(document::Commands& commands, const PanelState& panel,
                  const EncodeContext& context);
void EncodeLightMotion(document::Commands& commands, const PanelState& panel,
                       const EncodeContext& context);
void EncodeSweepMotion(document::Commands& commands, const PanelState& panel,
                       const EncodeContext& context);

/// True when a ring, sweep, candelabra, multi-valve or join control differs from its Tag.
[[nodiscard]] bool GroupWaterChanged(const PanelState& panel);

}  // namespace panel
