#include "timeline/stepping.h"

#include <algorithm>

#include "timeline/timeline.h"

namespace timeline {
namespace {

std::int32_t Unit(TimeField field, std::int32_t currentTime)
{
    switch (field) {
        case TimeField::Minutes:
            return 60'000;
        case TimeField::Seconds:
            return 1'000;
        case TimeField::Tenths:
            return 100;
        case TimeField::WholeRange:
            break;
    }
    return currentTime;
}

}  // namespace

std::int32_t StepTimeDown(const document::Choreography& choreography,
                          const document::Position& position, TimeField field, StepMode mode)
{
    const std::int32_t now = position.mlngCurrentTime;
    const std::int32_t plain = std::max(now - mode.multiplier * Unit(field, now), 0);
    if (!mode.commandStep)
        return plain;
    if (field == TimeField::WholeRange)
        return choreography.lngLastSlot() > 0 ? choreography.lngTime.front() : 0;
    const std::int32_t previous = document::SlotAtOrBefore(choreography, now - 1);
    return previous < 0 ? plain : choreography.lngTime[static_cast<std::size_t>(previous)];
}

std::int32_t StepTimeUp(const document::Choreography& choreography,
                        const document::Position& position, TimeField field, StepMode mode)
{
    const std::int32_t now = position.mlngCurrentTime;
    const std::int32_t last = choreography.lngLastSlot();
    std::int32_t time = now + mode.multiplier * Unit(field, now);
    if (mode.commandStep && field != TimeField::WholeRange) {
        const std::int32_t next = document::SlotAtOrBefore(choreography, now) + 1;
        time = choreography.lngTime[static_cast<std::size_t>(next)];  // at the end, the sentinel
    } else if (mode.commandStep && last > 0) {
        time = choreography.lngTime[static_cast<std::size_t>(last - 1)];
    }
    return std::min(time, kTimeLimit - 1);
}

}  // namespace timeline
