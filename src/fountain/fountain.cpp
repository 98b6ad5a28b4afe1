#include "fountain/fountain.h"

#include <cmath>

#include "fountain/colors.h"
#include "fountain/command_map.h"

namespace fountain {
namespace {

constexpr std::int32_t kResetLightTimer = 400;

bool IsLevel(int level)
{
    return level >= 0 && level <= kHighestLevel;
}

std::int16_t Level(int level)
{
    return static_cast<std::int16_t>(level);
}

// Joined groups are both drawn at the mean of their levels.
std::int16_t Halves(bool joined, int other, int level)
{
    return Level(joined ? other + level : 2 * level);
}

// d / 16 rounded to the nearest whole number, ties to even.
int CurtainLightsOf(int data)
{
    return static_cast<int>(std::nearbyint(data / 16.0)) & 3;
}

}  // namespace

void Fountain::ApplyCommands(std::string_view commands, FountainListener& listener)
{
    EndSingleLightShift();
    for (std::size_t at = 0; at + 1 < commands.size(); at += 2)
        ApplyCommand(static_cast<std::uint8_t>(commands[at]),
                     static_cast<std::uint8_t>(commands[at + 1]), listener);
}

void Fountain::EndSingleLightShift()
{
    if (state_.mblnLightsMoving && !state_.mblnLightsTimed)
        state_.mblnLightsMoving = false;
}

void Fountain::ApplyCommand(std::uint8_t address, int data, FountainListener& listener)
{
    const CommandRule& rule = RuleFor(address);
    const int level = data & kLevelBits;
    switch (rule.device) {
        case Device::OperatorDisplay:
            listener.OnOperatorDisplay(static_cast<std::uint8_t>(data));
            break;
        case Device::Ring:
        case Device::Sweeps:
        case Device::Candelabras:
            ApplyJoinable(address, data);
            break;
        case Device::BazookasSpout:
            if (data & 16)
                DrawBazookas(level);
            if (data & 32)
                DrawSpout(level);
            break;
        case Device::CurtainsPeacock:
            if (data & 16)
                DrawCurtain(0, level);
            if (data & 32)
                (data & kPeacockBit) != 0 ? DrawPeacock(level) : DrawCurtain(1, level);
            break;
        case Device::SweepMotion:
            ApplySweepMotion(rule.index == 1, data);
            break;
        case Device::MultiValve:
            ApplyMultiValve(data);
            break;
        case Device::Voice:
            DrawVoice(data >= 1);
            break;
        case Device::SweepPulsation:
            ApplyPulsation(data);
            break;
        case Device::Copy:
            ApplyCopy(data);
            break;
        case Device::Reset:
            ResetDevices(listener);
            break;
        default:
            ApplyLightCommand(address, data);
            break;
    }
}

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

std::int16_t& Fountain::StoredLevel(int address, int group)
{
    if (address == kSweepsAddress)
        return state_.mintSweepLevel[group];
    if (address == kCandelabrasAddress)
        return state_.mintCandelabraLevel[group];
    return state_.mintRingLevel[RingIndex(address, group)];
}

void Fountain::DrawJoinable(int address, int group, int level)
{
    if (address == kSweepsAddress)
        DrawSweeps(group, level);
    else if (address == kCandelabrasAddress)
        DrawCandelabras(group, level);
    else
        DrawRing(group, address, level);
}

void Fountain::DrawJoinableJoined(int address, int group, int level)
{
    DrawJoinable(address, group, level);
    if (state_.mblnJoined[address])
        DrawJoinable(address, 1 - group, StoredLevel(address, 1 - group));
}

void Fountain::ApplyJoinable(std::uint8_t address, int data)
{
    const bool joinedBefore = state_.mblnJoined[address];
    const bool joined = (data & kJoinBit) != 0;
    const int level = data & kLevelBits;
    state_.mblnJoined[address] = joined;
    if (joined) {
        for (int group = kGroupA; group <= kGroupB; ++group)
            if ((data & GroupBit(group)) && IsLevel(level))
                StoredLevel(address, group) = Level(level);
        DrawJoinableJoined(address, kGroupA, StoredLevel(address, kGroupA));
        return;
    }
    for (int group = kGroupA; group <= kGroupB; ++group) {
        if (data & GroupBit(group))
            DrawJoinable(address, group, level);
        else if (joinedBefore)
            DrawJoinable(address, group, StoredLevel(address, group));
    }
}

void Fountain::ApplyMultiValve(int data)
{
    const int level = data & kLevelBits;
    for (int group = kGroupA; group <= kGroupB; ++group) {
        if (!(data & GroupBit(group)) || level > kWeddingCakeLevel)
            continue;
        DrawMultiValve(group, level);
        state_.mintMultiValveLevel[group] = Level(level);
    }
}

void Fountain::ApplyWhiteLights(int data)
{
    SetCrossWhite((data & 2) != 0);
    SetBazookaWhite((data & 4) != 0);
    for (int module = 1; module <= 7; ++module)
        SetModuleLights(module, (state_.mintModuleLights[module] & 7) | (data & kWhite));
}

// The sources are copied before anything is written, so that both directions exchange the groups.
void Fountain::CopyWater(int data)
{
    const auto rings = state_.mintRingLevel;
    const auto sweeps = state_.mintSweepLevel;
    const auto candelabras = state_.mintCandelabraLevel;
    for (int source = kGroupA; source <= kGroupB; ++source) {
        if (!(data & GroupBit(source)))
            continue;
        for (int ring = 1; ring <= 5; ++ring)
            DrawRing(1 - source, ring, rings[RingIndex(ring, source)]);
        DrawSweeps(1 - source, sweeps[source]);
        DrawCandelabras(1 - source, candelabras[source]);
    }
}

void Fountain::ApplyCopy(int data)
{
    if (data & 1)
        CopyWater(data);
    if (!(data & 2))
        return;
    const auto lights = state_.mintGroupLights;
    for (int source = kGroupA; source <= kGroupB; ++source)
        if (data & GroupBit(source))
            SetGroupLights(1 - source, lights[source]);
}

void Fountain::ResetWater()
{
    for (int group = kGroupA; group <= kGroupB; ++group) {
        for (int ring = 1; ring <= 5; ++ring)
            DrawRing(group, ring, 0);
        DrawCandelabras(group, 0);
        DrawSweeps(group, 0);
        DrawCurtain(group, 0);
        SetPeacockLights(group, 0);
    }
    DrawPeacock(0);
    DrawBazookas(0);
    DrawSpout(0);
    DrawVoice(false);
}

void Fountain::ResetDevices(FountainListener& listener)
{
    tmrPulsate.Disable();
    tmrLights.Disable();
    tmrLights.SetInterval(kResetLightTimer);
    tmrSweeps.Disable();
    tmrSweeps.SetInterval(0);

    // Not back to the initial state alone: what is drawn goes through the drawing operations, and
    // the choice of opposed sweeps outlives a reset.
    state_.mblnJoined = {};
    ResetWater();
    FountainState reset;
    reset.mblnSweepsOpposed = state_.mblnSweepsOpposed;
    state_ = reset;
    listener.OnResetDevices();
}

void Fountain::DrawRing(int group, int ring, int level)
{
    if (!IsLevel(level))
        return;
    const int index = RingIndex(ring, group);
    const std::int16_t halves =
        Halves(state_.mblnJoined[ring], state_.mintRingLevel[RingIndex(ring, 1 - group)], level);
    drawing_.ringHalves[index] = halves;
    if (halves > 0)
        drawing_.ringShown[index] = halves;
    state_.mintRingLevel[index] = Level(level);
}

void Fountain::DrawSweeps(int group, int level)
{
    if (!IsLevel(level))
        return;
    drawing_.sweeps[group] = {
        Halves(state_.mblnJoined[kSweepsAddress], state_.mintSweepLevel[1 - group], level),
        state_.mintSweepPosition, state_.mblnSweepsOpposed};
    state_.mintSweepLevel[group] = Level(level);
    state_.mintPulseBase[group] = Level(level);
}

void Fountain::DrawCandelabras(int group, int level)
{
    if (!IsLevel(level))
        return;
    drawing_.candelabraHalves[group] = Halves(state_.mblnJoined[kCandelabrasAddress],
                                              state_.mintCandelabraLevel[1 - group], level);
    state_.mintCandelabraLevel[group] = Level(level);
}

void Fountain::DrawRingJoined(int group, int ring, int level)
{
    DrawJoinableJoined(ring, group, level);
}

void Fountain::DrawSweepsJoined(int group, int level)
{
    DrawJoinableJoined(kSweepsAddress, group, level);
}

void Fountain::DrawCandelabrasJoined(int group, int level)
{
    DrawJoinableJoined(kCandelabrasAddress, group, level);
}

void Fountain::DrawMultiValve(int group, int level)
{
    const bool weddingCake = level >= kWeddingCakeLevel;
    for (int ring = 1; ring <= 5; ++ring)
        DrawRing(group, ring, weddingCake ? ring : level);
    DrawSweeps(group, weddingCake ? kHighestLevel : level);
}

void Fountain::DrawBazookas(int level)
{
    if (IsLevel(level))
        state_.mintBazookaLevel = Level(level);
}

void Fountain::DrawSpout(int level)
{
    if (IsLevel(level))
        state_.mintSpoutLevel = Level(level);
}

void Fountain::DrawCurtain(int curtain, int level)
{
    if (!IsLevel(level))
        return;
    if (level > 0)
        DrawPeacock(0);  // the front curtain takes the peacock down too, and is meant to
    state_.mintCurtainLevel[curtain] = Level(level);
}

void Fountain::DrawPeacock(int level)
{
    if (!IsLevel(level))
        return;
    if (level > 0)
        DrawCurtain(1, 0);
    state_.mintPeacockLevel = Level(level);
}

void Fountain::DrawVoice(bool flag)
{
    state_.mblnVoice = flag;
}

void Fountain::Join(int address, bool joined)
{
    state_.mblnJoined[address] = joined;
    for (int group = kGroupA; group <= kGroupB; ++group)
        DrawJoinable(address, group, StoredLevel(address, group));
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

}  // namespace fountain
