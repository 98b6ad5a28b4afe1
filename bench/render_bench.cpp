#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "fountain/scene.h"
#include "render/scene_painter.h"

namespace {

// The most that can be seen at once: the peacock and the curtains exclude each other.
fountain::Scene FullScene(int width, int height, bool copyPen)
{
    fountain::FountainState state;
    fountain::Drawing drawing;
    state.mintModuleLights = {{1, 2, 4, 8, 4, 2, 1}};
    for (int index = 0; index <= 9; ++index)
        drawing.ringHalves[index] = 10;
    for (int group = 0; group <= 1; ++group) {
        drawing.candelabraHalves[group] = 10;
        drawing.sweeps[group] = {10, 4, true};
    }
    drawing.peacockLights = 3;
    state.mintBazookaLevel = state.mintSpoutLevel = state.mintPeacockLevel = 5;
    state.mblnVoice = state.mblnCrossWhite = true;
    const fountain::SceneLayout layout =
        fountain::Fitted(fountain::DesignLayout(), fountain::FitToScreen(width, height));
    return fountain::BuildScene(state, drawing, {.Legends = true, .Candelabras = copyPen}, layout,
                                fountain::Measure(layout));
}

fountain::Scene CurtainScene(int width, int height)
{
    fountain::Scene scene = FullScene(width, height, false);
    const fountain::SceneLayout layout =
        fountain::Fitted(fountain::DesignLayout(), fountain::FitToScreen(width, height));
    for (fountain::LineElement& line : scene.linPeacock)
        line.visible = false;
    for (int curtain = 0; curtain <= 1; ++curtain)
        static_cast<fountain::Box&>(scene.shpCurtain[curtain]) = layout.shpCurtain[curtain];
    return scene;
}

QImage ViewFor(const fountain::Scene& scene)
{
    return QImage(static_cast<int>(scene.fraView.width / fountain::kUnitsPerPixel + 0.5),
                  static_cast<int>(scene.fraView.height / fountain::kUnitsPerPixel + 0.5),
                  QImage::Format_ARGB32_Premultiplied);
}

void Paint(benchmark::State& state, const fountain::Scene& scene)
{
    QImage view = ViewFor(scene);
    render::SceneCache cache;
    int phase = 0;
    for ([[maybe_unused]] auto iteration : state) {
        QPainter painter(&view);
        render::PaintScene(painter, scene, cache, phase += 50);
    }
}

int Width(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}
int Height(const benchmark::State& state)
{
    return static_cast<int>(state.range(1));
}

void PaintIdle(benchmark::State& state)
{
    const fountain::SceneLayout layout = fountain::Fitted(
        fountain::DesignLayout(), fountain::FitToScreen(Width(state), Height(state)));
    Paint(state, fountain::BuildScene({}, {}, {}, layout, fountain::Measure(layout)));
}

void PaintFull(benchmark::State& state)
{
    Paint(state, FullScene(Width(state), Height(state), false));
}

void PaintFullCopyPen(benchmark::State& state)
{
    Paint(state, FullScene(Width(state), Height(state), true));
}

void PaintCurtains(benchmark::State& state)
{
    Paint(state, CurtainScene(Width(state), Height(state)));
}

// The first painting of a size makes the scenery and every piece of water.
void PaintFirst(benchmark::State& state)
{
    const fountain::Scene scene = FullScene(Width(state), Height(state), false);
    QImage view = ViewFor(scene);
    for ([[maybe_unused]] auto iteration : state) {
        render::SceneCache cache;
        QPainter painter(&view);
        render::PaintScene(painter, scene, cache);
    }
}

void PaintFirstIdle(benchmark::State& state)
{
    const fountain::SceneLayout layout = fountain::Fitted(
        fountain::DesignLayout(), fountain::FitToScreen(Width(state), Height(state)));
    const fountain::Scene scene =
        fountain::BuildScene({}, {}, {}, layout, fountain::Measure(layout));
    QImage view = ViewFor(scene);
    for ([[maybe_unused]] auto iteration : state) {
        render::SceneCache cache;
        QPainter painter(&view);
        render::PaintScene(painter, scene, cache);
    }
}

// Sizes of the window; the view takes the upper half.
void Windows(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"width", "height"})->Unit(benchmark::kMillisecond);
    bench->Args({1024, 768})->Args({1920, 1080})->Args({2560, 1440});
}

BENCHMARK(PaintIdle)->Apply(Windows);
BENCHMARK(PaintFull)->Apply(Windows);
BENCHMARK(PaintFullCopyPen)->Apply(Windows);
BENCHMARK(PaintCurtains)->Apply(Windows);
BENCHMARK(PaintFirst)->Apply(Windows);
BENCHMARK(PaintFirstIdle)->Apply(Windows);

}  // namespace

// Text needs the application object.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
