#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace sound {

/// A folder for the files of one test, removed with it.
class MusicFolder {
 public:
    MusicFolder();
    ~MusicFolder();
    MusicFolder(const MusicFolder&) = delete;
    MusicFolder& operator=(const MusicFolder&) = delete;

    [[nodiscard]] std::filesystem::path Add(const std::string& name, std::string_view bytes) const;

 private:
    std::filesystem::path folder_;
};

/// 16-bit PCM; the samples of the channels by turns.
[[nodiscard]] std::string WavBytes(std::uint32_t rate, std::uint32_t channels,
                                   const std::vector<std::int16_t>& samples);

/// 16-bit PCM at 8 kHz, one channel, a soft tone of `length` ms.
[[nodiscard]] std::string WavBytes(std::int32_t length);

/// The bytes of a file in the folder `data`.
[[nodiscard]] std::string DataBytes(const std::string& name);

struct NotMusic {
    const char* fault;
    const char* name;
    std::string bytes;
    const char* problem;  ///< a part of the sentence
};

/// Files that are no music.
[[nodiscard]] std::vector<NotMusic> NotMusicFiles();

}  // namespace sound
