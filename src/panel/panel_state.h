#pragma once

#include <cstdint>
#include <string>

#include "document/indexed_array.h"
#include "fountain/colors.h"
#include "fountain/fountain_state.h"

namespace panel {

/// A spinner. It is changed when its value differs from `Tag`, the value that it was loaded with;
/// the multi-valve also sets the Tags of the spinners that it moves.
struct Spinner {
    std::int16_t Value = 0;
    std::int16_t Tag = 0;
    std::int16_t Min = 0;
    std::int16_t Max = 5;
    bool Wrap = false;        ///< stepping past one end goes to the other
    std::int16_t Loaded = 0;  ///< the Tag as it was loaded, whatever the multi-valve did since

    [[nodiscard]] bool Changed() const { return Value != Tag; }
    friend bool operator==(const Spinner&, const Spinner&) = default;
};

/// A label that is lit or not: its colour tells.
struct ColorLabel {
    fountain::Color BackColor = fountain::kPanelOff;
    fountain::Color Tag = fountain::kPanelOff;

    [[nodiscard]] bool Lit() const { return BackColor != fountain::kPanelOff; }
    [[nodiscard]] bool Changed() const { return BackColor != Tag; }
    friend bool operator==(const ColorLabel&, const ColorLabel&) = default;
};

/// A label whose caption is its value.
struct CaptionLabel {
    std::string Caption;
    std::string Tag;

    [[nodiscard]] bool Changed() const { return Caption != Tag; }
    friend bool operator==(const CaptionLabel&, const CaptionLabel&) = default;
};

inline constexpr fountain::Color kEraseOn{255, 128, 128};
inline constexpr fountain::Color kEraseOff{224, 224, 224};

/// Where the lamps of a device begin in `lblLight`: red, blue, amber and white of each module (from
/// 0 on), of
/// Group A and of Group B; the first three of each peacock; single lamps.
enum LightLabel : int {
    kGroupALabels = 28,
    kGroupBLabels = 32,
    kPeacockALabels = 36,
    kBazookaLabel = 39,
    kPeacockBLabels = 40,
    kAllWhiteLabel = 43,
    kCurtainGreenLabel = 44,
    kCurtainAmberLabel = 45,
    kCrossLabel = 46
};

/// Values of `updnSweepPulsate`; 0 is no command.
enum SweepPulsate : std::int16_t { kPulsateStop = 1, kPulsateUpward = 2, kPulsateDownward = 3 };

/// Every control of the panel as plain data, under the name that its widget has.
struct PanelState {
    document::IndexedArray<Spinner, 0, 9> updnRings;  ///< ring r of group g at 2(r-1)+g
    fountain::PerGroup<Spinner> updnSweeps;
    fountain::PerGroup<Spinner> updnCandelabra;
    fountain::PerGroup<Spinner> updnCurtain;  ///< front, back
    fountain::PerGroup<Spinner> updnMultiValve{{{{0, 0, 0, 6}, {0, 0, 0, 6}}}};
    fountain::PerGroup<Spinner> updnSweepPulsate{{{{1, 1, 0, 3, true}, {1, 1, 0, 3, true}}}};
    Spinner updnBazookas;
    Spinner updnSpout;
    Spinner updnPeacock;
    Spinner updnSweepSpeed{2, 2, 0, 3};
    Spinner updnDisplay{0, 0, 0, 255};

    document::IndexedArray<CaptionLabel, 1, 8> lblBypass;  ///< "X" joins; by water address
    CaptionLabel lblVoice;                                 ///< "X" on
    CaptionLabel lblSweepTravel{"short", "short"};
    document::IndexedArray<CaptionLabel, 0, 2> lblSweepTo;  ///< left end, middle, right end
    CaptionLabel lblDisplay{"00", "00"};                    ///< two hexadecimal digits
    CaptionLabel lblRotateTime;                             ///< seconds with tenths

    document::IndexedArray<ColorLabel, 0, 5>
        lblMotion;  ///< stop, slow, medium, fast; sync, opposed
    document::IndexedArray<ColorLabel, 0, 3>
        lblLightMotion;  ///< right, left, left and right wrapping
    ColorLabel lblTimer;
    document::IndexedArray<ColorLabel, 0, 3> lblCopy;   ///< A to B, B to A, water, lights
    document::IndexedArray<ColorLabel, 0, 2> lblReset;  ///< reset all, undo changes, clear
    document::IndexedArray<ColorLabel, 0, 46> lblLight;
    document::IndexedArray<ColorLabel, 0, 19> lblErase;  ///< erase mode, then its targets

    std::int32_t lngLightTimerTag = 400;  ///< ms, the light timer's interval when loaded
    bool blnTouched = false;              ///< some control was operated since the panel was loaded

    PanelState();

    friend bool operator==(const PanelState&, const PanelState&) = default;
};

/// True when some control differs from its Tag, so that leaving the time would write it.
[[nodiscard]] bool HasPendingEdits(const PanelState& panel);

/// Colours label `index` of `lblLight` (0..46): a lit label goes off, an unlit one takes its own
/// colour. Mode 0 is for labels 0..43, any other for 44..46.
void ToggleLightLabel(PanelState& panel, int index, int mode);

/// The mode of `ToggleLightLabel` that gives label `index` its own colour.
[[nodiscard]] constexpr int LightLabelMode(int index)
{
    return index <= kAllWhiteLabel ? 0 : 1;
}

/// The light value of `count` labels of `lblLight` from `first` on: a bit for each that is lit.
[[nodiscard]] int LitLamps(const PanelState& panel, int first, int count);

/// The travel that `lblSweepTravel` asks for: 1 or 3 steps of ten degrees.
[[nodiscard]] int SweepTravel(const PanelState& panel);

}  // namespace panel
