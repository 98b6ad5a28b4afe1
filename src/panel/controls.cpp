#include "panel/controls.h"

#include <algorithm>
#include <array>

#include "fountain/command_map.h"
#include "panel/load_panel.h"

namespace panel {
namespace {

int RingOf(int index)
{
    return index / 2 + 1;
}
int GroupOf(int index)
{
    return index % 2;
}

// --- water

void RingChanged(PanelEdit edit, int index)
{
    edit.fountain.DrawRingJoined(GroupOf(index), RingOf(index), edit.panel.updnRings[index].Value);
}

void SweepsChanged(PanelEdit edit, int group)
{
    edit.fountain.DrawSweepsJoined(group, edit.panel.updnSweeps[group].Value);
}

void CandelabraChanged(PanelEdit edit, int group)
{
    edit.fountain.DrawCandelabrasJoined(group, edit.panel.updnCandelabra[group].Value);
}

void CurtainChanged(PanelEdit edit, int curtain)
{
    const int level = edit.panel.updnCurtain[curtain].Value;
    if (curtain == 1 && level > 0)
        edit.panel.updnPeacock.Value = 0;
    edit.fountain.DrawCurtain(curtain, level);
    // The front curtain takes the peacock down in the fountain, but what is written for both has
    // the peacock behind it and up again.
    if (edit.panel.updnPeacock.Value > 0)
        edit.fountain.DrawPeacock(edit.panel.updnPeacock.Value);
}

void PeacockChanged(PanelEdit edit, int)
{
    if (edit.panel.updnPeacock.Value > 0)
        edit.panel.updnCurtain[1].Value = 0;
    edit.fountain.DrawPeacock(edit.panel.updnPeacock.Value);
}

void BazookasChanged(PanelEdit edit, int)
{
    edit.fountain.DrawBazookas(edit.panel.updnBazookas.Value);
}

void SpoutChanged(PanelEdit edit, int)
{
    edit.fountain.DrawSpout(edit.panel.updnSpout.Value);
}

// The multi-valve's command says what its rings and sweeps do, so they count as unchanged until
// the multi-valve itself is back where it was.
void MultiValveChanged(PanelEdit edit, int group)
{
    const Spinner& multiValve = edit.panel.updnMultiValve[group];
    const bool cake = multiValve.Value >= fountain::kWeddingCakeLevel;
    const auto imply = [&](Spinner& spinner, int level) {
        spinner.Value = static_cast<std::int16_t>(level);
        spinner.Tag = multiValve.Changed() ? spinner.Value : spinner.Loaded;
    };
    for (int ring = 1; ring <= 5; ++ring)
        imply(edit.panel.updnRings[fountain::RingIndex(ring, group)],
              cake ? ring : multiValve.Value);
    imply(edit.panel.updnSweeps[group], cake ? fountain::kHighestLevel : multiValve.Value);
    edit.fountain.DrawMultiValve(group, multiValve.Value);
}

void BypassClicked(PanelEdit edit, int address)
{
    CaptionLabel& label = edit.panel.lblBypass[address];
    label.Caption = label.Caption == "X" ? "" : "X";
    if (address != 7)
        edit.fountain.Join(address, label.Caption == "X");
}

void VoiceClicked(PanelEdit edit, int)
{
    CaptionLabel& label = edit.panel.lblVoice;
    label.Caption = label.Caption == "X" ? "" : "X";
    edit.fountain.DrawVoice(label.Caption == "X");
}

// --- sweep motion

// The speed spinner and the four speed labels mirror one another.
void SweepSpeedChanged(PanelEdit edit, int)
{
    const int speed = edit.panel.updnSweepSpeed.Value;
    for (int index = 0; index <= 3; ++index)
        edit.panel.lblMotion[index].BackColor =
            index == speed ? fountain::kPanelOn : fountain::kPanelOff;
    edit.fountain.ApplySweepMotion(edit.panel.lblMotion[5].Lit(),
                                   speed * 32 + SweepTravel(edit.panel));
}

void MotionClicked(PanelEdit edit, int clicked)
{
    if (clicked <= 3)
        edit.panel.updnSweepSpeed.Value = static_cast<std::int16_t>(clicked);
    else
        for (int index = 4; index <= 5; ++index)
            edit.panel.lblMotion[index].BackColor =
                index == clicked ? fountain::kPanelOn : fountain::kPanelOff;
    SweepSpeedChanged(edit, 0);
}

void SweepTravelClicked(PanelEdit edit, int)
{
    CaptionLabel& label = edit.panel.lblSweepTravel;
    label.Caption = label.Caption == "long" ? "short" : "long";
    ShowSweepEnds(edit.panel, SweepTravel(edit.panel));
}

// A stop is for both groups, so the other one that shows a pulsation is started again.
void PulsateChanged(PanelEdit edit, int group)
{
    const auto start = [&edit](int which) {
        const int value = edit.panel.updnSweepPulsate[which].Value;
        if (value >= kPulsateUpward)
            edit.fountain.ApplyPulsation(fountain::GroupBit(which) +
                                         (value == kPulsateDownward ? 64 : 0));
    };
    if (edit.panel.updnSweepPulsate[group].Value == kPulsateStop) {
        edit.fountain.ApplyPulsation(0);
        start(1 - group);
    }
    start(group);
}

// --- lights

void SetLit(PanelState& panel, int index, bool lit)
{
    if (panel.lblLight[index].Lit() != lit)
        ToggleLightLabel(panel, index, LightLabelMode(index));
}

// A lamp of every second module (step 2) or of all (step 1), from module `first` on.
void SetLamps(PanelEdit edit, int first, int step, int lamp, bool lit)
{
    for (int module = first; module <= 7; module += step) {
        SetLit(edit.panel, 4 * (module - 1) + lamp, lit);
        edit.fountain.SetModuleLights(module, LitLamps(edit.panel, 4 * (module - 1), 4));
    }
}

void LightClicked(PanelEdit edit, int index)
{
    PanelState& panel = edit.panel;
    SetLit(panel, index, !panel.lblLight[index].Lit());
    const bool lit = panel.lblLight[index].Lit();
    if (index < kGroupALabels)
        edit.fountain.SetModuleLights(index / 4 + 1, LitLamps(panel, index / 4 * 4, 4));
    else if (index < kPeacockALabels)
        SetLamps(edit, index < kGroupBLabels ? 1 : 2, 2, index % 4, lit);
    else if (index < kBazookaLabel)
        edit.fountain.SetPeacockLights(0, LitLamps(panel, kPeacockALabels, 3));
    else if (index == kBazookaLabel)
        edit.fountain.SetBazookaWhite(lit);
    else if (index < kAllWhiteLabel)
        edit.fountain.SetPeacockLights(1, LitLamps(panel, kPeacockBLabels, 3));
    else if (index == kAllWhiteLabel)
        SetLamps(edit, 1, 1, 3, lit);
    else if (index == kCrossLabel)
        edit.fountain.SetCrossWhite(lit);
    else
        edit.fountain.SetCurtainLights(1, LitLamps(panel, kCurtainGreenLabel, 2));
}

// --- light movement, copy, display

void Toggle(ColorLabel& label)
{
    label.BackColor = label.Lit() ? fountain::kPanelOff : fountain::kPanelOn;
}

void LightMotionClicked(PanelEdit edit, int index)
{
    PanelState& panel = edit.panel;
    const bool moving = !panel.lblLightMotion[index].Lit();
    for (ColorLabel& label : panel.lblLightMotion)
        label.BackColor = fountain::kPanelOff;
    if (moving)
        panel.lblLightMotion[index].BackColor = fountain::kPanelOn;
    const bool right = moving && (index == 0 || index == 3);
    const bool timed = panel.lblTimer.Lit();
    edit.fountain.SetLightMovement(moving, right, index >= 2, timed);
    if (moving && !timed)
        edit.fountain.ShiftModuleLights();
}

void TimerClicked(PanelEdit edit, int)
{
    Toggle(edit.panel.lblTimer);
    const fountain::FountainState& state = edit.fountain.State();
    edit.fountain.SetLightMovement(state.mblnLightsMoving, state.mblnLightsRight,
                                   state.mblnLightsWrap, edit.panel.lblTimer.Lit());
}

void CopyClicked(PanelEdit edit, int index)
{
    Toggle(edit.panel.lblCopy[index]);
}

void DisplayChanged(PanelEdit edit, int)
{
    SetOperatorDisplay(edit.panel, static_cast<std::uint8_t>(edit.panel.updnDisplay.Value));
}

// clang-format off
#define MEMBER(name) [](PanelState& panel, int) -> Spinner& { return panel.name; }
#define ELEMENT(name) [](PanelState& panel, int index) -> Spinner& { return panel.name[index]; }

constexpr SpinnerControl kSpinners[] = {
    {"updnRings",        0, 9, ELEMENT(updnRings),        RingChanged},
    {"updnSweeps",       0, 1, ELEMENT(updnSweeps),       SweepsChanged},
    {"updnCandelabra",   0, 1, ELEMENT(updnCandelabra),   CandelabraChanged},
    {"updnCurtain",      0, 1, ELEMENT(updnCurtain),      CurtainChanged},
    {"updnMultiValve",   0, 1, ELEMENT(updnMultiValve),   MultiValveChanged},
    {"updnSweepPulsate", 0, 1, ELEMENT(updnSweepPulsate), PulsateChanged},
    {"updnBazookas",     0, 0, MEMBER(updnBazookas),      BazookasChanged},
    {"updnSpout",        0, 0, MEMBER(updnSpout),         SpoutChanged},
    {"updnPeacock",      0, 0, MEMBER(updnPeacock),       PeacockChanged},
    {"updnSweepSpeed",   0, 0, MEMBER(updnSweepSpeed),    SweepSpeedChanged},
    {"updnDisplay",      0, 0, MEMBER(updnDisplay),       DisplayChanged},
};

#undef MEMBER
#undef ELEMENT

constexpr LabelControl kLabels[] = {
    {"lblBypass",      1,  8, BypassClicked},
    {"lblVoice",       0,  0, VoiceClicked},
    {"lblSweepTravel", 0,  0, SweepTravelClicked},
    {"lblMotion",      0,  5, MotionClicked},
    {"lblLightMotion", 0,  3, LightMotionClicked},
    {"lblTimer",       0,  0, TimerClicked},
    {"lblCopy",        0,  3, CopyClicked},
    {"lblLight",       0, 46, LightClicked},
};
// clang-format on

template <typename Control, std::size_t Size>
const Control* Find(const Control (&controls)[Size], std::string_view name)
{
    const auto* found = std::ranges::find(controls, name, &Control::name);
    return found == std::end(controls) ? nullptr : found;
}

}  // namespace

std::span<const SpinnerControl> SpinnerControls()
{
    return kSpinners;
}
std::span<const LabelControl> LabelControls()
{
    return kLabels;
}
const SpinnerControl* FindSpinner(std::string_view name)
{
    return Find(kSpinners, name);
}
const LabelControl* FindLabel(std::string_view name)
{
    return Find(kLabels, name);
}

void SetSpinner(PanelEdit edit, const SpinnerControl& control, int index, int value)
{
    Spinner& spinner = control.at(edit.panel, index);
    spinner.Value = static_cast<std::int16_t>(std::clamp<int>(value, spinner.Min, spinner.Max));
    edit.panel.blnTouched = true;
    control.changed(edit, index);
}

void PressSpinner(PanelEdit edit, const SpinnerControl& control, int index, int direction)
{
    const Spinner& spinner = control.at(edit.panel, index);
    int value = spinner.Value + direction;
    if (spinner.Wrap && value > spinner.Max)
        value = spinner.Min;
    else if (spinner.Wrap && value < spinner.Min)
        value = spinner.Max;
    if (value < spinner.Min || value > spinner.Max)
        return;
    SetSpinner(edit, control, index, value);
}

void ClickLabel(PanelEdit edit, const LabelControl& control, int index)
{
    edit.panel.blnTouched = true;
    control.clicked(edit, index);
}

void PressRotateTime(PanelEdit edit, int index, int direction)
{
    constexpr int kShortest = 4;  // tenths of a second
    constexpr int kLongest = 99;
    const int step = (index == 0 ? 10 : 1) * direction;
    const int tenths =
        std::clamp((edit.fountain.tmrLights.Interval() + 50) / 100 + step, kShortest, kLongest);
    edit.fountain.tmrLights.SetInterval(tenths * 100);
    edit.panel.lblRotateTime.Caption = RotateTimeText(tenths * 100);
    edit.panel.blnTouched = true;
}

}  // namespace panel
