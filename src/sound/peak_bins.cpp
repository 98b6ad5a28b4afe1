#include "sound/peak_bins.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace sound {
namespace {

constexpr std::int64_t kBinsPerSecond = 1000 / Peaks::kBin;
constexpr std::int64_t kSecond = 1'000'000'000;  // ns
constexpr std::int64_t kMostTime = kSecond / kBinsPerSecond * Peaks::kMostBins;
constexpr std::int64_t kDevicesLetPass = kSecond / 25;

int Sample(const char* bytes)
{
    const unsigned low = static_cast<std::uint8_t>(bytes[0]);
    const unsigned high = static_cast<std::uint8_t>(bytes[1]);
    return static_cast<std::int16_t>(low | high << 8U);
}

std::int8_t Level(int sample)
{
    constexpr int kHalf = 1 << 14;
    return static_cast<std::int8_t>((sample * 127 + (sample < 0 ? -kHalf : kHalf)) / (2 * kHalf));
}

/// `count` / `from` * `to`, for values whose product may be too large.
std::int64_t Scaled(std::int64_t count, std::int64_t from, std::int64_t to)
{
    return count / from * to + count % from * to / from;
}

}  // namespace

void PeakBinner::SetFormat(std::int32_t rate, std::int32_t channels)
{
    const std::int64_t newRate = std::max(rate, 1);
    next_ = Scaled(next_, rate_, newRate);
    rate_ = newRate;
    frameBytes_ = 2 * static_cast<std::size_t>(std::max(channels, 1));
}

void PeakBinner::Follow(std::int64_t time)
{
    time = std::min(time, kMostTime);
    const std::int64_t expected = Scaled(next_, rate_, kSecond);
    if (bins_.empty() || std::abs(time - expected) > kDevicesLetPass) {
        next_ = Scaled(time + kSecond / rate_ / 2, kSecond, rate_);
    }
}

void PeakBinner::Add(std::string_view samples, std::optional<std::int64_t> time)
{
    if (time && *time < 0) {
        const std::int64_t early = Scaled(-std::max(*time, -kMostTime), kSecond, rate_);
        samples.remove_prefix(
            std::min(samples.size(), static_cast<std::size_t>(early) * frameBytes_));
        time = 0;
    }
    if (time) {
        Follow(*time);
    }
    std::int64_t frame = next_;
    next_ += static_cast<std::int64_t>(samples.size() / frameBytes_);
    while (frame < next_) {
        const std::int64_t bin = frame * kBinsPerSecond / rate_;
        if (bin >= static_cast<std::int64_t>(Peaks::kMostBins)) {
            next_ = frame;
            full_ = true;
            return;
        }
        const std::int64_t binEnd = ((bin + 1) * rate_ + kBinsPerSecond - 1) / kBinsPerSecond;
        const std::int64_t end = std::min(next_, binEnd);
        const std::size_t bytes = static_cast<std::size_t>(end - frame) * frameBytes_;
        Merge(static_cast<std::size_t>(bin), samples.substr(0, bytes));
        samples.remove_prefix(bytes);
        frame = end;
    }
}

void PeakBinner::Merge(std::size_t index, std::string_view samples)
{
    int low = std::numeric_limits<int>::max();
    int high = std::numeric_limits<int>::min();
    for (std::size_t i = 0; i + 1 < samples.size(); i += 2) {
        const int sample = Sample(samples.data() + i);
        low = std::min(low, sample);
        high = std::max(high, sample);
    }
    Peaks::Bin bin{Level(low), Level(high)};
    if (index < bins_.size()) {
        bin.low = std::min(bin.low, bins_[index].low);
        bin.high = std::max(bin.high, bins_[index].high);
    } else {
        bins_.resize(index + 1);
    }
    bins_[index] = bin;
}

std::int32_t PeakBinner::Length() const
{
    return static_cast<std::int32_t>(next_ * 1000 / rate_);
}

}  // namespace sound
