#include "document/control_file.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "document/ascii.h"
#include "document/file_io.h"
#include "document/prune.h"

namespace document {
namespace {

namespace fs = std::filesystem;

constexpr int kBackups = 5;

bool SameButForCase(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, LowerAscii, LowerAscii);
}

/// Folders stay where they are, even with a backup's name. Missing files are passed over.
void Roll(const fs::path& from, const fs::path& to)
{
    std::error_code ignored;
    if (!fs::is_directory(to, ignored))
        fs::remove(to, ignored);
    if (!fs::is_directory(from, ignored))
        fs::rename(from, to, ignored);
}

void RollBackups(const fs::path& name)
{
    for (int k = kBackups; k >= 2; --k)
        Roll(BackupName(name, k - 1), BackupName(name, k));
    Roll(name, BackupName(name, 1));
}

bool PruneForSave(Choreography& choreography)
{
    const PruneResult pruned = PruneChoreography(choreography);
    choreography.intTimeCount[1] -= pruned.times;
    choreography.intCommandCount[1] -= pruned.commands;
    choreography.blnChanged |= pruned.changed;
    return pruned.changed;
}

}  // namespace

std::filesystem::path BackupName(const std::filesystem::path& name, int number)
{
    std::string file = name.filename().string();
    file.resize(file.size() - std::min<std::size_t>(file.size(), 3));
    return name.parent_path() / (file + "00" + std::to_string(number));
}

bool FileExists(const std::filesystem::path& name)
{
    std::error_code ignored;
    return fs::is_regular_file(name, ignored);
}

std::optional<std::filesystem::path> FindFile(const std::filesystem::path& name)
{
    if (FileExists(name))
        return name;
    const fs::path folder = name.parent_path();
    const std::string wanted = name.filename().string();
    std::optional<fs::path> found;
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entry != fs::directory_iterator{}; entry.increment(error)) {
        const fs::path file = entry->path().filename();
        if (!SameButForCase(file.native(), wanted) || !FileExists(entry->path()))
            continue;
        if (!found || file.native() < found->filename().native())
            found = folder / file;
    }
    return found;
}

ReadReport ReadControlFile(Choreography& choreography, const std::filesystem::path& name,
                           ReadListener* listener)
{
    const fs::path fileName = name;  // it may be the choreography's own
    if (!FileExists(fileName)) {
        choreography = {};
        choreography.fileName = fileName;
        return {};
    }
    const FileBytes file = ReadWholeFile(fileName);
    ReadReport report = ReadControlText(choreography, file.Text(), listener);
    report.error = file.error;
    choreography.fileName = fileName;
    choreography.fileExists = true;
    return report;
}

SaveReport WriteControlFile(Choreography& choreography, const std::filesystem::path& name)
{
    SaveReport report;
    if (name.empty())
        return report;
    report.pruned = PruneForSave(choreography);
    report.outcome = SaveOutcome::OpenFailed;
    std::error_code ignored;
    const bool present = fs::exists(name, ignored);
    if (present && !FileExists(name)) {
        report.error = std::make_error_code(std::errc::invalid_argument);
        return report;
    }
    // A file that the editor knew and that is gone fell to a save that failed: its last version
    // is the .001 backup, which trying again must not roll on and in the end out.
    const bool triedBefore = choreography.fileExists && choreography.fileName == name;
    if (present || !triedBefore)
        RollBackups(name);
    const WriteResult written = WriteNewFile(name, ControlText(choreography));
    if (written.error) {
        if (written.opened)
            report.outcome = SaveOutcome::WriteFailed;
        report.error = written.error;
        choreography.blnChanged |= choreography.fileName == name;
        return report;
    }
    report.outcome = SaveOutcome::Saved;
    choreography.blnChanged = false;
    choreography.fileExists = true;
    choreography.fileName = fs::path(name);
    return report;
}

}  // namespace document
