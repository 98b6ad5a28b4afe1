#include "editor/history_title.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "document/time_text.h"
#include "timeline/diff.h"
#include "timeline/settings.h"

namespace editor {
namespace {

using timeline::Setting;
using Settings = std::vector<Setting>;

constexpr std::array<std::string_view, 6> kStates = {"dropped", "on",     "off",
                                                     "stopped", "joined", "not joined"};

Settings SettingsOf(const std::optional<document::Commands>& commands)
{
    return commands ? timeline::SettingsOf(*commands) : Settings{};
}

// Of a device that is commanded twice the last command is what it does.
const Setting* Find(const Settings& settings, const std::string& device)
{
    const auto found =
        std::ranges::find(settings.rbegin(), settings.rend(), device, &Setting::device);
    return found == settings.rend() ? nullptr : &*found;
}

std::string TextOf(const Setting& setting)
{
    if (setting.value.empty())
        return setting.device;
    const bool sentence = setting.value.front() >= 'A' && setting.value.front() <= 'Z';
    if (sentence)
        return timeline::SettingText(setting);
    const bool state = std::ranges::find(kStates, setting.value) != kStates.end();
    return setting.device + (state ? " " : " to ") + setting.value;
}

std::vector<std::string> Differences(const Settings& before, const Settings& after)
{
    std::vector<std::string> texts;
    for (const Setting& setting : after) {
        const Setting* old = Find(before, setting.device);
        if (&setting == Find(after, setting.device) && (old == nullptr || *old != setting))
            texts.push_back(TextOf(setting));
    }
    for (const Setting& setting : before)
        if (&setting == Find(before, setting.device) && Find(after, setting.device) == nullptr)
            texts.push_back(setting.device + " removed");
    return texts;
}

std::string SlotTitle(const document::SlotChange& change)
{
    const std::string time = document::ReadoutText(change.time);
    const Settings before = SettingsOf(change.before);
    const Settings after = SettingsOf(change.after);
    if (document::BeginsWithReset(change.after.value_or("")) &&
        !document::BeginsWithReset(change.before.value_or("")))
        return "Reset at " + time;
    if (after.empty() && before.size() > 1)
        return "Clear " + time;
    const std::vector<std::string> texts = Differences(before, after);
    if (texts.empty())
        return "Order of the commands at " + time;
    const std::string more =
        texts.size() > 1 ? " and " + std::to_string(texts.size() - 1) + " more" : "";
    return texts.front() + more + " at " + time;
}

}  // namespace

std::string EditTitle(const document::Patch& patch)
{
    if (patch.shift != 0)
        return "Shift from " + document::ReadoutText(patch.shiftFrom) + " by " +
               timeline::SecondsText(patch.shift);
    if (patch.changes.size() == 1)
        return SlotTitle(patch.changes.front());
    return "Changes at " + std::to_string(patch.changes.size()) + " times";
}

}  // namespace editor
