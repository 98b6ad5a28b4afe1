#pragma once

#include <QRect>
#include <QString>
#include <optional>
#include <span>
#include <vector>

namespace ui {

/// Where a window stands: its place while it is not maximised, and whether it is.
struct WindowPlace {
    QRect place;
    bool maximised = false;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

/// "100 50 1024 768", followed by " maximised" where it is.
[[nodiscard]] QString TextOf(const WindowPlace& place);
/// Nothing when the text is none that `TextOf` writes.
[[nodiscard]] std::optional<WindowPlace> WindowPlaceOf(const QString& text);

/// The place, moved and made smaller as far as needed to see all of the window. Screens that touch
/// may share it.
[[nodiscard]] QRect OnScreens(const QRect& place, std::span<const QRect> screens);

/// What the screens of now have to offer.
[[nodiscard]] std::vector<QRect> AvailableScreens();

/// Where a part of the window is docked: at a side with a width (left, right) or a height (top,
/// bottom), or floating at a place of its own.
struct DockPlace {
    Qt::DockWidgetArea side = Qt::RightDockWidgetArea;
    int extent = 0;  ///< pixels; 0 for the usual
    std::optional<QRect> floating;

    friend bool operator==(const DockPlace&, const DockPlace&) = default;
};

/// "right 320", followed by " 100 50 400 600" where it floats.
[[nodiscard]] QString TextOf(const DockPlace& place);
/// The usual place when the text is none that `TextOf` writes.
[[nodiscard]] DockPlace DockPlaceOf(const QString& text);

}  // namespace ui
