#include "timeline/settings.h"

#include <array>
#include <cstddef>
#include <utility>

#include "document/command_list.h"
#include "fountain/colors.h"
#include "fountain/command_map.h"
#include "fountain/describe.h"

namespace timeline {
namespace {

using document::Command;
using fountain::CommandRule;
using fountain::Device;
using Settings = std::vector<Setting>;

constexpr std::array<std::string_view, 2> kGroupNames = {"Group A", "Group B"};

std::string Text(std::string_view text)
{
    return std::string(text);
}

std::string LevelText(const CommandRule& rule, int data)
{
    const int level = data & fountain::kLevelBits;
    if (level == 0)
        return "dropped";
    if (level == fountain::kWeddingCakeLevel && rule.device == Device::MultiValve)
        return "Wedding Cake formation";
    return "level " + std::to_string(level);
}

std::string OnOff(bool on)
{
    return on ? "on" : "off";
}

std::string ColorsText(int value)
{
    return value == 0 ? "off" : Text(fountain::kLegend[value].caption.substr(1));
}

std::string WaterName(const CommandRule& rule)
{
    switch (rule.device) {
        case Device::Ring:
            return "Ring " + std::to_string(rule.index);
        case Device::Sweeps:
            return "Sweeps";
        case Device::Candelabras:
            return "Candelabras";
        default:
            return "Multi-Valve";
    }
}

void GroupedWater(Settings& settings, const CommandRule& rule, int data)
{
    const std::string name = WaterName(rule);
    const bool joins = (data & rule.join) != 0;
    if ((data & fountain::kGroupBits) == 0) {
        settings.push_back({name + " on no group", joins ? "joined" : "not joined"});
        return;
    }
    for (std::size_t group = 0; group < 2; ++group)
        if ((data & fountain::kGroupABit << group) != 0)
            settings.push_back({name + " on " + Text(kGroupNames[group]),
                                LevelText(rule, data) + (joins ? " with joining" : "")});
}

void SingleWater(Settings& settings, const CommandRule& rule, int data)
{
    const std::string level = LevelText(rule, data);
    const bool curtains = rule.device == Device::CurtainsPeacock;
    if ((data & fountain::kGroupABit) != 0)
        settings.push_back({curtains ? "Front Curtain" : "Bazookas", level});
    if ((data & fountain::kGroupBBit) == 0)
        return;
    if (curtains)
        settings.push_back({(data & 64) != 0 ? "Peacock" : "Back Curtain", level});
    else
        settings.push_back({"Spout", level});
}

void WhiteLights(Settings& settings, int data)
{
    settings.push_back({"Cross white lights", OnOff((data & 2) != 0)});
    settings.push_back({"Bazooka white lights", OnOff((data & 4) != 0)});
    settings.push_back({"White lights of all modules", OnOff((data & 8) != 0)});
}

void GroupLights(Settings& settings, int index, int data)
{
    for (int group = 0; group < 2; ++group)
        if (index == group || index == 2)
            settings.push_back({Text(kGroupNames[static_cast<std::size_t>(group)]) + " lights",
                                ColorsText(data & fountain::kLampBits)});
}

// The fountain divides by 16 and rounds to even, which only odd data shows.
Setting CurtainLights(int data)
{
    static constexpr std::array<std::string_view, 4> kColors = {"off", "green", "amber",
                                                                "green and amber"};
    const int whole = data / 16;
    const int rest = data % 16;
    const int rounded = whole + (rest > 8 || (rest == 8 && whole % 2 == 1) ? 1 : 0);
    return {"Back Curtain lights", Text(kColors[static_cast<std::size_t>(rounded & 3)])};
}

Setting SweepMotion(bool opposed, int data)
{
    static constexpr std::array<std::string_view, 4> kSpeeds = {"", "slow", "medium", "fast"};
    const auto speed = static_cast<std::size_t>(fountain::SweepSpeedOf(data));
    if (speed == 0)
        return {"Sweep motion", "stopped"};
    return {"Sweep motion", Text(kSpeeds[speed]) + (opposed ? ", opposed, " : ", synchronized, ") +
                                std::to_string(fountain::SweepTravelOf(data) * 10) + " degrees"};
}

void Pulsation(Settings& settings, int data)
{
    if (data == 0)
        settings.push_back({"Sweep pulsation", "stopped"});
    for (std::size_t group = 0; group < 2; ++group)
        if ((data & fountain::kGroupABit << group) != 0)
            settings.push_back({"Sweep pulsation on " + Text(kGroupNames[group]),
                                (data & 64) != 0 ? "downward" : "upward"});
}

Setting LightMovement(int data)
{
    if ((data & 31) == 0)
        return {"Light movement", "stopped"};
    return {"Light movement", Text((data & 64) != 0 ? "timed" : "once") +
                                  ((data & 1) != 0 ? " to the right" : " to the left") +
                                  ((data & 32) != 0 ? " with wrapping" : " without wrapping")};
}

// A command whose sentence says it all, but for what the device's name tells already.
Setting FromSentence(std::string device, Command command, std::string_view start,
                     std::string_view end)
{
    std::string sentence = fountain::DescribeCommand(command.address, command.data);
    if (sentence.starts_with(start))
        sentence.erase(0, start.size());
    if (sentence.ends_with(end))
        sentence.erase(sentence.size() - end.size());
    return {std::move(device), std::move(sentence)};
}

Setting Unknown(Command command)
{
    return {"Unknown address " + std::to_string(command.address),
            "data " + std::to_string(command.data)};
}

void Append(Settings& settings, Command command)
{
    const CommandRule& rule = fountain::RuleFor(command.address);
    const int data = command.data;
    switch (rule.device) {
        case Device::Ring:
        case Device::Sweeps:
        case Device::Candelabras:
        case Device::MultiValve:
            return GroupedWater(settings, rule, data);
        case Device::BazookasSpout:
        case Device::CurtainsPeacock:
            return SingleWater(settings, rule, data);
        case Device::WhiteLights:
            return WhiteLights(settings, data);
        case Device::GroupLights:
            return GroupLights(settings, rule.index, data);
        case Device::SweepPulsation:
            return Pulsation(settings, data);
        case Device::ModuleLights:
            return settings.push_back({"Module " + std::to_string(rule.index) + " lights",
                                       ColorsText(data & fountain::kLampBits)});
        case Device::PeacockLights:
            return settings.push_back(
                {"Peacock " + Text(kGroupNames[rule.index]) + " lights", ColorsText(data & 7)});
        case Device::CurtainLights:
            return settings.push_back(CurtainLights(data));
        case Device::SweepMotion:
            return settings.push_back(SweepMotion(rule.index == 1, data));
        case Device::Voice:
            return settings.push_back({"Voice light and water", OnOff(data != 0)});
        case Device::LightMovement:
            return settings.push_back(LightMovement(data));
        case Device::LightTimer:
            return settings.push_back(
                FromSentence("Light timer", command, "Set light timer to ", ""));
        case Device::Copy:
            return settings.push_back(FromSentence("Between the groups", command, "", ""));
        case Device::OperatorDisplay:
            return settings.push_back(
                FromSentence("Operator panel", command, "Display ", " on operator panel"));
        case Device::Reset:
            return settings.push_back({"Reset Fountain", {}});
        case Device::Unknown:
            return settings.push_back(Unknown(command));
    }
}

}  // namespace

std::vector<Setting> SettingsOf(std::string_view commands)
{
    Settings settings;
    for (int k = 0; k < document::CommandCount(commands); ++k)
        Append(settings, document::CommandAt(commands, k));
    return settings;
}

std::string SettingText(const Setting& setting)
{
    return setting.value.empty() ? setting.device : setting.device + ": " + setting.value;
}

}  // namespace timeline
