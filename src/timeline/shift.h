#pragma once

#include <cstdint>
#include <string>

#include "document/choreography.h"

namespace timeline {

/// The shift panel: what moves the commands of the current time, and all behind them, to a new
/// time. All times in ms.
struct ShiftPanel {
    bool visible = false;
    std::int32_t slot = 0;        ///< the first slot that moves
    std::int32_t oldTime = 0;     ///< its time
    std::int32_t newTime = 0;     ///< the time that it will have
    std::int32_t lowerLimit = 0;  ///< of the new time
    std::int32_t upperLimit = 0;  ///< of the new time too, although it is computed like a shift

    [[nodiscard]] std::int32_t Amount() const { return newTime - oldTime; }
    friend bool operator==(const ShiftPanel&, const ShiftPanel&) = default;
};

/// The panel opened at `time`; not visible where no slot lies at exactly that time.
[[nodiscard]] ShiftPanel OpenedShiftPanel(const document::Choreography& choreography,
                                          std::int32_t time);

/// One press of an arrow of `updnShiftTime`: index 0 minutes, 1 seconds, 2 tenths; direction +1 or
/// -1. An up press never lowers the new time, even where the upper limit lies below it.
void PressShiftTime(ShiftPanel& panel, int index, int direction);

/// Moves the slots. False when the amount is 0.
bool ApplyShift(document::Choreography& choreography, const ShiftPanel& panel);

/// "no shifting", "shift upward 1 minute 5.0 seconds": `lblShiftFactor`.
[[nodiscard]] std::string ShiftText(std::int32_t amount);

}  // namespace timeline
