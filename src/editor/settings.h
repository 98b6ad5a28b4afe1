#pragma once

#include <string>
#include <string_view>

namespace editor {

/// The per-user store of settings, its section "Settings". All values are text.
class SettingsStore {
 public:
    virtual ~SettingsStore() = default;
    /// `fallback` when the key is missing.
    [[nodiscard]] virtual std::string GetSettingValue(std::string_view key,
                                                      std::string_view fallback) const = 0;
    virtual void SaveSettingValue(std::string_view key, std::string_view value) = 0;
};

/// A truth value is stored as "True" or "False" and read in any case; any other text counts as
/// missing.
[[nodiscard]] bool GetSettingValue(const SettingsStore& store, std::string_view key, bool fallback);
void SaveSettingValue(SettingsStore& store, std::string_view key, bool value);

}  // namespace editor
