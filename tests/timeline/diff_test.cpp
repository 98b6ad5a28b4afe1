#include "timeline/diff.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "document/control_text.h"
#include "document/time_text.h"
#include "timeline/align.h"

namespace {

using document::Choreography;

Choreography Read(const std::string& lines)
{
    Choreography choreography;
    document::ReadControlText(choreography, "ct0-381\n" + lines);
    return choreography;
}

std::string DiffText(const Choreography& before, const Choreography& after)
{
    std::string text;
    for (const timeline::Change& change : timeline::Diff(before, after))
        text += timeline::ChangeText(change);
    return text;
}

struct Row {
    const char* before;
    const char* after;
    const char* text;
};

TEST(Diff, SaysWhatEveryDeviceDoesInstead)
{
    // clang-format off
    constexpr Row kRows[] = {
        {"003-018", "003-018", ""},
        {"003-018", "003-020", "01:05.3  Ring 3 on Group A: level 2 -> level 4\n"},
        {"003-050", "003-018 003-036", "01:05.3  Ring 3 on Group B: level 2 -> level 4\n"},
        {"003-018", "003-082", "01:05.3  Ring 3 on Group A: level 2 -> level 2 with joining\n"},
        {"003-018 003-064", "003-018", "01:05.3  Ring 3 on no group: joined removed\n"},
        {"048-019", "048-022", "01:05.3  Multi-Valve on Group A: level 3 -> Wedding Cake formation\n"},
        {"007-053", "007-019", "01:05.3  Bazookas: level 5 -> level 3\n01:05.3  Spout: level 5 removed\n"},
        {"009-021", "009-101", "01:05.3  Front Curtain: level 5 removed\n01:05.3  Peacock: level 5 added\n"},
        {"009-033", "009-034", "01:05.3  Back Curtain: level 1 -> level 2\n"},
        {"016-002", "016-014", "01:05.3  Bazooka white lights: off -> on\n01:05.3  White lights of all modules: off -> on\n"},
        {"019-007", "019-001", "01:05.3  Module 3 lights: red, blue, and amber -> red\n"},
        {"051-001", "049-001 050-004", "01:05.3  Group B lights: red -> amber\n"},
        {"051-001", "049-001 050-001", "01:05.3  the same, with other commands or in another order\n"},
        {"024-016", "024-048", "01:05.3  Back Curtain lights: green -> green and amber\n"},
        {"025-001", "025-002", "01:05.3  Peacock Group A lights: red -> blue\n"},
        {"041-001", "026-001", "01:05.3  the same, with other commands or in another order\n"},
        {"033-033", "034-099", "01:05.3  Sweep motion: slow, synchronized, 10 degrees -> fast, opposed, 30 degrees\n"},
        {"054-001", "003-018", "01:05.3  Voice light and water: on removed\n01:05.3  Ring 3 on Group A: level 2 added\n"},
        {"069-016", "069-080", "01:05.3  Sweep pulsation on Group A: upward -> downward\n"},
        {"080-017", "080-051", "01:05.3  Between the groups: Copy water from Group A to Group B -> Exchange water and lights between groups\n"},
        {"085-097", "085-018", "01:05.3  Light movement: timed to the right with wrapping -> once to the left without wrapping\n"},
        {"086-025", "086-030", "01:05.3  Light timer: 2.5 seconds -> 3 seconds\n"},
        {"000-010", "000-011", "01:05.3  Operator panel: 0A -> 0B\n"},
        {"051-001", "099-000 051-001", "01:05.3  Reset Fountain added\n"},
        {"120-001", "120-002", "01:05.3  Unknown address 120: data 1 -> data 2\n"},
    };
    // clang-format on
    for (const auto& [before, after, text] : kRows)
        EXPECT_EQ(
            DiffText(Read("01:05.3" + std::string(before)), Read("01:05.3" + std::string(after))),
            text)
            << before << " | " << after;
}

TEST(Diff, KnowsTimesThatCameWentAndMoved)
{
    constexpr Row kRows[] = {
        {"00:01.0051-001\n", "",
         "00:01.0  time removed: Group A lights: red; Group B lights: red\n"},
        {"", "00:01.0054-001\n", "00:01.0  time added: Voice light and water: on\n"},
        {"00:01.0051-001\n00:40.0051-002\n00:41.0051-003\n02:10.5051-004\n03:00.0051-005\n",
         "00:01.0051-001\n00:42.5051-002\n00:43.5051-003\n02:13.0051-004\n03:00.0051-005\n",
         "00:40.0 to 02:10.5 shifted by +2.5 s\n"},
        {"00:40.0051-002\n00:41.0051-003\n00:42.0051-004\n",
         "00:39.9051-002\n00:40.9051-007\n00:41.9051-004\n",
         "00:40.0 to 00:42.0 shifted by -0.1 s\n"
         "00:40.9  Group A lights: red and blue -> red, blue, and amber\n"
         "00:40.9  Group B lights: red and blue -> red, blue, and amber\n"},
        {"00:10.0051-001\n", "01:10.0051-001\n", "00:10.0 shifted by +60.0 s\n"},
        // The same list everywhere: what stands in its place has not moved.
        {"00:01.0051-001\n00:02.0051-001\n00:03.0051-001\n00:04.0051-001\n",
         "00:02.0051-001\n00:03.0051-001\n00:04.0051-001\n00:05.0051-001\n",
         "00:01.0 to 00:04.0 shifted by +1.0 s\n"},
        {"00:01.0051-001\n00:02.0051-002\n00:03.0051-001\n00:04.0051-002\n",
         "00:01.0051-001\n00:02.0051-002\n00:02.5054-001\n00:03.0051-001\n00:04.0051-002\n",
         "00:02.5  time added: Voice light and water: on\n"},
    };
    for (const auto& [before, after, text] : kRows)
        EXPECT_EQ(DiffText(Read(before), Read(after)), text) << before;
}

TEST(Diff, SumsUp)
{
    const Choreography before = Read("00:01.0051-001\n00:02.0054-001\n00:09.0051-004\n");
    EXPECT_EQ(timeline::DiffSummary(timeline::Diff(before, before)), "nothing changed");
    EXPECT_EQ(timeline::DiffSummary(
                  timeline::Diff(before, Read("00:01.0051-003\n00:03.0003-021\n00:04.0003-020\n"
                                              "00:10.5051-004\n"))),
              "1 time changed, 2 times added, 1 time removed, 00:09.0 shifted by +1.5 s");
}

// Nobody stands in two places, and nothing is said to differ that does not.
TEST(Diff, AlignsEverySlotOnceWhateverTheShows)
{
    std::mt19937 random(11);
    const auto show = [&random] {
        std::string lines;
        std::int32_t time = 0;
        for (int k = 0; k < 40; ++k) {
            time += 100 * static_cast<std::int32_t>(1 + random() % 4);
            lines += document::TimeText(time) + "051-00" + std::to_string(1 + random() % 5) + "\n";
        }
        return Read(lines);
    };
    for (int round = 0; round < 200; ++round) {
        const Choreography before = show();
        const Choreography after = show();
        std::vector<bool> taken(static_cast<std::size_t>(after.lngLastSlot()));
        for (const std::int32_t target : timeline::AlignSlots(before, after)) {
            if (target == timeline::kNoSlot)
                continue;
            ASSERT_FALSE(taken.at(static_cast<std::size_t>(target)));
            taken[static_cast<std::size_t>(target)] = true;
        }
        ASSERT_TRUE(timeline::Diff(before, before).empty());
        ASSERT_EQ(before.lngTime == after.lngTime && before.strCommands == after.strCommands,
                  timeline::Diff(before, after).empty());
    }
}

}  // namespace
