// The script beside the view, over the largest show: what opening, typing, editing and playing
// cost.
#include <benchmark/benchmark.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QLineEdit>
#include <algorithm>
#include <cstdint>

#include "document/control_text.h"
#include "parse_floor.h"
#include "timeline/check_show.h"
#include "timeline/script_list.h"
#include "ui/script_view.h"

namespace {

using bench_support::CpuSeconds;
using bench_support::kMostTimes;

const document::Choreography& Largest()
{
    static const document::Choreography show = [] {
        document::Choreography read;
        document::ReadControlText(read, bench_support::LargeFileText(kMostTimes, 0));
        return read;
    }();
    return show;
}

/// Reports the least CPU time of `job`, which `prepare` precedes.
template <typename Prepare, typename Job>
void Measure(benchmark::State& state, Prepare prepare, Job job)
{
    double best = 1e9;
    for ([[maybe_unused]] auto iteration : state) {
        prepare();
        const double start = CpuSeconds();
        job();
        best = std::min(best, CpuSeconds() - start);
    }
    state.counters["ms"] = best * 1000;
}

void Nothing() {}

void BuildList(benchmark::State& state)
{
    timeline::ScriptList list;
    Measure(
        state, [&list] { list = {}; }, [&list] { list.Apply(list.Prepare(Largest())); });
}

timeline::ScriptList LargestList()
{
    timeline::ScriptList list;
    list.Apply(list.Prepare(Largest()));
    return list;
}

void Filter(benchmark::State& state, const char* text)
{
    timeline::ScriptList list = LargestList();
    Measure(state, Nothing, [&list, text] { list.SetFilter(text); });
}

void FindFaults(benchmark::State& state)
{
    const timeline::ScriptList list = LargestList();
    Measure(state, Nothing, [&list] { benchmark::DoNotOptimize(list.PrepareFaults(0)); });
}

/// Stores other commands at a time in the middle, by turns.
void EditMiddle(document::Choreography& show)
{
    const std::int32_t slot = kMostTimes / 2;
    document::Commands commands = show.strCommands[slot];
    commands.back() = commands.back() == 1 ? 2 : 1;
    document::StoreCommands(show, slot, std::move(commands));
}

void InsertOrErase(document::Choreography& show)
{
    const std::int32_t slot = kMostTimes / 2;
    if (show.IsFull())
        document::EraseSlot(show, slot);
    else
        document::InsertSlot(show, slot, slot * 100, {'\x03', '\x14'});
}

/// The view on the screen, 400 x 1000, in the middle of the show.
class Desk final : public QObject {
 public:
    document::Choreography show = Largest();
    ui::ScriptView view{nullptr};
    std::int32_t time = 0;

    explicit Desk(const char* filter)
    {
        view.findChild<QAbstractScrollArea*>()->viewport()->installEventFilter(this);
        view.resize(400, 1000);
        view.show();
        UntilPainted();
        view.findChild<QLineEdit*>()->clearFocus();  // the list does not follow while one types
        Show();
        view.ShowTime(kMostTimes / 2 * 100, false);
        view.findChild<QLineEdit*>()->setText(QLatin1String(filter));
        UntilPainted();
    }
    void Show() { view.ShowChoreography(show, ++version_, 0); }
    /// The screen paints when it is ready; waiting for it takes no CPU time.
    void UntilPainted()
    {
        for (painted_ = false; !painted_;)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

 protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        painted_ |= event->type() == QEvent::Paint;
        return false;
    }

 private:
    std::uint64_t version_ = 0;
    bool painted_ = false;
};

void EditUntilPainted(benchmark::State& state, void (*edit)(document::Choreography&),
                      const char* filter)
{
    Desk desk(filter);
    Measure(
        state, [&desk, edit] { edit(desk.show); },
        [&desk] {
            desk.Show();
            desk.UntilPainted();
        });
}

void TypeUntilPainted(benchmark::State& state)
{
    Desk desk("");
    auto* box = desk.view.findChild<QLineEdit*>();
    Measure(
        state,
        [&desk, box] {
            box->setText(QStringLiteral("module"));
            desk.UntilPainted();
        },
        [&desk, box] {
            box->setText(QStringLiteral("module 4"));
            desk.UntilPainted();
        });
}

// Every status is a time on: the worst of them, which turns a page, and the usual one.
void StatusWhilePlaying(benchmark::State& state)
{
    Desk desk("");
    double worst = 0;
    double sum = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const double start = CpuSeconds();
        desk.view.ShowTime(desk.time += 100, true);
        desk.UntilPainted();
        const double spent = CpuSeconds() - start;
        worst = std::max(worst, spent);
        sum += spent;
    }
    state.counters["ms"] = sum * 1000 / static_cast<double>(state.iterations());
    state.counters["worst_ms"] = worst * 1000;
}

BENCHMARK(BuildList)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK_CAPTURE(Filter, word, "peacock")->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK_CAPTURE(Filter, three, "ring 3 sweeps \"group b\"")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(50);
BENCHMARK_CAPTURE(Filter, time, "1:05")->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK_CAPTURE(Filter, over, "over 11")->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(FindFaults)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK_CAPTURE(EditUntilPainted, store, EditMiddle, "")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(50);
BENCHMARK_CAPTURE(EditUntilPainted, insert, InsertOrErase, "")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(50);
BENCHMARK_CAPTURE(EditUntilPainted, filtered, EditMiddle, "module")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(50);
BENCHMARK(TypeUntilPainted)->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(StatusWhilePlaying)->Unit(benchmark::kMillisecond)->Iterations(500);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
