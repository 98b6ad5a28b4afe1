#pragma once

namespace document {

/// For names of files, whose extensions are known by their ASCII letters whatever the locale.
[[nodiscard]] constexpr char LowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace document
