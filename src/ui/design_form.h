#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <span>

#include "fountain/scene_layout.h"

namespace ui {

/// Longest line of raw codes: as many commands as a time can hold.
inline constexpr int kLongestCodesLine = 11 * 8 - 1;

/// A control of the main window and its place on the design screen, 1024 x 768 logical pixels.
struct FormControl {
    const char* name;  ///< its objectName
    double x;
    double y;
    double width;
    double height;
    int font;            ///< pixels; 0 for a control without text
    const char* sample;  ///< the longest text that it must show whole; empty when it may be cut
    const char* accessibleName;
    const char* toolTip;  ///< empty for frames, which are no controls by themselves
};

/// All of them, in Tab order.
[[nodiscard]] std::span<const FormControl> Form();
/// The entry of a control that is on the form.
[[nodiscard]] const FormControl& FormEntry(const char* name);

/// A rectangle of the design screen in a window; rectangles that touch still touch.
[[nodiscard]] QRect Scaled(const QRectF& design, fountain::ScaleFactors scale);
[[nodiscard]] QRect PlaceOf(const FormControl& control, fountain::ScaleFactors scale);

/// The window's typeface, and the one for raw codes; sizes are set control by control.
[[nodiscard]] QFont FormFont();
[[nodiscard]] QFont CodesFont();

/// The font of `control` in `family`: it grows with the larger scale, with the smaller one where
/// the larger would clip the text.
[[nodiscard]] QFont FontOf(const FormControl& control, fountain::ScaleFactors scale, QFont family);

}  // namespace ui
