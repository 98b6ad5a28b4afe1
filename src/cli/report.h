#pragma once

#include <optional>
#include <string>

namespace cli {

enum ExitCode : int { kSuccess = 0, kFoundSomething = 1, kFailed = 2 };

/// A value, or why there is none.
template <typename T>
struct Parsed {
    std::optional<T> value;
    std::string error;
};

/// One line on standard error; `kFailed`.
int Fail(const std::string& message);

/// Writes to standard output.
void Print(const std::string& text);

/// `code`, unless standard output could not be written.
[[nodiscard]] int Finished(int code);

}  // namespace cli
