#include <optional>

#include "fountain/command_map.h"
#include "panel/encoder.h"
#include "panel/list_edit.h"

namespace panel {
namespace {

using document::Commands;

constexpr int kAllButGroup = 255 & ~fountain::kGroupBits;

bool Joinable(int address)
{
    return (address >= 1 && address <= fountain::kSweepsAddress) ||
           address == fountain::kCandelabrasAddress;
}

bool UnderMultiValve(int address)
{
    return address >= 1 && address <= fountain::kSweepsAddress;
}

int JoinBit(const PanelState& panel, int address)
{
    return panel.lblBypass[address].Caption == "X" ? fountain::kJoinBit : 0;
}

const Spinner& LevelSpinner(const PanelState& panel, int address, int group)
{
    if (address == fountain::kSweepsAddress)
        return panel.updnSweeps[group];
    if (address == fountain::kCandelabrasAddress)
        return panel.updnCandelabra[group];
    return panel.updnRings[fountain::RingIndex(address, group)];
}

void EncodeMultiValve(Commands& commands, const PanelState& panel)
{
    for (int group = 0; group <= 1; ++group) {
        const Spinner& spinner = panel.updnMultiValve[group];
        if (spinner.Changed())
            Put(commands, fountain::kMultiValveAddress, spinner.Value + fountain::GroupBit(group),
                fountain::kGroupBits, kAllButGroup);
    }
}

// The join alone: on the commands that there are, else by a command for no group.
void EncodeJoin(Commands& commands, int address, int join)
{
    if (!document::HasAddress(commands, address)) {
        Put(commands, address, join, fountain::kGroupBits, kAllButGroup);
        return;
    }
    RewriteData(commands, [&](document::Command command) {
        const bool own = command.address == address;
        return own ? (command.data & ~fountain::kJoinBit) | join : int{command.data};
    });
}

// A level that the multi-valve implies is not Changed: the multi-valve sets the Tag with the value.
void EncodeJoinable(Commands& commands, const PanelState& panel, int address, int group)
{
    const Spinner& spinner = LevelSpinner(panel, address, group);
    const int join = JoinBit(panel, address);
    if (spinner.Changed())
        Put(commands, address, spinner.Value + join + fountain::GroupBit(group),
            fountain::kGroupBits, kAllButGroup);
    else if (panel.lblBypass[address].Changed())
        EncodeJoin(commands, address, join);
}

// A group's last multi-valve command stays, alone, ahead of the devices that it sets.
bool SettleMultiValve(Commands& commands, int group)
{
    std::optional<int> data;
    const auto own = [group](document::Command command) {
        return command.address == fountain::kMultiValveAddress &&
               (command.data & fountain::kGroupBits) == fountain::GroupBit(group);
    };
    std::size_t last = 0;
    std::size_t first = Commands::npos;
    for (int k = 0; k < document::CommandCount(commands); ++k) {
        const document::Command command = document::CommandAt(commands, k);
        if (own(command)) {
            data = command.data;
            last = static_cast<std::size_t>(k);
        }
        if (UnderMultiValve(command.address) && first == Commands::npos)
            first = static_cast<std::size_t>(k);
    }
    if (!data)
        return false;
    Commands settled;
    for (std::size_t k = 0; k < commands.size() / 2; ++k) {
        if (k == first && last > first)
            settled.append(
                {static_cast<char>(fountain::kMultiValveAddress), static_cast<char>(*data)});
        const bool moved = last > first && k == last;
        const bool other = own(document::CommandAt(commands, static_cast<int>(k))) && k != last;
        if (!moved && !other)
            settled.append(commands, k * 2, 2);
    }
    commands = settled;
    return true;
}

void SettleGroupWater(Commands& commands, const PanelState& panel)
{
    RewriteData(commands, [&](document::Command command) {
        return Joinable(command.address)
                   ? (command.data & ~fountain::kJoinBit) | JoinBit(panel, command.address)
                   : int{command.data};
    });
    for (int group = 0; group <= 1; ++group) {
        if (!SettleMultiValve(commands, group))
            continue;
        RewriteData(commands, [&](document::Command command) -> int {
            if (!UnderMultiValve(command.address) || !(command.data & fountain::GroupBit(group)))
                return command.data;
            return (command.data & ~fountain::kLevelBits) |
                   LevelSpinner(panel, command.address, group).Value;
        });
    }
}

void EncodeCurtains(Commands& commands, const PanelState& panel, const EncodeContext& context)
{
    if (!panel.updnCurtain[0].Changed() && !panel.updnCurtain[1].Changed() &&
        !panel.updnPeacock.Changed())
        return;
    document::RemoveCommand(commands, fountain::kCurtainsPeacockAddress, document::Which::All);
    const struct {
        int level;
        int bits;
        int (*shown)(const fountain::FountainState&);
    } devices[] = {
        {panel.updnCurtain[0].Value, 16, [](const auto& s) { return int{s.mintCurtainLevel[0]}; }},
        {panel.updnCurtain[1].Value, 32, [](const auto& s) { return int{s.mintCurtainLevel[1]}; }},
        {panel.updnPeacock.Value, 96, [](const auto& s) { return int{s.mintPeacockLevel}; }},
    };
    for (const auto& device : devices) {
        if (device.shown(After(context.before, commands).State()) == device.level)
            continue;
        document::AddCommand(commands,
                             {.Address = fountain::kCurtainsPeacockAddress,
                              .Data = static_cast<std::int16_t>(device.level + device.bits)});
    }
}

}  // namespace

bool GroupWaterChanged(const PanelState& panel)
{
    for (int group = 0; group <= 1; ++group) {
        if (panel.updnMultiValve[group].Changed())
            return true;
        for (int address = 1; address <= fountain::kCandelabrasAddress; ++address)
            if (Joinable(address) && (LevelSpinner(panel, address, group).Changed() ||
                                      panel.lblBypass[address].Changed()))
                return true;
    }
    return false;
}

void EncodeWater(Commands& commands, const PanelState& panel, const EncodeContext& context)
{
    EncodeMultiValve(commands, panel);
    for (int address = 1; address <= fountain::kCandelabrasAddress; ++address)
        for (int group = 0; group <= 1; ++group)
            if (Joinable(address))
                EncodeJoinable(commands, panel, address, group);
    if (GroupWaterChanged(panel))
        SettleGroupWater(commands, panel);
    EncodeCurtains(commands, panel, context);
    if (panel.updnBazookas.Changed())
        Put(commands, fountain::kBazookasSpoutAddress, panel.updnBazookas.Value + 16,
            fountain::kGroupBits, kAllButGroup);
    if (panel.updnSpout.Changed())
        Put(commands, fountain::kBazookasSpoutAddress, panel.updnSpout.Value + 32,
            fountain::kGroupBits, kAllButGroup);
    if (panel.lblVoice.Changed())
        PutOnly(commands, fountain::kVoiceAddress, panel.lblVoice.Caption == "X" ? 1 : 0);
}

}  // namespace panel
