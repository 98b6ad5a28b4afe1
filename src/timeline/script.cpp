#include "timeline/script.h"

#include <utility>

#include "document/time_text.h"
#include "fountain/describe.h"

namespace timeline {

bool gblnPrint = false;

namespace {

constexpr std::string_view kTimeGap = "  ";
constexpr std::string_view kNoTime = "         ";
constexpr std::string_view kCodesGap = "  ";

// Command `k`, counted from 0; the first carries the time.
std::string ScriptLine(std::int32_t time, std::string_view commands, int k)
{
    std::string line = k == 0 ? document::TimeText(time).append(kTimeGap) : std::string(kNoTime);
    const document::Command command = document::CommandAt(commands, k);
    line += document::CommandText(commands.substr(static_cast<std::size_t>(k) * 2, 2));
    line += kCodesGap;
    return line += fountain::DescribeCommand(command.address, command.data);
}

std::string TwoDigits(int value)
{
    return std::to_string(100 + value).substr(1);
}

}  // namespace

ScriptPrint::ScriptPrint(const document::Choreography& choreography, std::string date,
                         Printer& printer, std::function<void()> letEventsRun)
    : choreography_(choreography),
      date_(std::move(date)),
      printer_(printer),
      letEventsRun_(std::move(letEventsRun))
{
}

bool ScriptPrint::PrintScript()
{
    gblnPrint = true;
    letEventsRun_();
    printer_.SetFont(kScriptFont, kScriptFontSize);
    PrintHeader();
    // The events that run in between may change the choreography, so it is asked anew every time.
    for (std::int32_t slot = 0; gblnPrint && slot < choreography_.lngLastSlot(); ++slot) {
        const auto at = static_cast<std::size_t>(slot);
        const document::Commands commands = choreography_.strCommands[at];
        PrintTime(choreography_.lngTime[at], commands);
    }
    const bool sent = std::exchange(gblnPrint, false);
    sent ? printer_.EndDocument() : printer_.AbandonDocument();
    return sent;
}

void ScriptPrint::PrintTime(std::int32_t time, const document::Commands& commands)
{
    for (int k = 0; gblnPrint && k < document::CommandCount(commands); ++k) {
        PrintLine(ScriptLine(time, commands, k), k >= document::kMostCommands);
        letEventsRun_();
    }
    PrintLine("", false);
}

void ScriptPrint::PrintHeader()
{
    if (page_ > 0)
        printer_.NewPage();
    ++page_;
    printer_.SetBold(true);
    printer_.PrintText(document::ControlFileCaption(choreography_));
    printer_.PrintText(date_);
    printer_.PrintText("Page " + std::to_string(page_));
    printer_.PrintText("");
    printer_.PrintText("");
    printer_.SetBold(false);
    line_ = kScriptHeaderLines;
}

void ScriptPrint::PrintLine(std::string_view text, bool bold)
{
    if (bold)
        printer_.SetBold(true);
    printer_.PrintText(text);
    if (bold)
        printer_.SetBold(false);
    if (++line_ >= kScriptPageLines)
        PrintHeader();
}

std::string ScriptText(const document::Choreography& choreography)
{
    std::string text;
    const auto slots = static_cast<std::size_t>(choreography.lngLastSlot());
    for (std::size_t slot = 0; slot < slots; ++slot) {
        const document::Commands& commands = choreography.strCommands[slot];
        for (int k = 0; k < document::CommandCount(commands); ++k)
            text += ScriptLine(choreography.lngTime[slot], commands, k) += '\n';
        text += '\n';
    }
    return text;
}

std::string ScriptDate(int year, int month, int day, int hour, int minute, int second)
{
    const int hourOfHalf = hour % 12 == 0 ? 12 : hour % 12;
    return std::to_string(month) + '/' + std::to_string(day) + '/' + std::to_string(year) + " at " +
           std::to_string(hourOfHalf) + ':' + TwoDigits(minute) + ':' + TwoDigits(second) +
           (hour < 12 ? "AM" : "PM");
}

}  // namespace timeline
