#pragma once

#include <QIcon>

namespace ui {

/// The program's icon, for windows. Painted here, because what reads the desktop's own picture of
/// it (packaging/icons) is an extra part of Qt, and nothing is installed where the program was
/// built.
[[nodiscard]] QIcon AppIcon();

}  // namespace ui
