#include "document/prune.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

#include "packed.h"
#include "random_show.h"

namespace {

using document::Choreography;
using document::Commands;
using document::CommandText;
using document::HasAddress;
using document::kEndSentinel;
using document::PruneResult;
using testing_support::Packed;
using testing_support::Random;

// The walk back as it is told, one step after the other, to compare with.
const std::map<int, std::vector<int>> kSources = {
    {1, {48, 80}},
    {2, {48, 80}},
    {3, {48, 80}},
    {4, {48, 80}},
    {5, {48, 80}},
    {6, {48, 80}},
    {8, {80}},
    {16, {17, 18, 19, 20, 21, 22, 23, 49, 50, 51, 80, 85}},
    {17, {16, 49, 51, 80, 85}},
    {18, {16, 50, 51, 80, 85}},
    {19, {16, 49, 51, 80, 85}},
    {20, {16, 50, 51, 80, 85}},
    {21, {16, 49, 51, 80, 85}},
    {22, {16, 50, 51, 80, 85}},
    {23, {16, 49, 51, 80, 85}},
    {25, {26, 41}},
    {26, {25, 41}},
    {48, {1, 2, 3, 4, 5, 6, 80}},
    {49, {16, 17, 19, 21, 23, 51, 80, 85}},
    {50, {16, 18, 20, 22, 51, 80, 85}},
    {51, {16, 17, 18, 19, 20, 21, 22, 23, 49, 50, 80, 85}},
};

class LiteralSeen {
 public:
    void Note(int address, int data) { on_[static_cast<std::size_t>(address)] |= data > 0; }
    void Note(const Commands& list)
    {
        for (int k = 0; k < document::CommandCount(list); ++k)
            Note(document::CommandAt(list, k).address, document::CommandAt(list, k).data);
    }
    bool Has(int address) const
    {
        const auto row = kSources.find(address);
        return address == 0 || on_[static_cast<std::size_t>(address)] ||
               (row != kSources.end() &&
                std::any_of(row->second.begin(), row->second.end(),
                            [this](int source) { return on_[static_cast<std::size_t>(source)]; }));
    }

 private:
    bool on_[256] = {};
};

bool IsKept(int address, int data)
{
    if (address <= 9 || address == 48)
        return (data & 0xCF) != 0;
    if ((address >= 16 && address <= 26) || address == 33 || address == 34 || address == 49 ||
        address == 50 || address == 51 || address == 54 || address == 69 || address == 80 ||
        address == 85)
        return data != 0;
    return address != 86 || data >= 4;
}

void LiteralPrune(Commands& list, const Choreography& show, int slot, int currentTime)
{
    const auto at = [](auto& array, int index) -> auto&
    {
        return array[static_cast<std::size_t>(index)];
    };
    int r = slot;
    const bool startsBefore = at(show.lngTime, slot) > currentTime && slot > 0;
    const bool ends = document::BeginsWithReset(list) && !startsBefore;
    while (r > 0 && !(at(show.blnReset, r) != 0 && (r < slot || ends)))
        --r;
    LiteralSeen seen;
    for (int k = r; k <= slot; ++k)
        seen.Note(at(show.strCommands, k));
    for (std::size_t k = 0; k + 1 < list.size();) {
        const int address = static_cast<unsigned char>(list[k]);
        const int data = static_cast<unsigned char>(list[k + 1]);
        if (!seen.Has(address) && !IsKept(address, data)) {
            const bool motion = address == 33 || address == 34;
            if (!motion || !seen.Has(67 - address)) {
                list.erase(k, 2);
                continue;
            }
            if (!HasAddress(list, 67 - address))
                list[k] = static_cast<char>(67 - address);
        }
        seen.Note(address, data);
        k += 2;
    }
}

PruneResult LiteralPruneAll(Choreography& show)
{
    PruneResult result;
    for (int slot = 0; slot < show.lngLastSlot();) {
        const Commands before = show.strCommands[static_cast<std::size_t>(slot)];
        Commands list = before;
        StoreCommands(show, slot, {});
        LiteralPrune(list, show, slot, kEndSentinel);
        result.commands += document::CommandCount(before) - document::CommandCount(list);
        result.changed |= list != before;
        if (list.empty()) {
            EraseSlot(show, slot);
            ++result.times;
        } else {
            StoreCommands(show, slot++, std::move(list));
        }
    }
    return result;
}

TEST(PruneCommands, RemovesOnlyWhatChangesNothing)
{
    const struct {
        const char* name;
        const char* earlier;  // at slot 0
        const char* list;
        const char* after;
    } cases[] = {
        {"off before on", "", "003-016 017-000 033-000 086-003", ""},
        {"off after on", "003-020 017-001", "003-016 017-000", "003-016 017-000"},
        {"off within its own list", "", "003-020 003-032", "003-020 003-032"},
        {"off ahead of on", "", "003-016 003-020", "003-020"},
        {"a light period of 0.4 s", "", "086-004", "086-004"},
        {"joining is no off", "", "003-080", "003-080"},
        {"operator's display", "", "000-000", "000-000"},
        {"addresses without an off", "", "024-000 041-000 099-000 200-000",
         "041-000 099-000 200-000"},
        {"rings by the multi-valve", "048-017", "001-016 005-016 006-016 008-016",
         "001-016 005-016 006-016"},
        {"candelabras by a copy", "080-017", "008-016", "008-016"},
        {"multi-valve by one ring", "004-017", "048-016", "048-016"},
        {"modules by their group", "049-001", "017-000 018-000 050-000", "017-000"},
        {"a group by its module", "018-001", "049-000 050-000 051-000 016-000",
         "050-000 051-000 016-000"},
        {"peacock by its other address", "041-001", "025-000 026-000", "025-000 026-000"},
        {"curtain lights by themselves only", "016-008", "024-000", ""},
        {"stop goes to the motion that runs", "034-034", "033-000", "034-000"},
        {"and back", "033-034", "034-000", "033-000"},
        {"stop of the motion that runs", "033-034", "033-000", "033-000"},
        {"no exchange beside the other", "034-034", "033-000 034-000", "033-000 034-000"},
        {"nor behind it", "034-034", "034-000 033-000", "034-000 033-000"},
        {"stop of no motion", "", "033-000 034-000", ""},
    };
    for (const auto& c : cases) {
        Choreography show;
        InsertSlot(show, 0, 1000, Packed(c.earlier));
        Commands list = Packed(c.list);
        PruneCommands(list, show, 1, kEndSentinel);
        EXPECT_EQ(CommandText(list), c.after) << c.name;
    }
}

TEST(PruneCommands, WalksBackToTheReset)
{
    const struct {
        const char* name;
        const char* stored;  // at slot 1, 2000 ms; slot 0 holds 003-020
        const char* list;
        std::int32_t currentTime;
        const char* after;
    } cases[] = {
        {"no reset", "", "003-016", 2000, "003-016"},
        {"own reset stays", "099-000", "099-000 003-016", 2000, "099-000"},
        {"own reset is given up", "099-000", "003-016", 2000, "003-016"},
        {"own reset is new", "", "099-000 003-016", 2000, "099-000 003-016"},
        {"own reset is later than now", "099-000", "099-000 003-016", 1999, "099-000 003-016"},
        {"what is stored counts", "099-000 004-020", "099-000 004-016", 2000, "099-000 004-016"},
    };
    for (const auto& c : cases) {
        Choreography show;
        InsertSlot(show, 0, 1000, Packed("003-020"));
        InsertSlot(show, 1, 2000, Packed(c.stored));
        Commands list = Packed(c.list);
        PruneCommands(list, show, 1, c.currentTime);
        EXPECT_EQ(CommandText(list), c.after) << c.name;
    }
}

TEST(PruneCommands, WalksBackAsTold)
{
    Random random(2);
    for (int run = 0; run < 4000; ++run) {
        const Choreography show = testing_support::RandomShow(random, {.times = 12});
        const int slot = random.Below(show.lngLastSlot() + 1);
        const int now =
            show.lngTime[static_cast<std::size_t>(random.Below(show.lngLastSlot() + 1))];
        Commands list = testing_support::RandomCommands(random, random.Below(8));
        if (random.OneIn(3))
            list.insert(0, "c\0", 2);
        Commands expected = list;
        LiteralPrune(expected, show, slot, now);
        Commands pruned = list;
        PruneCommands(pruned, show, slot, now);
        ASSERT_EQ(CommandText(pruned), CommandText(expected)) << CommandText(list);
    }
}

TEST(PruneChoreography, IsTheWalkBackInOnePass)
{
    Random random(3);
    int pruned = 0;
    for (int run = 0; run < 4000; ++run) {
        Choreography show =
            testing_support::RandomShow(random, {.times = 1 + random.Below(40),
                                                 .mostCommands = 1 + random.Below(12),
                                                 .resetOneIn = random.Below(12)});
        Choreography expected = show;
        const PruneResult expectedResult = LiteralPruneAll(expected);
        const PruneResult result = PruneChoreography(show);
        ASSERT_EQ(show, expected) << "run " << run;
        ASSERT_EQ(result, expectedResult) << "run " << run;
        pruned += result.changed ? 1 : 0;
        ASSERT_EQ(PruneChoreography(show), PruneResult{}) << "twice, run " << run;
    }
    EXPECT_GT(pruned, 2000);
}

TEST(PruneChoreography, TakesOutATimeThatHoldsNothing)
{
    Choreography show;
    InsertSlot(show, 0, 1000, {});
    InsertSlot(show, 1, 2000, Packed("003-020"));
    EXPECT_EQ(PruneChoreography(show), (PruneResult{.times = 1, .commands = 0, .changed = true}));
    EXPECT_EQ(show.lngTime, (std::vector{2000, kEndSentinel}));
}

}  // namespace
