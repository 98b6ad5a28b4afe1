#include "fountain/describe.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

namespace {

using fountain::DescribeCommand;

struct Row {
    int address;
    int data;
    const char* text;
};

// clang-format off
constexpr Row kRows[] = {
    {0, 10, "Display 0A on operator panel"},
    {0, 255, "Display FF on operator panel"},

    {3, 19, "Move Ring 3 on Group A to level 3"},
    {3, 16, "Drop Ring 3 on Group A"},
    {3, 64, "Join groups for Ring 3"},
    {3, 83, "Move Ring 3 on Group A to level 3 with joining"},
    {3, 80, "Drop Ring 3 on Group A with joining"},
    {3, 0, "Drop Ring 3"},
    {5, 53, "Move Ring 5 on Group A and Group B to level 5"},
    {5, 39, "Ring 5 on Group B"},
    {5, 103, "Ring 5 on Group B with joining"},
    {1, 192, "Drop Ring 1 with joining"},           // 64 alone joins, with bit 128 it does not
    {3, 22, "Set Wedding Cake formationroup A"},    // the cut falls inside the name
    {3, 6, "Set Wedding Cake formation"},
    {6, 34, "Move Sweeps on Group B to level 2"},
    {6, 54, "Set Wedding Cake formationroup A and Group B"},
    {8, 64, "Join groups for Candelabras"},
    {8, 22, "Set Wedding Cake formation on Group A"},
    {7, 37, "Move Spout to level 5"},
    {7, 48, "Drop Bazookas and Spout"},
    {7, 17, "Move Bazookas to level 1"},
    {7, 0, "Drop "},
    {7, 7, ""},
    {7, 64, "Join groups for "},
    {48, 6, "Set Wedding Cake formation"},
    {48, 22, "Set Wedding Cake formation on Group A"},
    {48, 54, "Set Wedding Cake formation on Group A and Group B"},
    {48, 36, "Move Multi-Valve on Group B to level 4"},

    {9, 115, "Move Peacock to level 3"},
    {9, 64, "Drop Peacock"},
    {9, 48, "Drop Front and Back Curtain"},
    {9, 21, "Move Front Curtain to level 5"},
    {9, 33, "Move Back Curtain to level 1"},
    {9, 38, "Back Curtain"},
    {9, 0, "Drop  Curtain"},
    {9, 103, "Peacock"},

    {16, 0, "Turn all white lights off"},
    {16, 2, "Turn Cross white lights on"},
    {16, 4, "Turn Bazooka white lights on"},
    {16, 8, "Turn Module white lights on"},
    {16, 6, "Turn,  Bazooka white lights on"},
    {16, 14, "Turn,  Module white lights on"},
    {16, 1, "Turn white lights on"},

    {19, 7, "Turn Module 3 red, blue, and amber lights on"},
    {19, 9, "Turn Module 3 red and white lights on"},
    {17, 0, "Turn Module 1 lights off"},
    {23, 15, "Turn Module 7 red, blue, amber, and white lights on"},
    {20, 16, "Turn Module 4 lights on"},
    {25, 4, "Turn Peacock Group A amber lights on"},
    {26, 0, "Turn Peacock Group B lights off"},
    {41, 10, "Turn Peacock Group B blue and white lights on"},
    {49, 0, "Turn Group A lights off"},
    {50, 8, "Turn Group B white lights on"},
    {51, 3, "Turn Group A and Group B red and blue lights on"},

    {24, 0, "Turn Back Curtain lights off"},
    {24, 16, "Turn Back Curtain green lights on"},
    {24, 32, "Turn Back Curtain amber lights on"},
    {24, 48, "Turn Back Curtain green, amber lights on"},
    {24, 8, "Turn Back Curtain  lights on"},

    {33, 96, "Start fast synchronized Sweep motion"},
    {33, 65, "Start medium synchronized Sweep motion"},
    {34, 32, "Start slow opposed Sweep motion"},
    {34, 3, "Stop Sweeps"},
    {54, 0, "Stop Voice light and water"},
    {54, 200, "Start Voice light and water"},
    {69, 0, "Stop Sweep pulsation"},
    {69, 16, "Start upward Sweep pulsation on Group A"},
    {69, 112, "Start downward Sweep pulsation on Group A and Group B"},
    {69, 64, "Start downward Sweep pulsation"},

    {80, 17, "Copy water from Group A to Group B"},
    {80, 34, "Copy lights from Group B to Group A"},
    {80, 49, "Exchange water between groups"},
    {80, 51, "Exchange water and lights between groups"},
    {80, 16, "Copy  from Group A to Group B"},
    {80, 3, "water and lights"},
    {80, 0, ""},

    {85, 0, "Stop timed light movement"},
    {85, 17, "Start timed light movement to the right without wrapping"},
    {85, 26, "Start timed light movement to the left with wrapping"},
    {85, 97, "Shift module lights once to the right without wrapping"},
    {85, 96, "Shift module lights once to the left without wrapping"},
    {86, 25, "Set light timer to 2.5 seconds"},
    {86, 30, "Set light timer to 3 seconds"},
    {86, 4, "Set light timer to 0.4 seconds"},
    {86, 0, "Set light timer to 0 seconds"},
    {86, 255, "Set light timer to 25.5 seconds"},

    {99, 0, "Reset Fountain"},
    {99, 77, "Reset Fountain"},
    {120, 1, "* * * UNKNOWN COMMAND * * *"},
    {10, 0, "* * * UNKNOWN COMMAND * * *"},
    {255, 255, "* * * UNKNOWN COMMAND * * *"},
};
// clang-format on

TEST(DescribeCommand, SaysWhatTheTableSays)
{
    for (const auto& [address, data, text] : kRows)
        EXPECT_EQ(
            DescribeCommand(static_cast<std::uint8_t>(address), static_cast<std::uint8_t>(data)),
            text)
            << address << '-' << data;
}

// Only what selects nothing at all has nothing to say; nothing is cut short or out of place.
TEST(DescribeCommand, EveryCommandHasALineOfText)
{
    std::map<int, int> empty;
    for (int address = 0; address < 256; ++address)
        for (int data = 0; data < 256; ++data) {
            const std::string text = DescribeCommand(static_cast<std::uint8_t>(address),
                                                     static_cast<std::uint8_t>(data));
            if (text.empty())
                ++empty[address];
            for (const char c : text)
                ASSERT_TRUE(c >= ' ' && c <= '~') << address << '-' << data;
            ASSERT_LE(text.size(), 70U) << address << '-' << data;
        }
    EXPECT_EQ(empty, (std::map<int, int>{{7, 4}, {80, 16}}));
}

}  // namespace
