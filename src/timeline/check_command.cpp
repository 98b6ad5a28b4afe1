#include "timeline/check_command.h"

#include "fountain/command_map.h"

namespace timeline {
namespace {

using fountain::CommandRule;
using fountain::Device;

/// Everything that the fountain reads of the data.
int BitsOf(const CommandRule& rule)
{
    return rule.level | rule.group | rule.join;
}

bool HasWaterLevel(const CommandRule& rule)
{
    return rule.level == fountain::kLevelBits && rule.group != 0;
}

std::string LevelFault(const CommandRule& rule, int level)
{
    if (level <= fountain::kHighestLevel)
        return {};
    if (level == fountain::kWeddingCakeLevel && rule.device == Device::MultiValve)
        return {};
    return "asks for level " + std::to_string(level) + ", which means nothing; use 0 to 5";
}

// A join, and the end of one, need no group.
std::string GroupFault(const CommandRule& rule, int data)
{
    if (rule.group == 0 || (data & fountain::kGroupBits) != 0)
        return {};
    switch (rule.device) {
        case Device::Ring:
        case Device::Sweeps:
        case Device::Candelabras:
            if ((data & fountain::kLevelBits) == 0)
                return {};
            break;
        case Device::SweepPulsation:
            if (data == 0)
                return {};
            break;
        case Device::BazookasSpout:
            return "selects neither the bazookas nor the spout; add 16 or 32 to its data";
        case Device::CurtainsPeacock:
            return "selects neither a curtain nor the peacock; add 16, 32 or 96 to its data";
        default:
            break;
    }
    return "selects no group; add 16 for Group A or 32 for Group B to its data";
}

std::string OwnFault(const CommandRule& rule, int data)
{
    switch (rule.device) {
        case Device::CurtainsPeacock:
            if ((data & 64) != 0 && (data & fountain::kGroupBBit) == 0)
                return "asks for the peacock without selecting it; add 32 to its data";
            break;
        case Device::Copy:
            if ((data & 3) == 0)
                return "copies neither water nor lights; add 1 or 2 to its data";
            break;
        case Device::LightMovement:
            if (data != 0 && (data & 31) == 0)
                return "moves the lights neither left nor right; use 0 to stop them";
            break;
        default:
            break;
    }
    return {};
}

std::string MeaningFault(const CommandRule& rule, int data)
{
    if (const int surplus = data & ~BitsOf(rule); surplus != 0)
        return "has data bits without meaning (" + std::to_string(surplus) +
               "); the data that is left is " + std::to_string(data - surplus);
    if (HasWaterLevel(rule))
        if (std::string fault = LevelFault(rule, data & fountain::kLevelBits); !fault.empty())
            return fault;
    if (std::string fault = OwnFault(rule, data); !fault.empty())
        return fault;
    return GroupFault(rule, data);
}

}  // namespace

CommandFault FindCommandFault(document::Command command)
{
    const CommandRule& rule = fountain::RuleFor(command.address);
    if (rule.device == Device::Unknown)
        return {CommandFault::Kind::UnknownAddress,
                "goes to an address that drives nothing; remove it"};
    std::string fault = MeaningFault(rule, command.data);
    if (fault.empty())
        return {};
    return {CommandFault::Kind::NoMeaning, std::move(fault)};
}

}  // namespace timeline
