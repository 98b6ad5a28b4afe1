#pragma once

#include <string>
#include <string_view>

#include "cli/report.h"
#include "editor/editor.h"

namespace cli {

enum class Operation { Set, Spin, Click, RightClick };

struct ControlEntry;

/// One control of the window: what its name and its index say.
struct Control {
    const ControlEntry* entry = nullptr;
    int index = 0;
};

/// "lblLight_5", "lblVoice", "mnuDisplayAction_2": the name that the widget has.
[[nodiscard]] Parsed<Control> FindControl(std::string_view name);

/// True for Save of the File menu.
[[nodiscard]] bool IsSave(Control control);

/// Why this control can never do this, or an empty text.
[[nodiscard]] std::string WhyNot(Control control, Operation operation);

/// Performs it as the window would. `amount` is the value to set or the presses, downward below 0.
/// Why it was refused, or an empty text. Only for what `WhyNot` has nothing against.
[[nodiscard]] std::string Operate(editor::Editor& editor, Control control, Operation operation,
                                  int amount);

}  // namespace cli
