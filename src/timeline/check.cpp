#include "timeline/check.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "document/command_list.h"
#include "document/merge_key.h"
#include "document/time_text.h"
#include "fountain/describe.h"
#include "timeline/check_command.h"
#include "timeline/check_show.h"

namespace timeline {
namespace {

using document::Command;
using document::Commands;
using document::LineFate;

constexpr std::size_t kTimeWidth = 7;
constexpr std::size_t kCommandWidth = 8;
constexpr std::size_t kMostQuoted = 40;
constexpr std::string_view kExpected =
    "expected a time and its commands, as in 00:05.0099-000 020-007";

// The start of a line with everything that is no plain text replaced.
std::string Quoted(std::string_view line)
{
    std::string quoted = "\"";
    for (const char c : line.substr(0, kMostQuoted))
        quoted += c >= ' ' && c <= '~' ? c : '?';
    return quoted += line.size() > kMostQuoted ? "...\"" : "\"";
}

// '0' stands for any digit.
bool Matches(std::string_view text, std::string_view pattern)
{
    return std::ranges::equal(
        text, pattern, [](char c, char p) { return p == '0' ? c >= '0' && c <= '9' : c == p; });
}

bool IsTime(std::string_view text)
{
    return Matches(text, "00:00.0");
}

bool IsTimeLine(std::string_view line)
{
    if (!IsTime(line.substr(0, kTimeWidth)))
        return false;
    for (std::string_view rest = line.substr(kTimeWidth);; rest.remove_prefix(kCommandWidth)) {
        if (!Matches(rest.substr(0, kCommandWidth - 1), "000-000"))
            return false;
        if (rest.size() <= kCommandWidth)
            return rest.size() < kCommandWidth || rest.back() == ' ';
        if (rest[kCommandWidth - 1] != ' ')
            return false;
    }
}

std::string Named(Command command)
{
    const std::array<char, 2> pair{static_cast<char>(command.address),
                                   static_cast<char>(command.data)};
    return document::CommandText({pair.data(), pair.size()});
}

std::string NamedInWords(Command command)
{
    return Named(command) + " (" + fountain::DescribeCommand(command.address, command.data) + ")";
}

std::vector<Command> CommandsOf(std::string_view packed)
{
    std::vector<Command> commands;
    for (int k = 0; k < document::CommandCount(packed); ++k)
        commands.push_back(document::CommandAt(packed, k));
    return commands;
}

/// Finds what is wrong while the file is read, and remembers from which lines every time came.
class Checker final : public document::ReadListener {
 public:
    void OnLine(const document::LineRead& line) override;

    /// To be called once, when `choreography` has been read.
    std::vector<Finding> Finish(const document::Choreography& choreography,
                                std::int32_t musicLength);

 private:
    struct Line {
        std::int32_t number = 0;
        Commands commands;
    };
    struct Slot {
        std::vector<Line> lines;
        document::ListMerger merger;
    };

    void Add(Severity severity, std::int32_t line, std::string time, const std::string& rest);
    void CheckIgnored(const document::LineRead& line);
    void CheckFields(const document::LineRead& line, const std::string& time);
    void CheckPlace(const document::LineRead& line, const std::string& time);
    void Remember(const document::LineRead& line, const std::string& time);
    void CheckDrops(std::int32_t time, Slot& slot, std::string_view kept);
    void CheckReplaced(const std::string& time, const Slot& slot, std::string_view merged);

    std::vector<Finding> findings_;
    std::map<std::int32_t, Slot> slots_;
};

void Checker::Add(Severity severity, std::int32_t line, std::string time, const std::string& rest)
{
    std::string message = time.empty() ? rest : time + ' ' + rest;
    findings_.push_back({severity, line, std::move(time), std::move(message)});
}

void Checker::OnLine(const document::LineRead& line)
{
    if (line.fate == LineFate::Version)
        return;
    if (line.fate == LineFate::Ignored)
        return CheckIgnored(line);
    const std::string time = document::TimeText(line.time);
    if (!IsTimeLine(line.text)) {
        Add(Severity::Problem, line.number, time,
            "is what is read from the unreadable line " + Quoted(line.text) + "; " +
                std::string(kExpected));
    } else {
        CheckFields(line, time);
    }
    if (line.fate == LineFate::LeftOutLate)
        return Add(Severity::Problem, line.number, time, "is left out; times end at 99:59.9");
    if (line.fate == LineFate::LeftOutFull)
        return Add(Severity::Problem, line.number, time,
                   "is left out; no more than 54,000 times fit");
    if (line.fate == LineFate::Empty)
        return;
    CheckPlace(line, time);
    Remember(line, time);
}

void Checker::CheckIgnored(const document::LineRead& line)
{
    if (line.text.find_first_not_of(' ') == std::string_view::npos)
        return;
    if (IsTime(line.text))
        return Add(Severity::Problem, line.number, std::string(line.text),
                   "has no commands and is left out; remove the line");
    Add(Severity::Problem, line.number, {},
        "unreadable line " + Quoted(line.text) + "; " + std::string(kExpected));
}

// Only on lines that are well formed.
void Checker::CheckFields(const document::LineRead& line, const std::string& time)
{
    for (std::size_t at = kTimeWidth; at < line.text.size(); at += kCommandWidth) {
        const std::string_view field = line.text.substr(at, kCommandWidth - 1);
        const std::int32_t data = document::FieldValue(field.substr(4));
        if (document::FieldValue(field.substr(0, 3)) > 255)
            Add(Severity::Problem, line.number, time,
                std::string(field) + " is left out; addresses end at 255");
        else if (data > 255)
            Add(Severity::Problem, line.number, time,
                std::string(field) + " is read with data " + std::to_string(data % 256) +
                    "; data ends at 255");
    }
    for (const Command command : CommandsOf(line.commands)) {
        const CommandFault fault = FindCommandFault(command);
        if (fault.kind == CommandFault::Kind::None)
            continue;
        const bool unknown = fault.kind == CommandFault::Kind::UnknownAddress;
        Add(unknown ? Severity::Problem : Severity::Warning, line.number, time,
            (unknown ? Named(command) : NamedInWords(command)) + ' ' + fault.text);
    }
}

void Checker::CheckPlace(const document::LineRead& line, const std::string& time)
{
    if (line.fate == LineFate::Merged && line.mergedInto == line.time) {
        Add(Severity::Warning, line.number, time,
            "stands in the file already; write its commands on one line");
    } else if (line.fate == LineFate::Merged) {
        Add(Severity::Warning, line.number, time,
            "is out of order, so the commands of " + document::TimeText(line.mergedInto) +
                " are moved here; put the line in order of time");
    } else if (!slots_.empty() && line.time < slots_.begin()->first) {
        Add(Severity::Warning, line.number, time, "is out of order; put the line in order of time");
    }
}

void Checker::Remember(const document::LineRead& line, const std::string& time)
{
    if (line.fate == LineFate::Merged && line.mergedInto != line.time) {
        auto moved = slots_.extract(line.mergedInto);
        moved.key() = line.time;
        slots_.insert(std::move(moved));
    }
    Slot& slot = slots_[line.time];
    const int count = slot.merger.Count() + document::CommandCount(line.commands);
    if (count > document::kMostCommands)
        Add(Severity::Problem, line.number, time,
            "holds " + std::to_string(count) + " commands, at most " +
                std::to_string(document::kMostCommands) + " fit");
    slot.merger.Add(line.commands);
    slot.lines.push_back({line.number, Commands(line.commands)});
}

// Commands that another one at the same time leaves no room for.
void Checker::CheckReplaced(const std::string& time, const Slot& slot, std::string_view merged)
{
    std::array<std::int16_t, document::kMergeKeys> survivor;
    survivor.fill(-1);
    for (const Command command : CommandsOf(merged))
        survivor[document::MergeKey(command.address, command.data)] = command.data;
    for (const Line& line : slot.lines) {
        for (const Command command : CommandsOf(line.commands)) {
            const int data = survivor[document::MergeKey(command.address, command.data)];
            const bool addsUp =
                document::MergeKindOf(command.address) != document::MergeKind::LastWins ||
                command.address == document::kCopyAddress;
            if (data == command.data ||
                (addsUp && data >= 0 && (data & command.data) == command.data))
                continue;
            Add(Severity::Warning, line.number, time,
                data < 0 ? NamedInWords(command) + " is dropped, it cannot stand here; remove it"
                         : NamedInWords(command) + " is dropped, a later " +
                               Named({command.address, static_cast<std::uint8_t>(data)}) +
                               " takes its place; remove one of them");
        }
    }
}

// `kept` is what the choreography holds at `time`.
void Checker::CheckDrops(std::int32_t time, Slot& slot, std::string_view kept)
{
    const std::string timeText = document::TimeText(time);
    const Commands merged = slot.merger.Take();
    CheckReplaced(timeText, slot, merged);
    if (merged == kept)
        return;
    const std::vector<Command> left = CommandsOf(kept);
    const auto stands = [&left](Command command) {
        return std::ranges::find(left, command) != left.end();
    };
    for (const Command command : CommandsOf(merged)) {
        const bool motionStop =
            (command.address == 33 || command.address == 34) && command.data == 0;
        const auto other = static_cast<std::uint8_t>(67 - command.address);
        if (stands(command) || (motionStop && stands({other, 0})))
            continue;
        const auto line = std::ranges::find_if(slot.lines, [command](const Line& candidate) {
            return document::HasAddress(candidate.commands, command.address);
        });
        Add(Severity::Warning, (line == slot.lines.end() ? slot.lines.front() : *line).number,
            timeText,
            NamedInWords(command) +
                " is dropped, nothing is on that it could switch off; remove it");
    }
}

std::vector<Finding> Checker::Finish(const document::Choreography& choreography,
                                     std::int32_t musicLength)
{
    const auto lineOf = [this](std::int32_t time) {
        const auto slot = slots_.find(time);
        return slot == slots_.end() ? 0 : slot->second.lines.front().number;
    };
    for (auto& [time, slot] : slots_) {
        const std::int32_t index = document::SlotAt(choreography, time);
        CheckDrops(time, slot,
                   index < 0 ? std::string_view()
                             : choreography.strCommands[static_cast<std::size_t>(index)]);
    }
    for (const ShowFault& fault : FindShowFaults(choreography, musicLength)) {
        const std::int32_t time = choreography.lngTime[static_cast<std::size_t>(fault.slot)];
        Add(Severity::Warning, lineOf(time), document::TimeText(time), fault.message);
    }
    std::ranges::stable_sort(findings_, {}, &Finding::line);
    return std::move(findings_);
}

}  // namespace

CheckReport CheckControlFile(const std::filesystem::path& name, std::int32_t musicLength)
{
    CheckReport report;
    Checker checker;
    report.read = document::ReadControlFile(report.choreography, name, &checker);
    report.findings = checker.Finish(report.choreography, musicLength);
    return report;
}

CheckReport CheckControlText(std::string_view text, std::int32_t musicLength)
{
    CheckReport report;
    Checker checker;
    report.read = document::ReadControlText(report.choreography, text, &checker);
    report.findings = checker.Finish(report.choreography, musicLength);
    return report;
}

}  // namespace timeline
