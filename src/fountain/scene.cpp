#include "fountain/scene.h"

#include <cmath>
#include <numbers>

#include "fountain/command_map.h"

namespace fountain {
namespace {

constexpr Color kBlack{0, 0, 0};
constexpr Color kVoiceColor{192, 224, 255};
constexpr Color kBaseColor{96, 104, 128};

/// Module of every line of the bazooka streams, mirrored about the centre.
constexpr document::IndexedArray<int, 0, 9> kBazookaModule{{1, 7, 1, 7, 2, 6, 2, 6, 3, 5}};

int CurtainColor(int lights)
{
    constexpr int kColors[] = {0, kCurtainGreenColor, kCurtainAmberColor, kCurtainBothColor};
    return kColors[lights & 3];
}

// An unlit module shows the back curtain's light.
Color ColorOfModule(const FountainState& state, int module)
{
    const int value = state.mintModuleLights[module];
    return mlngColors(value != 0 ? value : CurtainColor(state.mintCurtainLights));
}

Color ColorOfBazooka(const FountainState& state, int module)
{
    const int value = state.mintModuleLights[module] | (state.mblnBazookaWhite ? kWhite : 0);
    return value != 0 ? mlngColors(value) : ColorOfModule(state, module);
}

std::string LampText(int value)
{
    std::string text;
    constexpr char kLetters[] = {'R', 'B', 'A', 'W'};
    for (int lamp = 0; lamp < 4; ++lamp)
        if (value & (1 << lamp))
            text += kLetters[lamp];
    return text;
}

/// Everything that one element is made of.
struct Builder {
    const FountainState& state;
    const Drawing& drawing;
    const SceneLayout& layout;
    const Measures& measures;
    Scene& scene;

    void Rings(int module) const
    {
        const int group = GroupOfModule(module);
        for (int ring = 1; ring <= 5; ++ring) {
            const int index = RingIndex(ring, group);
            LabelElement& label = scene.lblRing[RingLabel(module, ring)];
            const Box& design = layout.lblRing[RingLabel(module, ring)];
            static_cast<Box&>(label) = design;
            label.height = (drawing.ringShown[index] + 2) * measures.ringUnit[ring] / 2.0;
            label.top = design.Bottom() - label.height;
            label.visible = drawing.ringHalves[index] > 0;
            label.color = ColorOfModule(state, module);
        }
    }

    void Candelabras(int module) const
    {
        const int halves = drawing.candelabraHalves[GroupOfModule(module)];
        for (int jet = 0; jet <= 5; ++jet) {
            LineElement& line = scene.linCandelabra[CandelabraLine(module, jet)];
            const Vector& vector = measures.candelabraVector[jet];
            static_cast<Segment&>(line) = layout.linCandelabra[CandelabraLine(module, jet)];
            line.x2 = line.x1 - vector.x * halves / 2.0;
            line.y2 = line.y1 - vector.y * halves / 2.0;
            line.visible = halves > 0;
            line.color = ColorOfModule(state, module);
        }
    }

    void Sweeps(int module) const
    {
        const Drawing::Sweeps& sweeps = drawing.sweeps[GroupOfModule(module)];
        const double length = std::nearbyint(measures.sweepLength * sweeps.halves / 10.0);
        const double degree = std::numbers::pi / 180;
        const double angle = sweeps.position * 10.0 - 30;
        const double dx = std::nearbyint(length * std::sin(angle * degree));
        const double dy =
            std::nearbyint(std::abs(length * std::sin((90 - std::abs(angle)) * degree)));
        for (int side = 0; side <= 1; ++side) {
            LineElement& line = scene.linSweep[SweepLine(module, side)];
            static_cast<Segment&>(line) = layout.linSweep[SweepLine(module, side)];
            line.x2 = line.x1 + (side == 1 && sweeps.opposed ? -dx : dx);
            line.y2 = line.y1 - dy;
            line.visible = sweeps.halves > 0;
            line.color = ColorOfModule(state, module);
        }
    }

    void Bazookas() const
    {
        for (int index = 0; index <= 9; ++index) {
            LineElement& line = scene.linBazooka[index];
            static_cast<Segment&>(line) = layout.linBazooka[index];
            line.visible = index / 2 < state.mintBazookaLevel;
            line.color = ColorOfBazooka(state, kBazookaModule[index]);
        }
    }

    void Center() const
    {
        static_cast<Segment&>(scene.linSpout) = layout.linSpout;
        scene.linSpout.y1 = layout.linSpout.y2 - measures.spoutLength * state.mintSpoutLevel / 5.0;
        scene.linSpout.visible = state.mintSpoutLevel > 0;
        scene.linSpout.color = ColorOfModule(state, 4);

        scene.linVoice = {layout.linVoice, state.mblnVoice, kVoiceColor};
        scene.linBase = {layout.linBase, true, kBaseColor};
        for (int index = 0; index <= 12; ++index) {
            LineElement& line = scene.linPeacock[index];
            const Vector& vector = measures.peacockVector[index];
            static_cast<Segment&>(line) = layout.linPeacock[index];
            line.x2 = line.x1 - vector.x * state.mintPeacockLevel;
            line.y2 = line.y1 - vector.y * state.mintPeacockLevel;
            line.visible = state.mintPeacockLevel > 0;
            line.color = mlngColors(drawing.peacockLights);
        }
    }

    void Curtains() const
    {
        const int lights = state.mintCurtainLights;
        for (int curtain = 0; curtain <= 1; ++curtain) {
            LabelElement& shape = scene.shpCurtain[curtain];
            const Box& design = layout.shpCurtain[curtain];
            const int level = state.mintCurtainLevel[curtain];
            static_cast<Box&>(shape) = design;
            shape.height = level == 0 ? 0 : (level + 1) * measures.curtainUnit;
            shape.top = design.Bottom() - shape.height;
            shape.visible = true;
            shape.color = mlngColors(curtain == 1 ? CurtainColor(lights) : 0);
        }
        scene.lblCurtainLight[0] = {layout.lblCurtainLight[0], true,
                                    lights & 1 ? mlngColors(kCurtainGreenColor) : kBlack};
        scene.lblCurtainLight[1] = {layout.lblCurtainLight[1], true,
                                    lights & 2 ? mlngColors(kCurtainAmberColor) : kBlack};
        scene.lblCross = {layout.lblCross, state.mblnCrossWhite, mlngColors(kWhite)};
    }
};

}  // namespace

Scene BuildScene(const FountainState& state, const Drawing& drawing, const DisplayOptions& options,
                 const SceneLayout& layout, const Measures& measures)
{
    Scene scene;
    scene.fraView = layout.fraView;
    const Builder builder{state, drawing, layout, measures, scene};
    for (int module = 1; module <= 7; ++module) {
        builder.Rings(module);
        builder.Candelabras(module);
        builder.Sweeps(module);
        scene.lblLamps[module] = {layout.lblLamps[module],
                                  LampText(state.mintModuleLights[module])};
    }
    builder.Bazookas();
    builder.Center();
    builder.Curtains();
    scene.candelabraDrawMode = options.Candelabras ? DrawMode::Copy : DrawMode::Xor;
    scene.curtainFillStyle = options.BackCurtain ? FillStyle::Solid : FillStyle::VerticalLines;
    scene.lampLetters = options.Legends;
    return scene;
}

}  // namespace fountain
