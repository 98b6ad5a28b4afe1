#pragma once

#include <QString>

namespace ui {

/// The file of the manual: beside the program, or where the package puts it for a program in
/// `programFolder`. Empty when it is in neither place.
[[nodiscard]] QString FindHelpFile(const QString& programFolder);

}  // namespace ui
