#include "panel/load_panel.h"

#include <string>

#include "document/command_list.h"
#include "fountain/command_map.h"

namespace panel {
namespace {

using fountain::FountainState;

constexpr int kLongTravel = 2;  // a travel of 2 or 3 shows "long"
constexpr std::string_view kOnCaption = "X";

void Load(Spinner& spinner, int value)
{
    spinner.Value = static_cast<std::int16_t>(value);
    spinner.Tag = spinner.Value;
    spinner.Loaded = spinner.Value;
}

void Load(ColorLabel& label, bool lit)
{
    label.BackColor = lit ? fountain::kPanelOn : fountain::kPanelOff;
    label.Tag = label.BackColor;
}

void Load(CaptionLabel& label, std::string_view caption)
{
    label.Caption = caption;
    label.Tag = caption;
}

void LoadWater(PanelState& panel, const FountainState& state)
{
    for (int index = 0; index <= 9; ++index)
        Load(panel.updnRings[index], state.mintRingLevel[index]);
    for (int group = fountain::kGroupA; group <= fountain::kGroupB; ++group) {
        Load(panel.updnSweeps[group], state.mintSweepLevel[group]);
        Load(panel.updnCandelabra[group], state.mintCandelabraLevel[group]);
        Load(panel.updnCurtain[group], state.mintCurtainLevel[group]);
        Load(panel.updnMultiValve[group], state.mintMultiValveLevel[group]);
        const bool pulsates = state.mintPulseStep[group] != 0;
        Load(panel.updnSweepPulsate[group], !pulsates                    ? kPulsateStop
                                            : state.mblnPulseDown[group] ? kPulsateDownward
                                                                         : kPulsateUpward);
    }
    Load(panel.updnBazookas, state.mintBazookaLevel);
    Load(panel.updnSpout, state.mintSpoutLevel);
    Load(panel.updnPeacock, state.mintPeacockLevel);
    Load(panel.lblVoice, state.mblnVoice ? kOnCaption : "");
    for (int address = 1; address <= 8; ++address)
        Load(panel.lblBypass[address], state.mblnJoined[address] ? kOnCaption : "");
}

void LoadSweepMotion(PanelState& panel, const FountainState& state)
{
    const int travel = state.mintSweepHigh - 3;
    Load(panel.lblSweepTravel, travel >= kLongTravel ? "long" : "short");
    ShowSweepEnds(panel, travel);
    for (CaptionLabel& label : panel.lblSweepTo)
        label.Tag = label.Caption;
    Load(panel.updnSweepSpeed, state.mintSweepSpeed);
    for (int speed = 0; speed <= 3; ++speed)
        Load(panel.lblMotion[speed], state.mintSweepSpeed == speed);
    Load(panel.lblMotion[4], !state.mblnSweepsOpposed);
    Load(panel.lblMotion[5], state.mblnSweepsOpposed);
}

// lblLightMotion: 0 right, 1 left, 2 left with wrapping, 3 right with wrapping.
int LightMotionIndex(const FountainState& state)
{
    if (state.mblnLightsWrap)
        return state.mblnLightsRight ? 3 : 2;
    return state.mblnLightsRight ? 0 : 1;
}

void LoadLight(PanelState& panel, int index, bool lit)
{
    ColorLabel& label = panel.lblLight[index];
    label.BackColor = fountain::kPanelOff;
    if (lit)
        ToggleLightLabel(panel, index, LightLabelMode(index));
    label.Tag = label.BackColor;
}

bool AllModulesWhite(const FountainState& state)
{
    for (const std::int16_t value : state.mintModuleLights)
        if (!(value & fountain::kWhite))
            return false;
    return true;
}

void LoadLights(PanelState& panel, const FountainState& state)
{
    for (int index = 0; index < kGroupALabels; ++index)
        LoadLight(panel, index, (state.mintModuleLights[index / 4 + 1] >> (index % 4) & 1) != 0);
    for (int lamp = 0; lamp < 4; ++lamp) {
        LoadLight(panel, kGroupALabels + lamp, (state.mintGroupLights[0] >> lamp & 1) != 0);
        LoadLight(panel, kGroupBLabels + lamp, (state.mintGroupLights[1] >> lamp & 1) != 0);
    }
    for (int lamp = 0; lamp < 3; ++lamp) {
        LoadLight(panel, kPeacockALabels + lamp, (state.mintPeacockLights[0] >> lamp & 1) != 0);
        LoadLight(panel, kPeacockBLabels + lamp, (state.mintPeacockLights[1] >> lamp & 1) != 0);
    }
    LoadLight(panel, kBazookaLabel, state.mblnBazookaWhite);
    LoadLight(panel, kAllWhiteLabel, AllModulesWhite(state));
    LoadLight(panel, kCurtainGreenLabel, (state.mintCurtainLights & 1) != 0);
    LoadLight(panel, kCurtainAmberLabel, (state.mintCurtainLights & 2) != 0);
    LoadLight(panel, kCrossLabel, state.mblnCrossWhite);

    const int motion = LightMotionIndex(state);
    for (int index = 0; index <= 3; ++index)
        Load(panel.lblLightMotion[index], state.mblnLightsMoving && index == motion);
    Load(panel.lblTimer, state.mblnLightsTimed);
}

void LoadStoredCommands(PanelState& panel, std::string_view commands)
{
    int copy = 0;
    for (int k = 0; k < document::CommandCount(commands); ++k) {
        const document::Command command = document::CommandAt(commands, k);
        if (command.address == document::kCopyAddress)
            copy = command.data;
    }
    Load(panel.lblReset[0], document::BeginsWithReset(commands));
    Load(panel.lblCopy[0], (copy & fountain::kGroupABit) != 0);
    Load(panel.lblCopy[1], (copy & fountain::kGroupBBit) != 0);
    Load(panel.lblCopy[2], (copy & 1) != 0);
    Load(panel.lblCopy[3], (copy & 2) != 0);
}

}  // namespace

void LoadPanel(PanelState& panel, const fountain::Fountain& fountain, std::string_view commands)
{
    LoadWater(panel, fountain.State());
    LoadSweepMotion(panel, fountain.State());
    LoadLights(panel, fountain.State());
    LoadStoredCommands(panel, commands);
    panel.updnDisplay.Tag = panel.updnDisplay.Value;
    panel.lblDisplay.Tag = panel.lblDisplay.Caption;
    Load(panel.lblRotateTime, RotateTimeText(fountain.tmrLights.Interval()));
    panel.lngLightTimerTag = fountain.tmrLights.Interval();
    panel.blnTouched = false;
}

void SetOperatorDisplay(PanelState& panel, std::uint8_t number)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    panel.updnDisplay.Value = number;
    panel.lblDisplay.Caption = {kDigits[number >> 4], kDigits[number & 15]};
}

void ShowSweepEnds(PanelState& panel, int travel)
{
    const std::string degrees = std::to_string(10 * travel);
    panel.lblSweepTo[0].Caption = travel == 0 ? "0" : "-" + degrees;
    panel.lblSweepTo[1].Caption = "0";
    panel.lblSweepTo[2].Caption = travel == 0 ? "0" : "+" + degrees;
}

void BlankPanel(PanelState& panel)
{
    for (ColorLabel& label : panel.lblLight)
        Load(label, false);
    for (CaptionLabel& label : panel.lblBypass)
        Load(label, "");
    Load(panel.lblSweepTravel, "short");
}

std::string RotateTimeText(std::int32_t interval)
{
    const std::int32_t tenths = (interval + 50) / 100;
    return std::to_string(tenths / 10) + '.' + static_cast<char>('0' + tenths % 10);
}

}  // namespace panel
