// The ticks of the three timed effects. A tick disables its timer first and enables it last, so
// that a new period begins when its work is done.
#include "fountain/fountain.h"

namespace fountain {
namespace {

constexpr int kUpright = 3;

}  // namespace

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
