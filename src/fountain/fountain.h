#pragma once

#include <cstdint>
#include <string_view>

#include "fountain/fountain_state.h"
#include "fountain/timer.h"

namespace fountain {

/// What the panel must hear of commands that are applied.
class FountainListener {
 public:
    virtual ~FountainListener() = default;

    virtual void OnOperatorDisplay(std::uint8_t number) = 0;
    /// Every device has returned to its reset state: light labels off, joins empty, travel short.
    virtual void OnResetDevices() = 0;
};

/// The fountain: the decoded state, what is drawn of it, and the timers of the three effects.
/// A drawing operation stores the level that it draws; one with a level outside 0..5 does nothing
/// at all. Groups are 0 (A) and 1 (B), rings 1..5, modules 1..7.
class Fountain {
 public:
    [[nodiscard]] const FountainState& State() const { return state_; }
    [[nodiscard]] const Drawing& Drawn() const { return drawing_; }

    Timer tmrSweeps{0};
    Timer tmrPulsate{500};
    Timer tmrLights{400};

    /// Applies the commands of one time, in order. Unknown addresses and bits without meaning are
    /// ignored.
    void ApplyCommands(std::string_view commands, FountainListener& listener);
    void ResetDevices(FountainListener& listener);

    /// A single light shift is over once its time is left.
    void EndSingleLightShift();

    void DrawRing(int group, int ring, int level);
    void DrawSweeps(int group, int level);
    void DrawCandelabras(int group, int level);
    void DrawRingJoined(int group, int ring, int level);
    void DrawSweepsJoined(int group, int level);
    void DrawCandelabrasJoined(int group, int level);
    /// The panel's multi-valve: 6 and 7 give the Wedding Cake formation, while the command 48 with
    /// level 7 is ignored; the difference is meant.
    void DrawMultiValve(int group, int level);
    void DrawBazookas(int level);
    void DrawSpout(int level);
    void DrawCurtain(int curtain, int level);  ///< 0 front, 1 back
    void DrawPeacock(int level);
    void DrawVoice(bool flag);

    /// Joins or parts the groups of a water address (1..6, 8) and redraws both.
    void Join(int address, bool joined);
    /// What the commands of sweep motion, sweep pulsation and light movement do; `data` is theirs.
    void ApplySweepMotion(bool opposed, int data);
    void ApplyPulsation(int data);
    /// The choice of light movement without its start: the timer runs when it moves and is timed.
    void SetLightMovement(bool moving, bool right, bool wrap, bool timed);

    void SetModuleLights(int module, int value);
    void SetGroupLights(int group, int value);
    void SetPeacockLights(int group, int value);
    void SetCurtainLights(int curtain, int lights);
    void SetCrossWhite(bool flag);
    void SetBazookaWhite(bool flag);
    void ShiftModuleLights();

    void tmrSweeps_Timer();
    void tmrPulsate_Timer();
    void tmrLights_Timer();

 private:
    void ApplyCommand(std::uint8_t address, int data, FountainListener& listener);
    void ApplyLightCommand(std::uint8_t address, int data);
    void ApplyJoinable(std::uint8_t address, int data);
    void ApplyMultiValve(int data);
    void ApplyWhiteLights(int data);
    void ApplyCopy(int data);
    void ApplyLightMovement(int data);
    void CopyWater(int data);
    void ResetWater();
    void PulsateGroup(int group);

    [[nodiscard]] std::int16_t& StoredLevel(int address, int group);
    void DrawJoinable(int address, int group, int level);
    void DrawJoinableJoined(int address, int group, int level);

    FountainState state_;
    Drawing drawing_;
};

}  // namespace fountain
