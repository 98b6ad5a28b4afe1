#include "document/time_text.h"

#include <algorithm>

namespace document {
namespace {

constexpr std::int32_t kMinute = 60'000;

void AppendTwoDigits(std::string& text, std::int32_t value)
{
    if (value >= 100)
        text += std::to_string(value / 100);
    text += static_cast<char>('0' + value / 10 % 10);
    text += static_cast<char>('0' + value % 10);
}

void AppendText(std::string& text, std::int32_t minutes, std::int32_t tenths)
{
    AppendTwoDigits(text, minutes);
    text += ':';
    AppendTwoDigits(text, tenths / 10);
    text += '.';
    text += static_cast<char>('0' + tenths % 10);
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

}  // namespace

std::string TimeText(std::int32_t time)
{
    std::string text;
    AppendTimeText(text, time);
    return text;
}

void AppendTimeText(std::string& text, std::int32_t time)
{
    time = std::max(time, 0);
    AppendText(text, time / kMinute, (time % kMinute + 50) / 100);
}

std::string ReadoutText(std::int32_t time)
{
    time = std::max(time, 0);
    std::string text;
    AppendText(text, time / kMinute, time % kMinute / 100);
    return text;
}

std::int32_t FieldValue(std::string_view field)
{
    std::int32_t value = 0;
    int digits = 0;
    for (const char c : field) {
        if (c == ' ')
            continue;
        if (!IsDigit(c) || digits == 9)
            break;
        value = value * 10 + (c - '0');
        ++digits;
    }
    return value;
}

std::int32_t SecondsFieldValue(std::string_view field)
{
    std::int32_t value = 0;
    std::int32_t unit = 1000;  // ms that the last digit read stands for
    bool afterPoint = false;
    for (const char c : field.substr(0, 4)) {
        if (c == ' ')
            continue;
        if (c == '.' && !afterPoint) {
            afterPoint = true;
            continue;
        }
        if (!IsDigit(c))
            break;
        if (afterPoint) {
            unit /= 10;
            value += (c - '0') * unit;
        } else {
            value = value * 10 + (c - '0') * unit;
        }
    }
    return value;
}

}  // namespace document
