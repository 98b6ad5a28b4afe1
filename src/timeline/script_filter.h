#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "document/command_list.h"

namespace timeline {

/// A time of the script, as a filter sees it.
struct FilteredTime {
    std::int32_t time = 0;  ///< ms
    std::string_view commands;
    bool problems = false;  ///< something is wrong with it
};

/// Which times of a script somebody wants to see, told in words without regard to case:
///   peacock         part of the English sentence of a command
///   ring 3          a word and its number: Ring 3, not Ring 31 or Ring 1 to level 3; a device that
///                   has no number is asked for its level, so "peacock 3" is Peacock to level 3
///   group b         that group
///   3               a number by itself, in the sentence or the codes
///   003-020, 003-   the codes or how they begin
///   1:05            how the time begins; 05.3: its seconds
///   over 11         more commands than that
///   problems        something is wrong there
///   "to level"      the words as they stand
/// All of it must hold for a time, but not for one and the same command of it: "ring 3 sweeps"
/// finds the times that have both. What is typed half ("over", a quote without its end) narrows
/// nothing down, or as far as it goes.
class ScriptFilter {
 public:
    ScriptFilter() = default;
    explicit ScriptFilter(std::string_view text);

    /// Every time matches.
    [[nodiscard]] bool Empty() const;
    [[nodiscard]] bool AsksForProblems() const { return problems_; }
    [[nodiscard]] bool Matches(const FilteredTime& time) const;
    /// True when something that was asked for is this command, or no command was asked for.
    [[nodiscard]] bool Names(document::Command command) const;

 private:
    enum class Kind { Phrase, Numbered, Codes, Clock };
    struct Term {
        Kind kind = Kind::Phrase;
        std::string text;
        std::string number{};  // of a word that has one
    };
    using TermBits = std::uint64_t;

    void Add(Term term);
    [[nodiscard]] static bool Holds(const Term& term, std::string_view codes,
                                    std::string_view sentence);
    [[nodiscard]] TermBits BitsOf(document::Command command) const;
    [[nodiscard]] TermBits BitsOfTime(std::int32_t time) const;

    std::vector<Term> terms_;
    TermBits all_ = 0;    // one bit for each term
    TermBits clock_ = 0;  // those that a time by itself can hold
    std::int32_t over_ = -1;
    bool problems_ = false;
    // By address and data, filled in when they are first met: a show has few different commands.
    mutable std::vector<TermBits> ofCommand_;
};

}  // namespace timeline
