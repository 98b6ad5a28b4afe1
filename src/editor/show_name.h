#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace editor {

inline constexpr std::string_view kControlExtension = ".ctl";

/// What a file is to a show, by its extension in any case.
enum class ShowFile { None, Control, Mp3, Wav };

[[nodiscard]] ShowFile KindOf(const std::filesystem::path& name);

/// The base name of a show when it was given with one of these extensions.
[[nodiscard]] std::filesystem::path WithoutKnownExtension(const std::filesystem::path& name);

[[nodiscard]] std::filesystem::path Append(std::filesystem::path base, std::string_view extension);

/// Without "." and ".."; an empty name stays empty.
[[nodiscard]] std::filesystem::path Absolute(const std::filesystem::path& name);

/// The music file of this name, whatever the case of its letters: the one that is spelled like the
/// show before others.
[[nodiscard]] std::optional<std::filesystem::path> FindMusic(const std::filesystem::path& name);

}  // namespace editor
