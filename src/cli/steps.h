#pragma once

#include <cstdint>
#include <string>

#include "cli/controls.h"
#include "cli/report.h"
#include "cli/show.h"

namespace cli {

enum class StepKind { At, Play, Operate, Key };
enum class Key { PageUp, PageDown, Home, End, F9 };

struct Step {
    StepKind kind = StepKind::At;
    std::string text;  ///< as it was given, for messages
    std::int32_t time = 0;
    Control control;
    Operation operation = Operation::Click;
    int amount = 0;
    Key key = Key::PageUp;
};

/// `option` is "--at", "--play", "--set", "--spin", "--click" or "--key".
[[nodiscard]] Parsed<Step> ParseStep(const std::string& option, const std::string& value);

/// True for a step that would save the show.
[[nodiscard]] bool Saves(const Step& step);

/// Why the step was refused, or an empty text.
[[nodiscard]] std::string PerformStep(Show& show, const Step& step);

}  // namespace cli
