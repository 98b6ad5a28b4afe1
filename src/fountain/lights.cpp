// The fountain's lights: their commands and their movement.
#include <cmath>

#include "fountain/colors.h"
#include "fountain/command_map.h"
#include "fountain/fountain.h"

namespace fountain {
namespace {

// d / 16 rounded to the nearest whole number, ties to even.
int CurtainLightsOf(int data)
{
    return static_cast<int>(std::nearbyint(data / 16.0)) & 3;
}

}  // namespace

void Fountain::ApplyLightCommand(std::uint8_t address, int data)
{
    const CommandRule& rule = RuleFor(address);
    switch (rule.device) {
        case Device::WhiteLights:
            ApplyWhiteLights(data);
            break;
        case Device::ModuleLights:
            SetModuleLights(rule.index, data & kLampBits);
            break;
        case Device::CurtainLights:
            SetCurtainLights(1, CurtainLightsOf(data));
            break;
        case Device::PeacockLights:
            SetPeacockLights(rule.index, data & 7);
            break;
        case Device::GroupLights:
            if (rule.index != kGroupB)
                SetGroupLights(kGroupA, data & kLampBits);
            if (rule.index != kGroupA)
                SetGroupLights(kGroupB, data & kLampBits);
            break;
        case Device::LightMovement:
            ApplyLightMovement(data);
            break;
        case Device::LightTimer:
            state_.mintLightTimer = static_cast<std::int16_t>(data * 100);
            tmrLights.SetInterval(state_.mintLightTimer);
            break;
        default:
            break;
    }
}

void Fountain::ApplyWhiteLights(int data)
{
    SetCrossWhite((data & 2) != 0);
    SetBazookaWhite((data & 4) != 0);
    for (int module = 1; module <= 7; ++module)
        SetModuleLights(module, (state_.mintModuleLights[module] & 7) | (data & kWhite));
}

void Fountain::ApplyLightMovement(int data)
{
    if ((data & 31) == 0) {
        state_.mblnLightsMoving = false;
        state_.mblnLightsTimed = false;
        tmrLights.Disable();
        return;
    }
    state_.mblnLightsMoving = true;
    state_.mblnLightsTimed = (data & 64) != 0;
    state_.mblnLightsWrap = (data & 32) != 0;
    state_.mblnLightsRight = (data & 1) != 0;
    if (state_.mblnLightsTimed)
        tmrLights.Enable();
    else
        ShiftModuleLights();
}

void Fountain::EndSingleLightShift()
{
    if (state_.mblnLightsMoving && !state_.mblnLightsTimed)
        state_.mblnLightsMoving = false;
}

void Fountain::SetLightMovement(bool moving, bool right, bool wrap, bool timed)
{
    state_.mblnLightsMoving = moving;
    state_.mblnLightsRight = right;
    state_.mblnLightsWrap = wrap;
    state_.mblnLightsTimed = timed;
    tmrLights.SetEnabled(moving && timed);
}

void Fountain::SetModuleLights(int module, int value)
{
    state_.mintModuleLights[module] = static_cast<std::int16_t>(value);
}

void Fountain::SetGroupLights(int group, int value)
{
    for (int module = group + 1; module <= 7; module += 2)
        SetModuleLights(module, value);
    state_.mintGroupLights[group] = static_cast<std::int16_t>(value);
}

void Fountain::SetPeacockLights(int group, int value)
{
    drawing_.peacockLights = static_cast<std::int16_t>(value);  // all lines, whatever the group
    state_.mintPeacockLights[group] = static_cast<std::int16_t>(value);
}

void Fountain::SetCurtainLights(int curtain, int lights)
{
    if (curtain == 1)
        state_.mintCurtainLights = static_cast<std::int16_t>(lights);
}

void Fountain::SetCrossWhite(bool flag)
{
    state_.mblnCrossWhite = flag;
}

void Fountain::SetBazookaWhite(bool flag)
{
    state_.mblnBazookaWhite = flag;
}

void Fountain::ShiftModuleLights()
{
    const auto before = state_.mintModuleLights;
    const int step = state_.mblnLightsRight ? 1 : -1;
    for (int module = 1; module <= 7; ++module) {
        const int source = module - step;
        const bool enters = source < 1 || source > 7;
        const int wrapped = source < 1 ? 7 : 1;
        SetModuleLights(module, !enters                 ? before[source]
                                : state_.mblnLightsWrap ? before[wrapped]
                                                        : std::int16_t{0});
    }
}

}  // namespace fountain
