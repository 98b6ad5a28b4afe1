#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWheelEvent>
#include <memory>

#include "document/control_file.h"
#include "parse_floor.h"
#include "sound/peaks.h"
#include "ui/time_strip.h"

namespace {

constexpr int kWidth = 2560;
constexpr int kHeight = 105;  // of a window of 2560 x 1440
constexpr std::int32_t kNinetyMinutes = 5'400'000;

// Another value from bin to bin, so that no column is like the one before.
std::shared_ptr<const sound::Peaks> LongMusic()
{
    auto peaks = std::make_shared<sound::Peaks>();
    peaks->bins.resize(kNinetyMinutes / sound::Peaks::kBin);
    unsigned state = 1;
    for (sound::Peaks::Bin& bin : peaks->bins) {
        state = state * 1'664'525U + 1'013'904'223U;
        bin.low = static_cast<std::int8_t>(-static_cast<int>(state >> 25));
        bin.high = static_cast<std::int8_t>(state >> 18 & 127U);
    }
    peaks->length = kNinetyMinutes;
    peaks->complete = true;
    return peaks;
}

const document::Choreography& LargestShow()
{
    static const document::Choreography kShow = [] {
        const bench_support::TemporaryFile file(bench_support::LargeFileText());
        document::Choreography show;
        static_cast<void>(document::ReadControlFile(show, file.Name()));
        return show;
    }();
    return kShow;
}

/// The strip of the largest show over the longest music, painted into an image.
struct Stage {
    document::Choreography show = LargestShow();
    ui::TimeStrip strip{nullptr};
    std::uint64_t version = 1;

    Stage()
    {
        strip.resize(kWidth, kHeight);
        strip.ShowChoreography(show, version);
        strip.ShowPeaks(LongMusic());
        strip.ShowPosition(0, kNinetyMinutes, false);
        strip.show();
        QApplication::processEvents();
    }
};

// Zooms until the strip shows no more than `span` ms.
void ZoomTo(ui::TimeStrip& strip, double span)
{
    while (strip.View().Span() > span) {
        QWheelEvent event({kWidth / 2.0, 0}, {kWidth / 2.0, 0}, {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&strip, &event);
    }
    QApplication::processEvents();
}

// A mark that comes and goes makes the strip paint all of its picture.
void RepaintAll(benchmark::State& state)
{
    Stage stage;
    ZoomTo(stage.strip, static_cast<double>(state.range(0)) * 1000);
    timeline::Marks marks;
    for ([[maybe_unused]] auto iteration : state) {
        marks.tenths.assign(marks.tenths.empty() ? 1 : 0, 27'000);
        stage.strip.ShowMarks(marks);
        QApplication::processEvents();
    }
}

void StepWhilePlaying(benchmark::State& state)
{
    Stage stage;
    ZoomTo(stage.strip, static_cast<double>(state.range(0)) * 1000);
    auto time = static_cast<std::int32_t>(stage.strip.View().First());
    const std::int32_t first = time;
    const double last = first + stage.strip.View().Span() - 1000;
    const auto step = static_cast<std::int32_t>(stage.strip.View().Span() / kWidth) + 1;
    for ([[maybe_unused]] auto iteration : state) {
        time = time + step < last ? time + step : first;
        stage.strip.ShowPosition(time, kNinetyMinutes, true);
        QApplication::processEvents();
    }
}

// One command at the first time: water of another level, or water and lights by turns.
void ShowAnEdit(benchmark::State& state)
{
    Stage stage;
    const bool shows = state.range(0) != 0;
    const document::Commands commands[] = {"\x01\x11", shows ? "\x11\x01" : "\x01\x12"};
    std::size_t turn = 0;
    for ([[maybe_unused]] auto iteration : state) {
        document::StoreCommands(stage.show, 0, commands[++turn % 2]);
        stage.strip.ShowChoreography(stage.show, ++stage.version);
        QApplication::processEvents();
    }
}

void ShowSameVersion(benchmark::State& state)
{
    Stage stage;
    for ([[maybe_unused]] auto iteration : state)
        stage.strip.ShowChoreography(stage.show, stage.version);
}

void ShowNewPeaks(benchmark::State& state)
{
    Stage stage;
    const std::shared_ptr<const sound::Peaks> peaks[] = {LongMusic(), LongMusic()};
    std::size_t turn = 0;
    for ([[maybe_unused]] auto iteration : state) {
        stage.strip.ShowPeaks(peaks[++turn % 2]);
        QApplication::processEvents();
    }
}

BENCHMARK(RepaintAll)
    ->ArgName("seconds")
    ->Arg(5400)
    ->Arg(60)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StepWhilePlaying)->ArgName("seconds")->Arg(5400)->Arg(60)->Unit(benchmark::kMicrosecond);
BENCHMARK(ShowAnEdit)->ArgName("shows")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ShowSameVersion)->Unit(benchmark::kNanosecond);
BENCHMARK(ShowNewPeaks)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
