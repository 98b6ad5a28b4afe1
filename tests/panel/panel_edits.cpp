#include "panel_edits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>

#include "fountain_text.h"

namespace testing_support {
namespace {

int Number(std::string_view text)
{
    int number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    EXPECT_EQ(result.ptr, text.data() + text.size()) << text;
    return number;
}

}  // namespace

Desk::Desk(const std::string& earlier, const std::string& stored)
    : before(After(earlier)), fountain(before)
{
    Listener listener;
    fountain.ApplyCommands(Packed(stored), listener);
    panel::SetOperatorDisplay(panel, static_cast<std::uint8_t>(std::max(listener.display, 0)));
    panel::LoadPanel(panel, fountain, Packed(stored));
}

void Desk::Do(std::string_view edits)
{
    while (!edits.empty()) {
        const std::size_t end = std::min(edits.find(' '), edits.size());
        DoOne(edits.substr(0, end));
        edits.remove_prefix(std::min(end + 1, edits.size()));
    }
}

void Desk::DoOne(std::string_view edit)
{
    const std::size_t end = std::min(edit.find_first_of("=+-"), edit.size());
    const std::size_t bar = std::min(edit.find('_'), end);
    const std::string_view name = edit.substr(0, bar);
    const int index = bar < end ? Number(edit.substr(bar + 1, end - bar - 1)) : 0;
    const int direction = edit.ends_with('+') ? 1 : -1;
    const panel::PanelEdit handled{panel, fountain};
    if (name == "updnRotateTime") {
        panel::PressRotateTime(handled, index, direction);
    } else if (name == "lblReset") {
        panel::ColorLabel& label = panel.lblReset[index];
        label.BackColor = label.Lit() ? fountain::kPanelOff : fountain::kPanelOn;
    } else if (const auto* spinner = panel::FindSpinner(name); spinner != nullptr) {
        if (edit.substr(end, 1) == "=")
            panel::SetSpinner(handled, *spinner, index, Number(edit.substr(end + 1)));
        else
            panel::PressSpinner(handled, *spinner, index, direction);
    } else if (const auto* label = panel::FindLabel(name); label != nullptr) {
        panel::ClickLabel(handled, *label, index);
    } else {
        ADD_FAILURE() << "no control " << name;
    }
}

}  // namespace testing_support
