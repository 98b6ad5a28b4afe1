#pragma once

#include <vector>

#include "ui/panel_control.h"

namespace ui {

/// The controls of the panel, in Tab order.
[[nodiscard]] const std::vector<PanelControl>& PanelForm();

/// Where lines part the groups of the panel, on the design screen.
[[nodiscard]] const std::vector<QRectF>& PanelSeparators();

}  // namespace ui
