#include "document/time_text.h"

#include <gtest/gtest.h>

namespace {

TEST(TimeText, RoundsHalfUpAndReadoutTruncates)
{
    const struct {
        std::int32_t time;
        const char* text;
        const char* readout;
    } cases[] = {
        {0, "00:00.0", "00:00.0"},         {49, "00:00.0", "00:00.0"},
        {50, "00:00.1", "00:00.0"},        {7340, "00:07.3", "00:07.3"},
        {9949, "00:09.9", "00:09.9"},      {9950, "00:10.0", "00:09.9"},
        {59949, "00:59.9", "00:59.9"},     {59950, "00:60.0", "00:59.9"},
        {60000, "01:00.0", "01:00.0"},     {3723400, "62:03.4", "62:03.4"},
        {5999900, "99:59.9", "99:59.9"},   {6000000, "100:00.0", "100:00.0"},
        {7199999, "119:60.0", "119:59.9"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(document::TimeText(c.time), c.text) << c.time;
        EXPECT_EQ(document::ReadoutText(c.time), c.readout) << c.time;
    }
}

TEST(FieldValue, ReadsUpToTheFirstCharacterThatIsNoDigit)
{
    const struct {
        std::string_view field;
        std::int32_t value;
    } cases[] = {
        {"007", 7},
        {"", 0},
        {"   ", 0},
        {" 1 2", 12},
        {"1x2", 1},
        {"-12", 0},
        {"+12", 0},
        {"1\t2", 1},
        {"\xB2\xB3", 0},
        {"0x1", 0},
        {"1.5", 1},
        {"999", 999},
        {"123456789", 123456789},
        {"1234567890", 123456789},
        {std::string_view("1\0002", 3), 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(document::FieldValue(c.field), c.value) << c.field;
}

TEST(SecondsFieldValue, AllowsOnePoint)
{
    const struct {
        std::string_view field;
        std::int32_t value;
    } cases[] = {
        {"07.5", 7500}, {"60.0", 60000}, {"7.34", 7340}, {".123", 123}, {"1234", 1234000},
        {"12.", 12000}, {"1..5", 1000},  {".", 0},       {"", 0},       {" 7.5", 7500},
        {"7 .5", 7500}, {"7,50", 7000},  {"x7.5", 0},    {"-7.5", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(document::SecondsFieldValue(c.field), c.value) << c.field;
}

TEST(TimeText, ReadsBackAtEveryTenth)
{
    for (std::int32_t time = 0; time < 6'000'000; time += 100) {
        const std::string text = document::TimeText(time);
        ASSERT_EQ(document::FieldValue(text.substr(0, 2)) * 60'000 +
                      document::SecondsFieldValue(text.substr(3, 4)),
                  time);
    }
}

}  // namespace
