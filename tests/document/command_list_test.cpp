#include "document/command_list.h"

#include <gtest/gtest.h>

#include "packed.h"
#include "random_show.h"

namespace {

using document::AddCommand;
using document::CommandList;
using document::Commands;
using document::CommandText;
using document::HasAddress;
using document::MergeCommands;
using document::SplitCommands;
using testing_support::Packed;
using testing_support::Random;

TEST(AddCommand, AppendsUpdatesAndKeepsFixedPlaces)
{
    const struct {
        const char* name;
        const char* before;
        CommandList request;
        const char* after;
    } cases[] = {
        {"append to nothing", "", {3, 20, 0, 0, 0}, "003-020"},
        {"append never looks", "003-020", {3, 20, 0, 255, 0}, "003-020 003-020"},
        {"append keeps no fixed place", "003-020", {99, 0, 0, 0, 0}, "003-020 099-000"},
        {"update the first alike", "003-020 003-021", {3, 36, 0, 255, 1}, "003-036 003-021"},
        {"mask tells groups apart", "003-017 003-033", {3, 36, 32, 255, 1}, "003-017 003-036"},
        {"bits not replaced stay", "003-017", {3, 36, 0, 7, 1}, "003-052"},
        {"nothing alike, update or append", "003-017", {3, 33, 48, 255, 1}, "003-017 003-033"},
        {"nothing alike, update only", "003-017", {4, 33, 0, 255, 2}, "003-017"},
        {"any other merge value only updates", "003-017", {3, 33, 0, 255, -1}, "003-033"},
        {"lowest address out of range", "003-020", {-1, 1, 0, 255, 0}, "003-020"},
        {"highest address out of range", "003-020", {256, 1, 0, 255, 1}, "003-020"},
        {"last address", "", {255, 255, 0, 255, 1}, "255-255"},
        {"reset goes to the front", "003-020", {99, 0, 0, 255, 1}, "099-000 003-020"},
        {"reset only once", "099-000 003-020", {99, 0, 0, 255, 1}, "099-000 003-020"},
        {"reset with data", "003-020", {99, 5, 0, 255, 1}, "003-020"},
        {"reset takes the place of a copy", "080-017 003-020", {99, 0, 0, 0, 2}, "099-000 003-020"},
        {"copy goes to the front", "003-020", {80, 17, 0, 255, 2}, "080-017 003-020"},
        {"copy alone", "", {80, 17, 0, 255, 1}, "080-017"},
        {"copies add up", "080-001", {80, 4, 0, 255, 1}, "080-005"},
        {"copy of nothing", "080-001", {80, 0, 0, 255, 1}, "080-001"},
        {"no copy at a reset", "099-000", {80, 4, 0, 255, 1}, "099-000"},
    };
    for (const auto& c : cases) {
        Commands commands = Packed(c.before);
        AddCommand(commands, c.request);
        EXPECT_EQ(CommandText(commands), c.after) << c.name;
    }
}

TEST(RemoveCommand, TakesOutTheFirstOrAll)
{
    using document::Which;
    const struct {
        const char* name;
        const char* before;
        int address;
        Which which;
        const char* after;
    } cases[] = {
        {"first of two", "003-017 004-017 003-033", 3, Which::First, "004-017 003-033"},
        {"all of two", "003-017 004-017 003-033", 3, Which::All, "004-017"},
        {"data is no address", "004-003", 3, Which::All, "004-003"},
        {"8-bit address", "200-001 003-017", 200, Which::First, "003-017"},
        {"below the range", "255-001", -1, Which::All, "255-001"},
        {"above the range", "000-001", 256, Which::All, "000-001"},
    };
    for (const auto& c : cases) {
        Commands commands = Packed(c.before);
        RemoveCommand(commands, c.address, c.which);
        EXPECT_EQ(CommandText(commands), c.after) << c.name;
    }
}

TEST(HasAddress, LooksAtAddressesOfWholeCommands)
{
    EXPECT_TRUE(HasAddress(Packed("003-017 200-004"), 200));
    EXPECT_FALSE(HasAddress(Packed("003-017"), 17));
    EXPECT_FALSE(HasAddress("\x03\x11\x07", 7));
    EXPECT_FALSE(HasAddress("", 0));
    EXPECT_TRUE(document::BeginsWithReset(Packed("099-000 003-017")));
    EXPECT_FALSE(document::BeginsWithReset(Packed("003-017 099-000")));
    EXPECT_FALSE(document::BeginsWithReset("c"));
}

TEST(SplitCommands, MakesOneCommandPerGroup)
{
    const struct {
        const char* before;
        const char* after;
    } cases[] = {
        {"003-053", "003-021 003-037"}, {"003-021", "003-021"},
        {"010-048", "010-048"},         {"000-048", "000-048"},
        {"001-048", "001-016 001-032"}, {"009-112", "009-080 009-096"},
        {"048-054", "048-022 048-038"}, {"069-112", "069-080 069-096"},
        {"080-049", "080-049"},
    };
    for (const auto& c : cases) {
        Commands commands = Packed(c.before);
        SplitCommands(commands);
        EXPECT_EQ(CommandText(commands), c.after);
    }
}

TEST(MergeCommands, LeavesOneCommandPerDevice)
{
    const struct {
        const char* name;
        const char* before;
        const char* after;
    } cases[] = {
        {"last data at the first place", "020-001 017-002 020-007", "020-007 017-002"},
        {"one level, groups add up", "003-017 003-033", "003-049"},
        {"joining adds up too", "003-017 003-097", "003-113"},
        {"two levels stay two", "003-017 003-018", "003-017 003-018"},
        {"curtain and peacock stay two", "009-035 009-099 009-019", "009-051 009-099"},
        {"starts of pulsation add up", "069-016 069-032 069-096", "069-048 069-096"},
        {"a stop never meets a start", "069-000 069-016 069-000 069-032", "069-000 069-048"},
        {"nor a start a stop", "069-016 069-000", "069-016 069-000"},
        {"copies add up in front", "017-001 080-017 080-034", "080-051 017-001"},
        {"a reset takes a copy's place", "080-017 017-001 099-000", "099-000 017-001"},
        {"a copy never joins a reset", "099-000 080-017", "099-000"},
        {"a reset with data is dropped", "099-001 017-001", "017-001"},
        {"nothing may be left", "099-001 080-000", ""},
    };
    for (const auto& c : cases) {
        Commands commands = Packed(c.before);
        MergeCommands(commands);
        EXPECT_EQ(CommandText(commands), c.after) << c.name;
    }
}

// The rules as `AddCommand` requests; a stop of pulsation is set apart as address 255 meanwhile.
Commands MergedByRequests(const Commands& commands)
{
    Commands merged;
    for (int k = 0; k < document::CommandCount(commands); ++k) {
        const auto [address, data] = document::CommandAt(commands, k);
        const bool stop = address == 69 && data == 0;
        CommandList request{static_cast<std::int16_t>(stop ? 255 : address), data, 0, 255, 1};
        if ((address >= 1 && address <= 8) || address == 48) {
            request.Mask = 0x8F;
            request.Replace = 0;
        } else if (address == 9 || (address == 69 && !stop)) {
            request.Mask = 0xCF;
            request.Replace = 0;
        }
        AddCommand(merged, request);
    }
    std::replace(merged.begin(), merged.end(), '\xFF', '\x45');
    return merged;
}

TEST(MergeCommands, DoesWhatTheRequestsWouldDo)
{
    Random random(1);
    for (int run = 0; run < 5000; ++run) {
        Commands commands = testing_support::RandomCommands(random, random.Below(60));
        if (random.OneIn(4))
            AddCommand(commands, {99, static_cast<std::int16_t>(random.Below(2)), 0, 0, 0});
        std::replace(commands.begin(), commands.end(), '\xFF', '\xFE');
        const Commands expected = MergedByRequests(commands);
        Commands merged = commands;
        MergeCommands(merged);
        ASSERT_EQ(CommandText(merged), CommandText(expected)) << CommandText(commands);

        Commands splitFirst = commands;
        SplitCommands(splitFirst);
        MergeCommands(splitFirst);
        ASSERT_EQ(splitFirst, merged) << CommandText(commands);
    }
}

TEST(CommandText, ReadsBack)
{
    for (const char* text : {"", "012-034 056-007", "099-000", "255-255 000-000"})
        EXPECT_EQ(CommandText(Packed(text)), text);
}

}  // namespace
