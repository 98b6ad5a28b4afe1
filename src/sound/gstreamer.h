#pragma once

#include <string>

namespace sound {

/// Starts GStreamer at the first call, which takes up to 0.3 s. Says in English what is missing to
/// play music, always the same; empty when nothing is.
[[nodiscard]] const std::string& GstreamerProblem();

}  // namespace sound
