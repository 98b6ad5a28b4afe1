#include "timeline/check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using timeline::CheckControlText;
using timeline::Finding;
using timeline::Severity;

/// "2! message" for a problem on line 2, "2? message" for a warning.
std::vector<std::string> Findings(const std::string& lines, std::int32_t musicLength = 0)
{
    std::vector<std::string> texts;
    for (const Finding& finding : CheckControlText("ct0-381\n" + lines, musicLength).findings) {
        EXPECT_TRUE(finding.time.empty() || finding.message.starts_with(finding.time + ' '))
            << finding.message;
        texts.push_back(std::to_string(finding.line) +
                        (finding.severity == Severity::Problem ? "! " : "? ") + finding.message);
    }
    return texts;
}

struct Row {
    const char* lines;
    std::vector<std::string> findings;
};

void Expect(const std::vector<Row>& rows)
{
    for (const auto& [lines, findings] : rows)
        EXPECT_EQ(Findings(lines), findings) << lines;
}

TEST(Check, FindsNothingInASoundShow)
{
    Expect({{"", {}},
            {"\n  \n", {}},
            {"00:00.0099-000 000-010\r\n00:01.0003-021 033-097\r\n00:02.0033-000 003-016", {}},
            {"00:00.0003-080\n00:01.0003-000 009-101\n00:02.0009-021\n", {}},
            {"00:60.0051-001 \n", {}}});
}

TEST(Check, FindsLinesThatCannotBeRead)
{
    const std::string expected = "; expected a time and its commands, as in 00:05.0099-000 020-007";
    Expect(
        {{"foo\n", {"2! unreadable line \"foo\"" + expected}},
         {"a\tb\x80\n", {"2! unreadable line \"a?b?\"" + expected}},
         {"00:05.0\n", {"2! 00:05.0 has no commands and is left out; remove the line"}},
         {"100:00.0003-020\n",
          {"2! 10:00.0 is what is read from the unreadable line \"100:00.0003-020\"" + expected,
           "2? 10:00.0 comes more than two minutes after the last reset (00:00.0), and moving "
           "back is slow there; add a reset (099-000) in between"}},
         {"00:05.0051-001  \n",
          {"2! 00:05.0 is what is read from the unreadable line \"00:05.0051-001  \"" + expected}},
         {"99:60.0051-001\n", {"2! 100:00.0 is left out; times end at 99:59.9"}}});
}

TEST(Check, FindsCommandsThatCannotBeReadOrMeanNothing)
{
    Expect({{"00:05.0300-001 051-001\n", {"2! 00:05.0 300-001 is left out; addresses end at 255"}},
            {"00:05.0256-001\n", {"2! 00:05.0 256-001 is left out; addresses end at 255"}},
            {"00:05.0051-257\n", {"2! 00:05.0 051-257 is read with data 1; data ends at 255"}},
            {"00:05.0120-001\n",
             {"2! 00:05.0 120-001 goes to an address that drives nothing; remove it"}},
            {"00:05.0003-029\n",
             {"2? 00:05.0 003-029 (Move Ring 3 on Group A to level 5) has data bits without "
              "meaning (8); the data that is left is 21"}},
            {"00:05.0003-023\n",
             {"2? 00:05.0 003-023 (Ring 3 on Group A) asks for level 7, which means nothing; use "
              "0 to 5"}},
            {"00:05.0003-003\n",
             {"2? 00:05.0 003-003 (Move Ring 3 to level 3) selects no group; add 16 for Group A "
              "or 32 for Group B to its data"}},
            {"00:05.0007-003\n",
             {"2? 00:05.0 007-003 (Move  to level 3) selects neither the bazookas nor the "
              "spout; add 16 or 32 to its data"}}});
}

TEST(Check, CountsTheCommandsOfATime)
{
    const std::string eleven =
        "001-017 002-017 003-017 004-017 005-017 006-017 008-017 017-001 018-001 019-001 020-001";
    Expect({{("00:05.0" + eleven + "\n").c_str(), {}},
            {("00:05.0" + eleven + " 021-001\n").c_str(),
             {"2! 00:05.0 holds 12 commands, at most 11 fit"}},
            {("00:05.0" + eleven + "\n00:05.0021-001\n").c_str(),
             {"3? 00:05.0 stands in the file already; write its commands on one line",
              "3! 00:05.0 holds 12 commands, at most 11 fit"}}});
}

TEST(Check, FindsTimesOutOfOrder)
{
    Expect({{"00:05.0051-001\n00:03.0051-002\n",
             {"3? 00:03.0 is out of order; put the line in order of time"}},
            {"00:02.0051-001\n00:05.0051-004\n00:03.0054-001\n",
             {"4? 00:03.0 is out of order, so the commands of 00:02.0 are moved here; put the "
              "line in order of time"}}});
}

TEST(Check, FindsCommandsThatAreDropped)
{
    Expect({{"00:05.0020-001 020-007\n",
             {"2? 00:05.0 020-001 (Turn Module 4 red lights on) is dropped, a later 020-007 takes "
              "its place; remove one of them"}},
            {"00:05.0020-007 020-007\n00:06.0003-017 003-033\n", {}},
            {"00:05.0099-000 080-017\n",
             {"2? 00:05.0 080-017 (Copy water from Group A to Group B) is dropped, it cannot stand "
              "here; remove it"}},
            {"00:05.0003-016 051-001\n",
             {"2? 00:05.0 003-016 (Drop Ring 3 on Group A) is dropped, nothing is on that it could "
              "switch off; remove it"}},
            {"00:05.0034-065\n00:06.0033-000\n", {}}});
}

TEST(Check, FindsDevicesThatFightAndThingsThatNeverEnd)
{
    Expect({{"00:05.0009-101 009-037\n",
             {"2? 00:05.0 raises the Peacock and the Back Curtain together, and one takes the "
              "other down; leave one of them out"}},
            {"00:05.0009-117\n",
             {"2? 00:05.0 raises the Peacock and the Front Curtain together, and one takes the "
              "other down; leave one of them out"}},
            {"00:05.0009-101\n00:06.0009-037\n", {}},
            {"00:05.0008-085\n",
             {"2? 00:05.0 joins the groups of the Candelabras for good; end the joining (008-000) "
              "or reset"}},
            {"00:01.0034-097\n00:02.0034-000\n00:03.0033-033\n00:04.0033-065\n",
             {"4? 00:03.0 starts a Sweep motion that still runs at the end; stop it (033-000) or "
              "reset"}},
            {"00:01.0006-021 069-016\n00:02.0085-097\n00:03.0099-000\n00:04.0006-021 069-016\n",
             {"5? 00:04.0 starts a Sweep pulsation that still runs at the end; stop it (069-000) "
              "or reset"}},
            {"00:02.0051-001 085-097\n",
             {"2? 00:02.0 starts a light movement that still runs at the end; stop it (085-000) "
              "or reset"}}});
}

TEST(Check, FindsLongStretchesWithoutAReset)
{
    const std::string fix = "), and moving back is slow there; add a reset (099-000) in between";
    Expect({{"02:00.0051-001\n", {}},
            {"02:00.1051-001\n03:00.0051-002\n",
             {"2? 02:00.1 comes more than two minutes after the last reset (00:00.0" + fix}},
            {"01:00.0099-000\n03:00.0099-000\n06:00.0051-001\n06:01.0099-000\n08:02.0051-001\n",
             {"4? 06:00.0 comes more than two minutes after the last reset (03:00.0" + fix,
              "6? 08:02.0 comes more than two minutes after the last reset (06:01.0" + fix}}});
}

TEST(Check, FindsTimesBehindTheMusic)
{
    const std::string lines = "00:01.0051-001\n00:02.0051-002\n00:02.1051-003\n";
    EXPECT_EQ(Findings(lines, 2'000),
              (std::vector<std::string>{
                  "4? 00:02.1 lies behind the end of the music (00:02.0); move or remove it"}));
    EXPECT_EQ(Findings(lines, 500).size(), 3U);
    EXPECT_TRUE(Findings(lines, 0).empty());
}

// Whatever the bytes are, every finding names a line of the file and is one line of plain text.
TEST(Check, SurvivesEveryKindOfRubbish)
{
    std::mt19937 random(7);
    const std::string alphabet =
        "0123456789:.- \n\r\tab9\x80\0"
        "099-000 003-021 080-017 ";
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (int k = 0; k < 600; ++k)
            text += alphabet[random() % alphabet.size()];
        const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
        for (const Finding& finding : CheckControlText(text, 1'000).findings) {
            ASSERT_GE(finding.line, 1);
            ASSERT_LE(finding.line, lines);
            for (const char c : finding.message)
                ASSERT_TRUE(c >= ' ' && c <= '~') << finding.message;
        }
    }
}

}  // namespace
