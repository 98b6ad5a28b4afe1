#include "editor/summary.h"

#include <algorithm>

#include "document/ascii.h"

namespace editor {
namespace {

constexpr std::size_t kCountWidth = 7;
constexpr const char* kNoBreakSpace = "\xC2\xA0";
constexpr std::int32_t kMinute = 60'000;

std::string LowerName(const std::filesystem::path& name)
{
    std::string lower = name.string();
    std::ranges::transform(lower, lower.begin(), document::LowerAscii);
    return lower;
}

std::string MusicPart(const std::filesystem::path& music, std::int32_t length)
{
    if (music.empty())
        return "No music file\n\n";
    const std::int32_t minutes = length / kMinute;
    const std::int32_t tenths = (length % kMinute + 50) / 100;
    std::string seconds = std::to_string(tenths / 10);
    if (tenths % 10 != 0)
        seconds += '.' + std::to_string(tenths % 10);
    return LowerName(music) + '\n' + kNoBreakSpace + kNoBreakSpace +
           "Play time: " + std::to_string(minutes) + " minutes " + seconds + " seconds\n\n";
}

std::string ControlPart(const document::Choreography& choreography)
{
    if (!choreography.fileExists)
        return "No control file";
    const auto line = [](std::int32_t count, const char* label) {
        return FormatCount(count) + label + '\n';
    };
    return LowerName(choreography.fileName) + "\r\n" +
           line(choreography.intTimeCount[0], " active times loaded") +
           line(choreography.intTimeCount[1], " active times currently") +
           line(choreography.intCommandCount[0], " commands loaded") +
           line(choreography.intCommandCount[1], " commands currently") + '\n' +
           (choreography.blnChanged ? "New choreography has not been saved." : "");
}

}  // namespace

std::string FormatCount(std::int32_t count)
{
    std::string text = std::to_string(count);
    const std::size_t first = count < 0 ? 1 : 0;
    for (std::size_t digits = 3; text.size() > digits + first; digits += 4)
        text.insert(text.size() - digits, 1, ',');
    const std::size_t missing = kCountWidth - std::min(kCountWidth, text.size());
    for (std::size_t k = 0; k < missing; ++k)
        text.insert(0, kNoBreakSpace);
    return text;
}

std::string Summary(const document::Choreography& choreography, const std::filesystem::path& music,
                    std::int32_t musicLength)
{
    return MusicPart(music, musicLength) + ControlPart(choreography);
}

}  // namespace editor
