#pragma once

#include <cstddef>
#include <string_view>

#include "document/command_list.h"
#include "document/time_text.h"

namespace testing_support {

/// The list whose `CommandText` is `text`.
inline document::Commands Packed(std::string_view text)
{
    document::Commands commands;
    for (std::size_t at = 0; at < text.size(); at += 8) {
        commands += static_cast<char>(document::FieldValue(text.substr(at, 3)));
        commands += static_cast<char>(document::FieldValue(text.substr(at + 4, 3)));
    }
    return commands;
}

}  // namespace testing_support
