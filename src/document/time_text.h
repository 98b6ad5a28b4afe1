#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace document {

/// mm:ss.t for the control file and the printed script: seconds rounded half up to the tenth,
/// so that 59,950 ms reads "00:60.0". `time` in ms, 0 or more; the minutes widen beyond 99.
[[nodiscard]] std::string TimeText(std::int32_t time);

/// Appends the `TimeText` to `text`.
void AppendTimeText(std::string& text, std::int32_t time);

/// mm:ss.t for the readout, which truncates to the tenth. `time` in ms, 0 or more.
[[nodiscard]] std::string ReadoutText(std::int32_t time);

/// The decimal value of a field of the control file: blanks are skipped, reading stops at the
/// first character that is no digit, a field without digits is 0. At most nine digits.
[[nodiscard]] std::int32_t FieldValue(std::string_view field);

/// Milliseconds of a seconds field ("07.5" is 7500) of at most four characters, read like
/// `FieldValue` with one decimal point allowed.
[[nodiscard]] std::int32_t SecondsFieldValue(std::string_view field);

}  // namespace document
