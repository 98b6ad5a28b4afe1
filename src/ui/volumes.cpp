#include "ui/volumes.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <QDir>
#include <QFile>
#include <QList>

namespace ui {
namespace {

namespace fs = std::filesystem;

/// Where the system itself lives; what is mounted there is its own business.
constexpr auto kOfTheSystem = std::to_array<std::string_view>(
    {"/proc", "/sys", "/dev", "/etc", "/boot", "/snap", "/usr", "/var", "/run"});
constexpr auto kForPeople =
    std::to_array<std::string_view>({"/run/media", "/var/home", "/var/media", "/var/mnt"});
constexpr auto kWithoutDevice = std::to_array<std::string_view>({"zfs", "9p", "virtiofs", "btrfs"});

bool Within(std::string_view path, std::string_view folder)
{
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

// Blanks and the like stand in the table as a backslash and three octal digits.
std::string Unescaped(const QByteArray& field)
{
    std::string text;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool octal = false;
        const int code = field[i] == '\\' ? field.mid(i + 1, 3).toInt(&octal, 8) : 0;
        text += octal ? static_cast<char>(code) : field[i];
        i += octal ? 3 : 0;
    }
    return text;
}

bool HoldsFiles(const QByteArray& device, std::string_view type, std::string_view place)
{
    if (place == "/")
        return true;
    const bool stored = device.startsWith('/') || device.contains(':') ||
                        std::ranges::find(kWithoutDevice, type) != kWithoutDevice.end();
    const auto holds = [place](std::string_view folder) { return Within(place, folder); };
    return stored && type != "squashfs" && place.starts_with('/') &&
           (std::ranges::none_of(kOfTheSystem, holds) || std::ranges::any_of(kForPeople, holds));
}

}  // namespace

std::vector<fs::path> VolumesOf(const QByteArray& mounts, const fs::path& home)
{
    std::vector<fs::path> volumes{"/"};
    for (const QByteArray& line : mounts.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() < 3)
            continue;
        const std::string place = Unescaped(fields[1]);
        if (HoldsFiles(fields[0], fields[2].toStdString(), place))
            volumes.emplace_back(place);
    }
    std::ranges::sort(volumes);
    volumes.erase(std::unique(volumes.begin(), volumes.end()), volumes.end());
    std::erase(volumes, home);
    if (!home.empty())
        volumes.insert(volumes.begin(), home);
    return volumes;
}

std::vector<fs::path> Volumes()
{
    QFile table(QStringLiteral("/proc/self/mounts"));
    const QByteArray mounts = table.open(QIODevice::ReadOnly) ? table.readAll() : QByteArray();
    return VolumesOf(mounts, QFile::encodeName(QDir::homePath()).toStdString());
}

}  // namespace ui
