#include "timeline/strip.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "desk.h"

namespace {

using testing_support::Show;
using timeline::StripTicks;
using timeline::StripView;

constexpr std::int32_t kLength = 240'000;

StripView ViewOf(std::int32_t length, int width)
{
    StripView view;
    view.SetWidth(width);
    view.SetLength(length);
    return view;
}

StripTicks TicksOf(const document::Choreography& show)
{
    StripTicks ticks;
    EXPECT_TRUE(ticks.Read(show));
    return ticks;
}

TEST(StripView, MapsBothEndsThereAndBack)
{
    const struct {
        const char* name;
        std::int32_t length;
        int width;
        std::int32_t shownLength;
    } cases[] = {
        {"a piece", 240'000, 1024, 240'000}, {"ninety minutes", 5'400'000, 2560, 5'400'000},
        {"nothing at all", 0, 1024, 1'000},  {"one second", 1'000, 1, 1'000},
        {"no width", 240'000, 0, 240'000},
    };
    for (const auto& c : cases) {
        const StripView view = ViewOf(c.length, c.width);
        EXPECT_DOUBLE_EQ(view.TimeAt(0), 0) << c.name;
        EXPECT_DOUBLE_EQ(view.TimeAt(view.Width()), c.shownLength) << c.name;
        EXPECT_DOUBLE_EQ(view.PixelOf(c.shownLength), std::max(c.width, 1)) << c.name;
        EXPECT_NEAR(view.PixelOf(view.TimeAt(0.3)), 0.3, 1e-9) << c.name;
    }
}

// Whatever a user does, the view stays within the piece and the pointer on its time.
TEST(StripView, KeepsItsLimitsOnAnyWalk)
{
    std::mt19937 random(7);
    const auto pick = [&random](int count) {
        return std::uniform_int_distribution(0, count - 1)(random);
    };
    StripView view = ViewOf(kLength, 1000);
    for (int step = 0; step < 20'000; ++step) {
        const double x = pick(1001);
        const double before = view.TimeAt(x);
        switch (pick(6)) {
            case 0:
                view.Pan((pick(2001) - 1000) * view.Span() / 500);
                break;
            case 1:
                view.Reveal(pick(kLength));
                break;
            case 2:
                view.SetLength(pick(2 * kLength));
                break;
            case 3:
                view.ShowAll();
                break;
            default:
                view.ZoomAround(x, std::pow(1.5, pick(7) - 3));
                if (view.First() > 0 && view.First() + view.Span() < view.Length()) {
                    ASSERT_NEAR(view.TimeAt(x), before, 1e-6) << "step " << step;
                }
        }
        ASSERT_GE(view.First(), 0) << "step " << step;
        ASSERT_LE(view.First() + view.Span(), view.Length() + 1e-6) << "step " << step;
        ASSERT_GE(view.Span(), timeline::kStripLeastSpan) << "step " << step;
    }
}

TEST(StripView, ZoomsFromTheWholePieceToOneSecond)
{
    StripView view = ViewOf(kLength, 1000);
    view.ZoomAround(250, 1e-9);
    EXPECT_DOUBLE_EQ(view.Span(), 1'000);
    EXPECT_DOUBLE_EQ(view.TimeAt(250), 60'000);
    view.ZoomAround(250, 1e9);
    EXPECT_DOUBLE_EQ(view.Span(), kLength);
    EXPECT_DOUBLE_EQ(view.First(), 0);
}

TEST(StripView, TurnsPages)
{
    const struct {
        const char* name;
        double first;
        std::int32_t time;
        double after;
    } cases[] = {
        {"seen already, at the left edge", 20'000, 20'000, 20'000},
        {"seen already, at the right edge", 20'000, 29'999, 20'000},
        {"one step beyond the right edge", 20'000, 30'000, 29'500},
        {"one step before the left edge", 20'000, 19'999, 10'499},
        {"a leap back", 200'000, 30'000, 29'500},
        {"at the very end", 20'000, kLength - 1, kLength - 10'000},
        {"at the very start", 20'000, 0, 0},
    };
    for (const auto& c : cases) {
        StripView view = ViewOf(kLength, 1000);
        view.ZoomAround(0, 10'000.0 / kLength);
        view.Pan(c.first);
        view.Reveal(c.time);
        EXPECT_NEAR(view.First(), c.after, 1e-6) << c.name;
    }
}

TEST(StripView, GrowsWithThePieceOnlyWhileItShowsAll)
{
    StripView view = ViewOf(kLength, 1000);
    view.SetLength(kLength + 60'000);
    EXPECT_DOUBLE_EQ(view.Span(), kLength + 60'000);
    view.ZoomAround(1000, 0.1);
    view.SetLength(2 * kLength);
    EXPECT_DOUBLE_EQ(view.Span(), (kLength + 60'000) / 10.0);
    view.SetLength(10'000);
    EXPECT_DOUBLE_EQ(view.Span(), 10'000);
    EXPECT_DOUBLE_EQ(view.First(), 0);
}

TEST(StripKinds, TellWhatATimeDrives)
{
    using enum timeline::StripKind;
    using timeline::StripKindsOf;
    const struct {
        const char* name;
        std::string commands;
        int kinds;
    } cases[] = {
        {"a ring", "001-017", kWaterKind},
        {"the voice", "054-001", kWaterKind},
        {"the multi-valve", "048-001", kWaterKind},
        {"module lights", "017-001", kLightsKind},
        {"timed light movement", "085-017", kLightsKind},
        {"sweep motion", "033-097", kMotionKind},
        {"sweep pulsation", "069-064", kMotionKind},
        {"a reset", "099-000", kResetKind},
        {"the operator's number", "000-018", kOtherKind},
        {"an address that drives nothing", "200-001", kOtherKind},
        {"no command", "", kOtherKind},
        {"a copy of water", "080-017", kWaterKind},
        {"a copy of lights", "080-018", kLightsKind},
        {"a copy of both", "080-019", kWaterKind | kLightsKind},
        {"a copy of nothing", "080-016", kOtherKind},
        {"several", "099-000 001-017 017-001 033-097",
         kResetKind | kWaterKind | kLightsKind | kMotionKind},
    };
    for (const auto& c : cases)
        EXPECT_EQ(StripKindsOf(testing_support::Packed(c.commands)), c.kinds) << c.name;
    const document::Commands ring = testing_support::Packed("001-017");
    document::Commands eleven;
    for (int k = 0; k < 11; ++k)
        eleven += ring;
    EXPECT_EQ(StripKindsOf(eleven), kWaterKind) << "eleven commands";
    EXPECT_EQ(StripKindsOf(eleven + ring), kWaterKind | kTooManyKind) << "twelve commands";
}

TEST(StripTicks, SayWhetherAnEditShows)
{
    auto show = Show({{1000, "001-017"}, {2500, "002-017"}});
    StripTicks ticks = TicksOf(show);
    document::StoreCommands(show, 0, testing_support::Packed("001-020"));
    EXPECT_FALSE(ticks.Read(show)) << "another level of the same ring";
    document::StoreCommands(show, 0, testing_support::Packed("017-001"));
    EXPECT_TRUE(ticks.Read(show)) << "lights instead of water";
    document::ShiftSlots(show, 1, 100);
    EXPECT_TRUE(ticks.Read(show)) << "a shift";
    document::EraseSlot(show, 1);
    EXPECT_TRUE(ticks.Read(show)) << "one time less";
    EXPECT_EQ(ticks.LastTime(), 1000);
}

TEST(StripTicks, ArePointedAt)
{
    // 100 ms a pixel: the ticks are at pixels 100, 102, 250 and 2399.
    const auto show =
        Show({{10'000, "001-017"}, {10'200, "001-018"}, {25'000, "002-017"}, {239'900, "003-017"}});
    const StripTicks ticks = TicksOf(show);
    const StripView view = ViewOf(kLength, 2400);
    const struct {
        const char* name;
        double x;
        int tick;
    } cases[] = {
        {"upon it", 250, 2},
        {"three pixels left", 247, 2},
        {"four pixels left", 246, -1},
        {"right of it", 253, 2},
        {"nearer to the left", 100.6, 0},
        {"nearer to the right", 101.9, 1},
        {"at the right edge", 2400, 3},
        {"left of everything", 0, -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ticks.Near(view, c.x, 3), c.tick) << c.name;
    EXPECT_EQ(StripTicks{}.Near(view, 0, 3), -1) << "no ticks";
}

TEST(StripTicks, ChooseTheTenthUnderThePointer)
{
    const auto show = Show({{10'300, "001-017"}, {10'400, "001-018"}, {250'000, "002-017"}});
    const StripTicks ticks = TicksOf(show);
    const struct {
        const char* name;
        std::int32_t length;
        int width;
        double x;
        std::int32_t tenth;
    } cases[] = {
        {"a pixel a tenth", 240'000, 2400, 103.9, 10'300},
        {"the tenth before a tick", 240'000, 2400, 102.9, 10'200},
        {"several pixels a tenth", 10'000, 1000, 19.9, 100},
        {"a second a pixel, a tick in it", 240'000, 240, 10, 10'300},
        {"a second a pixel, no tick in it", 240'000, 240, 11, 11'000},
        {"the last pixel", 240'000, 240, 239.9, 239'900},
        {"beyond the right edge", 240'000, 240, 500, 239'900},
        {"beyond the left edge", 240'000, 240, -5, 0},
        {"beyond the last time to go to", 7'000'000, 7000, 6900, 5'399'900},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ticks.TenthAt(ViewOf(c.length, c.width), c.x), c.tenth) << c.name;
}

// Every column holds what falls into it, at any zoom, and nothing else.
TEST(StripTicks, FillTheColumnsOfAnyView)
{
    std::mt19937 random(11);
    const auto pick = [&random](int count) {
        return std::uniform_int_distribution(0, count - 1)(random);
    };
    std::vector<std::pair<std::int32_t, std::string>> slots;
    const std::string lists[] = {"001-017", "017-001", "033-097", "099-000", "001-017 017-001"};
    for (std::int32_t time = 0; time < kLength; time += 100 * (1 + pick(40)))
        slots.emplace_back(time, lists[pick(5)]);
    document::Choreography show;
    for (const auto& [time, commands] : slots)
        document::InsertSlot(show, show.lngLastSlot(), time, testing_support::Packed(commands));
    const StripTicks ticks = TicksOf(show);
    for (int round = 0; round < 200; ++round) {
        StripView view = ViewOf(kLength, 400);
        view.ZoomAround(pick(401), std::pow(0.5, pick(9)));
        const int columns = 400 * (1 + pick(2));
        const int wide =
            static_cast<int>(std::lround(timeline::TickWidth(view) * columns / view.Width()));
        std::vector<std::uint8_t> expected(static_cast<std::size_t>(columns));
        for (const auto& [time, commands] : slots)
            for (int i = 0; i < wide; ++i) {
                const double x = std::floor(view.PixelOf(time) * columns / view.Width()) + i;
                if (x >= 0 && x < columns)
                    expected[static_cast<std::size_t>(x)] |=
                        timeline::StripKindsOf(testing_support::Packed(commands));
            }
        ASSERT_EQ(ticks.Columns(view, columns), expected) << "round " << round;
    }
}

TEST(StripLength, LeavesNothingOutOfReach)
{
    const struct {
        const char* name;
        std::int32_t length, last, time, shown;
    } cases[] = {
        {"the music", 93'000, 92'300, 0, 93'000},
        {"a command at the very end", 93'000, 93'000, 0, 93'100},
        {"commands behind the music", 93'000, 120'000, 0, 120'100},
        {"the time is behind all", 93'000, 120'000, 125'000, 130'000},
        {"nothing but the start", 0, -1, 0, 10'000},
    };
    for (const auto& c : cases)
        EXPECT_EQ(timeline::StripLength(c.length, c.last, c.time), c.shown) << c.name;
}

TEST(RulerStep, IsAsFineAsItsLabelsLetIt)
{
    const struct {
        const char* name;
        std::int32_t span;
        int width;
        std::int32_t major;
    } cases[] = {
        {"one second on a wide screen", 1'000, 2560, 100},
        {"one second on a narrow one", 1'000, 300, 500},
        {"a minute and a half", 93'000, 1024, 10'000},
        {"ninety minutes", 5'400'000, 1024, 600'000},
        {"hardly any room", 5'400'000, 40, 3'600'000},
    };
    for (const auto& c : cases) {
        const timeline::RulerStep step = timeline::RulerStepOf(ViewOf(c.span, c.width), 80);
        EXPECT_EQ(step.major, c.major) << c.name;
        EXPECT_EQ(step.major % step.minor, 0) << c.name;
    }
}

}  // namespace
