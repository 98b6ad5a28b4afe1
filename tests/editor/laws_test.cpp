// The laws of editing, on thousands of random walks. A failing walk is shortened before it is
// shown, so that what remains is what breaks the law.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "document/control_file.h"
#include "editor/edit_walk.h"

namespace {

using document::Choreography;
using testing_support::Disorder;
using testing_support::Random;
using testing_support::Step;
using testing_support::WalkingEditor;

namespace fs = std::filesystem;

using Law = std::function<std::string(const std::vector<Step>&)>;

std::vector<Step> Shortened(std::vector<Step> walk, const Law& law)
{
    for (bool shorter = true; shorter;) {
        shorter = false;
        for (std::size_t k = 0; k < walk.size(); ++k) {
            std::vector<Step> without = walk;
            without.erase(without.begin() + static_cast<std::ptrdiff_t>(k));
            if (law(without).empty())
                continue;
            walk = without;
            shorter = true;
            break;
        }
    }
    return walk;
}

void ExpectOnWalk(const Law& law, int seed, int length)
{
    Random random(static_cast<std::uint64_t>(seed));
    const std::vector<Step> walk = testing_support::RandomWalk(random, length);
    if (law(walk).empty())
        return;
    const std::vector<Step> shortest = Shortened(walk, law);
    FAIL() << "seed " << seed << ": " << testing_support::TextOf(shortest) << "\n" << law(shortest);
}

void ExpectOnWalks(const Law& law, int walks, int length)
{
    for (int seed = 1; seed <= walks && !testing::Test::HasFailure(); ++seed)
        ExpectOnWalk(law, seed, length);
}

int Number(const char* name, int usual)
{
    const char* text = std::getenv(name);
    return text == nullptr ? usual : std::atoi(text);
}

/// How many walks and how long they are: the environment may ask for more than a test run does.
int Walks(int usual)
{
    return Number("LAW_WALKS", usual);
}
int Length(int usual)
{
    return Number("LAW_LENGTH", usual);
}

std::string SaveComesBack(WalkingEditor& walking, const Step& step)
{
    const panel::PanelState set = walking.editor.Panel();
    walking.Do(step);
    if (!walking.show.empty() && walking.editor.Choreography().blnChanged)
        return "not saved";
    return walking.show.empty() ? "" : testing_support::Lost(set, walking.editor.Panel());
}

std::string ComesBack(const Choreography* show, const fs::path& file, const std::vector<Step>& walk)
{
    WalkingEditor walking;
    if (show != nullptr) {
        Choreography copy = *show;
        (void)WriteControlFile(copy, file);
        walking.show = file;
        walking.editor.ReadControlFile(file);
    }
    for (const Step& step : walk) {
        if (step.Leaves()) {
            const std::string lost = walking.LeaveAndReturn();
            if (!lost.empty())
                return "at " + std::to_string(walking.editor.Timeline().CurrentTime()) + ": " +
                       lost + "codes " + walking.editor.Timeline().lblABCodes();
            const Choreography before = walking.editor.Choreography();
            const std::string again = walking.LeaveAndReturn(-100);
            if (!again.empty() || !(before == walking.editor.Choreography()))
                return "an unchanged panel wrote something; " + again;
        }
        if (step.kind == Step::Kind::Save) {
            const std::string lost = SaveComesBack(walking, step);
            if (!lost.empty())
                return "saving: " + lost;
        } else {
            walking.Do(step);
        }
        const std::string disorder = Disorder(walking.editor.Choreography());
        if (!disorder.empty())
            return disorder;
    }
    return walking.LeaveAndReturn();
}

/// Where walks save; removed at the end.
class Folder {
 public:
    Folder() { fs::create_directories(path_); }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    [[nodiscard]] fs::path Name(const char* name) const { return path_ / name; }

 private:
    fs::path path_ = fs::path(testing::TempDir()) /
                     ("laws_" + std::to_string(testing::UnitTest::GetInstance()->random_seed()) +
                      testing::UnitTest::GetInstance()->current_test_info()->name());
};

std::vector<panel::PanelState> PanelsOf(editor::Editor& editor)
{
    std::vector<panel::PanelState> panels;
    const Choreography& choreography = editor.Choreography();
    for (std::size_t slot = 0; slot + 1 < choreography.lngTime.size(); ++slot) {
        editor.MoveTo(choreography.lngTime[slot]);
        panels.push_back(editor.Panel());
    }
    return panels;
}

std::string SurvivesSaving(const Folder& folder, const std::vector<Step>& walk)
{
    WalkingEditor walking;
    for (const Step& step : walk)
        walking.Do(step);
    walking.editor.MoveTo(walking.editor.Timeline().CurrentTime() + 100);
    Choreography saved = walking.editor.Choreography();
    if (WriteControlFile(saved, folder.Name("walk.ctl")).outcome != document::SaveOutcome::Saved)
        return "not saved";

    WalkingEditor reopened;
    reopened.editor.OpenShow(folder.Name("walk.ctl"));
    const Choreography opened = reopened.editor.Choreography();
    if (opened.blnChanged || opened.strCommands != saved.strCommands ||
        opened.lngTime != saved.lngTime)
        return "what was saved opened changed";
    const std::vector<panel::PanelState> panels = PanelsOf(reopened.editor);
    if (!(reopened.editor.Choreography() == opened))
        return "moving over the show changed it";
    for (std::size_t slot = 0; slot < panels.size(); ++slot) {
        walking.editor.MoveTo(opened.lngTime[slot]);
        if (!(walking.editor.Panel() == panels[slot])) {
            const std::string lost = testing_support::Lost(walking.editor.Panel(), panels[slot]);
            if (!lost.empty())
                return "at " + std::to_string(opened.lngTime[slot]) + ": " + lost;
        }
    }
    return "";
}

TEST(Laws, WhatWasComposedComesBack)
{
    ExpectOnWalks([](const auto& walk) { return ComesBack(nullptr, {}, walk); }, Walks(3000),
                  Length(40));
}

TEST(Laws, WhatWasComposedInAShowThatWasOpenedComesBack)
{
    const Folder folder;
    const int walks = Walks(500);
    for (int seed = 1; seed <= walks && !HasFailure(); ++seed) {
        Random random(static_cast<std::uint64_t>(seed));
        const Choreography show = testing_support::ComposedShow(random);
        ExpectOnWalk(
            [&](const auto& walk) { return ComesBack(&show, folder.Name("show.ctl"), walk); }, seed,
            Length(40));
    }
}

TEST(Laws, WhatWasComposedSurvivesSavingAndReopening)
{
    const Folder folder;
    ExpectOnWalks([&](const auto& walk) { return SurvivesSaving(folder, walk); }, Walks(300),
                  Length(60));
}

TEST(Laws, AnUnchangedPanelWritesNothingOverAnyShow)
{
    const Folder folder;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        Random random(seed);
        Choreography show = testing_support::RandomShow(random, {});
        ASSERT_EQ(WriteControlFile(show, folder.Name("show.ctl")).outcome,
                  document::SaveOutcome::Saved);
        WalkingEditor walking;
        walking.editor.OpenShow(folder.Name("show"));
        const Choreography before = walking.editor.Choreography();
        (void)PanelsOf(walking.editor);
        for (int k = 0; k < 50; ++k)
            walking.editor.MoveTo(100 * random.Below(1000));
        EXPECT_EQ(walking.editor.Choreography(), before) << "seed " << seed;
        EXPECT_FALSE(walking.editor.Choreography().blnChanged) << "seed " << seed;
    }
}

std::string StaysInOrder(const fs::path& file, const std::vector<Step>& walk)
{
    WalkingEditor walking;
    walking.show = file;
    walking.editor.ReadControlFile(file);
    for (const Step& step : walk) {
        const bool pending = !walking.editor.PendingText().empty();
        const Choreography before = walking.editor.Choreography();
        walking.editor.mnuFile_Click();
        const Choreography written = walking.editor.Choreography();
        const bool counted = written.intCommandCount[1] != before.intCommandCount[1];
        if (pending ? written.strCommands == before.strCommands : counted)
            return "what is announced as pending is not what is written";
        (void)walking.LeaveAndReturn();
        if (!(walking.editor.Choreography() == written))
            return "an unchanged panel wrote something";
        walking.Do(step);
        const std::string disorder = Disorder(walking.editor.Choreography());
        if (!disorder.empty())
            return disorder;
    }
    return "";
}

TEST(Laws, AnEditOfAnyShowLeavesItInOrder)
{
    const Folder folder;
    const int walks = Walks(200);
    for (int seed = 1; seed <= walks && !HasFailure(); ++seed) {
        Random random(static_cast<std::uint64_t>(seed));
        const Choreography show = testing_support::RandomShow(random, {.times = 8});
        const Law law = [&](const std::vector<Step>& walk) {
            Choreography copy = show;
            (void)WriteControlFile(copy, folder.Name("any.ctl"));
            return StaysInOrder(folder.Name("any.ctl"), walk);
        };
        ExpectOnWalk(law, seed, Length(60));
    }
}

}  // namespace
