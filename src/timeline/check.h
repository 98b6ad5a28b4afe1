#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "document/choreography.h"
#include "document/control_file.h"

namespace timeline {

/// A problem is what is lost, refused or over a limit.
enum class Severity { Problem, Warning };

/// Something that a user should look at in a control file.
struct Finding {
    Severity severity = Severity::Problem;
    std::int32_t line = 0;  ///< from 1
    std::string time;       ///< as the file writes it; empty when the line has none
    std::string message;    ///< with the time, what is wrong, and the fix; no line end in it

    friend bool operator==(const Finding&, const Finding&) = default;
};

struct CheckReport {
    document::Choreography choreography;  ///< as the editor reads it
    document::ReadReport read;
    std::vector<Finding> findings;  ///< in order of their lines
};

/// Reads a control file as the editor would and finds what is wrong with it. Times beyond
/// `musicLength` (ms) are warned of; 0 when it is not known.
[[nodiscard]] CheckReport CheckControlFile(const std::filesystem::path& name,
                                           std::int32_t musicLength);

/// The same for the bytes of a control file.
[[nodiscard]] CheckReport CheckControlText(std::string_view text, std::int32_t musicLength);

}  // namespace timeline
