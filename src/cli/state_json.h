#pragma once

#include <nlohmann/json.hpp>

#include "editor/editor.h"

namespace cli {

/// Everything that can be seen of an editor at this moment. The picture is at the design size.
[[nodiscard]] nlohmann::ordered_json StateJson(const editor::Editor& editor);

}  // namespace cli
