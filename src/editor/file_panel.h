#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

enum class FilePanelMode { Open, Save };

/// An entry of the filter box.
struct FileFilter {
    std::string_view caption;
    std::string_view pattern;
};

inline constexpr std::array<FileFilter, 3> kFileFilters{{
    {"music (*.mp3)", "*.MP3"},
    {"music (*.wav)", "*.WAV"},
    {"control (*.ctl)", "*.CTL"},
}};
inline constexpr int kControlFilter = 2;

/// The file selection panel `fraFileSelect`: what each of its controls shows. Names are the bytes
/// that the file system has.
struct FilePanel {
    bool visible = false;
    FilePanelMode mode = FilePanelMode::Open;
    int cboFileSelect = 0;  ///< index in `kFileFilters`
    bool cboFileSelectEnabled = true;
    std::vector<std::filesystem::path> drvFileSelect;  ///< volumes to choose from
    int drive = -1;                    ///< index of the one that holds `folder`; -1 for none
    std::filesystem::path folder;      ///< absolute; what `dirFileSelect` stands at
    std::vector<std::string> folders;  ///< of `dirFileSelect`: ".." first unless at the root
    std::vector<std::string> files;    ///< of `filFileSelect`, in the order shown
    std::string txtFileSelect;
    std::string lblFileSelect;  ///< UTF-8, with line feeds and one carriage return

    friend bool operator==(const FilePanel&, const FilePanel&) = default;
};

/// What stands on `cmdFileSelect` 0: "&Open" or "&Save".
[[nodiscard]] std::string_view ActionCaption(FilePanelMode mode);

/// Lists `folder`, which may be relative to the panel's, with the files that fit the filter,
/// whatever their case. False leaves all as it was: the folder cannot be read.
[[nodiscard]] bool EnterFolder(FilePanel& panel, const std::filesystem::path& folder);

/// Lists the panel's folder again; when it is gone, the nearest one above that can be read.
void RefreshLists(FilePanel& panel);

/// `folder` with the platform's separator behind it, unless it ends in one.
[[nodiscard]] std::filesystem::path AddBackslash(const std::filesystem::path& folder);

/// The base name that a typed or chosen name means: without the blanks around it, and cut at the
/// first "." of its last component. Empty when nothing is left of that component.
[[nodiscard]] std::string BaseOfName(std::string_view name);

[[nodiscard]] std::string TrimBlanks(std::string_view text);

}  // namespace editor
