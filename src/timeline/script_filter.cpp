#include "timeline/script_filter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "document/ascii.h"
#include "document/time_text.h"
#include "fountain/describe.h"

namespace timeline {
namespace {

constexpr std::size_t kMostTerms = 60;  // bits of a mask; nobody types as much
constexpr std::uint64_t kKnown = std::uint64_t{1} << 63;
constexpr std::size_t kCommandValues = 65'536;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsWordCharacter(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'z');
}

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), document::LowerAscii);
    return lower;
}

struct Token {
    std::string text;
    bool quoted = false;

    [[nodiscard]] bool Is(std::string_view word) const { return !quoted && text == word; }
    [[nodiscard]] bool StartsWithDigit() const { return !quoted && IsDigit(text.front()); }
    [[nodiscard]] bool Holds(char c) const { return text.find(c) != std::string::npos; }
    [[nodiscard]] bool IsPlainNumber() const
    {
        return StartsWithDigit() && !Holds('-') && !Holds(':');
    }
};

std::vector<Token> Tokens(std::string_view text)
{
    std::vector<Token> tokens;
    std::size_t at = 0;
    while (at < text.size()) {
        if (IsBlank(text[at])) {
            ++at;
            continue;
        }
        const bool quoted = text[at] == '"';
        const std::size_t begin = quoted ? at + 1 : at;
        std::size_t end = begin;
        while (end < text.size() && text[end] != '"' && (quoted || !IsBlank(text[end])))
            ++end;
        if (end > begin)
            tokens.push_back({LowerCase(text.substr(begin, end - begin)), quoted});
        at = quoted && end < text.size() ? end + 1 : end;
    }
    return tokens;
}

// A number ends where no further digit or letter follows, nor decimals: 2 is not in 2.5.
bool NumberEndsAt(std::string_view text, std::size_t end)
{
    if (end >= text.size())
        return true;
    if (text[end] == '.')
        return end + 1 >= text.size() || !IsDigit(text[end + 1]);
    return !IsWordCharacter(text[end]);
}

bool NumberBeginsAt(std::string_view text, std::size_t begin)
{
    return begin == 0 || (!IsWordCharacter(text[begin - 1]) && text[begin - 1] != '.');
}

// Words are found anywhere, numbers and the letter of a group whole only.
bool HoldsPhrase(std::string_view text, std::string_view phrase)
{
    const bool wholeEnd =
        IsDigit(phrase.back()) || (phrase.size() > 1 && phrase[phrase.size() - 2] == ' ');
    for (std::size_t at = text.find(phrase); at != std::string_view::npos;
         at = text.find(phrase, at + 1))
        if ((!IsDigit(phrase.front()) || NumberBeginsAt(text, at)) &&
            (!wholeEnd || NumberEndsAt(text, at + phrase.size())))
            return true;
    return false;
}

bool HoldsNumberAt(std::string_view text, std::size_t at, std::string_view number)
{
    return text.substr(std::min(at, text.size())).starts_with(number) &&
           NumberEndsAt(text, at + number.size());
}

// "word number", "word to number", or a word that has no number of its own and is at that level.
bool HoldsNumbered(std::string_view text, std::string_view word, std::string_view number)
{
    static constexpr std::string_view kTo = "to ";
    for (std::size_t at = text.find(word); at != std::string_view::npos;
         at = text.find(word, at + 1)) {
        std::size_t next = at + word.size();
        while (next < text.size() && IsWordCharacter(text[next]))
            ++next;
        if (next < text.size())
            ++next;  // the blank
        if (HoldsNumberAt(text, next, number))
            return true;
        if (next < text.size() && IsDigit(text[next]))
            continue;
        if (text.substr(next).starts_with(kTo) && HoldsNumberAt(text, next + kTo.size(), number))
            return true;
        if (HoldsPhrase(text, "level " + std::string(number)))
            return true;
    }
    return false;
}

// "1:05" and "01:05" begin a time, "5.3" and "05.3" its seconds.
bool HoldsClock(std::string_view time, std::string_view pattern)
{
    const auto begins = [pattern](std::string_view field) {
        return field.starts_with(pattern) ||
               (field.starts_with('0') && field.substr(1).starts_with(pattern));
    };
    if (pattern.find(':') != std::string_view::npos)
        return begins(time);
    return begins(time.substr(time.find(':') + 1));
}

std::size_t IndexOf(document::Command command)
{
    return static_cast<std::size_t>(command.address) * 256 + command.data;
}

}  // namespace

ScriptFilter::ScriptFilter(std::string_view text)
{
    std::vector<Token> tokens = Tokens(text);
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        Token& token = tokens[i];
        const Token* next = i + 1 < tokens.size() ? &tokens[i + 1] : nullptr;
        if (token.Is("over") && next == nullptr)
            continue;
        if (token.Is("over") && next->IsPlainNumber()) {
            over_ = std::max(over_, document::FieldValue(tokens[++i].text));
        } else if (token.Is("problem") || token.Is("problems")) {
            problems_ = true;
        } else if (token.StartsWithDigit() && token.Holds('-')) {
            Add({Kind::Codes, std::move(token.text)});
        } else if (token.StartsWithDigit() && (token.Holds(':') || token.Holds('.'))) {
            Add({Kind::Clock, std::move(token.text)});
        } else if (token.Is("group") && next != nullptr && (next->Is("a") || next->Is("b"))) {
            Add({Kind::Phrase, "group " + tokens[++i].text});
        } else if (!token.quoted && !token.StartsWithDigit() && next != nullptr &&
                   next->IsPlainNumber()) {
            Add({Kind::Numbered, std::move(token.text), tokens[++i].text});
        } else {
            Add({Kind::Phrase, std::move(token.text)});
        }
    }
    if (!terms_.empty())
        ofCommand_.resize(kCommandValues);
}

void ScriptFilter::Add(Term term)
{
    if (terms_.size() >= kMostTerms)
        return;
    const TermBits bit = TermBits{1} << terms_.size();
    all_ |= bit;
    if (term.kind == Kind::Clock)
        clock_ |= bit;
    terms_.push_back(std::move(term));
}

bool ScriptFilter::Empty() const
{
    return terms_.empty() && over_ < 0 && !problems_;
}

bool ScriptFilter::Holds(const Term& term, std::string_view codes, std::string_view sentence)
{
    switch (term.kind) {
        case Kind::Numbered:
            return HoldsNumbered(sentence, term.text, term.number);
        case Kind::Codes:
            return codes.starts_with(term.text);
        case Kind::Clock:
        case Kind::Phrase:
            break;
    }
    return HoldsPhrase(sentence, term.text) || HoldsPhrase(codes, term.text);
}

ScriptFilter::TermBits ScriptFilter::BitsOf(document::Command command) const
{
    TermBits& bits = ofCommand_[IndexOf(command)];
    if ((bits & kKnown) != 0)
        return bits;
    const std::array<char, 2> packed{static_cast<char>(command.address),
                                     static_cast<char>(command.data)};
    const std::string codes = document::CommandText({packed.data(), packed.size()});
    const std::string sentence =
        LowerCase(fountain::DescribeCommand(command.address, command.data));
    bits = kKnown;
    for (std::size_t i = 0; i < terms_.size(); ++i)
        if (Holds(terms_[i], codes, sentence))
            bits |= TermBits{1} << i;
    return bits;
}

ScriptFilter::TermBits ScriptFilter::BitsOfTime(std::int32_t time) const
{
    TermBits bits = 0;
    const std::string text = document::TimeText(time);
    for (std::size_t i = 0; i < terms_.size(); ++i)
        if (terms_[i].kind == Kind::Clock && HoldsClock(text, terms_[i].text))
            bits |= TermBits{1} << i;
    return bits;
}

bool ScriptFilter::Matches(const FilteredTime& time) const
{
    const int count = document::CommandCount(time.commands);
    if ((over_ >= 0 && count <= over_) || (problems_ && !time.problems))
        return false;
    if (terms_.empty())
        return true;
    TermBits bits = clock_ != 0 ? BitsOfTime(time.time) : 0;
    for (int k = 0; k < count; ++k)
        bits |= BitsOf(document::CommandAt(time.commands, k));
    return (bits & all_) == all_;
}

bool ScriptFilter::Names(document::Command command) const
{
    return (all_ & ~clock_) == 0 || (BitsOf(command) & all_) != 0;
}

}  // namespace timeline
