#pragma once

#include <QByteArray>
#include <filesystem>
#include <vector>

namespace ui {

/// The home folder and the mounted volumes that a person may keep files on, out of a table of
/// mounts as the system keeps it. None of them is touched: one that hangs would hold up the window.
[[nodiscard]] std::vector<std::filesystem::path> VolumesOf(const QByteArray& mounts,
                                                           const std::filesystem::path& home);

/// Those of this machine, now.
[[nodiscard]] std::vector<std::filesystem::path> Volumes();

}  // namespace ui
