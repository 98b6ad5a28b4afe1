#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace sound {

struct MusicLength {
    std::int32_t length = 0;  ///< ms, above 0 when there is no problem
    std::string problem;      ///< an English sentence; empty when the length is known
};

/// How long the music in `file` is, as a player would find it. Makes no sound.
[[nodiscard]] MusicLength MeasureMusic(const std::filesystem::path& file);

}  // namespace sound
