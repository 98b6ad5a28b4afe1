#include <algorithm>

#include "fountain/command_map.h"
#include "panel/encoder.h"
#include "panel/list_edit.h"

namespace panel {
namespace {

using document::Commands;
using document::Which;

void EncodeMotion(Commands& commands, const PanelState& panel)
{
    const bool labels =
        std::ranges::any_of(panel.lblMotion, [](const ColorLabel& l) { return l.Changed(); });
    if (!labels && !panel.updnSweepSpeed.Changed() && !panel.lblSweepTravel.Changed())
        return;
    const bool opposed = panel.lblMotion[5].Lit();
    const int speed = panel.updnSweepSpeed.Value;
    document::RemoveCommand(
        commands, opposed ? fountain::kSynchronizedMotionAddress : fountain::kOpposedMotionAddress,
        Which::All);
    PutOnly(commands,
            opposed ? fountain::kOpposedMotionAddress : fountain::kSynchronizedMotionAddress,
            speed == 0 ? 0 : speed * 32 + SweepTravel(panel));
}

void EncodePulsation(Commands& commands, const PanelState& panel, const EncodeContext& context)
{
    const auto& spinners = panel.updnSweepPulsate;
    if (!spinners[0].Changed() && !spinners[1].Changed() && !GroupWaterChanged(panel))
        return;
    bool stop = false;
    fountain::PerGroup<bool> had{};
    for (int k = 0; k < document::CommandCount(commands); ++k) {
        const document::Command command = document::CommandAt(commands, k);
        if (command.address != fountain::kSweepPulsationAddress)
            continue;
        stop = stop || command.data == 0;
        for (int group = 0; group <= 1; ++group)
            had[group] = had[group] || (command.data & fountain::GroupBit(group)) != 0;
    }
    document::RemoveCommand(commands, fountain::kSweepPulsationAddress, Which::All);
    // Without its own commands the time inherits the pulsation of the times before it, so a group
    // that shows none may need the stop although nobody set it.
    const auto inherited = After(context.before, commands).State().mintPulseStep;
    for (int group = 0; group <= 1; ++group)
        stop = stop || (spinners[group].Value == kPulsateStop &&
                        (spinners[group].Changed() || (had[group] && inherited[group] != 0)));

    const auto append = [&commands](int data) {
        document::AddCommand(commands, {.Address = fountain::kSweepPulsationAddress,
                                        .Data = static_cast<std::int16_t>(data)});
    };
    if (stop)
        append(0);
    for (int group = 0; group <= 1; ++group) {
        const Spinner& spinner = spinners[group];
        if (spinner.Value >= kPulsateUpward && (spinner.Changed() || had[group] || stop))
            append(fountain::GroupBit(group) + (spinner.Value == kPulsateDownward ? 64 : 0));
    }
}

}  // namespace

void EncodeSweepMotion(Commands& commands, const PanelState& panel, const EncodeContext& context)
{
    EncodeMotion(commands, panel);
    EncodePulsation(commands, panel, context);
}

}  // namespace panel
