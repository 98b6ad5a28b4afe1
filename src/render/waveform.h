#pragma once

#include <cstdint>
#include <vector>

namespace render {

/// The lowest and the highest sample of a stretch of music, -127..127.
struct Peak {
    std::int8_t low = 0;
    std::int8_t high = 0;

    friend bool operator==(const Peak&, const Peak&) = default;
};

/// The outline of a piece of music, and of any part of it at once however long that is.
class Waveform {
 public:
    Waveform() = default;
    /// `bins` follow each other from time 0 on, each `binLength` ms long, more than 0.
    Waveform(std::vector<Peak> bins, std::int32_t binLength);

    [[nodiscard]] double BinLength() const { return binLength_; }
    /// ms that there are bins for.
    [[nodiscard]] double Length() const;
    /// The largest distance from 0 anywhere, 0..127.
    [[nodiscard]] int Loudest() const { return loudest_; }

    /// The peak of all bins that lie at least partly within the times (ms); 0 where there are none.
    [[nodiscard]] Peak Between(double first, double last) const;

    /// An outline that runs straight from the middle of one bin to the middle of the next.
    struct Smooth {
        double low = 0;
        double high = 0;
    };
    [[nodiscard]] Smooth At(double time) const;

 private:
    [[nodiscard]] Peak Bin(std::int64_t index) const;

    std::vector<std::vector<Peak>> levels_;  // each bin the peak of two of the level before
    std::int32_t binLength_ = 1;
    int loudest_ = 0;
};

}  // namespace render
