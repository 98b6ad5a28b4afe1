#include "timeline/diff.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <tuple>

#include "document/time_text.h"
#include "timeline/align.h"
#include "timeline/settings.h"

namespace timeline {
namespace {

using document::Choreography;
using document::Commands;

std::size_t At(std::int32_t slot)
{
    return static_cast<std::size_t>(slot);
}

std::vector<std::string> Texts(const Commands& commands)
{
    std::vector<std::string> texts;
    for (const Setting& setting : SettingsOf(commands))
        texts.push_back(SettingText(setting));
    return texts;
}

// All that is asked of one device, in the order in which it happens.
std::string ValueOf(const std::vector<Setting>& settings, const std::string& device, bool& present)
{
    std::string value;
    present = false;
    for (const Setting& setting : settings) {
        if (setting.device != device)
            continue;
        value += (present ? ", then " : "") + setting.value;
        present = true;
    }
    return value;
}

std::vector<std::string> DevicesOf(const std::vector<Setting>& before,
                                   const std::vector<Setting>& after)
{
    std::vector<std::string> devices;
    for (const auto* settings : {&before, &after})
        for (const Setting& setting : *settings)
            if (std::ranges::find(devices, setting.device) == devices.end())
                devices.push_back(setting.device);
    return devices;
}

std::vector<std::string> Differences(const Commands& commandsBefore, const Commands& commandsAfter)
{
    const std::vector<Setting> before = SettingsOf(commandsBefore);
    const std::vector<Setting> after = SettingsOf(commandsAfter);
    std::vector<std::string> differences;
    for (const std::string& device : DevicesOf(before, after)) {
        bool was = false;
        bool is = false;
        const std::string old = ValueOf(before, device, was);
        const std::string now = ValueOf(after, device, is);
        if (!was)
            differences.push_back(SettingText({device, now}) + " added");
        else if (!is)
            differences.push_back(SettingText({device, old}) + " removed");
        else if (old != now)
            differences.push_back(SettingText({device, old}).append(" -> ").append(now));
    }
    if (differences.empty())
        differences.emplace_back("the same, with other commands or in another order");
    return differences;
}

void AddShifts(std::vector<Change>& changes, const Choreography& before, const Choreography& after,
               const std::vector<std::int32_t>& targets)
{
    bool goesOn = false;
    for (std::size_t slot = 0; slot < targets.size(); ++slot) {
        const std::int32_t time = before.lngTime[slot];
        const std::int32_t shift =
            targets[slot] == kNoSlot ? 0 : after.lngTime[At(targets[slot])] - time;
        goesOn = goesOn && shift == changes.back().shift;
        if (goesOn)
            changes.back().lastTime = time;
        else if (shift != 0)
            changes.push_back({ChangeKind::Shifted, time, time, shift, {}});
        goesOn = shift != 0;
    }
}

void AddSlotChanges(std::vector<Change>& changes, const Choreography& before,
                    const Choreography& after, const std::vector<std::int32_t>& targets)
{
    std::vector<bool> known(At(after.lngLastSlot()), false);
    for (std::size_t slot = 0; slot < targets.size(); ++slot) {
        const Commands& old = before.strCommands[slot];
        if (targets[slot] == kNoSlot) {
            changes.push_back({ChangeKind::Removed, before.lngTime[slot], 0, 0, Texts(old)});
            continue;
        }
        const std::size_t target = At(targets[slot]);
        known[target] = true;
        if (old != after.strCommands[target])
            changes.push_back({ChangeKind::Changed, after.lngTime[target], 0, 0,
                               Differences(old, after.strCommands[target])});
    }
    for (std::size_t slot = 0; slot < known.size(); ++slot)
        if (!known[slot])
            changes.push_back(
                {ChangeKind::Added, after.lngTime[slot], 0, 0, Texts(after.strCommands[slot])});
}

std::string Joined(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : "; ") + text;
    return joined;
}

std::string Times(std::int32_t count)
{
    return std::to_string(count) + (count == 1 ? " time " : " times ");
}

}  // namespace

std::vector<Change> Diff(const Choreography& before, const Choreography& after)
{
    const std::vector<std::int32_t> targets = AlignSlots(before, after);
    std::vector<Change> changes;
    AddShifts(changes, before, after, targets);
    AddSlotChanges(changes, before, after, targets);
    std::ranges::stable_sort(
        changes, {}, [](const Change& change) { return std::tuple(change.time, change.kind); });
    return changes;
}

std::string ChangeText(const Change& change)
{
    const std::string time = document::TimeText(change.time);
    switch (change.kind) {
        case ChangeKind::Shifted: {
            const std::string last = document::TimeText(change.lastTime);
            return time + (change.lastTime > change.time ? " to " + last : "") + " shifted by " +
                   SecondsText(change.shift) + '\n';
        }
        case ChangeKind::Added:
            return time + "  time added: " + Joined(change.settings) + '\n';
        case ChangeKind::Removed:
            return time + "  time removed: " + Joined(change.settings) + '\n';
        case ChangeKind::Changed:
            break;
    }
    std::string text;
    for (const std::string& setting : change.settings)
        text.append(time).append("  ").append(setting).append("\n");
    return text;
}

std::string SecondsText(std::int32_t ms)
{
    const std::int32_t size = std::abs(ms);
    std::string places = std::to_string(1000 + size % 1000).substr(1);
    while (places.size() > 1 && places.back() == '0')
        places.pop_back();
    std::string text(1, ms < 0 ? '-' : '+');
    return text.append(std::to_string(size / 1000)).append(".").append(places).append(" s");
}

std::string DiffSummary(const std::vector<Change>& changes)
{
    struct Word {
        ChangeKind kind;
        std::string_view text;
    };
    static constexpr std::array<Word, 3> kWords = {{{ChangeKind::Changed, "changed"},
                                                    {ChangeKind::Added, "added"},
                                                    {ChangeKind::Removed, "removed"}}};
    std::string summary;
    const auto append = [&summary](const std::string& text) {
        summary += (summary.empty() ? "" : ", ") + text;
    };
    for (const auto& [kind, text] : kWords) {
        const auto count =
            static_cast<std::int32_t>(std::ranges::count(changes, kind, &Change::kind));
        if (count > 0)
            append(Times(count).append(text));
    }
    for (const Change& change : changes)
        if (change.kind == ChangeKind::Shifted)
            append(ChangeText(change).substr(0, ChangeText(change).size() - 1));
    return summary.empty() ? "nothing changed" : summary;
}

}  // namespace timeline
