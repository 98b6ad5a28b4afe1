#pragma once

#include <QDialog>
#include <QPushButton>

#include "document/choreography.h"

namespace ui {

/// The typeface of the window, grown with it, at the size of running text.
[[nodiscard]] QFont DialogFont(const QWidget* window);

/// Gives a dialog the typeface of the window and a size of `design` logical pixels of the design
/// screen, both grown with the window that it belongs to, within the screen.
void FitDialog(QDialog& dialog, QSize design);

/// A button of a dialog; `toolTip` says what it does. Enter presses only the default button.
[[nodiscard]] QPushButton* AddDialogButton(QDialog& dialog, const char* name, const char* caption,
                                           const char* toolTip);

/// "21 November 2026, 18:05:09", whatever the locale; `modified` is ns since 1970.
[[nodiscard]] QString MomentText(qint64 modified);

/// "1,234 times, 5,678 commands".
[[nodiscard]] QString CountsText(const document::Choreography& show);

}  // namespace ui
