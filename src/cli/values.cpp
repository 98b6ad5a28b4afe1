#include "cli/values.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace cli {
namespace {

constexpr std::int32_t kMinute = 60'000;
constexpr int kLongestSide = 16'384;
constexpr std::size_t kMostDigits = 9;

// '0' stands for any digit.
bool Matches(std::string_view text, std::string_view pattern)
{
    return std::ranges::equal(
        text, pattern, [](char c, char p) { return p == '0' ? c >= '0' && c <= '9' : c == p; });
}

bool IsNumber(std::string_view text)
{
    return !text.empty() && text.size() <= kMostDigits &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// `digits` is checked before.
int NumberOf(std::string_view digits)
{
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

std::string Quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

}  // namespace

std::optional<int> ParseNumber(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    if (!IsNumber(text))
        return std::nullopt;
    return negative ? -NumberOf(text) : NumberOf(text);
}

// Seconds may read 60.0, as rounding to the tenth writes them.
Parsed<std::int32_t> ParseTime(std::string_view text)
{
    if (IsNumber(text))
        return {NumberOf(text), {}};
    if (Matches(text, "00:00.0")) {
        const int tenths = NumberOf(text.substr(3, 2)) * 10 + NumberOf(text.substr(6));
        if (tenths <= 600)
            return {NumberOf(text.substr(0, 2)) * kMinute + tenths * 100, {}};
    }
    return {std::nullopt,
            Quoted(text) + ": expected a time mm:ss.t, as in 01:05.3, or whole milliseconds"};
}

Parsed<Size> ParseSize(std::string_view text)
{
    const std::size_t cross = text.find('x');
    if (cross != std::string_view::npos && IsNumber(text.substr(0, cross)) &&
        IsNumber(text.substr(cross + 1))) {
        const Size size{NumberOf(text.substr(0, cross)), NumberOf(text.substr(cross + 1))};
        if (std::min(size.width, size.height) >= 1 &&
            std::max(size.width, size.height) <= kLongestSide)
            return {size, {}};
    }
    return {std::nullopt,
            Quoted(text) + ": expected a size in pixels, as in 1024x372, sides from 1 to 16384"};
}

Parsed<document::Command> ParseCommand(std::string_view text)
{
    if (!Matches(text, "000-000"))
        return {std::nullopt, Quoted(text) + ": expected a command AAA-DDD, as in 003-020"};
    const int address = NumberOf(text.substr(0, 3));
    const int data = NumberOf(text.substr(4));
    if (std::max(address, data) > 255)
        return {std::nullopt, Quoted(text) + ": expected an address and data from 000 to 255"};
    return {document::Command{static_cast<std::uint8_t>(address), static_cast<std::uint8_t>(data)},
            {}};
}

}  // namespace cli
