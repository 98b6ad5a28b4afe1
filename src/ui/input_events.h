#pragma once

#include <QEvent>

namespace ui {

/// True for what the user does: keys, buttons, wheel, touch and pen.
[[nodiscard]] bool IsInput(QEvent::Type type);

}  // namespace ui
