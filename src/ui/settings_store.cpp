#include "ui/settings_store.h"

#include <QCoreApplication>

#include "ui/dead_lock.h"

namespace ui {
namespace {

QString KeyOf(std::string_view key)
{
    return QStringLiteral("Settings/") +
           QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

// The lock that is taken while a file of settings is written.
QString LockOf(const QSettings& settings)
{
    return settings.fileName() + QStringLiteral(".lock");
}

}  // namespace

QtSettingsStore::QtSettingsStore()
    : settings_(QCoreApplication::organizationName(), QCoreApplication::applicationName())
{
    settings_.setFallbacksEnabled(false);
}

QtSettingsStore::QtSettingsStore(const QString& file) : settings_(file, QSettings::IniFormat) {}

QtSettingsStore::~QtSettingsStore()
{
    Sync();
}

std::string QtSettingsStore::GetSettingValue(std::string_view key, std::string_view fallback) const
{
    const QVariant value = settings_.value(KeyOf(key));
    return value.isValid() ? value.toString().toStdString() : std::string(fallback);
}

void QtSettingsStore::SaveSettingValue(std::string_view key, std::string_view value)
{
    const QString text = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
    if (settings_.contains(KeyOf(key)) && settings_.value(KeyOf(key)).toString() == text)
        return;
    RemoveDeadLock(LockOf(settings_));
    settings_.setValue(KeyOf(key), text);
}

void QtSettingsStore::Sync()
{
    RemoveDeadLock(LockOf(settings_));
    settings_.sync();
}

}  // namespace ui
