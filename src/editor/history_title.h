#pragma once

#include <string>

#include "document/patch.h"

namespace editor {

/// What a change does, as a menu names it behind "Undo" or "Redo": "Ring 3 on Group A to level 4 at
/// 01:05.3".
[[nodiscard]] std::string EditTitle(const document::Patch& patch);

}  // namespace editor
