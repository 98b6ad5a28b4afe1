#include "render/waveform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace render {
namespace {

Peak Around(Peak one, Peak other)
{
    return {std::min(one.low, other.low), std::max(one.high, other.high)};
}

std::vector<Peak> Halved(const std::vector<Peak>& bins)
{
    std::vector<Peak> half((bins.size() + 1) / 2);
    for (std::size_t i = 0; i < half.size(); ++i)
        half[i] = Around(bins[2 * i], bins[std::min(2 * i + 1, bins.size() - 1)]);
    return half;
}

}  // namespace

Waveform::Waveform(std::vector<Peak> bins, std::int32_t binLength) : binLength_(binLength)
{
    if (bins.empty())
        return;
    levels_.push_back(std::move(bins));
    while (levels_.back().size() > 1)
        levels_.push_back(Halved(levels_.back()));
    const Peak all = levels_.back().front();
    loudest_ = std::max(std::abs(int{all.low}), std::abs(int{all.high}));
}

double Waveform::Length() const
{
    return levels_.empty() ? 0 : static_cast<double>(levels_[0].size()) * binLength_;
}

// From the bins at both ends, level by level, towards the few that span the middle.
Peak Waveform::Between(double first, double last) const
{
    const double end = Length();
    if (!(first < end) || !(last > 0) || !(last > first))
        return {};
    auto from = static_cast<std::size_t>(std::max(first, 0.0) / binLength_);
    auto to = static_cast<std::size_t>(std::ceil(std::min(last, end) / binLength_));
    Peak peak = levels_[0][from];
    for (std::size_t level = 0; from < to; ++level, from /= 2, to /= 2) {
        if (from % 2 != 0)
            peak = Around(peak, levels_[level][from++]);
        if (to % 2 != 0 && from < to)
            peak = Around(peak, levels_[level][--to]);
    }
    return peak;
}

Peak Waveform::Bin(std::int64_t index) const
{
    const bool there = index >= 0 && std::cmp_less(index, levels_.empty() ? 0 : levels_[0].size());
    return there ? levels_[0][static_cast<std::size_t>(index)] : Peak{};
}

Waveform::Smooth Waveform::At(double time) const
{
    const double place = time / binLength_ - 0.5;
    const double index = std::floor(place);
    const double share = place - index;
    const Peak left = Bin(static_cast<std::int64_t>(index));
    const Peak right = Bin(static_cast<std::int64_t>(index) + 1);
    return {left.low + share * (right.low - left.low),
            left.high + share * (right.high - left.high)};
}

}  // namespace render
