#include "fountain/describe.h"

#include <array>
#include <string_view>

#include "fountain/colors.h"
#include "fountain/command_map.h"

namespace fountain {
namespace {

constexpr std::size_t kMultiValveNameLength = 11;
constexpr std::array<std::string_view, 4> kGroupTexts = {"", " on Group A", " on Group B",
                                                         " on Group A and Group B"};

/// Which of four texts the two group bits choose.
template <typename T>
const T& ByGroupBits(const std::array<T, 4>& texts, int data)
{
    return texts[static_cast<std::size_t>((data & kGroupBits) >> 4)];
}

std::string ToLevel(int level)
{
    return " to level " + std::to_string(level);
}

bool IsOrdinaryLevel(int level)
{
    return level >= 1 && level <= kHighestLevel;
}

std::string WaterName(const CommandRule& rule, int data)
{
    static constexpr std::array<std::string_view, 4> kSingleDevices = {"", "Bazookas", "Spout",
                                                                       "Bazookas and Spout"};
    const std::string_view groups = ByGroupBits(kGroupTexts, data);
    std::string name;
    switch (rule.device) {
        case Device::Ring:
            name = "Ring " + std::to_string(rule.index);
            break;
        case Device::Sweeps:
            name = "Sweeps";
            break;
        case Device::Candelabras:
            name = "Candelabras";
            break;
        case Device::MultiValve:
            name = "Multi-Valve";
            break;
        default:
            return std::string(ByGroupBits(kSingleDevices, data));
    }
    return name.append(groups);
}

// The formation's text is cut for the multi-valve's name; with other devices the cut falls inside
// the name, and is meant to.
std::string Water(const CommandRule& rule, int data)
{
    std::string text = WaterName(rule, data);
    if (data == kJoinBit)
        return "Join groups for " + text;
    const int level = data & kLevelBits;
    if (IsOrdinaryLevel(level))
        text = "Move " + text + ToLevel(level);
    else if (level == kWeddingCakeLevel)
        text = "Set Wedding Cake formation" +
               (text.size() > kMultiValveNameLength ? text.substr(kMultiValveNameLength) : "");
    else if (level == 0)
        text = "Drop " + text;
    return (data & kJoinBit) != 0 ? text + " with joining" : text;
}

std::string CurtainsPeacock(int data)
{
    static constexpr std::array<std::string_view, 4> kCurtains = {"", "Front", "Back",
                                                                  "Front and Back"};
    const std::string name = (data & kPeacockBit) != 0
                                 ? "Peacock"
                                 : std::string(ByGroupBits(kCurtains, data)) + " Curtain";
    const int level = data & kLevelBits;
    if (IsOrdinaryLevel(level))
        return "Move " + name + ToLevel(level);
    return level == 0 ? "Drop " + name : name;
}

// Each later word takes the place of the list so far, and is meant to.
std::string WhiteLights(int data)
{
    if (data == 0)
        return "Turn all white lights off";
    std::string list;
    if ((data & 2) != 0)
        list = " Cross";
    if ((data & 4) != 0)
        list = std::string(list.empty() ? "" : ", ") + " Bazooka";
    if ((data & 8) != 0)
        list = std::string(list.empty() ? "" : ", ") + " Module";
    return "Turn" + list + " white lights on";
}

std::string ColorList(int data)
{
    struct LampName {
        Lamp lamp;
        std::string_view name;
    };
    static constexpr std::array<LampName, 4> kLamps = {
        {{kRed, " red"}, {kBlue, " blue"}, {kAmber, " amber"}, {kWhite, " white"}}};
    std::string list;
    int commas = 0;
    for (const auto& [lamp, name] : kLamps) {
        if ((data & lamp) == 0)
            continue;
        if (!list.empty()) {
            list += ',';
            ++commas;
        }
        list += name;
    }
    if (commas > 0)
        list.replace(list.rfind(','), 1, commas == 1 ? " and" : ", and");
    return list;
}

std::string Lights(const std::string& name, int data)
{
    return "Turn " + name + (data == 0 ? " lights off" : ColorList(data) + " lights on");
}

std::string CurtainLights(int data)
{
    static constexpr std::array<std::string_view, 4> kColors = {"", "green", "amber",
                                                                "green, amber"};
    if (data == 0)
        return "Turn Back Curtain lights off";
    return "Turn Back Curtain " + std::string(ByGroupBits(kColors, data)) + " lights on";
}

std::string SweepMotion(bool opposed, int data)
{
    static constexpr std::array<std::string_view, 4> kSpeeds = {"", "slow", "medium", "fast"};
    const auto speed = static_cast<std::size_t>(SweepSpeedOf(data));
    if (speed == 0)
        return "Stop Sweeps";
    return "Start " + std::string(kSpeeds[speed]) + (opposed ? " opposed" : " synchronized") +
           " Sweep motion";
}

std::string Pulsation(int data)
{
    if (data == 0)
        return "Stop Sweep pulsation";
    return std::string((data & 64) != 0 ? "Start downward" : "Start upward") + " Sweep pulsation" +
           std::string(ByGroupBits(kGroupTexts, data));
}

std::string Copy(int data)
{
    static constexpr std::array<std::string_view, 4> kWhat = {"", "water", "lights",
                                                              "water and lights"};
    std::string what(kWhat[static_cast<std::size_t>(data & 3)]);
    switch (data & kGroupBits) {
        case kGroupABit:
            return "Copy " + what + " from Group A to Group B";
        case kGroupBBit:
            return "Copy " + what + " from Group B to Group A";
        case kGroupBits:
            return "Exchange " + what + " between groups";
        default:
            return what;
    }
}

// The bits are not those by which the lights move, and are meant so.
std::string LightMovement(int data)
{
    if (data == 0)
        return "Stop timed light movement";
    std::string text = (data & 16) != 0 ? "Start timed light movement to the "
                                        : "Shift module lights once to the ";
    text += (data & 1) != 0 ? "right" : "left";
    return text + ((data & 8) != 0 ? " with wrapping" : " without wrapping");
}

std::string LightTimer(int data)
{
    std::string seconds = std::to_string(data / 10);
    if (data % 10 != 0)
        seconds += '.' + std::to_string(data % 10);
    return "Set light timer to " + seconds + " seconds";
}

std::string OperatorDisplay(int data)
{
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "Display ";
    text += kDigits[static_cast<std::size_t>(data / 16)];
    text += kDigits[static_cast<std::size_t>(data % 16)];
    return text + " on operator panel";
}

std::string GroupName(int index)
{
    static constexpr std::array<std::string_view, 3> kNames = {"Group A", "Group B",
                                                               "Group A and Group B"};
    return std::string(kNames[static_cast<std::size_t>(index)]);
}

}  // namespace

std::string DescribeCommand(std::uint8_t address, std::uint8_t data)
{
    const CommandRule& rule = RuleFor(address);
    switch (rule.device) {
        case Device::OperatorDisplay:
            return OperatorDisplay(data);
        case Device::Ring:
        case Device::Sweeps:
        case Device::BazookasSpout:
        case Device::Candelabras:
        case Device::MultiValve:
            return Water(rule, data);
        case Device::CurtainsPeacock:
            return CurtainsPeacock(data);
        case Device::WhiteLights:
            return WhiteLights(data);
        case Device::ModuleLights:
            return Lights("Module " + std::to_string(rule.index), data);
        case Device::CurtainLights:
            return CurtainLights(data);
        case Device::PeacockLights:
            return Lights("Peacock " + GroupName(rule.index), data);
        case Device::GroupLights:
            return Lights(GroupName(rule.index), data);
        case Device::SweepMotion:
            return SweepMotion(rule.index == 1, data);
        case Device::Voice:
            return data != 0 ? "Start Voice light and water" : "Stop Voice light and water";
        case Device::SweepPulsation:
            return Pulsation(data);
        case Device::Copy:
            return Copy(data);
        case Device::LightMovement:
            return LightMovement(data);
        case Device::LightTimer:
            return LightTimer(data);
        case Device::Reset:
            return "Reset Fountain";
        case Device::Unknown:
            break;
    }
    return "* * * UNKNOWN COMMAND * * *";
}

}  // namespace fountain
