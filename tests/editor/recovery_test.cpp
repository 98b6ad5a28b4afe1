// What is not saved survives its process: nothing is lost but the click in flight.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "document/control_file.h"
#include "document/journal.h"
#include "document/patch.h"
#include "edit_walk.h"

namespace {

namespace fs = std::filesystem;
using document::Choreography;
using document::Journal;
using testing_support::Random;
using testing_support::Step;
using testing_support::WalkingEditor;

constexpr int kSteps = 40;

class Recovery : public testing::Test {
 protected:
    Recovery()
    {
        // A kill needs no real disk.
        const fs::path memory = "/dev/shm";
        std::error_code ignored;
        const fs::path root =
            fs::is_directory(memory, ignored) ? memory : fs::temp_directory_path();
        std::string pattern = (root / "choreographer_test_XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~Recovery() override { fs::remove_all(folder_); }

    [[nodiscard]] fs::path Show() const { return folder_ / "show.ctl"; }
    [[nodiscard]] fs::path Journals() const { return folder_ / "journals"; }

    fs::path folder_;
};

std::string TextOf(const Choreography& show)
{
    std::string text;
    for (std::size_t slot = 0; slot + 1 < show.lngTime.size(); ++slot)
        text += std::to_string(show.lngTime[slot]) + ' ' +
                document::CommandText(show.strCommands[slot]) + " | ";
    return text;
}

void Do(WalkingEditor& walking, const Step& step, int number)
{
    if (number % 7 == 3)
        walking.editor.Undo();
    else if (number % 11 == 5)
        walking.editor.Redo();
    else
        walking.Do(step);
}

// What is stored and pending after so many steps.
std::string After(const fs::path& opened, const std::vector<Step>& walk, int steps)
{
    WalkingEditor walking;
    walking.show = opened;
    walking.show.replace_extension("again.ctl");
    fs::copy_file(opened, walking.show, fs::copy_options::overwrite_existing);
    walking.editor.ReadControlFile(walking.show);
    for (int k = 0; k < steps; ++k)
        Do(walking, walk[static_cast<std::size_t>(k)], k);
    walking.editor.mnuFile_Click();
    return TextOf(walking.editor.Choreography());
}

[[noreturn]] void EditUntilKilled(const fs::path& show, const fs::path& journals,
                                  const std::vector<Step>& walk, int doneSteps)
{
    WalkingEditor walking;
    Journal journal(journals);
    walking.show = show;
    walking.editor.ReadControlFile(show);
    walking.editor.SetJournal(journal);
    for (int k = 0; k < kSteps; ++k) {
        Do(walking, walk[static_cast<std::size_t>(k)], k);
        journal.Flush();  // the time until the next click
        if (::write(doneSteps, "", 1) != 1)
            break;
    }
    for (;;)
        ::pause();
}

/// How many steps the process had done for certain when it was killed, soon after `enough` steps.
int StepsUntilKilled(const fs::path& show, const fs::path& journals, const std::vector<Step>& walk,
                     int enough)
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        EditUntilKilled(show, journals, walk, ends[1]);
    }
    ::close(ends[1]);
    int steps = 0;
    char step = 0;
    while (steps < enough && ::read(ends[0], &step, 1) == 1)
        ++steps;
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    while (::read(ends[0], &step, 1) == 1)
        ++steps;
    ::close(ends[0]);
    return steps;
}

TEST_F(Recovery, AKillAtAnyMomentLosesNoMoreThanTheClickInFlight)
{
    const char* asked = std::getenv("LAW_WALKS");
    const int kills = asked != nullptr ? std::atoi(asked) : 100;
    int recovered = 0;
    for (int seed = 1; seed <= kills && !HasFailure(); ++seed) {
        Random random(static_cast<std::uint64_t>(seed));
        Choreography opened = testing_support::RandomShow(random, {.times = 6});
        ASSERT_EQ(WriteControlFile(opened, Show()).outcome, document::SaveOutcome::Saved);
        const fs::path copy = folder_ / "opened.ctl";
        fs::copy_file(Show(), copy, fs::copy_options::overwrite_existing);
        const std::vector<Step> walk = testing_support::RandomWalk(random, kSteps);
        const int steps = StepsUntilKilled(Show(), Journals(), walk, 1 + random.Below(kSteps - 2));

        const std::vector<fs::path> journals = document::LeftoverJournals(Journals());
        ASSERT_LE(journals.size(), 1U);
        Choreography now;
        if (!journals.empty()) {
            const auto content = document::ReadJournal(journals.front());
            ASSERT_TRUE(content) << seed;
            EXPECT_EQ(content->fileName, Show());
            now = content->show;
            document::RemoveJournal(journals.front());
            ++recovered;
        } else {
            ReadControlFile(now, Show());
        }
        const std::string done = After(copy, walk, steps);
        const std::string inFlight = After(copy, walk, std::min(steps + 1, kSteps));
        EXPECT_TRUE(TextOf(now) == done || TextOf(now) == inFlight)
            << "seed " << seed << ", killed after " << steps << " steps\n"
            << TextOf(now) << "\n"
            << done << "\n"
            << inFlight;
    }
    EXPECT_GT(recovered, kills / 2);
}

TEST_F(Recovery, WhatWasRecoveredIsAnEditLikeAnyOther)
{
    Choreography saved;
    InsertSlot(saved, 0, 1000, {3, 20});
    (void)WriteControlFile(saved, Show());
    Choreography recovered = saved;
    InsertSlot(recovered, 1, 2000, {4, 20});

    WalkingEditor walking;
    Journal journal(Journals());
    walking.editor.ReadControlFile(Show());
    walking.editor.SetJournal(journal);
    EXPECT_FALSE(walking.editor.Replace(saved, "Recovery")) << "they are the same";
    EXPECT_TRUE(walking.editor.Replace(recovered, "Recovery"));
    EXPECT_TRUE(walking.editor.Choreography().blnChanged);
    EXPECT_EQ(TextOf(walking.editor.Choreography()), TextOf(recovered));
    EXPECT_EQ(walking.editor.UndoText(), "Undo Recovery");
    journal.Flush();
    EXPECT_EQ(TextOf(document::ReadJournal(journal.File())->show), TextOf(recovered))
        << "it must be safe before the journal that it came from goes";
    EXPECT_TRUE(walking.editor.Undo());
    EXPECT_EQ(TextOf(walking.editor.Choreography()), TextOf(saved));
    EXPECT_FALSE(walking.editor.Choreography().blnChanged);
    walking.editor.Form_Unload();
    journal.Flush();
    EXPECT_TRUE(fs::is_empty(Journals()));
}

// The last edit is still on the panel when the session ends, and nobody was asked.
TEST_F(Recovery, AWindowThatClosesWithUnsavedChangesLeavesItsJournal)
{
    WalkingEditor walking;
    {
        Journal journal(Journals());
        walking.editor.SetJournal(journal);
        walking.editor.SetSpinner("updnSpout", 0, 3);
        walking.editor.mnuFile_Click();
        walking.editor.Form_Unload();
    }
    const auto journals = document::LeftoverJournals(Journals());
    ASSERT_EQ(journals.size(), 1U);
    EXPECT_EQ(TextOf(document::ReadJournal(journals.front())->show),
              TextOf(walking.editor.Choreography()));
}

}  // namespace
