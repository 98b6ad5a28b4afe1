#pragma once

#include <cstdint>
#include <string_view>

#include "fountain/fountain.h"
#include "panel/panel_state.h"

namespace panel {

/// Shows the fountain's state on the panel and makes it the value that every control was loaded
/// with. `commands` are those stored at exactly the current time, empty when there are none: the
/// reset and copy labels show them. The operator display stays as it is but for its Tag.
void LoadPanel(PanelState& panel, const fountain::Fountain& fountain, std::string_view commands);

/// Sets the operator's number, its hexadecimal caption included.
void SetOperatorDisplay(PanelState& panel, std::uint8_t number);

/// Writes the ends of a swing of `travel` steps (0..3) of ten degrees into `lblSweepTo`.
void ShowSweepEnds(PanelState& panel, int travel);

/// What a reset of the fountain does to the panel at once: light labels off, joins empty, travel
/// short. No edit of the user's, so the Tags follow.
void BlankPanel(PanelState& panel);

/// The light timer's `interval` in ms as seconds with tenths: 2500 is "2.5".
[[nodiscard]] std::string RotateTimeText(std::int32_t interval);

}  // namespace panel
