#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "document/choreography.h"

namespace document {

inline constexpr std::int32_t kFileVersion = 381;

/// What a read met beside the choreography itself.
struct ReadReport {
    std::int32_t version = 0;       ///< 0 when there is no version line
    std::int32_t timesLeftOut = 0;  ///< new times that found all slots taken
    std::error_code error;          ///< the file exists but could not be read, or only in part
};

/// Replaces the choreography by what `text`, the bytes of a control file, holds, normalised. The
/// file name is left empty.
ReadReport ReadControlText(Choreography& choreography, std::string_view text);

/// The bytes of the control file of the choreography as it stands.
[[nodiscard]] std::string ControlText(const Choreography& choreography);

}  // namespace document
