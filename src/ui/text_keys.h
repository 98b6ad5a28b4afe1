#pragma once

#include <QEvent>
#include <QWidget>

namespace ui {

/// Undo and redo by the keyboard belong to the text that is being typed in `focus`, and otherwise
/// to the show. A number is being typed until it is entered. True when nobody else shall see the
/// event.
[[nodiscard]] bool ActOnTextKey(QWidget* focus, QEvent* event);

}  // namespace ui
