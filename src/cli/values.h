#pragma once

#include <cstdint>
#include <string_view>

#include "cli/report.h"
#include "document/command_list.h"

namespace cli {

struct Size {
    int width = 0;
    int height = 0;
};

/// "01:05.3", or a whole number of milliseconds.
[[nodiscard]] Parsed<std::int32_t> ParseTime(std::string_view text);
/// "1024x372", both sides 1 to 16384.
[[nodiscard]] Parsed<Size> ParseSize(std::string_view text);
/// "003-020".
[[nodiscard]] Parsed<document::Command> ParseCommand(std::string_view text);
/// An optional sign and up to nine digits.
[[nodiscard]] std::optional<int> ParseNumber(std::string_view text);

}  // namespace cli
