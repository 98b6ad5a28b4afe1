#pragma once

#include <array>
#include <cstdint>

#include "editor/editor.h"

namespace editor {

/// Drives an editor's timers in simulated time: no real time passes, and every tick happens at
/// exactly its instant. Timers that are due together tick in the order of `Editor::TimerName`.
class VirtualClock {
 public:
    explicit VirtualClock(Editor& editor);

    [[nodiscard]] std::int64_t Now() const { return now_; }  ///< ms since construction

    /// Lets `duration` ms pass. What is due at its last instant ticks too.
    void Advance(std::int64_t duration);

    /// Plays without music up to `time` (ms) and stops as the editor stops. Nothing happens when
    /// the button is disabled or music is open.
    void PlayUpTo(std::int32_t time);

 private:
    struct Due {
        std::uint32_t periods = 0;  ///< period that `at` ends
        std::int64_t at = 0;
    };

    void Observe();
    [[nodiscard]] std::int64_t NextDue() const;
    void TickAllDue();

    Editor& editor_;
    std::int64_t now_ = 0;
    std::array<Due, Editor::kTimerCount> due_{};
};

}  // namespace editor
