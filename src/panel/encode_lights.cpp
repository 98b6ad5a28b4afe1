#include <algorithm>
#include <array>

#include "fountain/command_map.h"
#include "panel/encoder.h"
#include "panel/list_edit.h"

namespace panel {
namespace {

using document::Commands;
using document::Which;

bool IsModule(int address)
{
    return address >= fountain::kFirstModuleAddress && address <= fountain::kLastModuleAddress;
}
bool IsGroup(int address)
{
    return address >= fountain::kGroupALightsAddress && address <= fountain::kBothLightsAddress;
}

bool Changed(const PanelState& panel, int first, int count)
{
    for (int lamp = 0; lamp < count; ++lamp)
        if (panel.lblLight[first + lamp].Changed())
            return true;
    return false;
}

int LitValue(const PanelState& panel, int label, int value)
{
    return panel.lblLight[label].Lit() ? value : 0;
}

// Ahead of every other light command, because it changes the white lamp of all modules.
void EncodeWhites(Commands& commands, const PanelState& panel)
{
    if (!panel.lblLight[kBazookaLabel].Changed() && !panel.lblLight[kAllWhiteLabel].Changed() &&
        !panel.lblLight[kCrossLabel].Changed())
        return;
    document::RemoveCommand(commands, fountain::kWhiteLightsAddress, Which::All);
    const int data = LitValue(panel, kCrossLabel, 2) | LitValue(panel, kBazookaLabel, 4) |
                     LitValue(panel, kAllWhiteLabel, 8);
    std::size_t at = 0;
    while (at < commands.size()) {
        const int address = static_cast<std::uint8_t>(commands[at]);
        if (IsModule(address) || IsGroup(address))
            break;
        at += 2;
    }
    commands.insert(at,
                    {static_cast<char>(fountain::kWhiteLightsAddress), static_cast<char>(data)});
}

void AppendGroup(Commands& commands, int address, int bits)
{
    RemoveCommands(commands, [address](document::Command command) {
        if (command.address == address)
            return true;
        const int group =
            fountain::GroupOfModule(command.address - fountain::kFirstModuleAddress + 1);
        return IsModule(command.address) && (address == fountain::kBothLightsAddress ||
                                             group == address - fountain::kGroupALightsAddress);
    });
    PutOnly(commands, address, bits);
}

void EncodeGroups(Commands& commands, const PanelState& panel)
{
    const bool changedA = Changed(panel, kGroupALabels, 4);
    const bool changedB = Changed(panel, kGroupBLabels, 4);
    if (!changedA && !changedB)
        return;
    const int bitsA = LitLamps(panel, kGroupALabels, 4);
    const int bitsB = LitLamps(panel, kGroupBLabels, 4);
    if (bitsA == bitsB) {
        document::RemoveCommand(commands, fountain::kGroupALightsAddress, Which::All);
        document::RemoveCommand(commands, fountain::kGroupBLightsAddress, Which::All);
        AppendGroup(commands, fountain::kBothLightsAddress, bitsA);
        return;
    }
    const bool both = document::HasAddress(commands, fountain::kBothLightsAddress);
    document::RemoveCommand(commands, fountain::kBothLightsAddress, Which::All);
    if (changedA || both)
        AppendGroup(commands, fountain::kGroupALightsAddress, bitsA);
    if (changedB || both)
        AppendGroup(commands, fountain::kGroupBLightsAddress, bitsB);
}

using ModuleValues = document::IndexedArray<std::int16_t, 1, 7>;

ModuleValues ModulesAfter(const EncodeContext& context, const Commands& commands)
{
    return After(context.before, commands).State().mintModuleLights;
}

// A module that does not get what it shall have loses its own commands, until that changes nothing
// any more; what still differs then is commanded at the end.
void EncodeModules(Commands& commands, const ModuleValues& wanted, const EncodeContext& context)
{
    for (bool removed = true; removed;) {
        removed = false;
        const ModuleValues got = ModulesAfter(context, commands);
        for (int module = 1; module <= 7; ++module) {
            const int address = fountain::kFirstModuleAddress + module - 1;
            if (got[module] == wanted[module] || !document::HasAddress(commands, address))
                continue;
            document::RemoveCommand(commands, address, Which::All);
            removed = true;
        }
    }
    const ModuleValues got = ModulesAfter(context, commands);
    for (int module = 1; module <= 7; ++module)
        if (got[module] != wanted[module])
            PutOnly(commands, fountain::kFirstModuleAddress + module - 1, wanted[module]);
}

ModuleValues WantedModules(const Commands& commands, const PanelState& panel,
                           const EncodeContext& context)
{
    ModuleValues wanted = ModulesAfter(context, commands);
    for (int module = 1; module <= 7; ++module) {
        const int first = 4 * (module - 1);
        if (Changed(panel, first, 4))
            wanted[module] = static_cast<std::int16_t>(LitLamps(panel, first, 4));
    }
    return wanted;
}

bool LightMotionChanged(const PanelState& panel)
{
    return panel.lblTimer.Changed() ||
           std::ranges::any_of(panel.lblLightMotion,
                               [](const ColorLabel& label) { return label.Changed(); });
}

// lblLightMotion: 0 right, 1 left, 2 left with wrapping, 3 right with wrapping.
int LightMotionData(const PanelState& panel)
{
    constexpr std::array<int, 4> kData{1 + 16, 2 + 16, 2 + 32, 1 + 32};
    for (int index = 0; index <= 3; ++index)
        if (panel.lblLightMotion[index].Lit())
            return kData[static_cast<std::size_t>(index)] + (panel.lblTimer.Lit() ? 64 : 0);
    return 0;
}

}  // namespace

void EncodeLights(Commands& commands, const PanelState& panel, const EncodeContext& context)
{
    if (LightMotionChanged(panel))
        document::RemoveCommand(commands, fountain::kLightMovementAddress, Which::All);
    if (!Changed(panel, 0, kCrossLabel + 1))
        return;
    const ModuleValues wanted = WantedModules(commands, panel, context);
    EncodeWhites(commands, panel);
    EncodeGroups(commands, panel);
    EncodeModules(commands, wanted, context);
    if (Changed(panel, kCurtainGreenLabel, 2))
        PutOnly(commands, fountain::kCurtainLightsAddress,
                LitValue(panel, kCurtainGreenLabel, 16) | LitValue(panel, kCurtainAmberLabel, 32));
    if (Changed(panel, kPeacockALabels, 3))
        PutOnly(commands, fountain::kPeacockALightsAddress, LitLamps(panel, kPeacockALabels, 3));
    if (Changed(panel, kPeacockBLabels, 3)) {
        document::RemoveCommand(commands, fountain::kPeacockBTooAddress, Which::All);
        PutOnly(commands, fountain::kPeacockBLightsAddress, LitLamps(panel, kPeacockBLabels, 3));
    }
}

void EncodeLightMotion(Commands& commands, const PanelState& panel, const EncodeContext& context)
{
    const bool retimed = context.lightTimer != panel.lngLightTimerTag;
    if (retimed)
        PutOnly(commands, fountain::kLightTimerAddress, context.lightTimer / 100);
    if (!LightMotionChanged(panel))
        return;
    document::RemoveCommand(commands, fountain::kLightMovementAddress, Which::All);
    PutOnly(commands, fountain::kLightMovementAddress, LightMotionData(panel));
    if (retimed)
        return;
    if (panel.lblTimer.Lit())
        PutOnly(commands, fountain::kLightTimerAddress, context.lightTimer / 100);
    else if (panel.lblTimer.Changed())
        document::RemoveCommand(commands, fountain::kLightTimerAddress, Which::All);
}

}  // namespace panel
