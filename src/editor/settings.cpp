#include "editor/settings.h"

#include <algorithm>

#include "document/ascii.h"

namespace editor {

bool GetSettingValue(const SettingsStore& store, std::string_view key, bool fallback)
{
    std::string value = store.GetSettingValue(key, "");
    std::ranges::transform(value, value.begin(), document::LowerAscii);
    if (value == "true")
        return true;
    return value == "false" ? false : fallback;
}

void SaveSettingValue(SettingsStore& store, std::string_view key, bool value)
{
    store.SaveSettingValue(key, value ? "True" : "False");
}

}  // namespace editor
