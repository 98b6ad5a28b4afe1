#pragma once

#include <string>

#include "document/indexed_array.h"
#include "fountain/colors.h"
#include "fountain/fountain_state.h"
#include "fountain/scene_layout.h"

namespace fountain {

/// Items of the Display menu.
struct DisplayOptions {
    bool Legends = false;
    bool Candelabras = false;  ///< drawn with the copy pen; else exclusive-or
    bool BackCurtain = false;  ///< filled solid; else with vertical lines
    bool ABCodes = false;

    friend bool operator==(const DisplayOptions&, const DisplayOptions&) = default;
};

enum class DrawMode { Xor = 7, Copy = 13 };
enum class FillStyle { Solid = 0, VerticalLines = 3 };

struct LabelElement : Box {
    bool visible = false;
    Color color;

    friend bool operator==(const LabelElement&, const LabelElement&) = default;
};

struct LineElement : Segment {
    bool visible = false;
    Color color;

    friend bool operator==(const LineElement&, const LineElement&) = default;
};

struct LampLetters : Box {
    std::string text;  ///< letters of the lamps that are lit, "R", "B", "A", "W"

    friend bool operator==(const LampLetters&, const LampLetters&) = default;
};

/// Everything that the painter needs of the fountain: elements to paint, in plain values.
struct Scene {
    Box fraView;
    document::IndexedArray<LabelElement, 1, 35> lblRing;
    document::IndexedArray<LineElement, 0, 41> linCandelabra;
    document::IndexedArray<LineElement, 0, 13> linSweep;
    document::IndexedArray<LineElement, 0, 9> linBazooka;
    LineElement linSpout;
    document::IndexedArray<LineElement, 0, 12> linPeacock;
    LineElement linVoice;
    LineElement linBase;
    document::IndexedArray<LabelElement, 0, 1> shpCurtain;  ///< border and fill
    LabelElement lblCross;
    document::IndexedArray<LabelElement, 0, 1> lblCurtainLight;
    document::IndexedArray<LampLetters, 1, 7> lblLamps;

    DrawMode candelabraDrawMode = DrawMode::Xor;
    FillStyle curtainFillStyle = FillStyle::VerticalLines;
    bool lampLetters = false;  ///< the modules show their lamps' letters

    friend bool operator==(const Scene&, const Scene&) = default;
};

/// The picture of a state, from nothing but its arguments: `measures` are those of `layout`.
[[nodiscard]] Scene BuildScene(const FountainState& state, const Drawing& drawing,
                               const DisplayOptions& options, const SceneLayout& layout,
                               const Measures& measures);

}  // namespace fountain
