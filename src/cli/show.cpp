#include "cli/show.h"

#include <cerrno>
#include <cstdlib>

namespace cli {
namespace {

std::string WithReason(const std::string& name, const std::string& what, std::error_code error)
{
    return name + ": " + what + (error ? ": " + error.message() : "");
}

}  // namespace

void YesPrompts::Warn(const std::string& text)
{
    Fail(text);
}

bool YesPrompts::Ask(const std::string&, const std::string&, editor::Icon)
{
    return true;
}

Parsed<std::filesystem::path> FindControlFile(const std::string& name)
{
    std::error_code error;
    const auto kind = std::filesystem::status(name, error).type();
    if (kind == std::filesystem::file_type::directory)
        return {std::nullopt, name + ": expected a control file, this is a folder"};
    if (const auto found = document::FindFile(name))
        return {*found, {}};
    if (kind == std::filesystem::file_type::not_found)
        return {std::nullopt, name + ": no such file"};
    return {std::nullopt, WithReason(name, "expected a control file that can be read", error)};
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    if (!path_.empty())
        std::filesystem::remove_all(path_, ignored);
}

std::error_code ScratchFolder::Add(const std::filesystem::path& file)
{
    std::error_code error;
    std::string folder = (std::filesystem::temp_directory_path(error) / "choreo-XXXXXX").string();
    if (error)
        return error;
    if (mkdtemp(folder.data()) == nullptr)
        return {errno, std::generic_category()};
    path_ = folder;
    std::filesystem::copy_file(file, path_ / file.filename(), error);
    return error;
}

std::string Show::Open(const std::string& name, Saving saving)
{
    const auto file = FindControlFile(name);
    if (!file.value)
        return file.error;
    file_ = *file.value;
    std::error_code error;
    if (saving == Saving::IntoScratch)
        error = scratch_.Add(file_);
    if (error)
        return WithReason(name, "cannot be copied", error);
    editor_.ReadControlFile(saving == Saving::Never ? file_ : scratch_.Path() / file_.filename());
    error = editor_.LastRead().error;
    return error ? WithReason(name, "cannot be read", error) : "";
}

std::string ReadChoreography(document::Choreography& choreography, const std::string& name)
{
    const auto file = FindControlFile(name);
    if (!file.value)
        return file.error;
    const std::error_code error = document::ReadControlFile(choreography, *file.value).error;
    return error ? WithReason(name, "cannot be read", error) : "";
}

std::string SaveChoreography(document::Choreography& choreography, const std::string& name)
{
    // The names of the streams, as /dev/stdout: a save would roll them away as a backup.
    if (std::filesystem::path(name).parent_path() == "/dev")
        return name + ": expected the name of a control file";
    const document::SaveReport report = document::WriteControlFile(choreography, name);
    switch (report.outcome) {
        case document::SaveOutcome::Saved:
            return {};
        case document::SaveOutcome::Nothing:
            return "expected the name of a file to save to";
        case document::SaveOutcome::OpenFailed:
        case document::SaveOutcome::WriteFailed:
            break;
    }
    return WithReason(name, "cannot be written", report.error);
}

}  // namespace cli
