#include "editor/recent.h"

#include <string>
#include <system_error>

namespace editor {
namespace {

namespace fs = std::filesystem;

std::string Key(std::size_t index)
{
    return "Recent" + std::to_string(index + 1);
}

}  // namespace

void AddRecent(RecentFiles& recent, const fs::path& name)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(name, error).lexically_normal();
    if (error)
        return;
    std::erase(recent, absolute);
    recent.insert(recent.begin(), absolute);
    if (recent.size() > kMostRecent)
        recent.resize(kMostRecent);
}

RecentFiles LoadRecent(const SettingsStore& store)
{
    RecentFiles recent;
    for (std::size_t k = kMostRecent; k-- > 0;) {
        const fs::path name = store.GetSettingValue(Key(k), "");
        if (name.is_absolute())
            AddRecent(recent, name);
    }
    return recent;
}

void SaveRecent(SettingsStore& store, const RecentFiles& recent)
{
    for (std::size_t k = 0; k < kMostRecent; ++k)
        store.SaveSettingValue(Key(k), k < recent.size() ? recent[k].string() : std::string());
}

}  // namespace editor
