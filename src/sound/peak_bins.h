#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace sound {

/// The outline of a piece of music: for each hundredth of a second the lowest and the highest
/// sample of all channels.
struct Peaks {
    static constexpr std::int32_t kBin = 10;                     ///< ms
    static constexpr std::size_t kMostBins = 4 * 60 * 60 * 100;  ///< what is longer is cut off

    struct Bin {
        std::int8_t low = 0;   ///< -127 to 127, the loudest that a file can hold
        std::int8_t high = 0;  ///< not below `low`

        friend bool operator==(const Bin&, const Bin&) = default;
    };

    std::vector<Bin> bins;    ///< what has come so far
    std::int32_t length = 0;  ///< ms of the whole piece, 0 while it is not known
    bool complete = false;

    friend bool operator==(const Peaks&, const Peaks&) = default;
};

/// Sorts samples into bins, at the times at which a player would be heard playing them.
class PeakBinner {
 public:
    /// For the samples that follow; what makes no sense is taken for 1.
    void SetFormat(std::int32_t rate, std::int32_t channels);

    /// `samples`: 16 bits each, little-endian, interleaved. `time`: ns of the first; what is before
    /// 0 is left out. As with a sound device, samples follow the last ones without a gap unless the
    /// time is further off than a device lets pass.
    void Add(std::string_view samples, std::optional<std::int64_t> time);

    [[nodiscard]] const std::vector<Peaks::Bin>& Bins() const { return bins_; }
    /// ms from the beginning to the end of the last sample.
    [[nodiscard]] std::int32_t Length() const;
    /// Samples had to be left out, for there are bins for no more.
    [[nodiscard]] bool Full() const { return full_; }

 private:
    void Follow(std::int64_t time);
    void Merge(std::size_t index, std::string_view samples);

    std::vector<Peaks::Bin> bins_;
    std::int64_t rate_ = 1;
    std::size_t frameBytes_ = 2;
    bool full_ = false;
    std::int64_t next_ = 0;  // the frame that would follow, counted from the beginning of the music
};

}  // namespace sound
