#include "document/control_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "document/prune.h"
#include "document/time_text.h"
#include "random_show.h"

namespace {

using document::Choreography;
using document::Commands;
using document::ControlText;
using document::ReadControlText;
using testing_support::Random;

std::string Bytes(const std::filesystem::path& name)
{
    std::ostringstream bytes;
    bytes << std::ifstream(name, std::ios::binary).rdbuf();
    return bytes.str();
}

Choreography Read(std::string_view text)
{
    Choreography show;
    ReadControlText(show, text);
    return show;
}

void ExpectInOrder(const Choreography& show)
{
    ASSERT_EQ(show.lngTime.size(), show.strCommands.size());
    ASSERT_EQ(show.lngTime.size(), show.blnReset.size());
    ASSERT_EQ(show.lngTime.back(), document::kEndSentinel);
    ASSERT_TRUE(show.strCommands.back().empty());
    for (std::size_t slot = 0; slot < show.lngTime.size(); ++slot) {
        ASSERT_EQ(show.blnReset[slot] != 0, document::BeginsWithReset(show.strCommands[slot]));
        ASSERT_TRUE(slot == 0 || show.lngTime[slot - 1] < show.lngTime[slot]);
    }
}

void ExpectSavedOpensUnchanged(const Choreography& show)
{
    const std::string saved = ControlText(show);
    const Choreography again = Read(saved);
    ASSERT_EQ(again.lngTime, show.lngTime);
    ASSERT_EQ(again.strCommands, show.strCommands);
    ASSERT_FALSE(again.blnChanged);
    ASSERT_EQ(again.intCommandCount[0], again.intCommandCount[1]);
    ASSERT_EQ(ControlText(again), saved);
}

TEST(ControlText, GoldenFiles)
{
    int pairs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA)) {
        std::filesystem::path saved = entry.path();
        saved.replace_extension(".saved.ctl");
        if (!std::filesystem::exists(saved))
            continue;
        const Choreography show = Read(Bytes(entry.path()));
        EXPECT_EQ(ControlText(show), Bytes(saved)) << entry.path();
        ExpectInOrder(show);
        ExpectSavedOpensUnchanged(show);
        ++pairs;
    }
    EXPECT_EQ(pairs, 7);
}

TEST(ReadControlText, CountsAndFlags)
{
    const std::string eleven =
        "00:01.0001-017 002-017 003-017 004-017 005-017 006-017 008-017 017-001 018-001 019-001 "
        "020-001 ";
    const struct {
        const char* name;
        std::string text;
        std::array<std::int32_t, 2> times;
        std::array<std::int32_t, 2> commands;
        bool changed;
        bool tooMany;
    } cases[] = {
        {"nothing", "", {0, 0}, {0, 0}, false, false},
        {"one command", "00:01.0017-001", {1, 1}, {1, 1}, false, false},
        {"13 characters", "00:01.0017-00", {0, 0}, {0, 0}, false, false},
        {"two lines of one time", "00:01.0017-001\n00:01.0018-001", {2, 1}, {2, 2}, false, false},
        {"which name one device", "00:01.0017-001\n00:01.0017-002", {2, 1}, {2, 1}, true, false},
        {"which move a reset", "00:01.0017-001\n00:01.0099-000", {2, 1}, {2, 2}, true, false},
        {"groups to combine", "00:01.0003-017 003-033", {1, 1}, {2, 1}, true, false},
        {"both groups in one", "00:01.0003-049", {1, 1}, {1, 1}, false, false},
        {"pruned command", "00:01.0017-000 018-001", {1, 1}, {2, 1}, true, false},
        {"pruned time", "00:01.0017-000", {1, 0}, {1, 0}, true, false},
        {"exchanged stop", "00:01.0034-033\n00:02.0033-000", {2, 2}, {2, 2}, true, false},
        {"dropped by merging", "00:01.0099-001", {1, 0}, {1, 0}, true, false},
        {"left out by address", "00:01.0256-001", {0, 0}, {0, 0}, false, false},
        {"low bits of the data", "00:01.0017-257", {1, 1}, {1, 1}, false, false},
        {"converted", "00:01.0033-018", {1, 1}, {1, 1}, true, false},
        {"converted, light movement", "ct0-379\n00:01.0085-005", {1, 1}, {1, 1}, true, false},
        {"not converted", "ct0-380\n00:01.0085-005", {1, 1}, {1, 1}, false, false},
        {"at 100 minutes", "99:60.0017-001", {0, 0}, {0, 0}, true, false},
        {"11 commands and a blank", eleven, {1, 1}, {11, 11}, false, false},
        {"the 12th shows one character", eleven + "0", {1, 1}, {12, 12}, false, true},
        {"12 commands", eleven + "021-001", {1, 1}, {12, 12}, false, true},
        {"12 commands that merge", eleven + "001-033", {1, 1}, {12, 11}, true, true},
        {"12 commands in two lines", eleven + "\n00:01.0021-001", {2, 1}, {12, 12}, false, true},
    };
    for (const auto& c : cases) {
        const Choreography show = Read(c.text);
        EXPECT_EQ(show.intTimeCount, c.times) << c.name;
        EXPECT_EQ(show.intCommandCount, c.commands) << c.name;
        EXPECT_EQ(show.blnChanged, c.changed) << c.name;
        EXPECT_EQ(show.blnTooMany, c.tooMany) << c.name;
    }
}

TEST(ReadControlText, FindsTheVersionAnywhere)
{
    const struct {
        std::string_view text;
        std::int32_t version;
    } cases[] = {
        {"ct0-381\r\n", 381},
        {"CT0-379", 379},
        {"00:01.0017-001\ncT0-380\n", 380},
        {"ct0-", 0},
        {"ct0-3", 3},
        {"ct0-381 extra", 381},
        {"ct0-381 extra!", 0},
        {"ct1-381", 0},
        {"ct0_381", 0},
        {"ct0-370\nct0-381", 381},
    };
    for (const auto& c : cases) {
        Choreography show;
        EXPECT_EQ(ReadControlText(show, c.text).version, c.version) << c.text;
    }
}

TEST(ReadControlText, LeavesOutTimesWhenFull)
{
    std::string text = "ct0-381\r\n";
    for (int k = 1; k <= document::kMostSlots; ++k)
        text += document::TimeText(k * 100) + "017-001\r\n";
    const std::string full = text;
    text += "95:00.0018-001\r\n95:00.0099-001\r\n00:00.0018-001\r\n00:00.1019-001\r\n";
    Choreography show;
    EXPECT_EQ(ReadControlText(show, full).timesLeftOut, 0);
    EXPECT_TRUE(show.IsFull());
    EXPECT_EQ(show.intTimeCount, (std::array{54'000, 54'000}));

    // A line between two times goes to the one before, full or not.
    EXPECT_EQ(ReadControlText(show, text).timesLeftOut, 2);
    EXPECT_EQ(show.lngLastSlot(), document::kMostSlots);
    EXPECT_EQ(show.strCommands[0], Commands("\x11\x01\x13\x01"));
    EXPECT_EQ(show.intTimeCount, (std::array{54'002, 54'000}));
}

// Reading line by line as it is told, with a move of all later slots for an insertion.
class LiteralReader {
 public:
    explicit LiteralReader(const std::string& text)
    {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (!lines.eof() && line.ends_with('\r'))
                line.pop_back();
            ReadLine(line);
        }
        show.blnChanged |= PruneChoreography(show).changed;
        show.intTimeCount[1] = show.lngLastSlot();
        for (const Commands& list : show.strCommands)
            show.intCommandCount[1] += document::CommandCount(list);
    }

    Choreography show;

 private:
    static std::int32_t Field(const std::string& line, std::size_t at)
    {
        return at < line.size() ? document::FieldValue(std::string_view(line).substr(at, 3)) : 0;
    }

    void ReadLine(const std::string& line)
    {
        if (line.size() < 14) {
            if (line.size() >= 4 && (line.starts_with("ct0-") || line.starts_with("CT0-")))
                version_ = Field(line, 4);
            return;
        }
        const std::int32_t time = document::FieldValue(line.substr(0, 2)) * 60'000 +
                                  document::SecondsFieldValue(line.substr(3, 4));
        if (time >= 6'000'000) {
            show.blnChanged = true;
            return;
        }
        const int slot = document::SlotAtOrBefore(show, time);
        Commands list = slot < 0 ? Commands{} : show.strCommands[static_cast<std::size_t>(slot)];
        const int n = show.lngLastSlot();
        const bool inOrder =
            slot == n - 1 && (n == 0 || time > show.lngTime[static_cast<std::size_t>(slot)]);
        if (inOrder)
            list.clear();
        else if (slot >= 0)
            show.lngTime[static_cast<std::size_t>(slot)] = time;
        const int before = document::CommandCount(list);
        for (std::size_t at = 7; at < line.size(); at += 8)
            Append(list, Field(line, at), Field(line, at + 4) & 0xFF);
        if (list.empty())
            return;
        show.blnTooMany |= list.size() > 22;
        show.intCommandCount[0] += document::CommandCount(list) - before;
        ++show.intTimeCount[0];
        const Commands asRead = list;
        document::SplitCommands(list);
        document::MergeCommands(list);
        show.blnChanged |= list != asRead;
        if (list.empty())
            return;
        if (inOrder || slot < 0)
            InsertSlot(show, slot + 1, time, list);
        else
            StoreCommands(show, slot, list);
    }

    void Append(Commands& list, int address, int data)
    {
        if (address > 255)
            return;
        const int oldAddress = address;
        const int oldData = data;
        if ((address == 33 || address == 34) && (data == 17 || data == 18))
            data += 16;
        else if ((address == 33 || address == 34) && (data == 113 || data == 114))
            data -= 16;
        if (address == 52)
            address = 51;
        if (version_ < 380 && address == 85 && (data & 12) != 0)
            data = ((data & 252) * 4 + (data & 3)) & 0xFF;
        show.blnChanged |= address != oldAddress || data != oldData;
        document::AddCommand(
            list, {static_cast<std::int16_t>(address), static_cast<std::int16_t>(data), 0, 0, 0});
    }

    std::int32_t version_ = 0;
};

// A show's file with lines swapped, doubled and cut, and with bytes changed to any others.
std::string DamagedFile(Random& random)
{
    const testing_support::ShowOptions options{1 + random.Below(30), 1 + random.Below(10), 6};
    std::istringstream lines(ControlText(RandomShow(random, options)));
    std::vector<std::string> kept;
    for (std::string line; std::getline(lines, line);)
        for (int copies = random.OneIn(10) ? random.Below(3) : 1; copies > 0; --copies)
            kept.push_back(line + '\n');
    for (int swaps = random.Below(6); swaps > 0; --swaps)
        std::swap(kept[static_cast<std::size_t>(random.Below(static_cast<int>(kept.size() + 1)) %
                                                std::max<int>(1, static_cast<int>(kept.size())))],
                  kept[static_cast<std::size_t>(random.Below(static_cast<int>(kept.size())))]);
    std::string text;
    for (const std::string& line : kept)
        text += line;
    static const std::string likely = "0123456789 .:-\r\n";
    for (int changes = random.OneIn(2) ? random.Below(12) : 0; changes > 0; --changes) {
        const auto at = static_cast<std::size_t>(random.Below(static_cast<int>(text.size())));
        text[at] = random.OneIn(4) ? static_cast<char>(random.Byte())
                                   : likely[static_cast<std::size_t>(random.Below(16))];
    }
    if (random.OneIn(4))
        text.resize(static_cast<std::size_t>(random.Below(static_cast<int>(text.size()))));
    return text;
}

std::string RandomBytes(Random& random)
{
    std::string text(static_cast<std::size_t>(random.Below(400)), '\0');
    for (char& c : text)
        c = random.OneIn(3) ? static_cast<char>(random.Byte())
                            : static_cast<char>('0' + random.Below(10));
    return text;
}

TEST(ReadControlText, ReadsWhateverComesAsTold)
{
    Random random(4);
    for (int run = 0; run < 4000; ++run) {
        const std::string text = random.OneIn(4) ? RandomBytes(random) : DamagedFile(random);
        const Choreography show = Read(text);
        ASSERT_NO_FATAL_FAILURE(ExpectInOrder(show));
        const LiteralReader expected(text);
        ASSERT_EQ(ControlText(show), ControlText(expected.show)) << text;
        ASSERT_EQ(show, expected.show) << text;

        // The file knows tenths only, so times between them come back rounded, and no worse.
        const Choreography rounded = Read(ControlText(show));
        ASSERT_NO_FATAL_FAILURE(ExpectSavedOpensUnchanged(rounded)) << text;
    }
}

TEST(ReadControlText, WhatWasSavedOpensUnchanged)
{
    Random random(5);
    for (int run = 0; run < 2000; ++run) {
        Choreography show = testing_support::RandomShow(random, {.times = random.Below(60)});
        document::PruneChoreography(show);
        ASSERT_NO_FATAL_FAILURE(ExpectSavedOpensUnchanged(show)) << ControlText(show);
    }
}

}  // namespace
