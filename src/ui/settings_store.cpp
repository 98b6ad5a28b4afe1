#include "ui/settings_store.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace ui {
namespace {

constexpr int kLockIsWritten = 2;  // seconds

QString KeyOf(std::string_view key)
{
    return QStringLiteral("Settings/") +
           QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

// A program that died between making its lock and signing it leaves a lock that nobody holds, on
// which the next one would wait for half a minute.
void RemoveDeadLock(const QString& file)
{
    const QFileInfo lock(file + QStringLiteral(".lock"));
    if (lock.exists() && lock.size() == 0 &&
        lock.lastModified().secsTo(QDateTime::currentDateTime()) >= kLockIsWritten)
        QFile::remove(lock.filePath());
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
    RemoveDeadLock(settings_.fileName());
    settings_.setValue(KeyOf(key), text);
}

void QtSettingsStore::Sync()
{
    RemoveDeadLock(settings_.fileName());
    settings_.sync();
}

}  // namespace ui
