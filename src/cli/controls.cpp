#include "cli/controls.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>
#include <vector>

#include "cli/values.h"
#include "panel/controls.h"
#include "timeline/transport.h"

namespace cli {

/// A handler of null does not belong to the control.
struct ControlEntry {
    using Handler = bool (*)(editor::Editor& editor, const ControlEntry& entry, int index,
                             int amount);

    std::string_view name;
    int first = 0;
    int last = 0;
    bool (*enabled)(const editor::Editor& editor, int index) = nullptr;
    Handler set = nullptr;
    Handler press = nullptr;  ///< one press, amount +1 or -1
    Handler click = nullptr;
    Handler rightClick = nullptr;

    [[nodiscard]] bool IsArray() const { return first != 0 || last != 0; }
};

namespace {

using editor::Editor;

// --- when a control can be operated

bool PanelEnabled(const Editor& editor, int)
{
    return editor.Transport().fraControlsEnabled;
}

bool TimeEnabled(const Editor& editor, int)
{
    return editor.Transport().updnTimeEnabled;
}

bool ShiftOpen(const Editor& editor, int)
{
    return editor.ShiftPanel().visible;
}

bool FilesOpen(const Editor& editor, int)
{
    return editor.fraFileSelect().visible;
}

template <timeline::Menu Which>
bool ItemEnabled(const Editor& editor, int index)
{
    return editor.Transport().ItemEnabled(Which, index);
}

template <bool timeline::SongButtons::*Button>
bool SongEnabled(const Editor& editor, int)
{
    return editor.Transport().mmSong.*Button;
}

template <bool timeline::EditingButtons::*Button>
bool EditingEnabled(const Editor& editor, int)
{
    return editor.Transport().mmEditing.*Button;
}

// --- what it does; false when the editor has no such operation

bool SetSpinner(Editor& editor, const ControlEntry& entry, int index, int amount)
{
    return editor.SetSpinner(entry.name, index, amount);
}

bool PressSpinner(Editor& editor, const ControlEntry& entry, int index, int amount)
{
    return editor.PressSpinner(entry.name, index, amount);
}

bool ClickLabel(Editor& editor, const ControlEntry& entry, int index, int)
{
    return editor.ClickLabel(entry.name, index);
}

bool PressTime(Editor& editor, const ControlEntry&, int index, int amount)
{
    const auto field = static_cast<timeline::TimeField>(index);
    amount > 0 ? editor.StepTimeUp(field, 1) : editor.StepTimeDown(field, 1);
    return true;
}

bool PressRotateTime(Editor& editor, const ControlEntry&, int index, int amount)
{
    editor.updnRotateTime_Press(index, amount);
    return true;
}

bool PressShiftTime(Editor& editor, const ControlEntry&, int index, int amount)
{
    editor.updnShiftTime_Press(index, amount);
    return true;
}

template <void (Editor::*Handler)(int)>
bool ClickIndexed(Editor& editor, const ControlEntry&, int index, int)
{
    (editor.*Handler)(index);
    return true;
}

template <void (Editor::*Handler)()>
bool ClickSingle(Editor& editor, const ControlEntry&, int, int)
{
    (editor.*Handler)();
    return true;
}

bool ClickDisplayItem(Editor& editor, const ControlEntry&, int index, int)
{
    constexpr std::array kItems{editor::kLegendsItem, editor::kCandelabrasItem,
                                editor::kBackCurtainItem, editor::kABCodesItem};
    if (std::ranges::find(kItems, index) == kItems.end())
        return false;
    editor.ToggleDisplayOption(index);
    return true;
}

// A script is printed by a subcommand.
bool ClickFileItem(Editor& editor, const ControlEntry&, int index, int)
{
    if (index == editor::kPrintItem)
        return false;
    editor.mnuFileAction_Click(index);
    return true;
}

// The window's own business: dialogs, help, and panels that the command line does not open.
bool NotHere(Editor&, const ControlEntry&, int, int)
{
    return false;
}

using timeline::EditingButtons;
using timeline::SongButtons;

// Beside the panel's controls, which stand in the panel's tables.
// clang-format off
constexpr ControlEntry kOthers[] = {
    // name             from to  enabled                                set      press            click             right
    {"lblErase",          0, 19, PanelEnabled,                          nullptr, nullptr,         ClickIndexed<&Editor::lblErase_Click>, nullptr},
    {"lblOperator",       0,  0, PanelEnabled,                          nullptr, nullptr,         ClickSingle<&Editor::lblOperator_Click>, nullptr},
    {"lblReset",          0,  2, PanelEnabled,                          nullptr, nullptr,         ClickIndexed<&Editor::lblReset_Click>, nullptr},
    {"updnRotateTime",    0,  1, PanelEnabled,                          nullptr, PressRotateTime, nullptr,          nullptr},
    {"updnTime",          0,  2, TimeEnabled,                           nullptr, PressTime,       nullptr,          nullptr},
    {"updnShiftTime",     0,  2, ShiftOpen,                             nullptr, PressShiftTime,  nullptr,          nullptr},
    {"cmdShift",          0,  1, ShiftOpen,                             nullptr, nullptr,         ClickIndexed<&Editor::cmdShift_Click>, nullptr},
    {"cmdFileSelect",     0,  1, FilesOpen,                             nullptr, nullptr,         ClickIndexed<&Editor::cmdFileSelect_Click>, nullptr},
    {"lblTime",           0,  0, TimeEnabled,                           nullptr, nullptr,         ClickSingle<&Editor::OpenShiftPanel>, ClickSingle<&Editor::lblTime_RightClick>},
    {"mnuFileAction",     0,  9, ItemEnabled<timeline::kFileMenu>,      nullptr, nullptr,         ClickFileItem,    nullptr},
    {"mnuDisplayAction",  0,  5, ItemEnabled<timeline::kDisplayMenu>,   nullptr, nullptr,         ClickDisplayItem, nullptr},
    {"mnuHelpAction",     0,  3, ItemEnabled<timeline::kHelpMenu>,      nullptr, nullptr,         NotHere,          nullptr},
    {"mmSong_prev",       0,  0, SongEnabled<&SongButtons::prev>,       nullptr, nullptr,         ClickSingle<&Editor::mmSong_PrevClick>, nullptr},
    {"mmSong_play",       0,  0, SongEnabled<&SongButtons::play>,       nullptr, nullptr,         ClickSingle<&Editor::mmSong_PlayClick>, nullptr},
    {"mmSong_pause",      0,  0, SongEnabled<&SongButtons::pause>,      nullptr, nullptr,         ClickSingle<&Editor::mmSong_PauseClick>, nullptr},
    {"mmSong_stop",       0,  0, SongEnabled<&SongButtons::stop>,       nullptr, nullptr,         ClickSingle<&Editor::mmSong_StopClick>, nullptr},
    {"mmEditing_play",    0,  0, EditingEnabled<&EditingButtons::play>, nullptr, nullptr,         ClickSingle<&Editor::mmEditing_PlayClick>, nullptr},
    {"mmEditing_add",     0,  0, EditingEnabled<&EditingButtons::add>,  nullptr, nullptr,         ClickSingle<&Editor::mmEditing_AddClick>, nullptr},
    {"mmEditing_prev",    0,  0, EditingEnabled<&EditingButtons::prev>, nullptr, nullptr,         ClickSingle<&Editor::mmEditing_PrevClick>, nullptr},
    {"mmEditing_next",    0,  0, EditingEnabled<&EditingButtons::next>, nullptr, nullptr,         ClickSingle<&Editor::mmEditing_NextClick>, nullptr},
    {"mmEditing_clear",   0,  0, EditingEnabled<&EditingButtons::clear>,nullptr, nullptr,         ClickSingle<&Editor::mmEditing_ClearClick>, nullptr},
};
// clang-format on

std::vector<ControlEntry> MakeControls()
{
    std::vector<ControlEntry> controls(std::begin(kOthers), std::end(kOthers));
    for (const panel::SpinnerControl& spinner : panel::SpinnerControls())
        controls.push_back({.name = spinner.name,
                            .first = spinner.first,
                            .last = spinner.last,
                            .enabled = PanelEnabled,
                            .set = SetSpinner,
                            .press = PressSpinner});
    for (const panel::LabelControl& label : panel::LabelControls())
        controls.push_back({.name = label.name,
                            .first = label.first,
                            .last = label.last,
                            .enabled = PanelEnabled,
                            .click = ClickLabel});
    return controls;
}

const ControlEntry* FindEntry(std::string_view name)
{
    static const std::vector<ControlEntry> kControls = MakeControls();
    const auto found = std::ranges::find(kControls, name, &ControlEntry::name);
    return found == kControls.end() ? nullptr : &*found;
}

std::string Indices(const ControlEntry& entry)
{
    return std::to_string(entry.first) + " to " + std::to_string(entry.last);
}

ControlEntry::Handler HandlerOf(const ControlEntry& entry, Operation operation)
{
    switch (operation) {
        case Operation::Set:
            return entry.set;
        case Operation::Spin:
            return entry.press;
        case Operation::Click:
            return entry.click;
        case Operation::RightClick:
            return entry.rightClick;
    }
    return nullptr;
}

std::string NameOf(Control control)
{
    const std::string name(control.entry->name);
    return control.entry->IsArray() ? name + '_' + std::to_string(control.index) : name;
}

}  // namespace

Parsed<Control> FindControl(std::string_view name)
{
    const std::string given(name);
    if (const ControlEntry* entry = FindEntry(name)) {
        if (!entry->IsArray())
            return {Control{entry, 0}, {}};
        return {std::nullopt,
                given + ": expected an index, as in " + given + '_' + std::to_string(entry->first)};
    }
    const std::size_t bar = name.rfind('_');
    const ControlEntry* entry =
        bar == std::string_view::npos ? nullptr : FindEntry(name.substr(0, bar));
    if (entry == nullptr)
        return {std::nullopt, given + ": expected the name of a control, as in updnRings_4"};
    if (!entry->IsArray())
        return {std::nullopt,
                given + ": expected " + std::string(entry->name) + " without an index"};
    const std::string_view digits = name.substr(bar + 1);
    const auto index = ParseNumber(digits);
    if (!index || digits != std::to_string(*index) || *index < entry->first || *index > entry->last)
        return {std::nullopt, given + ": expected an index from " + Indices(*entry)};
    return {Control{entry, *index}, {}};
}

bool IsSave(Control control)
{
    return control.entry->name == "mnuFileAction" && control.index == editor::kSaveItem;
}

std::string WhyNot(Control control, Operation operation)
{
    if (HandlerOf(*control.entry, operation) != nullptr)
        return {};
    switch (operation) {
        case Operation::Set:
            return NameOf(control) + " has no value to set";
        case Operation::Spin:
            return NameOf(control) + " has no arrows to press";
        case Operation::Click:
            return NameOf(control) + " cannot be clicked";
        case Operation::RightClick:
            break;
    }
    return NameOf(control) + " does not take the right button";
}

std::string Operate(Editor& editor, Control control, Operation operation, int amount)
{
    const ControlEntry& entry = *control.entry;
    const ControlEntry::Handler handler = HandlerOf(entry, operation);
    if (handler == NotHere)
        return NameOf(control) + " cannot be used from the command line yet";
    if (entry.name == "mnuFileAction")
        editor.mnuFile_Click();  // an item is reached through its menu, which commits as it opens
    const bool spin = operation == Operation::Spin;
    const int presses = spin ? std::abs(amount) : 1;
    const int argument = spin ? (amount < 0 ? -1 : 1) : amount;
    for (int press = 0; press < presses; ++press) {
        if (!entry.enabled(editor, control.index))
            return NameOf(control) + " is disabled";
        if (!handler(editor, entry, control.index, argument))
            return NameOf(control) + (entry.name == "mnuFileAction"
                                          ? " cannot be used from the command line"
                                          : " does nothing");
    }
    return {};
}

}  // namespace cli
