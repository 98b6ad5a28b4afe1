#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace timeline {

/// One device and what a command makes it do, in words: {"Ring 3 on Group A", "level 4"}. The
/// value may be empty.
struct Setting {
    std::string device;
    std::string value;

    friend bool operator==(const Setting&, const Setting&) = default;
};

/// What the fountain does with a list of commands, device by device, in the list's order.
[[nodiscard]] std::vector<Setting> SettingsOf(std::string_view commands);

/// "Ring 3 on Group A: level 4".
[[nodiscard]] std::string SettingText(const Setting& setting);

}  // namespace timeline
