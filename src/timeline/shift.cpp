#include "timeline/shift.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "timeline/timeline.h"

namespace timeline {
namespace {

constexpr std::array<std::int32_t, 3> kUnits{60'000, 1'000, 100};
constexpr std::int32_t kMinute = 60'000;

std::int32_t TimeOf(const document::Choreography& choreography, std::int32_t slot)
{
    return choreography.lngTime[static_cast<std::size_t>(slot)];
}

}  // namespace

ShiftPanel OpenedShiftPanel(const document::Choreography& choreography, std::int32_t time)
{
    const std::int32_t slot = document::SlotAt(choreography, time);
    if (slot < 0)
        return {};
    const std::int32_t lower = slot > 0 ? TimeOf(choreography, slot - 1) + kGrid : 0;
    const std::int32_t last = TimeOf(choreography, choreography.lngLastSlot() - 1);
    return {.visible = true,
            .slot = slot,
            .oldTime = time,
            .newTime = time,
            .lowerLimit = lower,
            .upperLimit = kLastSettledTime - last};
}

void PressShiftTime(ShiftPanel& panel, int index, int direction)
{
    const std::int32_t unit = kUnits[static_cast<std::size_t>(index)];
    panel.newTime = direction < 0
                        ? std::max(panel.newTime - unit, panel.lowerLimit)
                        : std::max(panel.newTime, std::min(panel.newTime + unit, panel.upperLimit));
}

bool ApplyShift(document::Choreography& choreography, const ShiftPanel& panel)
{
    if (panel.Amount() == 0)
        return false;
    document::ShiftSlots(choreography, panel.slot, panel.Amount());
    choreography.blnChanged = true;
    return true;
}

std::string ShiftText(std::int32_t amount)
{
    if (amount == 0)
        return "no shifting";
    const std::int32_t size = std::abs(amount);
    const std::int32_t minutes = size / kMinute;
    const std::int32_t tenths = (size % kMinute + kGrid / 2) / kGrid;
    std::string text = amount > 0 ? "shift upward " : "shift downward ";
    if (minutes > 0)
        text += std::to_string(minutes) + (minutes >= 2 ? " minutes " : " minute ");
    return text + std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " seconds";
}

}  // namespace timeline
