#include "sound/peak_cache.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "document/file_io.h"

namespace sound {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMagic = "\x89PEAKS\r\n";
constexpr std::uint64_t kVersion = 1;
constexpr const char* kEnding = ".peaks";
constexpr const char* kUnfinished = ".peaks-new";
constexpr std::size_t kMostFiles = 50;
constexpr std::size_t kNumber = 8;  // bytes

std::string Number(std::uint64_t value)
{
    std::string bytes;
    for (std::size_t i = 0; i < kNumber; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
}

std::uint64_t TakeNumber(std::string_view& bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = std::min(kNumber, bytes.size()); i > 0; --i) {
        value = value << 8 | static_cast<std::uint8_t>(bytes[i - 1]);
    }
    bytes.remove_prefix(std::min(kNumber, bytes.size()));
    return value;
}

std::uint64_t Checksum(std::string_view bytes)  // FNV-1a
{
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        sum = (sum ^ static_cast<std::uint8_t>(byte)) * 0x100000001b3;
    }
    return sum;
}

/// Everything that must be alike for the rest to be of use.
std::string Head(const MusicStamp& stamp)
{
    const std::string& file = stamp.file.native();
    std::string head(kMagic);
    head += Number(kVersion) + Number(file.size()) + file + Number(stamp.size);
    head += Number(static_cast<std::uint64_t>(stamp.changed.time_since_epoch().count()));
    return head;
}

fs::path KeptUnder(const fs::path& folder, const MusicStamp& stamp)
{
    char digits[16];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), Checksum(stamp.file.native()), 16);
    return folder / (std::string(digits, end.ptr) + kEnding);
}

void RemoveOldest(const fs::path& folder)
{
    std::vector<std::pair<fs::file_time_type, fs::path>> files;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path ending = entry->path().extension();
        std::error_code gone;
        const fs::file_time_type used = entry->last_write_time(gone);
        if (!gone && (ending == kEnding || ending == kUnfinished)) {
            files.emplace_back(used, entry->path());
        }
    }
    if (files.size() <= kMostFiles) {
        return;
    }
    std::ranges::sort(files, std::greater());
    for (std::size_t i = kMostFiles; i < files.size(); ++i) {
        fs::remove(files[i].second, error);
    }
}

}  // namespace

std::optional<MusicStamp> StampOf(const fs::path& file)
{
    std::error_code error;
    MusicStamp stamp;
    stamp.file = fs::absolute(file, error);
    if (!error) {
        stamp.size = fs::file_size(file, error);
    }
    if (!error) {
        stamp.changed = fs::last_write_time(file, error);
    }
    return error ? std::nullopt : std::optional(stamp);
}

std::optional<Peaks> KeptPeaks(const fs::path& folder, const MusicStamp& stamp)
{
    const fs::path name = KeptUnder(folder, stamp);
    const document::FileBytes file = document::ReadWholeFile(name);
    const std::string_view whole = file.Text();
    const std::string head = Head(stamp);
    if (file.error || !whole.starts_with(head) || whole.size() < head.size() + 3 * kNumber) {
        return std::nullopt;
    }
    const std::string_view summed = whole.substr(0, whole.size() - kNumber);
    std::string_view sum = whole.substr(summed.size());
    std::string_view rest = summed.substr(head.size());
    const std::uint64_t length = TakeNumber(rest);
    const std::uint64_t count = TakeNumber(rest);
    if (TakeNumber(sum) != Checksum(summed) || length > 0x7FFFFFFF || count > Peaks::kMostBins ||
        rest.size() != 2 * count) {
        return std::nullopt;
    }
    Peaks peaks;
    peaks.length = static_cast<std::int32_t>(length);
    peaks.complete = true;
    peaks.bins.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const Peaks::Bin bin{static_cast<std::int8_t>(rest[2 * i]),
                             static_cast<std::int8_t>(rest[2 * i + 1])};
        if (bin.low < -127 || bin.low > bin.high) {
            return std::nullopt;
        }
        peaks.bins[i] = bin;
    }
    std::error_code ignored;
    fs::last_write_time(name, fs::file_time_type::clock::now(), ignored);
    return peaks;
}

void KeepPeaks(const fs::path& folder, const MusicStamp& stamp, const Peaks& peaks)
{
    std::string text = Head(stamp);
    text += Number(static_cast<std::uint64_t>(peaks.length)) + Number(peaks.bins.size());
    for (const Peaks::Bin& bin : peaks.bins) {
        text += static_cast<char>(bin.low);
        text += static_cast<char>(bin.high);
    }
    text += Number(Checksum(text));

    std::error_code error;
    fs::create_directories(folder, error);
    const fs::path name = KeptUnder(folder, stamp);
    fs::path unfinished = name;
    unfinished.replace_extension(std::to_string(getpid()) + kUnfinished);
    std::ofstream file(unfinished, std::ios::binary);
    file << text;
    file.close();
    if (file) {
        fs::rename(unfinished, name, error);
    }
    if (!file || error) {
        fs::remove(unfinished, error);
    }
    RemoveOldest(folder);
}

}  // namespace sound
