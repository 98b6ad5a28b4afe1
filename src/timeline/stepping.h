#pragma once

#include <cstdint>

#include "document/choreography.h"
#include "document/position.h"

namespace timeline {

/// What a step moves by.
enum class TimeField { Minutes = 0, Seconds = 1, Tenths = 2, WholeRange = 3 };

/// How a step is meant.
struct StepMode {
    std::int32_t multiplier = 1;
    bool commandStep = false;  ///< go to the neighbouring command instead
};

/// Where one step back leads, in ms, 0 or more. The whole range leads to the first command in
/// command-step mode, else to 0.
[[nodiscard]] std::int32_t StepTimeDown(const document::Choreography& choreography,
                                        const document::Position& position, TimeField field,
                                        StepMode mode);

/// Where one step forward leads, in ms, below 90 minutes. Behind the last command a step in
/// command-step mode leads to the upper limit, and is meant to.
[[nodiscard]] std::int32_t StepTimeUp(const document::Choreography& choreography,
                                      const document::Position& position, TimeField field,
                                      StepMode mode);

}  // namespace timeline
