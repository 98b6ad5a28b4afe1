#include "timeline/stepping.h"

#include <gtest/gtest.h>

#include "desk.h"

namespace {

using testing_support::Show;
using timeline::TimeField;

const auto kMinutes = TimeField::Minutes;
const auto kSeconds = TimeField::Seconds;
const auto kTenths = TimeField::Tenths;
const auto kAll = TimeField::WholeRange;

struct Row {
    const char* name;
    std::int32_t now;
    TimeField field;
    timeline::StepMode mode;
    std::int32_t down;
    std::int32_t up;
};

template <std::size_t N>
void ExpectSteps(const document::Choreography& show, const Row (&rows)[N])
{
    for (const Row& row : rows) {
        const document::Position position{row.now, 0};
        EXPECT_EQ(timeline::StepTimeDown(show, position, row.field, row.mode), row.down)
            << row.name;
        EXPECT_EQ(timeline::StepTimeUp(show, position, row.field, row.mode), row.up) << row.name;
    }
}

// clang-format off
TEST(Stepping, ByTheClock)
{
    ExpectSteps(Show({{1000, "001-017"}}), {
        {"tenths",                    500,       kTenths,  {1, false},  400,       600},
        {"seconds, Shift",            5'000,     kSeconds, {2, false},  3'000,     7'000},
        {"seconds, Ctrl",             5'000,     kSeconds, {5, false},  0,         10'000},
        {"minutes, Alt",              700'000,   kMinutes, {10, false}, 100'000,   1'300'000},
        {"not below 0",               400,       kSeconds, {1, false},  0,         1'400},
        {"from 0",                    0,         kMinutes, {1, false},  0,         60'000},
        {"one short of the limit",    5'399'800, kTenths,  {1, false},  5'399'700, 5'399'900},
        {"onto the limit",            5'399'900, kTenths,  {1, false},  5'399'800, 5'399'999},
        {"over the limit",            5'370'000, kMinutes, {1, false},  5'310'000, 5'399'999},
        {"the whole range",           3'000,     kAll,     {1, false},  0,         6'000},
    });
}

TEST(Stepping, ByCommands)
{
    ExpectSteps(Show({{1000, "001-017"}, {2000, "001-018"}, {5000, "001-019"}}), {
        {"between two",               1'500, kTenths,  {1, true},  1'000, 2'000},
        {"at one",                    2'000, kTenths,  {1, true},  1'000, 5'000},
        {"the unit plays no part",    2'000, kMinutes, {10, true}, 1'000, 5'000},
        {"before the first",          500,   kTenths,  {1, true},  400,   1'000},
        {"before the first, clamped", 500,   kSeconds, {1, true},  0,     1'000},
        {"at the last",               5'000, kTenths,  {1, true},  2'000, 5'399'999},
        {"behind the last",           9'000, kTenths,  {1, true},  5'000, 5'399'999},
        {"first and last",            3'000, kAll,     {1, true},  1'000, 5'000},
    });
    ExpectSteps({}, {
        {"no commands",               3'000, kTenths,  {1, true},  2'900, 5'399'999},
        {"no first, no last",         3'000, kAll,     {1, true},  0,     6'000},
        {"from 0",                    0,     kAll,     {1, true},  0,     0},
    });
    ExpectSteps(Show({{5'500'000, "001-017"}}), {
        {"a last one out of reach",   0,     kAll,     {1, true},  5'500'000, 5'399'999},
    });
}
// clang-format on

}  // namespace
