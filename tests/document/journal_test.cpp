#include "document/journal.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "document/control_file.h"
#include "full_disk.h"
#include "random_show.h"
#include "show_folder.h"

namespace {

namespace fs = std::filesystem;
using document::Choreography;
using document::Journal;
using document::JournalContent;
using document::LeftoverJournals;
using document::Patch;
using document::ReadJournal;
using testing_support::Packed;
using testing_support::Random;

bool SameSlots(const Choreography& a, const Choreography& b)
{
    return a.lngTime == b.lngTime && a.strCommands == b.strCommands && a.blnReset == b.blnReset;
}

/// A choreography that is edited at random, every edit as the patch that it is.
struct Editing {
    Random random;
    Choreography show;

    explicit Editing(std::uint64_t seed) : random(seed)
    {
        show = testing_support::RandomShow(random, {.times = 5});
    }

    Patch Edit()
    {
        Patch patch;
        patch.countsBefore = patch.countsAfter = document::CountsOf(show);
        ++patch.countsAfter.intCommandCount[1];
        const std::int32_t slots = show.lngLastSlot();
        const std::int32_t time =
            slots > 0 ? show.lngTime[static_cast<std::size_t>(random.Below(slots))] : 0;
        if (slots > 0 && random.OneIn(4)) {
            patch.shiftFrom = time;
            patch.shift = 100 * (1 + random.Below(9));
        } else {
            const std::int32_t at = random.OneIn(2) ? time : 100 * random.Below(100);
            patch.changes.push_back(
                {at, document::ListAt(show, at), testing_support::RandomCommands(random, 2)});
        }
        EXPECT_TRUE(ApplyPatch(show, patch));
        return patch;
    }
};

class JournalFile : public testing_support::ShowFolder {
 protected:
    [[nodiscard]] std::string Bytes(const fs::path& name) const
    {
        return Get(fs::relative(name, folder_).string());
    }
    [[nodiscard]] fs::path Folder() const { return folder_ / "journals"; }
};

TEST_F(JournalFile, HoldsAllThatWasDoneUpToWhereItIsTorn)
{
    Put("show.ctl", testing_support::kShow);
    Editing edited(1);
    edited.show.fileName = show_;
    edited.show.fileExists = true;
    struct State {
        std::size_t size;  // of the file when this was all that had been done
        Choreography show;
        bool pending;
    };
    std::vector<State> states;
    Journal journal(Folder());
    journal.Begin(edited.show);
    const auto note = [&](const Choreography& show, bool pending) {
        journal.Flush();
        states.push_back({Bytes(journal.File()).size(), show, pending});
    };
    for (int k = 0; k < 12; ++k) {
        const Patch patch = edited.Edit();
        journal.Record(edited.show, {patch});
        note(edited.show, false);
        Choreography pending = edited.show;
        const document::Commands list = Packed("003-020");
        InsertSlot(pending, pending.lngLastSlot(), 500'000, list);
        journal.RecordPending(edited.show, 500'000, list);
        note(pending, true);
    }
    EXPECT_FALSE(journal.TakeProblem());

    const std::string bytes = Bytes(journal.File());
    const auto stateAt = [&](std::size_t size) {
        const State* last = nullptr;
        for (const State& state : states)
            last = state.size <= size ? &state : last;
        return last;
    };
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const std::optional<JournalContent> read =
            document::ReadJournalText(std::string_view(bytes).substr(0, size));
        const State* expected = stateAt(size);
        if (expected == nullptr)
            continue;
        ASSERT_TRUE(read) << size;
        ASSERT_TRUE(SameSlots(read->show, expected->show)) << size;
        EXPECT_EQ(CountsOf(read->show), CountsOf(expected->show)) << size;
        EXPECT_EQ(read->pending, expected->pending) << size;
        EXPECT_EQ(read->fileName, show_);
        EXPECT_TRUE(read->show.blnChanged);
    }
    EXPECT_FALSE(document::ReadJournalText(std::string_view(bytes).substr(0, 100)));
    const auto whole = document::ReadJournalText(bytes);
    EXPECT_EQ(whole->time, 500'000);
    document::FileStamp stamp = document::StampOf(show_);
    stamp.checksum = document::Checksum(testing_support::kShow);
    EXPECT_EQ(whole->opened, stamp);

    // A damaged byte ends what can be trusted, or hides in what nothing depends on.
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        const auto read = document::ReadJournalText(damaged);
        const State* expected = stateAt(at);
        if (expected == nullptr)
            continue;
        ASSERT_TRUE(read) << at;
        ASSERT_TRUE(SameSlots(read->show, expected->show)) << at;
    }
}

TEST_F(JournalFile, TakesUntrustedSizesForWhatTheyAre)
{
    const std::string start = document::JournalHeader("show.ctl", {});
    const std::string hostile[] = {
        "",
        start,
        start + "\xFF\xFF\xFF\xFF",
        start + std::string(64, '\0'),
        start + document::JournalPending(0, Packed("003-020")),
        start + document::JournalHeader("other.ctl", {}),
        document::JournalHeader(std::string("a\0b", 3), {}) + document::JournalSnapshot({})};
    for (const std::string& bytes : hostile)
        EXPECT_FALSE(document::ReadJournalText(bytes));
    const std::string snapshot = start + document::JournalSnapshot({});
    EXPECT_TRUE(document::ReadJournalText(snapshot));
    for (const std::int32_t time : {-1, document::kFirstTimeWithoutText})
        EXPECT_FALSE(
            document::ReadJournalText(snapshot + document::JournalPending(time, Packed("003-020")))
                ->pending);
}

TEST_F(JournalFile, IsThereOnlyWhileSomethingIsUnsaved)
{
    Editing edited(2);
    Journal journal(Folder());
    const auto there = [&] {
        journal.Flush();
        return !journal.File().empty() && fs::exists(journal.File());
    };
    journal.Begin(edited.show);
    EXPECT_FALSE(there());
    journal.RecordPending(edited.show, 100, std::nullopt);
    EXPECT_FALSE(there());
    journal.RecordPending(edited.show, 100, Packed("003-020"));
    EXPECT_TRUE(there());
    journal.RecordPending(edited.show, 100, std::nullopt);
    EXPECT_FALSE(there()) << "what was set was set back";
    const Patch patch = edited.Edit();
    journal.Record(edited.show, {patch});
    journal.RecordPending(edited.show, 100, Packed("003-020"));
    journal.RecordPending(edited.show, 100, std::nullopt);
    EXPECT_TRUE(there());
    EXPECT_FALSE(ReadJournal(journal.File())->pending);
    struct stat status = {};
    ASSERT_EQ(::stat(journal.File().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    journal.Begin(edited.show);  // saved
    EXPECT_FALSE(there());
    journal.Record(edited.show, {edited.Edit()});
    EXPECT_TRUE(there());
    journal.Drop();
    EXPECT_FALSE(there());
    EXPECT_TRUE(fs::is_empty(Folder()));
}

TEST_F(JournalFile, IsLeftOverOnlyByAProcessThatIsNoMore)
{
    EXPECT_TRUE(LeftoverJournals(Folder()).empty());
    Editing edited(3);
    edited.show.fileName = show_;
    fs::path first;
    {
        Journal journal(Folder());
        journal.Begin(edited.show);
        journal.Record(edited.show, {edited.Edit()});
        journal.Flush();
        first = journal.File();
        EXPECT_TRUE(LeftoverJournals(Folder()).empty()) << "its editor lives";
    }
    Put("journals/show-1-1.journal.new", "half");
    Put("journals/notes.txt", "kept");
    EXPECT_EQ(LeftoverJournals(Folder()), std::vector{first});
    EXPECT_EQ(Get("journals/show-1-1.journal.new"), "-");
    EXPECT_EQ(Get("journals/notes.txt"), "kept");

    Journal second(Folder());
    second.Begin(edited.show);
    second.Record(edited.show, {edited.Edit()});
    second.Flush();
    EXPECT_NE(second.File(), first);
    EXPECT_EQ(LeftoverJournals(Folder()), std::vector{first});
    document::RemoveJournal(first);
    EXPECT_TRUE(LeftoverJournals(Folder()).empty());
}

TEST_F(JournalFile, StaysInProportionToTheShow)
{
    Editing edited(4);
    Journal journal(Folder());
    journal.Begin(edited.show);
    journal.Record(edited.show, {edited.Edit()});
    std::size_t largest = 0;
    for (int k = 0; k < 20'000; ++k) {
        Patch patch;
        patch.changes.push_back({0, document::ListAt(edited.show, 0), Packed("003-020 004-020")});
        patch.changes.front().after->push_back(static_cast<char>(k));
        ASSERT_TRUE(ApplyPatch(edited.show, patch));
        journal.Record(edited.show, {patch});
        if (k % 500 == 0) {
            journal.Flush();
            largest = std::max(largest, static_cast<std::size_t>(fs::file_size(journal.File())));
        }
    }
    journal.Flush();
    EXPECT_LT(largest, 600'000U);
    EXPECT_TRUE(SameSlots(ReadJournal(journal.File())->show, edited.show));
}

TEST_F(JournalFile, OfTheLargestShowIsReadToItsEnd)
{
    constexpr int kEdits = 4'800;
    Choreography show;
    for (std::int32_t slot = 0; slot < document::kMostSlots; ++slot)
        InsertSlot(show, slot, 100 * slot, Packed("003-020"));
    Journal journal(Folder());
    journal.Begin(show);
    for (int k = 0; k < kEdits; ++k) {
        Patch patch;
        patch.changes.push_back({100 * k, Packed("003-020"), Packed("003-021")});
        ASSERT_TRUE(ApplyPatch(show, patch));
        journal.Record(show, {patch});
    }
    journal.Flush();
    EXPECT_TRUE(SameSlots(ReadJournal(journal.File())->show, show));
}

TEST_F(JournalFile, AFullDiskIsToldOnceAndMadeUpForLater)
{
    Editing edited(5);
    Journal journal(Folder());
    journal.Begin(edited.show);
    journal.Record(edited.show, {edited.Edit()});
    journal.Flush();
    const std::size_t whole = fs::file_size(journal.File());
    const Choreography safe = edited.show;
    {
        const testing_support::FullDisk full(whole + 5);
        journal.Record(edited.show, {edited.Edit()});
        journal.Flush();
        EXPECT_EQ(journal.TakeProblem(), std::errc::file_too_large);
        const testing_support::FullDisk fuller(50);
        journal.Record(edited.show, {edited.Edit()});
        journal.RecordPending(edited.show, 0, Packed("004-020"));
        journal.Flush();
        EXPECT_FALSE(journal.TakeProblem()) << "told already";
        EXPECT_TRUE(SameSlots(ReadJournal(journal.File())->show, safe));
    }
    journal.RecordPending(edited.show, 0, Packed("004-017"));
    journal.Flush();
    EXPECT_FALSE(journal.TakeProblem());
    const auto read = ReadJournal(journal.File());
    EXPECT_TRUE(read->pending);
    EXPECT_EQ(document::ListAt(read->show, 0), Packed("004-017"));
    {
        const testing_support::FullDisk full(10);
        journal.Record(edited.show, {edited.Edit()});
        journal.Flush();
        EXPECT_TRUE(journal.TakeProblem()) << "it began to fail anew";
    }
}

TEST_F(JournalFile, AFolderThatCannotBeIsAProblemAndNoMore)
{
    Put("journals", "a file");
    Editing edited(6);
    Journal journal(Folder());
    journal.Begin(edited.show);
    journal.Record(edited.show, {edited.Edit()});
    journal.Flush();
    EXPECT_TRUE(journal.TakeProblem());
    fs::remove(Folder());
    journal.Record(edited.show, {edited.Edit()});
    journal.Flush();
    EXPECT_TRUE(SameSlots(ReadJournal(journal.File())->show, edited.show));
}

TEST_F(JournalFile, AShowThatIsWhollyPendingIsRecoveredToo)
{
    Journal journal(Folder());
    const Choreography empty;
    journal.Begin(empty);
    journal.RecordPending(empty, 1000, Packed("003-020"));
    journal.Flush();
    const auto read = ReadJournal(journal.File());
    EXPECT_EQ(document::ListAt(read->show, 1000), Packed("003-020"));
    EXPECT_TRUE(read->fileName.empty());
    EXPECT_FALSE(read->opened.exists);

    Choreography one;
    InsertSlot(one, 0, 1000, Packed("003-020"));
    journal.Begin(one);
    journal.RecordPending(one, 1000, document::Commands{});
    journal.Flush();
    EXPECT_EQ(ReadJournal(journal.File())->show.lngLastSlot(), 0) << "the time would go";
}

}  // namespace
