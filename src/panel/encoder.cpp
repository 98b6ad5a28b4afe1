#include "panel/encoder.h"

#include <algorithm>

#include "fountain/command_map.h"
#include "panel/list_edit.h"

namespace panel {
namespace {

using document::Commands;
using document::Which;

}  // namespace

void EncodeReset(Commands& commands, const PanelState& panel)
{
    if (panel.lblReset[0].Lit())
        document::AddCommand(commands,
                             {.Address = document::kResetAddress, .Replace = 255, .Merge = 1});
    else
        document::RemoveCommand(commands, document::kResetAddress, Which::All);
}

void EncodeDisplay(Commands& commands, const PanelState& panel)
{
    if (panel.updnDisplay.Changed())
        PutOnly(commands, fountain::kOperatorDisplayAddress, panel.updnDisplay.Value);
}

void EncodeCopy(Commands& commands, PanelState& panel)
{
    if (std::ranges::none_of(panel.lblCopy, [](const ColorLabel& l) { return l.Changed(); }))
        return;
    document::RemoveCommand(commands, document::kCopyAddress, Which::All);
    const int direction = (panel.lblCopy[0].Lit() ? 16 : 0) | (panel.lblCopy[1].Lit() ? 32 : 0);
    const int content = (panel.lblCopy[2].Lit() ? 1 : 0) | (panel.lblCopy[3].Lit() ? 2 : 0);
    if (direction != 0 && content != 0) {
        document::AddCommand(commands, {.Address = document::kCopyAddress,
                                        .Data = static_cast<std::int16_t>(direction | content),
                                        .Merge = 1});
        return;
    }
    for (ColorLabel& label : panel.lblCopy)
        label.BackColor = fountain::kPanelOff;
}

void EncodePanel(Commands& commands, PanelState& panel, const EncodeContext& context)
{
    EncodeReset(commands, panel);
    EncodeDisplay(commands, panel);
    EncodeCopy(commands, panel);
    EncodeWater(commands, panel, context);
    EncodeLights(commands, panel, context);
    EncodeLightMotion(commands, panel, context);
    EncodeSweepMotion(commands, panel, context);
}

}  // namespace panel
