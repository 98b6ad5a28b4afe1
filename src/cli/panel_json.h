#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "fountain/colors.h"
#include "panel/panel_state.h"

namespace cli {

/// "#RRGGBB", upper case.
[[nodiscard]] std::string ColorText(fountain::Color color);

/// Every control of the panel by its name; `readout` is the caption of `lblTime`.
[[nodiscard]] nlohmann::ordered_json PanelJson(const panel::PanelState& panel,
                                               const std::string& readout);

}  // namespace cli
