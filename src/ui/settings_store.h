#pragma once

#include <QSettings>
#include <QString>

#include "editor/settings.h"

namespace ui {

/// The settings of the user on this platform, kept in a file.
class QtSettingsStore final : public editor::SettingsStore {
 public:
    /// The file that the platform has for this program.
    QtSettingsStore();
    explicit QtSettingsStore(const QString& file);
    /// Writes what was saved, as `Sync` does.
    ~QtSettingsStore() override;
    QtSettingsStore(const QtSettingsStore&) = delete;
    QtSettingsStore& operator=(const QtSettingsStore&) = delete;

    [[nodiscard]] std::string GetSettingValue(std::string_view key,
                                              std::string_view fallback) const override;
    /// Is on the disk after the next `Sync`, or once the events that wait are done.
    void SaveSettingValue(std::string_view key, std::string_view value) override;
    void Sync();

 private:
    QSettings settings_;
};

}  // namespace ui
