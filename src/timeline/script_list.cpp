#include "timeline/script_list.h"

#include <algorithm>
#include <span>
#include <utility>

#include "fountain/describe.h"
#include "timeline/check_command.h"

namespace timeline {
namespace {

using document::Choreography;

// Edits of so many times at once are stored one by one.
constexpr std::int32_t kFewTimes = 64;

std::size_t At(std::int32_t index)
{
    return static_cast<std::size_t>(index);
}

bool SameSlot(const Choreography& a, std::size_t i, const Choreography& b, std::size_t k)
{
    return a.lngTime[i] == b.lngTime[k] && a.strCommands[i] == b.strCommands[k];
}

// All that is alike at the front and at the end stays out of it.
ListChange Difference(const Choreography& before, const Choreography& after)
{
    const std::int32_t most = std::min(before.lngLastSlot(), after.lngLastSlot());
    std::int32_t front = 0;
    while (front < most && SameSlot(before, At(front), after, At(front)))
        ++front;
    std::int32_t back = 0;
    while (back < most - front && SameSlot(before, At(before.lngLastSlot() - 1 - back), after,
                                           At(after.lngLastSlot() - 1 - back)))
        ++back;
    return {front, before.lngLastSlot() - front - back, after.lngLastSlot() - front - back};
}

// The slots from the first fault that differs to the last.
ListChange Difference(const std::vector<ShowFault>& before, const std::vector<ShowFault>& after)
{
    const auto [a, b] = std::ranges::mismatch(before, after);
    if (a == before.end() && b == after.end())
        return {};
    std::int32_t first = document::kMostSlots;
    std::int32_t last = 0;
    for (const auto& [from, to] : {std::pair{a, before.end()}, std::pair{b, after.end()}}) {
        if (from == to)
            continue;
        first = std::min(first, from->slot);
        last = std::max(last, std::prev(to)->slot);
    }
    return {first, last - first + 1, last - first + 1};
}

// How many of the slots, from the first on, keep what was found about the whole show until it is
// looked at again. With a change of many it is another show.
std::int32_t KeepingFaults(const ListChange& places)
{
    return places.removed <= kFewTimes ? std::min(places.removed, places.inserted) : 0;
}

std::string Sentence(std::string_view text)
{
    std::string sentence(text);
    if (!sentence.empty() && sentence.front() >= 'a' && sentence.front() <= 'z')
        sentence.front() = static_cast<char>(sentence.front() - 'a' + 'A');
    return sentence;
}

std::span<const ShowFault> FaultsAt(const std::vector<ShowFault>& faults, std::int32_t slot)
{
    const auto first = std::ranges::lower_bound(faults, slot, {}, &ShowFault::slot);
    const auto last = std::ranges::upper_bound(faults, slot, {}, &ShowFault::slot);
    return {first, last};
}

}  // namespace

ScriptList::Update ScriptList::Prepare(const Choreography& show) const
{
    Update update;
    update.places = Difference(show_, show);
    if (update.places.Empty())
        return update;
    update.show = &show;
    FindMatches(show, faults_, update);
    return update;
}

ScriptList::Update ScriptList::PrepareFaults(std::int32_t musicLength) const
{
    std::vector<ShowFault> faults = FindShowFaults(show_, musicLength);
    std::ranges::stable_sort(faults, {}, &ShowFault::slot);
    Update update;
    update.places = Difference(faults_, faults);
    if (update.places.Empty())
        return update;
    FindMatches(show_, faults, update);
    update.faults = std::move(faults);
    return update;
}

void ScriptList::FindMatches(const Choreography& show, const std::vector<ShowFault>& faults,
                             Update& update) const
{
    const ListChange& places = update.places;
    const std::int32_t kept =
        places.first + (update.show == nullptr ? places.inserted : KeepingFaults(places));
    if (!IsFiltered()) {
        update.rows = places;
        return;
    }
    for (std::int32_t slot = places.first; slot < places.first + places.inserted; ++slot) {
        const document::Commands& commands = show.strCommands[At(slot)];
        const bool problems = filter_.AsksForProblems() &&
                              LinesOf(commands, slot < kept ? ShowFaultsOf(faults, slot) : 0) >
                                  document::CommandCount(commands);
        if (filter_.Matches({show.lngTime[At(slot)], commands, problems}))
            update.matches.push_back(slot);
    }
    const std::int32_t first = RowFrom(places.first);
    update.rows = {first, RowFrom(places.first + places.removed) - first,
                   static_cast<std::int32_t>(update.matches.size())};
}

void ScriptList::Apply(Update update)
{
    const ListChange places = update.places;
    if (places.Empty())
        return;
    if (update.show != nullptr) {
        StoreTimes(*update.show, places);
        MoveFaults(places);
    }
    if (update.faults)
        faults_ = std::move(*update.faults);
    const auto lines = lines_.begin() + places.first;
    if (places.inserted > places.removed)
        lines_.insert(lines, At(places.inserted - places.removed), 0);
    else
        lines_.erase(lines, lines + (places.removed - places.inserted));
    for (std::int32_t slot = places.first; slot < places.first + places.inserted; ++slot)
        lines_[At(slot)] = LinesOf(show_.strCommands[At(slot)], ShowFaultsOf(faults_, slot));
    if (IsFiltered())
        MoveRows(update);
}

void ScriptList::StoreTimes(const Choreography& show, const ListChange& places)
{
    const auto times = show.lngTime.begin() + places.first;
    const bool inPlace =
        places.removed == places.inserted && places.inserted <= kFewTimes &&
        std::equal(times, times + places.inserted, show_.lngTime.begin() + places.first);
    if (!inPlace) {
        show_ = show;
        return;
    }
    for (std::int32_t slot = places.first; slot < places.first + places.inserted; ++slot)
        document::StoreCommands(show_, slot, show.strCommands[At(slot)]);
}

void ScriptList::MoveFaults(const ListChange& places)
{
    const std::int32_t end = places.first + places.removed;
    const std::int32_t kept = places.first + KeepingFaults(places);
    std::erase_if(faults_,
                  [&](const ShowFault& fault) { return fault.slot >= kept && fault.slot < end; });
    for (ShowFault& fault : faults_)
        if (fault.slot >= end)
            fault.slot += places.inserted - places.removed;
}

void ScriptList::MoveRows(const Update& update)
{
    const ListChange& rows = update.rows;
    const auto at = rows_.begin() + rows.first;
    const auto after = rows_.insert(rows_.erase(at, at + rows.removed), update.matches.begin(),
                                    update.matches.end()) +
                       rows.inserted;
    for (auto row = after; row != rows_.end(); ++row)
        *row += update.places.inserted - update.places.removed;
}

void ScriptList::SetFilter(std::string_view text)
{
    filter_ = ScriptFilter(text);
    rows_.clear();
    if (!IsFiltered())
        return;
    for (std::int32_t slot = 0; slot < show_.lngLastSlot(); ++slot) {
        const document::Commands& commands = show_.strCommands[At(slot)];
        if (filter_.Matches({show_.lngTime[At(slot)], commands, HasProblem(slot)}))
            rows_.push_back(slot);
    }
}

std::int32_t ScriptList::CommandTotal() const
{
    return document::CommandTotal(show_);
}

bool ScriptList::HasProblem(std::int32_t slot) const
{
    return lines_[At(slot)] > document::CommandCount(show_.strCommands[At(slot)]);
}

std::int32_t ScriptList::ProblemCount() const
{
    std::int32_t count = 0;
    for (std::int32_t slot = 0; slot < TimeCount(); ++slot)
        count += HasProblem(slot) ? 1 : 0;
    return count;
}

std::int32_t ScriptList::RowCount() const
{
    return IsFiltered() ? static_cast<std::int32_t>(rows_.size()) : TimeCount();
}

std::int32_t ScriptList::SlotOf(std::int32_t row) const
{
    return IsFiltered() ? rows_[At(row)] : row;
}

// The first row whose slot is not before `slot`.
std::int32_t ScriptList::RowFrom(std::int32_t slot) const
{
    if (!IsFiltered())
        return slot;
    return static_cast<std::int32_t>(std::ranges::lower_bound(rows_, slot) - rows_.begin());
}

std::int32_t ScriptList::TimeOf(std::int32_t row) const
{
    return show_.lngTime[At(SlotOf(row))];
}

std::int32_t ScriptList::RowAtOrBefore(std::int32_t time) const
{
    return RowFrom(document::SlotAtOrBefore(show_, time) + 1) - 1;
}

std::int32_t ScriptList::LineCount(std::int32_t row) const
{
    return lines_[At(SlotOf(row))];
}

ScriptList::Fault ScriptList::FaultOf(document::Command command) const
{
    Fault& fault = ofCommand_[At(command.address * 256 + command.data)];
    if (fault != Fault::Unseen)
        return fault;
    switch (FindCommandFault(command).kind) {
        case CommandFault::Kind::None:
            return fault = Fault::None;
        case CommandFault::Kind::UnknownAddress:
            return fault = Fault::Problem;
        case CommandFault::Kind::NoMeaning:
            break;
    }
    return fault = Fault::Warning;
}

std::int32_t ScriptList::LinesOf(std::string_view commands, std::int32_t showFaults) const
{
    const int count = document::CommandCount(commands);
    std::int32_t lines = count + showFaults + (count > document::kMostCommands ? 1 : 0);
    for (int k = 0; k < count; ++k)
        lines += FaultOf(document::CommandAt(commands, k)) == Fault::None ? 0 : 1;
    return lines;
}

std::int32_t ScriptList::ShowFaultsOf(const std::vector<ShowFault>& faults, std::int32_t slot) const
{
    const std::span<const ShowFault> found = FaultsAt(faults, slot);
    return static_cast<std::int32_t>(found.size());
}

std::vector<ScriptLine> ScriptList::Lines(std::int32_t row, std::int32_t first,
                                          std::int32_t count) const
{
    using Kind = ScriptLine::Kind;
    const std::int32_t slot = SlotOf(row);
    const std::string_view commands = show_.strCommands[At(slot)];
    const int commandCount = document::CommandCount(commands);
    std::vector<ScriptLine> lines;
    std::int32_t line = -1;
    const auto wanted = [&] {
        ++line;
        return line >= first && line - first < count;
    };
    for (int k = 0; k < commandCount && line - first < count; ++k) {
        const document::Command command = document::CommandAt(commands, k);
        const bool named = filter_.Names(command);
        const Fault fault = FaultOf(command);
        if (wanted())
            lines.push_back({Kind::Command, document::CommandText(commands.substr(At(k) * 2, 2)),
                             fountain::DescribeCommand(command.address, command.data),
                             k >= document::kMostCommands, named});
        if (fault != Fault::None && wanted())
            lines.push_back({fault == Fault::Problem ? Kind::Problem : Kind::Warning,
                             {},
                             Sentence(FindCommandFault(command).text),
                             false,
                             named});
    }
    if (commandCount > document::kMostCommands && wanted())
        lines.push_back({Kind::Problem,
                         {},
                         "Holds " + std::to_string(commandCount) + " commands, at most " +
                             std::to_string(document::kMostCommands) + " fit"});
    for (const ShowFault& fault : FaultsAt(faults_, slot))
        if (wanted())
            lines.push_back({Kind::Warning, {}, Sentence(fault.message)});
    return lines;
}

}  // namespace timeline
