#include "timeline/strip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "document/command_list.h"
#include "fountain/command_map.h"
#include "timeline/timeline.h"

namespace timeline {
namespace {

constexpr std::int32_t kReserve = 10'000;  // ms; by which a view without an end grows
constexpr double kPageMargin = 0.05;       // of the view, ahead of the time that turned the page
constexpr double kTickShare = 0.7;         // of a tenth
constexpr double kWidestTick = 6;          // pixels
constexpr int kCopyWater = 1;
constexpr int kCopyLights = 2;

constexpr std::uint8_t KindOf(fountain::Device device)
{
    using enum fountain::Device;
    switch (device) {
        case Ring:
        case Sweeps:
        case BazookasSpout:
        case Candelabras:
        case CurtainsPeacock:
        case MultiValve:
        case Voice:
            return kWaterKind;
        case WhiteLights:
        case ModuleLights:
        case CurtainLights:
        case PeacockLights:
        case GroupLights:
        case LightMovement:
        case LightTimer:
            return kLightsKind;
        case SweepMotion:
        case SweepPulsation:
            return kMotionKind;
        case Reset:
            return kResetKind;
        case OperatorDisplay:
        case Copy:  // by its data
        case Unknown:
            break;
    }
    return kOtherKind;
}

// A choreography is read anew after every edit, so an address is looked up once.
const std::array<std::uint8_t, 256>& KindsByAddress()
{
    static const auto kKinds = [] {
        std::array<std::uint8_t, 256> kinds{};
        for (std::size_t address = 0; address < kinds.size(); ++address)
            kinds[address] = KindOf(fountain::RuleFor(static_cast<std::uint8_t>(address)).device);
        return kinds;
    }();
    return kKinds;
}

std::uint8_t CopyKinds(std::uint8_t data)
{
    const int kinds =
        ((data & kCopyWater) != 0 ? kWaterKind : 0) | ((data & kCopyLights) != 0 ? kLightsKind : 0);
    return static_cast<std::uint8_t>(kinds != 0 ? kinds : kOtherKind);
}

}  // namespace

void StripView::SetWidth(int pixels)
{
    width_ = std::max(pixels, 1);
}

void StripView::SetLength(std::int32_t length)
{
    const bool whole = span_ >= length_;
    length_ = std::max(length, kStripLeastSpan);
    Place(first_, whole ? length_ : span_);
}

void StripView::Place(double first, double span)
{
    span_ = std::clamp(span, double{kStripLeastSpan}, length_);
    first_ = std::clamp(first, 0.0, length_ - span_);
}

void StripView::ZoomAround(double x, double factor)
{
    const double time = TimeAt(x);
    const double span = std::clamp(span_ * factor, double{kStripLeastSpan}, length_);
    Place(time - x * span / width_, span);
}

void StripView::ShowAll()
{
    Place(0, length_);
}

void StripView::Pan(double amount)
{
    Place(first_ + amount, span_);
}

void StripView::Reveal(double time)
{
    if (Shows(time))
        return;
    const double margin = span_ * kPageMargin;
    const bool justBefore = time < first_ && time >= first_ - span_;
    Place(justBefore ? time + margin - span_ : time - margin, span_);
}

std::uint8_t StripKindsOf(std::string_view commands)
{
    const std::array<std::uint8_t, 256>& kindsByAddress = KindsByAddress();
    const int count = document::CommandCount(commands);
    int kinds = count > document::kMostCommands ? kTooManyKind : 0;
    for (int k = 0; k < count; ++k) {
        const document::Command command = document::CommandAt(commands, k);
        kinds |= command.address == document::kCopyAddress ? CopyKinds(command.data)
                                                           : kindsByAddress[command.address];
    }
    return static_cast<std::uint8_t>(kinds != 0 ? kinds : kOtherKind);
}

bool StripTicks::Read(const document::Choreography& choreography)
{
    const auto slots = static_cast<std::size_t>(choreography.lngLastSlot());
    std::vector<std::uint8_t> kinds(slots);
    for (std::size_t slot = 0; slot < slots; ++slot)
        kinds[slot] = StripKindsOf(choreography.strCommands[slot]);
    const std::span<const std::int32_t> times(choreography.lngTime.data(), slots);
    if (kinds == kinds_ && std::ranges::equal(times, times_))
        return false;
    kinds_ = std::move(kinds);
    times_.assign(times.begin(), times.end());
    return true;
}

StripTicks::Range StripTicks::Within(double first, double last) const
{
    const auto from = std::ranges::lower_bound(times_, first);
    const auto to = std::lower_bound(from, times_.end(), last);
    return {static_cast<std::size_t>(from - times_.begin()),
            static_cast<std::size_t>(to - times_.begin())};
}

std::vector<std::uint8_t> StripTicks::Columns(const StripView& view, int columns) const
{
    std::vector<std::uint8_t> result(static_cast<std::size_t>(std::max(columns, 0)));
    const double perPixel = double{1} * columns / view.Width();
    const int wide = std::max(1, static_cast<int>(std::lround(TickWidth(view) * perPixel)));
    const double lead = TickWidth(view) * view.Span() / view.Width();
    const auto [first, last] = Within(view.First() - lead, view.First() + view.Span());
    for (std::size_t i = first; i < last; ++i) {
        const int left = static_cast<int>(std::floor(view.PixelOf(times_[i]) * perPixel));
        for (int x = std::max(left, 0); x < std::min(left + wide, columns); ++x)
            result[static_cast<std::size_t>(x)] |= kinds_[i];
    }
    return result;
}

std::int32_t StripTicks::Near(const StripView& view, double x, double reach) const
{
    const double wide = TickWidth(view);
    const auto [first, last] = Within(view.TimeAt(x - reach - wide), view.TimeAt(x + reach) + 1);
    std::int32_t nearest = -1;
    double least = reach;
    for (std::size_t i = first; i < last; ++i) {
        const double left = std::floor(view.PixelOf(times_[i]));
        const double distance = std::max({left - x, x - left - wide, 0.0});
        if (distance > least || (nearest >= 0 && distance == least))
            continue;
        least = distance;
        nearest = static_cast<std::int32_t>(i);
    }
    return nearest;
}

std::int32_t StripTicks::CountAt(const StripView& view, double x) const
{
    const auto [first, last] = Within(view.TimeAt(std::floor(x)), view.TimeAt(std::floor(x) + 1));
    return static_cast<std::int32_t>(last - first);
}

std::int32_t StripTicks::TenthAt(const StripView& view, double x) const
{
    const double left = view.TimeAt(std::floor(x));
    const double right = view.TimeAt(std::floor(x) + 1);
    const auto [first, last] = Within(left, right);
    const double time = right - left > kGrid && first < last ? times_[first] : view.TimeAt(x);
    const double end = std::min(view.Length() - 1, double{kLastSettledTime});
    return static_cast<std::int32_t>(std::clamp(time, 0.0, end)) / kGrid * kGrid;
}

double TickWidth(const StripView& view)
{
    return std::clamp(kGrid * kTickShare * view.Width() / view.Span(), 1.0, kWidestTick);
}

std::int32_t StripLength(std::int32_t length, std::int32_t lastTime, std::int32_t time)
{
    std::int32_t shown = length;
    if (lastTime >= shown)
        shown = lastTime + kGrid;
    if (time >= shown)  // by large steps, so that the picture holds while the time goes on
        shown = (time / kReserve + 1) * kReserve;
    return shown;
}

RulerStep RulerStepOf(const StripView& view, double distance)
{
    static constexpr RulerStep kSteps[] = {
        {100, 20},         {200, 100},         {500, 100},          {1'000, 100},
        {2'000, 500},      {5'000, 1'000},     {10'000, 1'000},     {15'000, 5'000},
        {30'000, 5'000},   {60'000, 10'000},   {120'000, 30'000},   {300'000, 60'000},
        {600'000, 60'000}, {900'000, 300'000}, {1'800'000, 300'000}};
    for (const RulerStep& step : kSteps)
        if (step.major * view.Width() >= distance * view.Span())
            return step;
    return {3'600'000, 600'000};
}

}  // namespace timeline
