// What one sees late: the panel's refresh, a click and a move until they are on the screen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>

#include "editor/editor.h"
#include "parse_floor.h"
#include "support/hand_player.h"
#include "ui/application.h"
#include "ui/frm_fountain.h"

namespace {

using bench_support::CpuSeconds;
using bench_support::kMostTimes;
using bench_support::LargeFileText;

class NoQuestions final : public editor::Prompts {
 public:
    void Warn(const std::string&) override {}
    [[nodiscard]] bool Ask(const std::string&, const std::string&, editor::Icon) override
    {
        return true;
    }
};

/// The window over a show of the largest size without a reset, full high definition.
struct Desk {
    support::HandPlayer player;
    NoQuestions prompts;
    editor::Editor editor{player, prompts};
    ui::frmFountain window{editor};

    Desk()
    {
        const auto base = std::filesystem::temp_directory_path() / "choreographer_ui_bench";
        std::ofstream(base.string() + ".ctl", std::ios::binary) << LargeFileText(kMostTimes, 0);
        editor.OpenShow(base);
        std::filesystem::remove(base.string() + ".ctl");
        window.resize(1920, 1080);
        window.show();
        editor.MoveTo((kMostTimes - 1) * 100);
        window.Refresh();
        QApplication::processEvents();
    }
};

// Made by the first benchmark; it must go before the application does.
std::unique_ptr<Desk> theDesk;

Desk& TheDesk()
{
    if (!theDesk)
        theDesk = std::make_unique<Desk>();
    return *theDesk;
}

/// Reports the least CPU time and the least wall time of `job`.
template <typename Job>
void Measure(benchmark::State& state, Job job)
{
    using Clock = std::chrono::steady_clock;
    double cpu = 1e9;
    double wall = 1e9;
    for ([[maybe_unused]] auto iteration : state) {
        const auto begin = Clock::now();
        const double start = CpuSeconds();
        job();
        cpu = std::min(cpu, CpuSeconds() - start);
        wall = std::min(wall, std::chrono::duration<double>(Clock::now() - begin).count());
    }
    state.counters["ms"] = cpu * 1000;
    state.counters["wall_ms"] = wall * 1000;
}

void Click(QWidget* widget)
{
    const QPointF at = widget->rect().center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }
    QApplication::processEvents();
}

void RefreshUnchanged(benchmark::State& state)
{
    ui::frmFountain& window = TheDesk().window;
    Measure(state, [&window] { window.Refresh(); });
}

void LampClickedUntilPainted(benchmark::State& state)
{
    auto* lamp = TheDesk().window.findChild<QWidget*>("lblLight_0");
    Click(lamp);
    Measure(state, [lamp] { Click(lamp); });
}

// All spinners and lamps of a group change at once.
void MultiValveSteppedUntilPainted(benchmark::State& state)
{
    Desk& desk = TheDesk();
    int level = 0;
    Measure(state, [&desk, &level] {
        level = level % 6 + 1;
        desk.editor.SetSpinner("updnMultiValve", 0, level);
        desk.window.Refresh();
        QApplication::processEvents();
    });
}

// Back from the end of a show without a reset: everything is replayed.
void WorstMoveUntilPainted(benchmark::State& state)
{
    Desk& desk = TheDesk();
    Measure(state, [&desk] {
        desk.editor.StepTimeDown(timeline::TimeField::Tenths, 1);
        desk.window.Refresh();
        QApplication::processEvents();
    });
}

BENCHMARK(RefreshUnchanged)->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(LampClickedUntilPainted)->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(MultiValveSteppedUntilPainted)->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(WorstMoveUntilPainted)->Unit(benchmark::kMillisecond)->Iterations(50);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ui::SetUpQt();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    theDesk.reset();
    return 0;
}
