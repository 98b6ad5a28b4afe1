#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/choreography.h"
#include "timeline/check_show.h"
#include "timeline/script_filter.h"

namespace timeline {

/// One line of the script on the screen: a command, or what is wrong with the command or the time
/// above it.
struct ScriptLine {
    enum class Kind { Command, Problem, Warning };

    Kind kind = Kind::Command;
    std::string codes;     ///< "003-020"; empty with a problem or a warning
    std::string text;      ///< in English, without a full stop
    bool surplus = false;  ///< a command behind those that fit at one time
    bool named = true;     ///< false: shown for the sake of its time, the filter asks for another

    friend bool operator==(const ScriptLine&, const ScriptLine&) = default;
};

/// A piece of a list that gives way to another: from `first` on.
struct ListChange {
    std::int32_t first = 0;
    std::int32_t removed = 0;
    std::int32_t inserted = 0;

    [[nodiscard]] bool Empty() const { return removed == 0 && inserted == 0; }

    friend bool operator==(const ListChange&, const ListChange&) = default;
};

/// The script as a list: a row for each time that the filter lets through, with all of its
/// commands. It keeps what it shows, so that a row stays what it is until an update is applied.
///
/// An update is made ready first and applied then, so that an item model can announce what comes.
class ScriptList {
 public:
    struct Update {
        ListChange rows;                                    ///< those in both are changed in place
        ListChange places;                                  ///< the slots that differ
        std::vector<std::int32_t> matches{};                ///< slots that take the rows' place
        const document::Choreography* show = nullptr;       ///< null: the times stay
        std::optional<std::vector<ShowFault>> faults = {};  ///< none: they move with their times
    };

    /// What must change to show `show`, which must not change until the update is applied. The
    /// faults of the whole show are looked for by `PrepareFaults` only.
    [[nodiscard]] Update Prepare(const document::Choreography& show) const;
    /// Looks at the show as it stands for what `FindShowFaults` finds; that takes a few ms for the
    /// largest. `musicLength` in ms, 0 when it is not known.
    [[nodiscard]] Update PrepareFaults(std::int32_t musicLength) const;
    /// Only the update that was made ready last.
    void Apply(Update update);
    /// All rows are new.
    void SetFilter(std::string_view text);

    [[nodiscard]] bool IsFiltered() const { return !filter_.Empty(); }
    [[nodiscard]] bool AsksForProblems() const { return filter_.AsksForProblems(); }
    [[nodiscard]] std::int32_t TimeCount() const { return show_.lngLastSlot(); }
    [[nodiscard]] std::int32_t CommandTotal() const;
    /// Times that something is wrong with, whether they are shown or not.
    [[nodiscard]] std::int32_t ProblemCount() const;
    [[nodiscard]] std::int32_t RowCount() const;
    /// Rows are 0..RowCount()-1 in all that follows.
    [[nodiscard]] std::int32_t TimeOf(std::int32_t row) const;
    /// The last row at or before a time (ms), -1 when there is none.
    [[nodiscard]] std::int32_t RowAtOrBefore(std::int32_t time) const;
    [[nodiscard]] std::int32_t LineCount(std::int32_t row) const;
    /// `count` lines of a row from `first` on, or as many as there are.
    [[nodiscard]] std::vector<ScriptLine> Lines(std::int32_t row, std::int32_t first,
                                                std::int32_t count) const;

 private:
    enum class Fault : std::uint8_t { Unseen, None, Problem, Warning };

    [[nodiscard]] std::int32_t SlotOf(std::int32_t row) const;
    [[nodiscard]] bool HasProblem(std::int32_t slot) const;
    [[nodiscard]] std::int32_t RowFrom(std::int32_t slot) const;
    [[nodiscard]] Fault FaultOf(document::Command command) const;
    [[nodiscard]] std::int32_t LinesOf(std::string_view commands, std::int32_t showFaults) const;
    [[nodiscard]] std::int32_t ShowFaultsOf(const std::vector<ShowFault>& faults,
                                            std::int32_t slot) const;
    void FindMatches(const document::Choreography& show, const std::vector<ShowFault>& faults,
                     Update& update) const;
    void StoreTimes(const document::Choreography& show, const ListChange& places);
    void MoveFaults(const ListChange& places);
    void MoveRows(const Update& update);

    document::Choreography show_;
    ScriptFilter filter_;
    std::vector<std::int32_t> rows_;   // slots that match, when there is a filter
    std::vector<std::int32_t> lines_;  // of every slot
    std::vector<ShowFault> faults_;    // by slot
    // By address and data, filled in when they are first met.
    mutable std::vector<Fault> ofCommand_ = std::vector<Fault>(65'536, Fault::Unseen);
};

}  // namespace timeline
