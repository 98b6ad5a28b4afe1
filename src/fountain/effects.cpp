// The three timed effects: their commands and their ticks. A tick disables its timer first and
// enables it last, so that a new period begins when its work is done.
#include "fountain/command_map.h"
#include "fountain/fountain.h"

namespace fountain {
namespace {

constexpr int kUpright = 3;

}  // namespace

void Fountain::ApplySweepMotion(bool opposed, int data)
{
    state_.mintSweepSpeed = static_cast<std::int16_t>(SweepSpeedOf(data));
    state_.mblnSweepsOpposed = opposed;
    if (state_.mintSweepSpeed == 0)
        return;  // tmrSweeps runs on until the sweeps are upright again
    tmrSweeps.SetInterval((5 - state_.mintSweepSpeed) * 125);
    tmrSweeps.Enable();
    state_.mintSweepLow = static_cast<std::int16_t>(3 - SweepTravelOf(data));
    state_.mintSweepHigh = static_cast<std::int16_t>(3 + SweepTravelOf(data));
}

void Fountain::ApplyPulsation(int data)
{
    if (data == 0) {
        tmrPulsate.Disable();
        state_.mintPulseStep = {};
        state_.mintPulseBase = {};
        state_.mblnPulseDown = {};
        return;
    }
    for (int group = kGroupA; group <= kGroupB; ++group) {
        if (!(data & GroupBit(group)))
            continue;
        const bool down = (data & 64) != 0;
        const std::int16_t level = state_.mintSweepLevel[group];
        state_.mblnPulseDown[group] = down;
        state_.mintPulseStep[group] = static_cast<std::int16_t>(down ? -level : level);
        state_.mintPulseBase[group] = level;
    }
    tmrPulsate.Enable();
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

void Fountain::SetLightMovement(bool moving, bool right, bool wrap, bool timed)
{
    state_.mblnLightsMoving = moving;
    state_.mblnLightsRight = right;
    state_.mblnLightsWrap = wrap;
    state_.mblnLightsTimed = timed;
    tmrLights.SetEnabled(moving && timed);
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

void Fountain::tmrSweeps_Timer()
{
    tmrSweeps.Disable();
    if (state_.mintSweepDirection == 1 && state_.mintSweepPosition >= state_.mintSweepHigh)
        state_.mintSweepDirection = -1;
    else if (state_.mintSweepDirection != 1 && state_.mintSweepPosition <= state_.mintSweepLow)
        state_.mintSweepDirection = 1;
    state_.mintSweepPosition =
        static_cast<std::int16_t>(state_.mintSweepPosition + state_.mintSweepDirection);
    DrawSweeps(kGroupA, state_.mintSweepLevel[kGroupA]);
    DrawSweeps(kGroupB, state_.mintSweepLevel[kGroupB]);
    if (state_.mintSweepSpeed >= 1 || state_.mintSweepPosition != kUpright)
        tmrSweeps.Enable();
}

void Fountain::PulsateGroup(int group)
{
    const int step = state_.mintPulseStep[group];
    const int base = state_.mintPulseBase[group];
    if (step > 0)
        DrawSweeps(group, base < step ? base + 1 : 0);
    else if (step < 0)
        DrawSweeps(group, base > 0 ? base - 1 : -step);
}

void Fountain::tmrPulsate_Timer()
{
    tmrPulsate.Disable();
    PulsateGroup(kGroupA);
    PulsateGroup(kGroupB);
    tmrPulsate.Enable();
}

void Fountain::tmrLights_Timer()
{
    tmrLights.Disable();
    ShiftModuleLights();
    tmrLights.Enable();
}

}  // namespace fountain
