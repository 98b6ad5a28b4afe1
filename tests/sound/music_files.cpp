#include "music_files.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <random>

namespace sound {
namespace {

// A cache of the plug-ins that the tests may write, whatever the user's home is.
class Registry : public testing::Environment {
    void SetUp() override { setenv("GST_REGISTRY", GST_REGISTRY_FILE, 1); }
};
[[maybe_unused]] const testing::Environment* const kRegistry =
    testing::AddGlobalTestEnvironment(new Registry);

std::string LittleEndian(std::uint32_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return text;
}

std::string WavHeader(std::uint32_t rate, std::uint32_t dataSize, std::uint32_t channels = 1)
{
    return "RIFF" + LittleEndian(36 + dataSize, 4) + "WAVEfmt " + LittleEndian(16, 4) +
           LittleEndian(1, 2) + LittleEndian(channels, 2) + LittleEndian(rate, 4) +
           LittleEndian(rate * 2 * channels, 4) + LittleEndian(2 * channels, 2) +
           LittleEndian(16, 2) + "data" + LittleEndian(dataSize, 4);
}

}  // namespace

MusicFolder::MusicFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "sound-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
}

MusicFolder::~MusicFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path MusicFolder::Add(const std::string& name, std::string_view bytes) const
{
    const std::filesystem::path file = folder_ / name;
    std::ofstream(file, std::ios::binary) << bytes;
    EXPECT_TRUE(std::filesystem::exists(file)) << file;
    return file;
}

std::string WavBytes(std::uint32_t rate, std::uint32_t channels,
                     const std::vector<std::int16_t>& samples)
{
    std::string bytes = WavHeader(rate, static_cast<std::uint32_t>(samples.size() * 2), channels);
    for (const std::int16_t sample : samples) {
        bytes += LittleEndian(static_cast<std::uint16_t>(sample), 2);
    }
    return bytes;
}

std::string WavBytes(std::int32_t length)
{
    constexpr std::uint32_t kRate = 8000;
    std::vector<std::int16_t> samples(static_cast<std::uint32_t>(length) * kRate / 1000);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double wave = std::sin(0.3 * static_cast<double>(i));
        samples[i] = static_cast<std::int16_t>(std::lround(900 * wave));
    }
    return WavBytes(kRate, 1, samples);
}

std::string DataBytes(const std::string& name)
{
    std::ifstream file(std::filesystem::path(TEST_DATA) / name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<NotMusic> NotMusicFiles()
{
    std::mt19937 random(7);
    std::string noise;
    for (int i = 0; i < 50'000; ++i) {
        noise += static_cast<char>(random() & 0xFF);
    }
    const std::string tag("ID3\4\0\0\0\0\0\0", 10);
    const std::string png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\1\0\0\0\0\x37\x6e\xf9\x24",
                          33);
    const std::string list = "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\nhttp://[::1]/a.ts\n";
    return {
        {"no bytes", "empty.mp3", "", "is empty"},
        {"text", "notes.mp3", "the second verse begins here\n", "is not music"},
        {"random bytes", "noise.mp3", noise, "\"noise.mp3\""},
        {"tag alone", "tag.mp3", tag, "is not music"},
        {"picture", "cover.mp3", png, "\"cover.mp3\""},
        {"list of addresses", "list.mp3", list, "\"list.mp3\""},
        {"no format", "short.wav", "RIFF\x24" + std::string(3, '\0') + "WAVE", "is not music"},
        {"no samples", "silent.wav", WavHeader(8000, 0), "\"silent.wav\""},
        {"samples promised", "cut.wav", WavHeader(8000, 100), "\"cut.wav\""},
        {"sample rate 0", "rate.wav", WavHeader(0, 4) + "abcd", "\"rate.wav\""},
    };
}

}  // namespace sound
