#include "ui/menus.h"

#include <array>

namespace ui {
namespace {

constexpr MenuItem kSeparator{nullptr};
constexpr std::array kFile = std::to_array<MenuItem>({
    {.caption = "&New", .works = true, .shortcut = "Ctrl+N"},
    {.caption = "&Open...", .works = true, .shortcut = "Ctrl+O"},
    kSeparator,
    {.caption = "&Save", .works = true, .shortcut = "Ctrl+S"},
    {.caption = "Save &As...", .works = true, .shortcut = "Ctrl+Shift+S"},
    {.caption = "&Undo All", .works = true},
    kSeparator,
    {.caption = "&Print", .works = true, .shortcut = "Ctrl+P"},
    kSeparator,
    {.caption = "E&xit", .works = true, .shortcut = "Ctrl+Q"},
});
constexpr std::array kDisplay = std::to_array<MenuItem>({
    {"&Legends", true, true},
    kSeparator,
    {"&Candelabras", true, true},
    {"&Back curtain", true, true},
    kSeparator,
    {"&AB Codes", true, true},
    kSeparator,
    {"Time &Strip", true, true},
    {"Sc&ript", true, true},
});
constexpr std::array kHelp = std::to_array<MenuItem>({
    {.caption = "&Contents", .works = true, .shortcut = "F1"},
    {.caption = "&Search for...", .works = true},
    kSeparator,
    {.caption = "&About...", .works = true},
});

constexpr std::array kMenus = std::to_array<MenuEntry>({
    {"mnuFile", "mnuFileAction", "&File", kFile},
    {"mnuDisplay", "mnuDisplayAction", "&Display", kDisplay},
    {"mnuHelp", "mnuHelpAction", "&Help", kHelp},
});

}  // namespace

std::span<const MenuEntry> Menus()
{
    return kMenus;
}

}  // namespace ui
