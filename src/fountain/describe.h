#pragma once

#include <cstdint>
#include <string>

namespace fountain {

/// The command in English, without a full stop, as the printed script says it. Some texts read a
/// command otherwise than the fountain does, and are meant to; a command that selects nothing may
/// have an empty text.
[[nodiscard]] std::string DescribeCommand(std::uint8_t address, std::uint8_t data);

}  // namespace fountain
