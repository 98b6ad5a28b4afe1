#pragma once

#include <cstdint>
#include <string>

#include "document/choreography.h"
#include "document/position.h"
#include "fountain/fountain.h"
#include "panel/panel_state.h"
#include "timeline/music_player.h"

namespace timeline {

inline constexpr std::int32_t kGrid = 100;             ///< ms; the editing grid
inline constexpr std::int32_t kTimeLimit = 5'400'000;  ///< ms, exclusive: 90:00.0
inline constexpr std::int32_t kLastSettledTime = kTimeLimit - kGrid;

/// Which way a rebuild follows the current time.
enum class Direction { Back = -1, Same = 0, Forward = 1 };

/// The current time and the one way to move it: brings the fountain and the panel into line with
/// the choreography at a time. Owns the position; everything else it is given, and not owned.
class Timeline : private fountain::FountainListener {
 public:
    Timeline(const document::Choreography& choreography, fountain::Fountain& fountain,
             panel::PanelState& panel, MusicPlayer& mmSong);

    [[nodiscard]] const document::Position& Position() const { return position_; }
    [[nodiscard]] std::int32_t CurrentTime() const { return position_.mlngCurrentTime; }

    /// The captions of the readout and of the raw codes line.
    [[nodiscard]] const std::string& lblTime() const { return lblTime_; }
    [[nodiscard]] const std::string& lblABCodes() const { return lblABCodes_; }

    /// Sets the current time (ms, 0 or more) and its readout; rebuilds nothing.
    void ShowTime(std::int32_t time);
    /// The entry for every move of the user. Times outside 0..kTimeLimit-1 are clamped.
    void GoToTime(std::int32_t time);
    /// Time 0 from an empty state. The music is not told.
    void RewindToStart();
    /// Snaps the time to the grid and shows it; `Same` leaves the decoded state as it is.
    void RebuildState(Direction direction);
    /// Applies the slot at the cursor and all behind it that are not later than `time` (ms).
    void ApplySlotsUpTo(std::int32_t time);
    /// True when a slot at the cursor is not later than `time` (ms).
    [[nodiscard]] bool SlotIsDue(std::int32_t time) const;
    /// Applies the slot at the cursor, which must not be the end, and moves the cursor on.
    void ApplyNextSlot();

    /// The commands stored at exactly the current time; empty when there are none.
    [[nodiscard]] const document::Commands& StoredCommands() const;

 private:
    void OnOperatorDisplay(std::uint8_t number) override;
    void OnResetDevices() override;

    [[nodiscard]] bool WalkBackToAnchor();
    void Replay(bool anchored);
    void FindOperatorDisplayBefore(std::int32_t slot);
    void RefreshPanel();

    const document::Choreography& choreography_;
    fountain::Fountain& fountain_;
    panel::PanelState& panel_;
    MusicPlayer& mmSong_;

    document::Position position_;
    std::string lblTime_;
    std::string lblABCodes_;
    std::uint8_t operatorDisplay_ = 0;  ///< last number shown at or before the cursor
    bool operatorDisplaySeen_ = false;  ///< the replay that runs met such a command
};

}  // namespace timeline
