#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "editor/editor.h"
#include "fountain/colors.h"

namespace cli {

/// "#RRGGBB", upper case.
[[nodiscard]] std::string ColorText(fountain::Color color);

/// Every control of the panel by its name.
[[nodiscard]] nlohmann::ordered_json PanelJson(const editor::Editor& editor);

}  // namespace cli
