#pragma once

#include <string>
#include <vector>

#include "cli/steps.h"
#include "cli/values.h"

namespace cli {

// The subcommands. Each prints and returns the exit code.

struct CheckOptions {
    std::vector<std::string> files;
    bool json = false;
    bool strict = false;
    bool music = false;
};
[[nodiscard]] int RunCheck(const CheckOptions& options);

[[nodiscard]] int RunConvert(const std::string& in, const std::string& out);
/// With no commands they are read from standard input.
[[nodiscard]] int RunDescribe(const std::vector<std::string>& commands);
/// `pdf` is empty for text.
[[nodiscard]] int RunScript(const std::string& file, const std::string& pdf, int argc, char** argv);
[[nodiscard]] int RunState(const std::string& file, const std::vector<Step>& steps);
/// `out` is empty for the file itself.
[[nodiscard]] int RunEdit(const std::string& file, const std::vector<Step>& steps,
                          const std::string& out);
[[nodiscard]] int RunFrame(const std::string& file, std::int32_t time, const std::string& out,
                           Size size, int argc, char** argv);
[[nodiscard]] int RunDiff(const std::string& before, const std::string& after);

}  // namespace cli
