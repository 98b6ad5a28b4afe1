#include "timeline/script_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "desk.h"
#include "document/random_show.h"
#include "document/time_text.h"

namespace {

using document::Choreography;
using testing_support::Packed;
using testing_support::Random;
using testing_support::RandomCommands;
using testing_support::Show;
using timeline::ScriptLine;
using timeline::ScriptList;

constexpr std::int32_t kAllLines = 1000;

/// The lines of a row: "003-020 Move ...", "! a problem", "? a warning", "+" ahead of a command
/// that is one too many, "-" ahead of one that the filter does not ask for.
std::vector<std::string> LineTexts(const ScriptList& list, std::int32_t row)
{
    std::vector<std::string> texts;
    for (const ScriptLine& line : list.Lines(row, 0, kAllLines)) {
        const bool command = line.kind == ScriptLine::Kind::Command;
        texts.push_back(std::string(line.named ? "" : "-") + (line.surplus ? "+" : "") +
                        (command                                  ? line.codes + ' '
                         : line.kind == ScriptLine::Kind::Problem ? "! "
                                                                  : "? ") +
                        line.text);
    }
    return texts;
}

/// Everything that a list shows: the times, the lines below each.
std::string Content(const ScriptList& list)
{
    std::string content;
    for (std::int32_t row = 0; row < list.RowCount(); ++row) {
        content += document::TimeText(list.TimeOf(row)) + '\n';
        const std::vector<std::string> lines = LineTexts(list, row);
        EXPECT_EQ(list.LineCount(row), static_cast<std::int32_t>(lines.size())) << content;
        for (const std::string& line : lines)
            content += "  " + line + '\n';
    }
    return content;
}

void Apply(ScriptList& list, ScriptList::Update update)
{
    list.Apply(std::move(update));
}

ScriptList ListOf(const Choreography& show, std::int32_t musicLength = 0)
{
    ScriptList list;
    Apply(list, list.Prepare(show));
    Apply(list, list.PrepareFaults(musicLength));
    return list;
}

TEST(ScriptList, ShowsTheTimesThatTheFilterAsksFor)
{
    const Choreography show = Show({
        {0, "099-000 000-010"},
        {1'000, "003-020 017-001"},
        {5'300, "001-019 019-002 006-021"},
        {5'400, "003-037 006-016"},
        {65'300, "009-115 086-025"},
        {66'000, "031-001 007-037"},
        {125'000, "051-001 048-022 120-001"},
        {150'000,
         "001-017 002-017 003-017 004-017 005-017 006-017 007-018 008-017 017-001 018-002 019-004 "
         "020-001"},
    });
    const std::string all = "00:00.0 00:01.0 00:05.3 00:05.4 01:05.3 01:06.0 02:05.0 02:30.0";
    const std::pair<const char*, std::string> rows[] = {
        {"", all},
        {"  ", all},
        {"peacock", "01:05.3"},
        {"PEACOCK", "01:05.3"},
        {"wedding", "02:05.0"},
        {"ring 3", "00:01.0 00:05.4 02:30.0"},  // not Ring 1 to level 3, not Module 3
        {"Ring 3 ", "00:01.0 00:05.4 02:30.0"},
        {"module 3", "00:05.3 02:30.0"},
        {"ring 1", "00:05.3 02:30.0"},
        {"level 3", "00:05.3 01:05.3"},
        {"peacock 3", "01:05.3"},
        {"peacock 4", ""},
        {"sweep 5", "00:05.3"},
        {"ring 3 sweeps", "00:05.4 02:30.0"},  // both, in whatever order
        {"sweeps ring 3 over 2", "02:30.0"},
        {"ring 3 level 5", "00:05.4"},
        {"group b", "00:05.4 02:05.0"},
        {"\"group a and\"", "02:05.0"},
        {"\"to level 3\"", "00:05.3 01:05.3"},
        {"\"ring 3", "00:01.0 00:05.4 02:30.0"},  // the end of the quote is not typed yet
        {"\"level to\"", ""},
        {"\"\"", all},
        {"display 0a", "00:00.0"},
        {"display 0", ""},
        {"timer 2.5", "01:05.3"},
        {"timer 2", ""},
        {"003-020", "00:01.0"},
        {"003-", "00:01.0 00:05.4 02:30.0"},
        {"037", "00:05.4 01:06.0"},
        {"37", ""},
        {"1:05", "01:05.3"},
        {"01:0", "01:05.3 01:06.0"},
        {"5.3", "00:05.3 01:05.3"},
        {"over", all},  // the number is not typed yet
        {"over 2", "00:05.3 02:05.0 02:30.0"},
        {"over 11", "02:30.0"},
        {"Over 12", ""},
        {"over 99999999999", ""},
        {"problem", "01:05.3 01:06.0 02:05.0 02:30.0"},
        {"problems spout", "01:06.0"},
        {"fountain \t display", "00:00.0"},
        {"\xC3\xA4", ""},
    };
    ScriptList list = ListOf(show);
    for (const auto& [filter, times] : rows) {
        list.SetFilter(filter);
        std::string found;
        for (std::int32_t row = 0; row < list.RowCount(); ++row)
            found += (row == 0 ? "" : " ") + document::TimeText(list.TimeOf(row));
        EXPECT_EQ(found, times) << filter;
    }
}

TEST(ScriptList, ShowsProblemsWhereTheyAre)
{
    const struct {
        const char* name;
        testing_support::Slot slot;
        std::vector<std::string> lines;
    } rows[] = {
        {"sound", {0, "003-020"}, {"003-020 Move Ring 3 on Group A to level 4"}},
        {"an address that drives nothing",
         {0, "120-001 003-020"},
         {"120-001 * * * UNKNOWN COMMAND * * *",
          "! Goes to an address that drives nothing; remove it",
          "003-020 Move Ring 3 on Group A to level 4"}},
        {"data that means nothing",
         {0, "003-004"},
         {"003-004 Move Ring 3 to level 4",
          "? Selects no group; add 16 for Group A or 32 for Group B to its data"}},
        {"devices that fight",
         {0, "009-101 009-037"},
         {"009-101 Move Peacock to level 5", "009-037 Move Back Curtain to level 5",
          "? Raises the Peacock and the Back Curtain together, and one takes the other down; leave "
          "one of them out"}},
        {"behind the music",
         {2'100, "001-017"},
         {"001-017 Move Ring 1 on Group A to level 1",
          "? Lies behind the end of the music (00:02.0); move or remove it"}},
        {"too many",
         {0,
          "001-017 002-017 003-017 004-017 005-017 017-001 018-001 019-001 020-001 021-001 022-001 "
          "023-001"},
         {"001-017 Move Ring 1 on Group A to level 1", "002-017 Move Ring 2 on Group A to level 1",
          "003-017 Move Ring 3 on Group A to level 1", "004-017 Move Ring 4 on Group A to level 1",
          "005-017 Move Ring 5 on Group A to level 1", "017-001 Turn Module 1 red lights on",
          "018-001 Turn Module 2 red lights on", "019-001 Turn Module 3 red lights on",
          "020-001 Turn Module 4 red lights on", "021-001 Turn Module 5 red lights on",
          "022-001 Turn Module 6 red lights on", "+023-001 Turn Module 7 red lights on",
          "! Holds 12 commands, at most 11 fit"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(LineTexts(ListOf(Show({row.slot}), 2'000), 0), row.lines) << row.name;
}

TEST(ScriptList, TellsWhatTheFilterAsksForFromTheRestOfItsTime)
{
    ScriptList list = ListOf(Show({{0, "003-020 120-001 006-021"}}));
    list.SetFilter("ring 3 0:0");
    EXPECT_EQ(LineTexts(list, 0),
              (std::vector<std::string>{"003-020 Move Ring 3 on Group A to level 4",
                                        "-120-001 * * * UNKNOWN COMMAND * * *",
                                        "-! Goes to an address that drives nothing; remove it",
                                        "-006-021 Move Sweeps on Group A to level 5"}));
}

TEST(ScriptList, GivesAnyPieceOfARow)
{
    const ScriptList list =
        ListOf(Show({{0, "120-001 003-004 009-101 009-037 001-017"}, {100, "001-017"}}));
    const std::vector<ScriptLine> all = list.Lines(0, 0, kAllLines);
    ASSERT_EQ(all.size(), 8U);
    for (std::int32_t first = 0; first <= 8; ++first) {
        for (std::int32_t count = 0; first + count <= 8; ++count)
            EXPECT_EQ(list.Lines(0, first, count),
                      std::vector<ScriptLine>(all.begin() + first, all.begin() + first + count))
                << first << ", " << count;
    }
}

TEST(ScriptList, FindsTheRowOfATime)
{
    ScriptList list = ListOf(Show({{100, "001-017"}, {300, "003-020"}, {500, "001-016"}}));
    const struct {
        const char* filter;
        std::int32_t time;
        std::int32_t row;
    } rows[] = {{"", 0, -1},        {"", 99, -1},       {"", 100, 0},        {"", 299, 0},
                {"", 300, 1},       {"", 5'399'900, 2}, {"ring 3", 299, -1}, {"ring 3", 300, 0},
                {"ring 3", 500, 0}, {"ring 1", 400, 0}, {"ring 1", 500, 1},  {"peacock", 500, -1}};
    for (const auto& [filter, time, row] : rows) {
        list.SetFilter(filter);
        EXPECT_EQ(list.RowAtOrBefore(time), row) << filter << " at " << time;
    }
}

// One edit of a show, of every kind that there is.
void EditAtRandom(Random& random, Choreography& show)
{
    const std::int32_t slots = show.lngLastSlot();
    const std::int32_t slot = random.Below(std::max(1, slots));
    const std::int32_t time = 100 * random.Below(3000);
    const int kind = random.Below(8);
    if (kind == 7) {
        show = testing_support::RandomShow(random, {.times = random.Below(90)});
    } else if (kind >= 5 || slots == 0) {
        if (document::SlotAt(show, time) < 0)
            document::InsertSlot(show, document::SlotAtOrBefore(show, time) + 1, time,
                                 RandomCommands(random, 1 + random.Below(13)));
    } else if (kind == 4) {
        document::ShiftSlots(show, slot, 100 * random.Below(5));
    } else if (kind >= 2) {
        document::EraseSlot(show, slot);
    } else {
        document::StoreCommands(show, slot, RandomCommands(random, 1 + random.Below(13)));
    }
}

// The rows that an update leaves alone are what they were, and all is as if made anew.
void ExpectUpdate(ScriptList& list, ScriptList::Update update)
{
    const auto text = [&list](std::int32_t row) {
        std::string all = document::TimeText(list.TimeOf(row));
        for (const std::string& line : LineTexts(list, row))
            all += '\n' + line;
        return all;
    };
    const timeline::ListChange rows = update.rows;
    std::vector<std::string> before;
    for (std::int32_t row = 0; row < list.RowCount(); ++row)
        before.push_back(text(row));
    list.Apply(std::move(update));
    const auto count = static_cast<std::int32_t>(before.size());
    ASSERT_EQ(list.RowCount(), count - rows.removed + rows.inserted);
    for (std::int32_t row = 0; row < list.RowCount(); ++row) {
        if (row >= rows.first && row < rows.first + rows.inserted)
            continue;
        const std::int32_t was = row < rows.first ? row : row + rows.removed - rows.inserted;
        ASSERT_EQ(text(row), before[static_cast<std::size_t>(was)]) << row;
    }
}

TEST(ScriptList, UpdatesLikeAListMadeAnew)
{
    for (const char* filter : {"", "ring 3", "problems", "over 4", "1:"}) {
        for (std::uint64_t seed = 1; seed <= 5; ++seed) {
            Random random(seed);
            Choreography show = testing_support::RandomShow(random, {.times = 60});
            ScriptList list = ListOf(show);
            list.SetFilter(filter);
            for (int step = 0; step < 40; ++step) {
                for (int edits = 1 + random.Below(2); edits > 0; --edits)
                    EditAtRandom(random, show);
                const std::int32_t music = random.OneIn(4) ? 100 * random.Below(3000) : 0;
                ExpectUpdate(list, list.Prepare(show));
                EXPECT_TRUE(list.Prepare(show).places.Empty());
                ExpectUpdate(list, list.PrepareFaults(music));
                ScriptList anew = ListOf(show, music);
                anew.SetFilter(filter);
                ASSERT_EQ(Content(list), Content(anew)) << filter << ' ' << seed << ' ' << step;
            }
        }
    }
}

TEST(ScriptList, AnEditTouchesOnlyItsTime)
{
    Choreography show = Show({{100, "001-017"}, {300, "003-020"}, {500, "003-020"}});
    ScriptList list = ListOf(show);
    const auto update = [&](const char* filter) {
        list.SetFilter(filter);
        const ScriptList::Update made = list.Prepare(show);
        Apply(list, made);
        return made.rows;
    };
    using timeline::ListChange;
    document::StoreCommands(show, 1, Packed("003-021"));
    EXPECT_EQ(update(""), (ListChange{1, 1, 1}));
    document::StoreCommands(show, 1, Packed("003-020 006-017"));
    EXPECT_EQ(update("ring 3"), (ListChange{0, 1, 1}));
    document::StoreCommands(show, 1, Packed("006-017"));
    EXPECT_EQ(update("ring 3"), (ListChange{0, 1, 0}));
    document::StoreCommands(show, 0, Packed("003-017"));
    EXPECT_EQ(update("ring 3"), (ListChange{0, 0, 1}));
    document::InsertSlot(show, 2, 400, Packed("003-020"));
    EXPECT_EQ(update(""), (ListChange{2, 0, 1}));
    document::EraseSlot(show, 0);
    EXPECT_EQ(update(""), (ListChange{0, 1, 0}));
}

}  // namespace
