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
    bool onlyBackup = false;        ///< the file is not there, but its newest backup is
};

/// What became of a line of the file.
enum class LineFate {
    Version,
    Ignored,      ///< too short for a time with a command
    Empty,        ///< none of its commands could be read
    LeftOutLate,  ///< its time has no text
    LeftOutFull,  ///< all slots were taken
    Stored,
    Merged  ///< into the slot at or before its time, which it moves to its time
};

struct LineRead {
    std::int32_t number = 0;  ///< from 1
    std::string_view text;    ///< without the line's end
    LineFate fate = LineFate::Ignored;
    std::int32_t time = 0;        ///< ms, of a line with a time
    std::string_view commands;    ///< packed, converted, not normalised
    std::int32_t mergedInto = 0;  ///< time of the slot that a merged line found
};

/// Hears of every line while a file is read. The texts live for the call only.
class ReadListener {
 public:
    virtual ~ReadListener() = default;
    virtual void OnLine(const LineRead& line) = 0;
};

/// Replaces the choreography by what `text`, the bytes of a control file, holds, normalised. The
/// file name is left empty. `listener` may be null.
ReadReport ReadControlText(Choreography& choreography, std::string_view text,
                           ReadListener* listener = nullptr);

/// The bytes of the control file of the choreography as it stands.
[[nodiscard]] std::string ControlText(const Choreography& choreography);

}  // namespace document
