#include "timeline/script.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "document/control_text.h"
#include "document/time_text.h"

namespace {

using document::Choreography;

Choreography Read(const std::string& lines)
{
    Choreography choreography;
    document::ReadControlText(choreography, "ct0-381\n" + lines);
    return choreography;
}

/// `count` times, a second apart, of one command each: two lines of the script.
Choreography ManyTimes(int count)
{
    std::string lines;
    for (int k = 0; k < count; ++k)
        lines += document::TimeText(k * 1000) + "051-00" + std::to_string(1 + k % 7) + "\n";
    return Read(lines);
}

/// Keeps the pages that are printed; bold lines begin with a star.
struct PagePrinter final : timeline::Printer {
    std::vector<std::vector<std::string>> pages{1};
    std::string font;
    bool bold = false;
    int ended = 0;
    int abandoned = 0;

    void SetFont(std::string_view name, int size) override
    {
        font = std::string(name) + ' ' + std::to_string(size);
    }
    void SetBold(bool on) override { bold = on; }
    void PrintText(std::string_view text) override
    {
        pages.back().push_back((bold ? "*" : "") + std::string(text));
    }
    void NewPage() override { pages.emplace_back(); }
    void EndDocument() override { ++ended; }
    void AbandonDocument() override { ++abandoned; }
};

bool Print(const Choreography& choreography, PagePrinter& printer)
{
    return timeline::ScriptPrint(choreography, "DATE", printer, [] {}).PrintScript();
}

TEST(PrintScript, PrintsHeaderTimesAndCommands)
{
    PagePrinter printer;
    ASSERT_TRUE(Print(Read("00:00.0099-000 051-001\n01:05.3048-001\n"), printer));
    EXPECT_EQ(printer.font, "Courier New 10");
    EXPECT_EQ(printer.ended, 1);
    EXPECT_EQ(printer.abandoned, 0);
    EXPECT_FALSE(timeline::gblnPrint);
    const std::vector<std::string> expected{
        "*unsaved choreography",
        "*DATE",
        "*Page 1",
        "*",
        "*",
        "00:00.0  099-000  Reset Fountain",
        "         051-001  Turn Group A and Group B red lights on",
        "",
        "01:05.3  048-001  Move Multi-Valve to level 1",
        ""};
    EXPECT_EQ(printer.pages, (std::vector<std::vector<std::string>>{expected}));
}

TEST(PrintScript, PrintsTheTwelfthCommandOfATimeAndLaterOnesBold)
{
    PagePrinter printer;
    ASSERT_TRUE(Print(Read("00:01.0001-017 002-017 003-017 004-017 005-017 006-017 008-017 "
                           "017-001 018-001 019-001 020-001 021-001 022-001\n"),
                      printer));
    const std::vector<std::string>& page = printer.pages.at(0);
    ASSERT_EQ(page.size(), 5U + 13 + 1);
    for (std::size_t command = 1; command <= 13; ++command)
        EXPECT_EQ(page[4 + command].starts_with('*'), command >= 12) << page[4 + command];
    EXPECT_EQ(page.back(), "");
}

// A page holds 61 lines under its header; when the last one is full, the next page has begun.
TEST(PrintScript, FillsEveryPageWith66Lines)
{
    struct Row {
        int times;
        std::vector<std::size_t> pages;
    };
    const Row rows[] = {{0, {5}},           {1, {7}},          {30, {65}},           {31, {66, 6}},
                        {50, {66, 5 + 39}}, {61, {66, 66, 5}}, {92, {66, 66, 66, 6}}};
    for (const auto& [times, sizes] : rows) {
        PagePrinter printer;
        ASSERT_TRUE(Print(ManyTimes(times), printer));
        std::vector<std::size_t> printed;
        for (std::size_t page = 0; page < printer.pages.size(); ++page) {
            printed.push_back(printer.pages[page].size());
            EXPECT_EQ(printer.pages[page].at(2), "*Page " + std::to_string(page + 1));
        }
        EXPECT_EQ(printed, sizes) << times;
    }
}

TEST(PrintScript, EventsRunAfterEveryLineAndMayCancel)
{
    for (const int cancelAt : {1, 2, 40}) {
        PagePrinter printer;
        int runs = 0;
        const Choreography choreography = ManyTimes(100);
        timeline::ScriptPrint print(choreography, "DATE", printer, [&] {
            if (++runs == cancelAt)
                timeline::gblnPrint = false;
        });
        EXPECT_FALSE(print.PrintScript());
        EXPECT_EQ(runs, cancelAt);
        EXPECT_EQ(printer.ended, 0);
        EXPECT_EQ(printer.abandoned, 1);
        EXPECT_FALSE(timeline::gblnPrint);
    }
}

TEST(PrintScript, SurvivesAChoreographyThatShrinksMeanwhile)
{
    Choreography choreography = ManyTimes(100);
    PagePrinter printer;
    int runs = 0;
    EXPECT_TRUE(timeline::ScriptPrint(choreography, "DATE", printer, [&] {
                    if (++runs == 10)
                        choreography = ManyTimes(3);
                }).PrintScript());
    EXPECT_EQ(printer.pages.at(0).size(), 5U + 9 * 2);
}

TEST(ScriptText, HasTheLinesWithoutPages)
{
    EXPECT_EQ(timeline::ScriptText(Read("00:00.0099-000 051-001\n")),
              "00:00.0  099-000  Reset Fountain\n"
              "         051-001  Turn Group A and Group B red lights on\n"
              "\n");
    EXPECT_EQ(timeline::ScriptText(Read("")), "");
}

TEST(ScriptDate, CountsHoursInTwoHalves)
{
    EXPECT_EQ(timeline::ScriptDate(2026, 3, 7, 0, 5, 9), "3/7/2026 at 12:05:09AM");
    EXPECT_EQ(timeline::ScriptDate(2026, 11, 21, 11, 59, 59), "11/21/2026 at 11:59:59AM");
    EXPECT_EQ(timeline::ScriptDate(2026, 12, 31, 12, 0, 0), "12/31/2026 at 12:00:00PM");
    EXPECT_EQ(timeline::ScriptDate(2026, 1, 1, 23, 30, 1), "1/1/2026 at 11:30:01PM");
}

}  // namespace
