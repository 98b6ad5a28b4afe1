// Whatever happens in the middle of a save, a complete version is there afterwards.
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <set>

#include "document/control_file.h"
#include "show_folder.h"

namespace {

namespace fs = std::filesystem;
using document::Choreography;
using document::SaveOutcome;
using testing_support::kShow;
using testing_support::Packed;

constexpr const char* kOld = "ct0-381\r\n00:01.0003-018\r\n";

class SaveSafety : public testing_support::ShowFolder {
 protected:
    /// The old show with as many backups.
    void Prepare(int backups)
    {
        for (const auto& entry : fs::directory_iterator(folder_))
            fs::remove_all(entry);
        Put("show.ctl", kOld);
        for (int k = 1; k <= backups; ++k)
            Put(Backup(k), BackupText(k));
    }
    static std::string Backup(int number) { return "show.00" + std::to_string(number); }
    static std::string BackupText(int number)
    {
        return "ct0-381\r\n00:0" + std::to_string(number) + ".0004-018\r\n";
    }
    [[nodiscard]] std::multiset<std::string> Names() const
    {
        std::multiset<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_))
            names.insert(entry.path().filename().string());
        return names;
    }
    static SaveOutcome Save(const fs::path& name)
    {
        Choreography show = Edited();
        return WriteControlFile(show, name).outcome;
    }
};

enum class Fate { Finished, Killed, NotAllowed };

/// Does `work` in a process that is killed when it enters or leaves its system call `number`.
Fate KilledAt(int number, const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(1);
        ::raise(SIGSTOP);
        work();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        return Fate::NotAllowed;
    for (int stop = 0; stop < number; ++stop) {
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
        if (WIFEXITED(status))
            return Fate::Finished;
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    return Fate::Killed;
}

TEST_F(SaveSafety, KilledAtAnySystemCallItLeavesEveryVersionWhole)
{
    for (int backups = 0; backups <= 5; ++backups) {
        Fate fate = Fate::Killed;
        int call = 0;
        for (; fate == Fate::Killed && !HasFailure(); ++call) {
            Prepare(backups);
            fate = KilledAt(call, [&] { static_cast<void>(Save(show_)); });
            if (fate == Fate::NotAllowed)
                GTEST_SKIP() << "no process may be traced here";
            SCOPED_TRACE(std::to_string(backups) + " backups, call " + std::to_string(call));

            const std::string current = Get("show.ctl");
            EXPECT_TRUE(current == kOld || current == kShow) << current;
            std::set<std::string> versions{current};
            for (int k = 1; k <= 5; ++k)
                versions.insert(Get(Backup(k)));
            EXPECT_TRUE(versions.contains(kOld));
            std::set<std::string> known{kOld, kShow, "-"};
            for (int k = 1; k <= backups; ++k) {
                known.insert(BackupText(k));
                EXPECT_TRUE(k == 5 || versions.contains(BackupText(k))) << k;
            }
            for (const std::string& version : versions)
                EXPECT_TRUE(known.contains(version)) << version;

            EXPECT_EQ(Save(show_), SaveOutcome::Saved);
            EXPECT_EQ(Get("show.ctl"), kShow);
            EXPECT_EQ(Get("show.001"), current);
            for (const std::string& name : Names())
                EXPECT_TRUE(name.starts_with("show.")) << name << " was left over";
        }
        EXPECT_GT(call, 20) << "the calls of a save were not seen";
    }
}

TEST_F(SaveSafety, AFailedSaveLeavesTheVersionBeforeUnderItsNameToo)
{
    Prepare(2);
    fs::create_directories(folder_ / ".show.ctl.saving" / "in the way");
    for (int attempt = 0; attempt < 7; ++attempt) {
        EXPECT_EQ(Save(show_), SaveOutcome::OpenFailed);
        EXPECT_EQ(Get("show.ctl"), kOld);
        EXPECT_EQ(Get("show.001"), kOld);
        EXPECT_EQ(Get("show.002"), BackupText(1));
        EXPECT_EQ(Get("show.003"), BackupText(2));
        EXPECT_EQ(Get("show.004"), "-");
    }
    fs::remove_all(folder_ / ".show.ctl.saving");
    EXPECT_EQ(Save(show_), SaveOutcome::Saved);
    EXPECT_EQ(Get("show.001"), kOld);
    EXPECT_EQ(Get("show.002"), BackupText(1));
}

TEST_F(SaveSafety, TwoProcessesDoNotWriteTheSameFileAtOnce)
{
    Prepare(1);
    Put(".show.ctl.saving", "half a sho");
    const int other = ::open((folder_ / ".show.ctl.saving").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    EXPECT_EQ(Save(show_), SaveOutcome::OpenFailed);
    EXPECT_EQ(Get("show.ctl"), kOld);
    EXPECT_EQ(Get("show.001"), BackupText(1));
    EXPECT_EQ(Get(".show.ctl.saving"), "half a sho");
    ::close(other);  // as when it is killed
    EXPECT_EQ(Save(show_), SaveOutcome::Saved);
    EXPECT_EQ(Get(".show.ctl.saving"), "-");
}

TEST_F(SaveSafety, PermissionsStayAsTheyAre)
{
    for (const ::mode_t mode : {0600U, 0664U, 0444U}) {
        Prepare(0);
        ASSERT_EQ(::chmod(show_.c_str(), mode), 0);
        EXPECT_EQ(Save(show_), SaveOutcome::Saved);
        struct stat status = {};
        ASSERT_EQ(::stat(show_.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, mode);
        EXPECT_EQ(Get("show.ctl"), kShow);
    }
}

TEST_F(SaveSafety, ASymbolicLinkGoesOnStandingForItsFile)
{
    // Where this is another disk the backup cannot be a second name of the file.
    std::string pattern = "/dev/shm/choreographer_test_XXXXXX";
    const char* elsewhere = ::mkdtemp(pattern.data());
    for (const fs::path& target :
         {folder_ / "real.ctl", fs::path(elsewhere != nullptr ? elsewhere : folder_) / "real.ctl",
          folder_ / "new.ctl"}) {
        Prepare(1);
        fs::remove(show_);
        fs::create_symlink(target, show_);
        const bool present = target.filename() == "real.ctl";
        if (present)
            std::ofstream(target, std::ios::binary) << kOld;
        EXPECT_EQ(Save(show_), SaveOutcome::Saved);
        EXPECT_TRUE(fs::is_symlink(show_)) << target;
        EXPECT_FALSE(fs::is_symlink(target)) << target;
        EXPECT_EQ(Get("show.ctl"), kShow) << target;
        EXPECT_EQ(Get("show.001"), present ? kOld : "-") << target;
        EXPECT_EQ(Get("show.002"), BackupText(1)) << target;
    }
    if (elsewhere != nullptr)
        fs::remove_all(elsewhere);
}

TEST_F(SaveSafety, AnOpeningTellsThatOnlyABackupIsThere)
{
    Choreography show;
    EXPECT_FALSE(ReadControlFile(show, show_).onlyBackup);
    EXPECT_FALSE(ReadControlFile(show, "").onlyBackup);
    Put("show.001", kOld);
    EXPECT_TRUE(ReadControlFile(show, show_).onlyBackup);
    EXPECT_FALSE(show.fileExists);
    Put("show.ctl", kOld);
    EXPECT_FALSE(ReadControlFile(show, show_).onlyBackup);
}

}  // namespace
