#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "fountain/fountain.h"
#include "panel/panel_state.h"

namespace panel {

/// What the handler of a control works on: it changes the panel and previews on the fountain.
struct PanelEdit {
    PanelState& panel;
    fountain::Fountain& fountain;
};

/// A spinner of the panel, or an array of them.
struct SpinnerControl {
    std::string_view name;
    int first;
    int last;
    Spinner& (*at)(PanelState& panel, int index);
    void (*changed)(PanelEdit edit, int index);  ///< the handler, after the value has changed
};

/// A label, or an array of them, whose click changes nothing but the panel and the preview.
struct LabelControl {
    std::string_view name;
    int first;
    int last;
    void (*clicked)(PanelEdit edit, int index);
};

/// Every control of the panel stands in one of these tables.
[[nodiscard]] std::span<const SpinnerControl> SpinnerControls();
[[nodiscard]] std::span<const LabelControl> LabelControls();

/// Null when no control has this name.
[[nodiscard]] const SpinnerControl* FindSpinner(std::string_view name);
[[nodiscard]] const LabelControl* FindLabel(std::string_view name);

/// The spinner takes `value`, clamped to its range, and its handler runs once.
void SetSpinner(PanelEdit edit, const SpinnerControl& control, int index, int value);
/// One press of the spinner's up (+1) or down (-1) arrow; at the end of its range it does nothing.
void PressSpinner(PanelEdit edit, const SpinnerControl& control, int index, int direction);
void ClickLabel(PanelEdit edit, const LabelControl& control, int index);

/// One press of an arrow of `updnRotateTime`: index 0 steps a second, 1 a tenth; 0.4 to 9.9 s.
void PressRotateTime(PanelEdit edit, int index, int direction);

}  // namespace panel
