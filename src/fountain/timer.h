#pragma once

#include <cstdint>

namespace fountain {

/// A periodic timer as plain data. Nothing ticks here: whoever drives the engine looks at the
/// timers after every event and calls a tick's operation when its period is over. A period begins
/// whenever `Periods` changes; a disabled timer and one with interval 0 do not tick.
class Timer {
 public:
    constexpr explicit Timer(std::int32_t interval = 0) : interval_(interval) {}

    /// Does nothing when the timer is enabled already.
    constexpr void Enable()
    {
        if (!enabled_)
            ++periods_;
        enabled_ = true;
    }
    constexpr void Disable() { enabled_ = false; }
    constexpr void SetEnabled(bool enabled) { enabled ? Enable() : Disable(); }

    /// `interval` in ms. Begins the period of a running timer anew.
    constexpr void SetInterval(std::int32_t interval)
    {
        interval_ = interval;
        if (enabled_)
            ++periods_;
    }

    [[nodiscard]] constexpr bool Enabled() const { return enabled_; }
    [[nodiscard]] constexpr std::int32_t Interval() const { return interval_; }
    [[nodiscard]] constexpr bool Ticks() const { return enabled_ && interval_ > 0; }
    [[nodiscard]] constexpr std::uint32_t Periods() const { return periods_; }

 private:
    std::int32_t interval_;
    bool enabled_ = false;
    std::uint32_t periods_ = 0;  ///< counts the beginnings of periods
};

}  // namespace fountain
