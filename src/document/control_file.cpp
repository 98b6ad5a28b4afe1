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

bool SameButForCase(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, LowerAscii, LowerAscii);
}

/// Folders stay where they are, even with a backup's name. Missing files are passed over.
void Roll(const fs::path& from, const fs::path& to)
{
    std::error_code ignored;
    if (fs::is_directory(to, ignored) || fs::is_directory(from, ignored))
        return;
    std::error_code error;
    fs::rename(from, to, error);  // over what is there, so that no moment is without it
    if (error)
        fs::remove(to, ignored);
}

std::error_code Copy(const fs::path& from, const fs::path& to)
{
    const FileBytes file = ReadWholeFile(from);
    NextVersion copy(to);
    std::error_code error = file.error;
    if (!error)
        error = copy.Create();
    if (!error)
        error = copy.Write(file.Text());
    return error ? error : copy.TakePlace();
}

/// Gives the present version its backup's name too, so that it never is without a name. Only where
/// a file cannot have two names it has none of its own until the next version takes it.
bool KeepAsBackup(const fs::path& file, const fs::path& backup, bool linked)
{
    std::error_code error;
    if (!fs::is_directory(backup, error))
        fs::remove(backup, error);
    fs::create_hard_link(file, backup, error);
    if (error && linked)
        error = Copy(file, backup);  // its folder may lie on another disk
    else if (error)
        fs::rename(file, backup, error);
    return !error;
}

/// `file` is what `name` stands for. False when the present version has got no backup.
bool RollBackups(const fs::path& name, const fs::path& file)
{
    std::error_code error;
    const fs::path newest = BackupName(name, 1);
    // A save that failed or was killed has done this already.
    if (fs::equivalent(file, newest, error))
        return true;
    for (int k = kBackups; k >= 2; --k)
        Roll(BackupName(name, k - 1), BackupName(name, k));
    return !fs::exists(file, error) || KeepAsBackup(file, newest, name != file);
}

/// The file that a save replaces: what a symbolic link stands for, so that it goes on doing so.
fs::path FileOf(const fs::path& name)
{
    constexpr int kMostLinks = 40;
    fs::path file = name;
    std::error_code ignored;
    for (int link = 0; link < kMostLinks && fs::is_symlink(file, ignored); ++link)
        file = file.parent_path() / fs::read_symlink(file, ignored);
    return file;
}

struct WriteResult {
    SaveOutcome outcome = SaveOutcome::OpenFailed;
    std::error_code error;
};

/// The next version is on the disk before the backups roll, and takes its place after that.
WriteResult WriteAndRoll(const fs::path& name, std::string_view text, bool roll)
{
    const fs::path file = FileOf(name);
    NextVersion next(file);
    const std::error_code creating = next.Create();
    if (creating == std::errc::device_or_resource_busy)
        return {SaveOutcome::OpenFailed, creating};
    const std::error_code writing = creating ? creating : next.Write(text);
    const bool rolled = !roll || RollBackups(name, file);
    if (creating)
        return {SaveOutcome::OpenFailed, creating};
    if (writing)
        return {SaveOutcome::WriteFailed, writing};
    if (!rolled)
        return {SaveOutcome::OpenFailed, std::make_error_code(std::errc::file_exists)};
    const std::error_code placing = next.TakePlace();
    return {placing ? SaveOutcome::WriteFailed : SaveOutcome::Saved, placing};
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
        ReadReport report;
        report.onlyBackup = !fileName.empty() && FileExists(BackupName(fileName, 1));
        choreography = {};
        choreography.fileName = fileName;
        return report;
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
    std::error_code ignored;
    const bool present = fs::exists(name, ignored);
    if (present && !FileExists(name)) {
        report.outcome = SaveOutcome::OpenFailed;
        report.error = std::make_error_code(std::errc::invalid_argument);
        return report;
    }
    // A file that the editor knew and that is gone fell to a save that failed: its last version
    // is the .001 backup, which trying again must not roll on and in the end out.
    const bool triedBefore = choreography.fileExists && choreography.fileName == name;
    const WriteResult written =
        WriteAndRoll(name, ControlText(choreography), present || !triedBefore);
    report.outcome = written.outcome;
    report.error = written.error;
    if (written.outcome != SaveOutcome::Saved) {
        choreography.blnChanged |= choreography.fileName == name;
        return report;
    }
    choreography.blnChanged = false;
    choreography.fileExists = true;
    choreography.fileName = fs::path(name);
    return report;
}

}  // namespace document
