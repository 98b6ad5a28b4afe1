#include "timeline/shift.h"

#include <gtest/gtest.h>

#include <string>

#include "desk.h"
#include "timeline/marks.h"

namespace {

using testing_support::Show;
using timeline::Marks;
using timeline::ShiftPanel;

TEST(ShiftPanel, OpensWhereCommandsLieWithItsLimits)
{
    const auto show = Show({{1000, "001-017"}, {2500, "002-017"}, {60'000, "003-017"}});
    const struct {
        const char* name;
        std::int32_t time;
        ShiftPanel panel;
    } cases[] = {
        {"no commands there", 1100, {}},
        {"before the first", 0, {}},
        {"the first may go to 0", 1000, {true, 0, 1000, 1000, 0, 5'339'900}},
        {"behind its predecessor", 2500, {true, 1, 2500, 2500, 1100, 5'339'900}},
        {"the last", 60'000, {true, 2, 60'000, 60'000, 2600, 5'339'900}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(timeline::OpenedShiftPanel(show, c.time), c.panel) << c.name;
    EXPECT_EQ(timeline::OpenedShiftPanel({}, 0), ShiftPanel{}) << "empty choreography";
}

TEST(ShiftPanel, PressesKeepWithinTheLimits)
{
    const struct {
        const char* name;
        std::int32_t from;
        int index;
        int direction;
        std::int32_t to;
    } cases[] = {
        {"tenth up", 2500, 2, +1, 2600},
        {"second down", 2500, 1, -1, 1500},
        {"minute up", 2500, 0, +1, 62'500},
        {"down to the lower limit", 1500, 1, -1, 1100},
        {"no further down", 1100, 2, -1, 1100},
        {"up to the upper limit", 89'950, 1, +1, 90'000},
        {"no further up", 90'000, 2, +1, 90'000},
        {"an up press above the limit lowers nothing", 95'000, 0, +1, 95'000},
    };
    for (const auto& c : cases) {
        ShiftPanel panel{true, 1, 2500, c.from, 1100, 90'000};
        timeline::PressShiftTime(panel, c.index, c.direction);
        EXPECT_EQ(panel.newTime, c.to) << c.name;
    }
}

TEST(ShiftPanel, SaysTheShiftInWords)
{
    const struct {
        std::int32_t amount;
        const char* text;
    } cases[] = {
        {0, "no shifting"},
        {100, "shift upward 0.1 seconds"},
        {-2500, "shift downward 2.5 seconds"},
        {60'000, "shift upward 1 minute 0.0 seconds"},
        {65'000, "shift upward 1 minute 5.0 seconds"},
        {150'000, "shift upward 2 minutes 30.0 seconds"},
        {-119'900, "shift downward 1 minute 59.9 seconds"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(timeline::ShiftText(c.amount), c.text);
}

TEST(ShiftPanel, MovesItsSlotAndAllBehindIt)
{
    auto show = Show({{1000, "001-017"}, {2500, "099-000"}, {4000, "003-017"}});
    ShiftPanel panel = timeline::OpenedShiftPanel(show, 2500);
    EXPECT_FALSE(timeline::ApplyShift(show, panel));
    EXPECT_FALSE(show.blnChanged) << "a shift of nothing";
    panel.newTime = 1100;
    EXPECT_TRUE(timeline::ApplyShift(show, panel));
    EXPECT_TRUE(show.blnChanged);
    EXPECT_EQ(show.lngTime, (std::vector{1000, 1100, 2600, document::kEndSentinel}));
    EXPECT_EQ(show.blnReset, (std::vector<std::uint8_t>{0, 1, 0, 0}));
}

std::string TextOf(const Marks& marks)
{
    std::string text;
    for (std::size_t k = 0; k < marks.tenths.size(); ++k)
        text += (static_cast<std::int32_t>(k) == marks.selected ? "[" : " ") +
                timeline::MarkText(marks.tenths[k]);
    return text;
}

TEST(Marks, StaySortedAndNoneStandsTwice)
{
    Marks marks;
    const struct {
        const char* name;
        std::int32_t time;
        const char* list;
    } adds[] = {
        {"the first is not selected", 123'456, " 01234"},
        {"behind it", 200'000, " 01234 02000"},
        {"the same tenth again selects it", 123'400, "[01234 02000"},
        {"ahead of the selected one", 0, " 00000[01234 02000"},
        {"beyond five digits", 10'000'000, " 00000[01234 02000 100000"},
    };
    for (const auto& add : adds) {
        timeline::AddMark(marks, add.time);
        EXPECT_EQ(TextOf(marks), add.list) << add.name;
    }
    EXPECT_EQ(marks.SelectedTime(), 123'400);
}

TEST(Marks, NextAndPreviousStopAtTheEnds)
{
    Marks marks{{10, 20}, -1};
    const auto selected = [&marks](void (*step)(Marks&)) {
        step(marks);
        return marks.selected;
    };
    EXPECT_EQ(selected(timeline::SelectNext), 0) << "none selected: the first";
    EXPECT_EQ(selected(timeline::SelectNext), 1);
    EXPECT_EQ(selected(timeline::SelectNext), 1) << "the last is visited again";
    EXPECT_EQ(selected(timeline::SelectPrevious), 0);
    EXPECT_EQ(selected(timeline::SelectPrevious), 0);
    marks.selected = -1;
    EXPECT_EQ(selected(timeline::SelectPrevious), 0) << "none selected: the first";
}

}  // namespace
