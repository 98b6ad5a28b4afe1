#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/run.h"
#include "cli/show.h"
#include "document/control_file.h"
#include "sound/music_length.h"
#include "timeline/check.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;
using timeline::CheckReport;
using timeline::Finding;
using timeline::Severity;

/// Length in ms of the music beside a control file; 0 when there is none.
Parsed<std::int32_t> LengthOfMusicBeside(const std::filesystem::path& file)
{
    constexpr std::array<std::string_view, 2> kExtensions{".mp3", ".wav"};
    for (const std::string_view extension : kExtensions) {
        const auto music =
            document::FindFile(std::filesystem::path(file).replace_extension(extension));
        if (!music)
            continue;
        const sound::MusicLength length = sound::MeasureMusic(*music);
        if (length.problem.empty())
            return {length.length, {}};
        return {std::nullopt, music->string() + ": " + length.problem};
    }
    return {0, {}};
}

Json FindingsJson(const CheckReport& report, Severity severity)
{
    Json json = Json::array();
    for (const Finding& finding : report.findings)
        if (finding.severity == severity)
            json.push_back(
                {{"line", finding.line}, {"time", finding.time}, {"message", finding.message}});
    return json;
}

Json ReportJson(const std::string& file, const CheckReport& report)
{
    const document::Choreography& choreography = report.choreography;
    return {{"file", file},
            {"version", report.read.version},
            {"timesLoaded", choreography.intTimeCount[0]},
            {"times", choreography.intTimeCount[1]},
            {"commandsLoaded", choreography.intCommandCount[0]},
            {"commands", choreography.intCommandCount[1]},
            {"tooMany", choreography.blnTooMany},
            {"changed", choreography.blnChanged},
            {"problems", FindingsJson(report, Severity::Problem)},
            {"warnings", FindingsJson(report, Severity::Warning)}};
}

void PrintReport(const std::string& file, const CheckReport& report)
{
    for (const Finding& finding : report.findings)
        Print(file + ':' + std::to_string(finding.line) + ": " +
              (finding.severity == Severity::Warning ? "warning: " : "") + finding.message + '\n');
}

bool IsFault(const CheckReport& report, bool strict)
{
    return std::ranges::any_of(report.findings, [strict](const Finding& finding) {
        return strict || finding.severity == Severity::Problem;
    });
}

/// What became of one file.
struct Checked {
    CheckReport report;
    std::string error;
};

Checked Check(const std::string& name, bool music)
{
    const auto file = FindControlFile(name);
    if (!file.value)
        return {{}, file.error};
    const auto length = music ? LengthOfMusicBeside(*file.value) : Parsed<std::int32_t>{0, {}};
    if (!length.value)
        return {{}, length.error};
    Checked checked{timeline::CheckControlFile(*file.value, *length.value), {}};
    if (checked.report.read.error)
        checked.error = name + ": cannot be read: " + checked.report.read.error.message();
    return checked;
}

}  // namespace

int RunCheck(const CheckOptions& options)
{
    int code = kSuccess;
    Json all = Json::array();
    for (const std::string& file : options.files) {
        const Checked checked = Check(file, options.music);
        if (!checked.error.empty()) {
            code = Fail(checked.error);
            continue;
        }
        if (options.json)
            all.push_back(ReportJson(file, checked.report));
        else
            PrintReport(file, checked.report);
        if (IsFault(checked.report, options.strict))
            code = std::max<int>(code, kFoundSomething);
    }
    if (options.json)
        Print(all.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
    return Finished(code);
}

}  // namespace cli
