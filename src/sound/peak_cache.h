#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "sound/peak_bins.h"

namespace sound {

/// What tells one state of a music file from another without reading it.
struct MusicStamp {
    std::filesystem::path file;  ///< absolute
    std::uintmax_t size = 0;
    std::filesystem::file_time_type changed;

    friend bool operator==(const MusicStamp&, const MusicStamp&) = default;
};

/// Nothing for what is no file.
[[nodiscard]] std::optional<MusicStamp> StampOf(const std::filesystem::path& file);

/// The complete peaks that are kept in `folder` for just this state of the music. Nothing when
/// there are none, or none that can be trusted.
[[nodiscard]] std::optional<Peaks> KeptPeaks(const std::filesystem::path& folder,
                                             const MusicStamp& stamp);

/// Keeps `peaks` in `folder`, which is made if need be, and removes what was not used for longest
/// beyond 50 files. A disk that refuses is no problem: the next time they are read anew.
void KeepPeaks(const std::filesystem::path& folder, const MusicStamp& stamp, const Peaks& peaks);

}  // namespace sound
