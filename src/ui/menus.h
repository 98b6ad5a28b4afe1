#pragma once

#include <span>

namespace ui {

/// An item of a menu. The engine's masks say when it may be used.
struct MenuItem {
    const char* caption;  ///< null for a separator
    bool works = false;   ///< it has its job already
    bool checkable = false;
    const char* shortcut = "";
};

struct MenuEntry {
    const char* name;      ///< objectName of the menu
    const char* itemName;  ///< objectName of its items, without the index
    const char* caption;
    std::span<const MenuItem> items;
};

/// The items of the window itself at the end of the Display menu, by index; the engine's masks do
/// not know them.
enum WindowItem : int { kFirstWindowItem = 6, kTimeStripItem = 7, kScriptItem = 8 };

/// File, Display and Help, in the order of `timeline::Menu`.
[[nodiscard]] std::span<const MenuEntry> Menus();

}  // namespace ui
