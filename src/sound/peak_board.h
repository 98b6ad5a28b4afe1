#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "sound/peak_bins.h"

namespace sound {

/// Where the threads that read one piece of music show how far they are. Every thread may call
/// everything; the board outlives whichever of them hangs.
class PeakBoard {
 public:
    /// `patience`: how long nothing may happen before nothing more is expected.
    explicit PeakBoard(std::chrono::milliseconds patience) : patience_(patience) {}

    /// A sign of life.
    void Touch() { touched_ = Clock::now().time_since_epoch().count(); }
    /// Once true it stays so, or somebody would go on for those who have given up.
    [[nodiscard]] bool Stalled()
    {
        if (Clock::now().time_since_epoch() - Clock::duration(touched_) > patience_) {
            stalled_ = true;
        }
        return stalled_;
    }

    void Cancel() { cancelled_ = true; }
    [[nodiscard]] bool Cancelled() const { return cancelled_; }

    void Show(std::shared_ptr<const Peaks> peaks)
    {
        const std::scoped_lock lock(mutex_);
        shown_ = std::move(peaks);
    }
    [[nodiscard]] std::shared_ptr<const Peaks> Shown() const
    {
        const std::scoped_lock lock(mutex_);
        return shown_;
    }

    /// Nothing more will be shown.
    void Finish(std::string problem)
    {
        const std::scoped_lock lock(mutex_);
        problem_ = std::move(problem);
        finished_ = true;
    }
    [[nodiscard]] bool Finished() const { return finished_; }
    [[nodiscard]] std::string Problem() const
    {
        const std::scoped_lock lock(mutex_);
        return problem_;
    }

 private:
    using Clock = std::chrono::steady_clock;

    const std::chrono::milliseconds patience_;
    std::atomic<Clock::rep> touched_ = Clock::now().time_since_epoch().count();
    std::atomic<bool> stalled_ = false;
    std::atomic<bool> cancelled_ = false;
    std::atomic<bool> finished_ = false;
    mutable std::mutex mutex_;
    std::shared_ptr<const Peaks> shown_;
    std::string problem_;
};

}  // namespace sound
