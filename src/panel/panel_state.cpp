#include "panel/panel_state.h"

#include <algorithm>

namespace panel {
namespace {

template <typename Controls>
bool AnyChanged(const Controls& controls)
{
    return std::ranges::any_of(controls, [](const auto& control) { return control.Changed(); });
}

}  // namespace

PanelState::PanelState()
{
    for (ColorLabel& label : lblErase)
        label = {kEraseOff, kEraseOff};
}

bool HasPendingEdits(const PanelState& panel)
{
    return AnyChanged(panel.updnRings) || AnyChanged(panel.updnSweeps) ||
           AnyChanged(panel.updnCandelabra) || AnyChanged(panel.updnCurtain) ||
           AnyChanged(panel.updnMultiValve) || AnyChanged(panel.updnSweepPulsate) ||
           panel.updnBazookas.Changed() || panel.updnSpout.Changed() ||
           panel.updnPeacock.Changed() || panel.updnSweepSpeed.Changed() ||
           panel.updnDisplay.Changed() || AnyChanged(panel.lblBypass) || panel.lblVoice.Changed() ||
           panel.lblSweepTravel.Changed() || AnyChanged(panel.lblMotion) ||
           AnyChanged(panel.lblLightMotion) || panel.lblTimer.Changed() ||
           AnyChanged(panel.lblCopy) || AnyChanged(panel.lblReset) || AnyChanged(panel.lblLight);
}

void ToggleLightLabel(PanelState& panel, int index, int mode)
{
    ColorLabel& label = panel.lblLight[index];
    if (label.Lit()) {
        label.BackColor = fountain::kPanelOff;
        return;
    }
    const int lamp = index & 3;
    if (mode == 0)
        label.BackColor =
            lamp == 3 ? fountain::kPanelOn : fountain::mlngColors((1 << lamp) + fountain::kWhite);
    else if (index == kCurtainGreenLabel)
        label.BackColor = fountain::mlngColors(14);
    else if (index == kCurtainAmberLabel)
        label.BackColor = fountain::mlngColors(12);
    else if (index == kCrossLabel)
        label.BackColor = fountain::kPanelOn;
}

int LitLamps(const PanelState& panel, int first, int count)
{
    int lamps = 0;
    for (int lamp = 0; lamp < count; ++lamp)
        if (panel.lblLight[first + lamp].Lit())
            lamps |= 1 << lamp;
    return lamps;
}

int SweepTravel(const PanelState& panel)
{
    return panel.lblSweepTravel.Caption == "long" ? 3 : 1;
}

}  // namespace panel
