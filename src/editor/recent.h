#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "editor/settings.h"

namespace editor {

inline constexpr std::size_t kMostRecent = 8;

/// Control files by their absolute names, the one opened or saved last in front.
using RecentFiles = std::vector<std::filesystem::path>;

/// Puts `name`, made absolute, in front; it stands in the list once.
void AddRecent(RecentFiles& recent, const std::filesystem::path& name);

/// They are kept under "Recent1" to "Recent8"; what is not an absolute name is passed over.
[[nodiscard]] RecentFiles LoadRecent(const SettingsStore& store);
void SaveRecent(SettingsStore& store, const RecentFiles& recent);

}  // namespace editor
