#include "editor/file_panel.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "document/ascii.h"

namespace editor {
namespace {

namespace fs = std::filesystem;

struct Listing {
    std::vector<std::string> folders;
    std::vector<std::string> files;
};

std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), document::LowerAscii);
    return lower;
}

void SortNames(std::vector<std::string>& names)
{
    std::ranges::sort(names, [](const std::string& a, const std::string& b) {
        const int order = Lower(a).compare(Lower(b));
        return order != 0 ? order < 0 : a < b;
    });
}

bool Hidden(const std::string& name)
{
    return name.starts_with('.');
}

std::optional<Listing> ListFolder(const fs::path& folder, std::string_view pattern)
{
    const std::string extension = Lower(pattern.substr(1));
    Listing listing;
    std::error_code error;
    fs::directory_iterator entry(folder, fs::directory_options::none, error);
    if (error)
        return std::nullopt;
    for (; !error && entry != fs::directory_iterator{}; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code ignored;
        if (Hidden(name))
            continue;
        if (entry->is_directory(ignored))
            listing.folders.push_back(name);
        else if (Lower(name).ends_with(extension) && entry->is_regular_file(ignored))
            listing.files.push_back(name);
    }
    SortNames(listing.folders);
    SortNames(listing.files);
    if (folder.has_relative_path())
        listing.folders.insert(listing.folders.begin(), "..");
    return listing;
}

bool Holds(const fs::path& volume, const fs::path& folder)
{
    return std::ranges::mismatch(volume, folder).in1 == volume.end();
}

/// The innermost volume that holds the folder.
int VolumeOf(const std::vector<fs::path>& volumes, const fs::path& folder)
{
    int best = -1;
    std::size_t length = 0;
    for (std::size_t i = 0; i < volumes.size(); ++i) {
        const std::size_t size = volumes[i].native().size();
        if (size > length && Holds(volumes[i], folder)) {
            best = static_cast<int>(i);
            length = size;
        }
    }
    return best;
}

fs::path WithoutTrailingSeparator(const fs::path& folder)
{
    return folder.has_filename() || !folder.has_relative_path() ? folder : folder.parent_path();
}

fs::path Absolute(const fs::path& folder)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(folder.empty() ? fs::path(".") : folder, error);
    return WithoutTrailingSeparator((error ? folder : absolute).lexically_normal());
}

}  // namespace

std::string_view ActionCaption(FilePanelMode mode)
{
    return mode == FilePanelMode::Open ? "&Open" : "&Save";
}

bool EnterFolder(FilePanel& panel, const fs::path& folder)
{
    const fs::path target = Absolute(panel.folder / folder);
    const auto& filter = kFileFilters[static_cast<std::size_t>(panel.cboFileSelect)];
    std::optional<Listing> listing = ListFolder(target, filter.pattern);
    if (!listing)
        return false;
    panel.folder = target;
    panel.folders = std::move(listing->folders);
    panel.files = std::move(listing->files);
    panel.drive = VolumeOf(panel.drvFileSelect, target);
    return true;
}

void RefreshLists(FilePanel& panel)
{
    fs::path folder = Absolute(panel.folder);
    while (!EnterFolder(panel, folder)) {
        if (!folder.has_relative_path()) {
            panel.folders.clear();
            panel.files.clear();
            return;
        }
        folder = folder.parent_path();
    }
}

fs::path AddBackslash(const fs::path& folder)
{
    return folder / "";
}

std::string TrimBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string BaseOfName(std::string_view name)
{
    const std::string trimmed = TrimBlanks(name);
    const std::size_t separator = trimmed.rfind(fs::path::preferred_separator);
    const std::size_t last = separator == std::string::npos ? 0 : separator + 1;
    std::string base = TrimBlanks(std::string_view(trimmed).substr(0, trimmed.find('.', last)));
    return base.size() > last ? base : std::string();
}

}  // namespace editor
