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

/// File, Display and Help, in the order of `timeline::Menu`.
[[nodiscard]] std::span<const MenuEntry> Menus();

}  // namespace ui
