#include "document/control_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "full_disk.h"
#include "show_folder.h"

namespace {

namespace fs = std::filesystem;
using document::Choreography;
using document::SaveOutcome;
using testing_support::kShow;
using testing_support::Packed;

class ControlFile : public testing_support::ShowFolder {};

TEST_F(ControlFile, OpensWhatIsThere)
{
    Put("show.ctl", kShow);
    Choreography show = Edited();
    EXPECT_FALSE(ReadControlFile(show, show_).error);
    EXPECT_EQ(show.fileName, show_);
    EXPECT_TRUE(show.fileExists);
    EXPECT_FALSE(show.blnChanged);
    EXPECT_EQ(show.lngTime, (std::vector{1000, document::kEndSentinel}));
    ReadControlFile(show, show.fileName);
    EXPECT_EQ(show.fileName, show_);
}

TEST_F(ControlFile, AnythingButAFileIsAnUnsavedChoreography)
{
    fs::create_directory(folder_ / "folder.ctl");
    ASSERT_EQ(::mkfifo((folder_ / "pipe.ctl").c_str(), 0600), 0);
    fs::create_symlink(folder_ / "loop.ctl", folder_ / "loop.ctl");
    const std::string names[] = {"missing.ctl", "folder.ctl", "pipe.ctl",
                                 "loop.ctl",    "",           std::string(5000, 'x')};
    for (const std::string& name : names) {
        Choreography show = Edited();
        EXPECT_FALSE(ReadControlFile(show, folder_ / name).error) << name;
        EXPECT_FALSE(show.fileExists) << name;
        EXPECT_EQ(show.fileName, folder_ / name);
        EXPECT_EQ(show.lngLastSlot(), 0) << name;
        EXPECT_FALSE(show.blnChanged) << name;
    }
}

TEST_F(ControlFile, FindsAFileWhateverItsCase)
{
    const struct {
        const char* name;
        const char* found;
    } cases[] = {
        {"show.ctl", "SHOW.ctl"}, {"Show.CTL", "Show.CTL"}, {"other.ctl", ""}, {"sub.ctl", ""}};
    for (const char* name :
         {"sHOW.ctl", "Show.CTL", "SHOW.ctl", "shOW.ctl", "ShOw.ctl", "SHow.ctl"})
        Put(name, "");
    fs::create_directory(folder_ / "SUB.ctl");
    for (const auto& c : cases) {
        const auto found = document::FindFile(folder_ / c.name);
        EXPECT_EQ(found.value_or(folder_ / ""), folder_ / c.found) << c.name;
    }
    EXPECT_FALSE(document::FindFile(folder_ / "no_folder" / "show.ctl"));
}

TEST_F(ControlFile, SavesAndRollsFiveBackups)
{
    const std::array<std::string, 5> backups = {"show.001", "show.002", "show.003", "show.004",
                                                "show.005"};
    Put("show.ctl", "was current");
    for (const std::string& backup : backups)
        Put(backup, backup);
    Choreography show = Edited();
    show.intTimeCount = {7, 1};
    EXPECT_EQ(WriteControlFile(show, show_).outcome, SaveOutcome::Saved);
    EXPECT_EQ(Get("show.ctl"), kShow);
    EXPECT_EQ(Get("show.001"), "was current");
    for (std::size_t k = 1; k < backups.size(); ++k)
        EXPECT_EQ(Get(backups[k]), backups[k - 1]);
    EXPECT_FALSE(show.blnChanged);
    EXPECT_TRUE(show.fileExists);
    EXPECT_EQ(show.fileName, show_);
    EXPECT_EQ(show.intTimeCount, (std::array{7, 1}));
}

TEST_F(ControlFile, SavesWithoutBackupsToRoll)
{
    Put("show.003", "third");
    Choreography show = Edited();
    EXPECT_EQ(WriteControlFile(show, show_).outcome, SaveOutcome::Saved);
    EXPECT_EQ(Get("show.001"), "-");
    EXPECT_EQ(Get("show.003"), "-");
    EXPECT_EQ(Get("show.004"), "third");
    EXPECT_EQ(WriteControlFile(show, "").outcome, SaveOutcome::Nothing);
}

TEST_F(ControlFile, PrunesBeforeItSaves)
{
    Choreography show = Edited();
    InsertSlot(show, 0, 500, Packed("017-000"));
    StoreCommands(show, 1, Packed("003-020 018-000"));
    show.intTimeCount = {2, 2};
    show.intCommandCount = {3, 3};
    EXPECT_TRUE(WriteControlFile(show, show_).pruned);
    EXPECT_EQ(Get("show.ctl"), kShow);
    EXPECT_EQ(show.intTimeCount, (std::array{2, 1}));
    EXPECT_EQ(show.intCommandCount, (std::array{3, 1}));
    EXPECT_FALSE(WriteControlFile(show, show_).pruned);
}

TEST_F(ControlFile, AFailedOpenTouchesNothingElse)
{
    fs::create_directory(folder_ / "folder.ctl");
    ASSERT_EQ(::mkfifo((folder_ / "pipe.ctl").c_str(), 0600), 0);
    for (const char* name : {"folder.ctl", "pipe.ctl", "no_folder/show.ctl"}) {
        Choreography show = Edited();
        const Choreography before = show;
        const auto report = WriteControlFile(show, folder_ / name);
        EXPECT_EQ(report.outcome, SaveOutcome::OpenFailed) << name;
        EXPECT_TRUE(report.error) << name;
        EXPECT_EQ(show, before) << name;
    }
    EXPECT_TRUE(fs::is_directory(folder_ / "folder.ctl"));
    EXPECT_TRUE(fs::is_fifo(folder_ / "pipe.ctl"));
}

TEST_F(ControlFile, NoBackupNoOverwriting)
{
    Put("show.ctl", "was current");
    fs::create_directory(folder_ / "show.001");
    Put("show.001/kept", "");
    Choreography show = Edited();
    EXPECT_EQ(WriteControlFile(show, show_).outcome, SaveOutcome::OpenFailed);
    EXPECT_EQ(Get("show.ctl"), "was current");
    EXPECT_TRUE(show.blnChanged);
}

TEST_F(ControlFile, AFailedWriteLosesNothingHoweverOftenItIsTried)
{
    Put("show.ctl", kShow);
    Choreography show;
    ReadControlFile(show, show_);
    StoreCommands(show, 0, Packed("004-020"));
    show.blnChanged = true;
    for (int attempt = 0; attempt < 7; ++attempt) {
        const testing_support::FullDisk full(10);
        const auto report = WriteControlFile(show, show_);
        EXPECT_EQ(report.outcome, SaveOutcome::WriteFailed);
        EXPECT_EQ(report.error, std::errc::file_too_large);
        EXPECT_TRUE(show.blnChanged);
        EXPECT_EQ(Get("show.001"), kShow);
    }
    EXPECT_EQ(WriteControlFile(show, show_).outcome, SaveOutcome::Saved);
    EXPECT_EQ(Get("show.ctl"), "ct0-381\r\n00:01.0004-020\r\n");
    EXPECT_EQ(Get("show.001"), kShow);
}

}  // namespace
