#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>

#include "document/control_text.h"
#include "fountain/fountain.h"
#include "panel/commit.h"
#include "panel/panel_state.h"
#include "parse_floor.h"
#include "support/hand_player.h"
#include "timeline/playback.h"
#include "timeline/timeline.h"

namespace {

using bench_support::CpuSeconds;
using bench_support::FloorSeconds;
using bench_support::kMostTimes;
using bench_support::LargeFileText;

constexpr std::int32_t kEnd = (kMostTimes - 1) * 100;

/// Reports the least CPU time of `job`, which `prepare` precedes, as a ratio to the parse floor.
template <typename Prepare, typename Job>
void Measure(benchmark::State& state, Prepare prepare, Job job)
{
    const double floor = FloorSeconds();
    double best = 1e9;
    for ([[maybe_unused]] auto iteration : state) {
        prepare();
        const double start = CpuSeconds();
        job();
        best = std::min(best, CpuSeconds() - start);
    }
    state.counters["floor"] = best / floor;
    state.counters["ms"] = best * 1000;
}

document::Choreography Largest(int resetEvery)
{
    document::Choreography show;
    document::ReadControlText(show, LargeFileText(kMostTimes, resetEvery));
    return show;
}

/// The timeline of a show without a window.
struct Desk {
    explicit Desk(int resetEvery) : show(Largest(resetEvery)) {}

    document::Choreography show;
    fountain::Fountain fountain;
    panel::PanelState panel;
    support::HandPlayer player;
    timeline::Timeline timeline{show, fountain, panel, player};
};

void MoveForwardOverAll(benchmark::State& state)
{
    Desk desk(0);
    Measure(
        state, [&desk] { desk.timeline.RewindToStart(); },
        [&desk] { desk.timeline.GoToTime(kEnd); });
}

void StepBackFromTheEnd(benchmark::State& state)
{
    Desk desk(0);
    Measure(
        state, [&desk] { desk.timeline.GoToTime(kEnd); },
        [&desk] { desk.timeline.GoToTime(kEnd - 100); });
}

void StepBackToAReset(benchmark::State& state)
{
    Desk desk(500);
    Measure(
        state, [&desk] { desk.timeline.GoToTime(kEnd); },
        [&desk] { desk.timeline.GoToTime(kEnd - 100); });
}

/// The operator's number, which a reset keeps, is then searched for in vain down to the first time.
void StepBackToAResetWithoutDisplay(benchmark::State& state)
{
    Desk desk(500);
    for (std::int32_t slot = 0; slot < desk.show.lngLastSlot(); ++slot) {
        document::Commands commands = desk.show.strCommands[static_cast<std::size_t>(slot)];
        document::RemoveCommand(commands, 0, document::Which::All);
        document::StoreCommands(desk.show, slot, commands);
    }
    Measure(
        state, [&desk] { desk.timeline.GoToTime(kEnd); },
        [&desk] { desk.timeline.GoToTime(kEnd - 100); });
}

struct Nothing final : timeline::PanelCommitter {
    void CommitPanel() override {}
};

/// What is written there depends on all that the show did before: there is no reset to begin from.
void CommitOfOneEditAtTheEnd(benchmark::State& state)
{
    Desk desk(0);
    std::int16_t level = 0;
    Measure(
        state,
        [&desk, &level] {
            desk.timeline.GoToTime(kEnd);
            level = static_cast<std::int16_t>(1 + level % 5);
            desk.panel.updnPeacock.Value = level;
        },
        [&desk] {
            benchmark::DoNotOptimize(
                panel::CommitPanel(desk.show, kEnd, desk.panel, desk.fountain));
        });
}

void StatusWithTenTimesDue(benchmark::State& state)
{
    Desk desk(0);
    Nothing committer;
    timeline::Playback playback(desk.show, desk.timeline, desk.player, committer);
    desk.player.musicLength = kEnd;
    desk.player.Open("show.mp3");
    playback.ResetPlayback();
    playback.mmSong_PlayClick();
    desk.player.Poll();
    Measure(
        state,
        [&desk] {
            if (desk.timeline.CurrentTime() + 2000 > kEnd) {
                desk.player.SetPosition(0);
                desk.timeline.RewindToStart();
            }
            desk.player.SetPosition(desk.timeline.CurrentTime() + 1000);
        },
        [&playback] { playback.mmSong_StatusUpdate(); });
}

}  // namespace

BENCHMARK(MoveForwardOverAll)->Unit(benchmark::kMillisecond);
BENCHMARK(StepBackFromTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK(StepBackToAReset)->Unit(benchmark::kMillisecond);
BENCHMARK(StepBackToAResetWithoutDisplay)->Unit(benchmark::kMillisecond);
BENCHMARK(CommitOfOneEditAtTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK(StatusWithTenTimesDue)->Unit(benchmark::kMillisecond);
