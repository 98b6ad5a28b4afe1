#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "document/choreography.h"

namespace timeline {

inline constexpr std::int32_t kStripLeastSpan = 1'000;  ///< ms; what the strip shows at least

/// Which part of the piece the strip shows over how many pixels. Times are ms with fractions, since
/// a pixel may be less than a millisecond; pixels are logical ones, counted from the left edge.
class StripView {
 public:
    /// Shows the same part with another width; less than a pixel counts as one.
    void SetWidth(int pixels);
    /// A view of the whole piece stays one; any other stays where it is as far as it can.
    void SetLength(std::int32_t length);

    [[nodiscard]] int Width() const { return width_; }
    [[nodiscard]] double Length() const { return length_; }
    [[nodiscard]] double First() const { return first_; }
    [[nodiscard]] double Span() const { return span_; }

    [[nodiscard]] double TimeAt(double x) const { return first_ + x * span_ / width_; }
    [[nodiscard]] double PixelOf(double time) const { return (time - first_) * width_ / span_; }
    [[nodiscard]] bool Shows(double time) const { return time >= first_ && time < first_ + span_; }

    /// Shows `factor` times as much, more than 0, as far as the limits let it; the time at `x`
    /// stays there unless the piece would end within the view.
    void ZoomAround(double x, double factor);
    void ShowAll();
    /// Moves to a later part, or an earlier one with an `amount` (ms) below 0.
    void Pan(double amount);
    /// Turns to the page that shows `time`, when it is not to be seen: in its order of reading, so
    /// that much follows a time ahead.
    void Reveal(double time);

    friend bool operator==(const StripView&, const StripView&) = default;

 private:
    void Place(double first, double span);

    double length_ = kStripLeastSpan;
    double first_ = 0;
    double span_ = kStripLeastSpan;
    int width_ = 1;
};

/// What a time drives, as bits.
enum StripKind : std::uint8_t {
    kWaterKind = 1,
    kLightsKind = 2,
    kMotionKind = 4,
    kResetKind = 8,
    kOtherKind = 16,
    kTooManyKind = 32,  ///< more commands than the fountain's controller takes
};

/// The `StripKind` bits of one time's commands, never 0.
[[nodiscard]] std::uint8_t StripKindsOf(std::string_view commands);

/// The times of a choreography with what they drive, ready to be drawn and to be pointed at.
class StripTicks {
 public:
    /// Reads the choreography anew; true when a tick came, went or changed.
    bool Read(const document::Choreography& choreography);

    /// ms, ascending.
    [[nodiscard]] std::span<const std::int32_t> Times() const { return times_; }
    /// The last time, -1 when there is none.
    [[nodiscard]] std::int32_t LastTime() const { return times_.empty() ? -1 : times_.back(); }

    /// The kinds of all ticks in each of `columns` equal columns of the view, 0 where there is
    /// none.
    [[nodiscard]] std::vector<std::uint8_t> Columns(const StripView& view, int columns) const;

    /// The tick nearest to `x` and at most `reach` pixels beside it, -1 when there is none.
    [[nodiscard]] std::int32_t Near(const StripView& view, double x, double reach) const;

    /// How many ticks share the pixel of `x`.
    [[nodiscard]] std::int32_t CountAt(const StripView& view, double x) const;

    /// The tenth of a second under `x` in ms, within the piece. Where a pixel spans several, the
    /// one that has a tick.
    [[nodiscard]] std::int32_t TenthAt(const StripView& view, double x) const;

 private:
    struct Range {
        std::size_t first;
        std::size_t last;
    };
    [[nodiscard]] Range Within(double first, double last) const;

    std::vector<std::int32_t> times_;
    std::vector<std::uint8_t> kinds_;
};

/// How many pixels of the view a tick covers: a hair, and more where tenths are wide.
[[nodiscard]] double TickWidth(const StripView& view);

/// The length to show: of the show, and on to its last command and to the current time.
[[nodiscard]] std::int32_t StripLength(std::int32_t length, std::int32_t lastTime,
                                       std::int32_t time);

/// The distances of a ruler's lines in ms; `minor` divides `major`.
struct RulerStep {
    std::int32_t major;
    std::int32_t minor;
};

/// The finest ruler whose labelled lines are at least `distance` pixels apart.
[[nodiscard]] RulerStep RulerStepOf(const StripView& view, double distance);

}  // namespace timeline
