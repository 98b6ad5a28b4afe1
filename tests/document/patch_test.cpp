#include "document/patch.h"

#include <gtest/gtest.h>

#include "packed.h"
#include "random_show.h"

namespace {

using document::Choreography;
using document::Patch;
using testing_support::Packed;
using testing_support::Random;

// "500 003-020 | 1000 017-001": the slots of a choreography in one line.
std::string TextOf(const Choreography& show)
{
    std::string text;
    for (std::size_t slot = 0; slot + 1 < show.lngTime.size(); ++slot)
        text += (slot > 0 ? " | " : "") + std::to_string(show.lngTime[slot]) + ' ' +
                document::CommandText(show.strCommands[slot]);
    return text;
}

Choreography TwoTimes()
{
    Choreography show;
    InsertSlot(show, 0, 500, Packed("003-020"));
    InsertSlot(show, 1, 1000, Packed("017-001"));
    return show;
}

TEST(Patch, ChangesWhatItFitsAndNothingElse)
{
    using Lists = std::optional<document::Commands>;
    const Lists none;
    const Lists ring = Packed("003-020");
    const Lists lamp = Packed("017-001");
    const Lists reset = Packed("099-000");
    const struct {
        const char* name;
        Patch patch;
        const char* after;  // "" where the patch does not fit
    } cases[] = {
        {"a list", {0, 0, {{500, ring, reset}}, {}, {}}, "500 099-000 | 1000 017-001"},
        {"a new time",
         {0, 0, {{700, none, ring}}, {}, {}},
         "500 003-020 | 700 003-020 | 1000 017-001"},
        {"a time gone", {0, 0, {{500, ring, none}}, {}, {}}, "1000 017-001"},
        {"several times",
         {0, 0, {{0, none, lamp}, {500, ring, none}, {1000, lamp, ring}}, {}, {}},
         "0 017-001 | 1000 003-020"},
        {"a shift up", {1000, 300, {}, {}, {}}, "500 003-020 | 1300 017-001"},
        {"a shift down to the start", {500, -500, {}, {}, {}}, "0 003-020 | 500 017-001"},
        {"another list is there", {0, 0, {{500, lamp, reset}}, {}, {}}, ""},
        {"the second does not fit", {0, 0, {{500, ring, none}, {1000, ring, none}}, {}, {}}, ""},
        {"no slot is there", {0, 0, {{700, ring, none}}, {}, {}}, ""},
        {"a slot is there already", {0, 0, {{500, none, ring}}, {}, {}}, ""},
        {"one time twice", {0, 0, {{500, ring, none}, {500, ring, none}}, {}, {}}, ""},
        {"before the start", {0, 0, {{-1, none, ring}}, {}, {}}, ""},
        {"beside the sentinel", {0, 0, {{7'200'000, none, ring}}, {}, {}}, ""},
        {"a shift onto the slot before", {1000, -500, {}, {}, {}}, ""},
        {"a shift of the slot before the start", {500, -501, {}, {}, {}}, ""},
        {"a shift onto the sentinel", {1000, 7'199'000, {}, {}, {}}, ""},
        {"a shift beyond all numbers", {1000, 2'147'483'647, {}, {}, {}}, ""},
        {"a shift of no slot", {600, 100, {}, {}, {}}, ""},
        {"a shift with a list", {1000, 300, {{500, ring, none}}, {}, {}}, ""},
    };
    for (const auto& c : cases) {
        Choreography show = TwoTimes();
        const bool fits = *c.after != '\0';
        EXPECT_EQ(ApplyPatch(show, c.patch), fits) << c.name;
        EXPECT_EQ(TextOf(show), fits ? c.after : TextOf(TwoTimes())) << c.name;
        if (!fits)
            continue;
        EXPECT_FALSE(ApplyPatch(show, c.patch)) << c.name << " twice";
        EXPECT_TRUE(ApplyPatch(show, Reversed(c.patch))) << c.name;
        EXPECT_EQ(show, TwoTimes()) << c.name;
    }
}

TEST(Patch, AFullChoreographyTakesOnlyWhatItGivesRoomFor)
{
    Choreography show;
    show.lngTime.clear();
    for (std::int32_t slot = 0; slot < document::kMostSlots; ++slot)
        show.lngTime.push_back(slot * 100);
    show.lngTime.push_back(document::kEndSentinel);
    show.strCommands.assign(show.lngTime.size(), Packed("003-020"));
    show.blnReset.assign(show.lngTime.size(), 0);
    const Patch grows{0, 0, {{50, std::nullopt, Packed("003-020")}}, {}, {}};
    EXPECT_FALSE(ApplyPatch(show, grows));
    Patch exchanges = grows;
    exchanges.changes.push_back({100, Packed("003-020"), std::nullopt});
    EXPECT_TRUE(ApplyPatch(show, exchanges));
    EXPECT_EQ(show.lngTime[1], 50);
    EXPECT_EQ(show.lngTime[2], 200);
}

TEST(Patch, AComparisonLeadsThereAndBack)
{
    for (int seed = 1; seed <= 100; ++seed) {
        Random random(static_cast<std::uint64_t>(seed));
        const testing_support::ShowOptions options{.times = random.Below(20)};
        Choreography before = testing_support::RandomShow(random, options);
        Choreography after = seed % 2 == 0 ? before : testing_support::RandomShow(random, options);
        for (int k = random.Below(4); k > 0 && after.lngLastSlot() > 0; --k)
            StoreCommands(after, random.Below(after.lngLastSlot()),
                          testing_support::RandomCommands(random, 3));
        after.intTimeCount = {seed, 2};
        before.blnTooMany = true;
        const Patch patch = ComparePatch(before, after);
        Choreography walked = before;
        ASSERT_TRUE(ApplyPatch(walked, patch)) << seed;
        EXPECT_EQ(walked, after) << seed;
        ASSERT_TRUE(ApplyPatch(walked, Reversed(patch))) << seed;
        EXPECT_EQ(walked, before) << seed;
        EXPECT_TRUE(ComparePatch(after, after).Empty());
    }
}

}  // namespace
