#pragma once

#include "ui/panel_control.h"

namespace ui {

/// Where the lights begin, and everything at their right ends; in design pixels.
inline constexpr double kLightsLeft = 614;
inline constexpr double kLightsRight = 1012;

/// The board of the lamps, what moves and copies them, erasing and the resets.
void AddLightControls(PanelRows& rows);

}  // namespace ui
