#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "document/choreography.h"

namespace editor {

/// `count` with commas between the thousands, padded on the left with no-break spaces to seven
/// characters. UTF-8.
[[nodiscard]] std::string FormatCount(std::int32_t count);

/// What the file selection panel says of the music (an empty name for none; its length in ms) and
/// of the choreography. UTF-8.
[[nodiscard]] std::string Summary(const document::Choreography& choreography,
                                  const std::filesystem::path& music, std::int32_t musicLength);

}  // namespace editor
