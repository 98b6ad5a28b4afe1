// From the start of the process to the first paint of the window: CPU time of whole processes,
// ours by turns with a bare window of the toolkit, so that both meet the same machine.
#include <benchmark/benchmark.h>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <string>
#include <vector>

#include "parse_floor.h"

extern char** environ;

namespace {

constexpr double kNever = 1e9;

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// CPU seconds of one process, or a negative number when it failed.
double Cost(const std::vector<std::string>& arguments)
{
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, START_MAIN, nullptr, nullptr, argv.data(), environ) != 0)
        return -1;
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0)
        return -1;
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

/// `file` may be empty: then neither opens anything.
void Compare(benchmark::State& state, const std::string& file)
{
    std::vector<std::string> bareCall{"start_main", "bare"};
    std::vector<std::string> ourCall{"start_main", "ours"};
    if (!file.empty()) {
        bareCall.push_back(file);
        ourCall.push_back(file);
    }
    double bare = kNever;
    double ours = kNever;
    for ([[maybe_unused]] auto _ : state) {
        const double bareCost = Cost(bareCall);
        const double ourCost = Cost(ourCall);
        if (bareCost < 0 || ourCost < 0) {
            state.SkipWithError("a window did not open; set QT_QPA_PLATFORM or DISPLAY");
            return;
        }
        bare = std::min(bare, bareCost);
        ours = std::min(ours, ourCost);
    }
    state.counters["bare_ms"] = bare * 1e3;
    state.counters["ours_ms"] = ours * 1e3;
    state.counters["ratio"] = ours / bare;
}

void BM_StartWithoutDocument(benchmark::State& state)
{
    Compare(state, "");
}

void BM_StartWithTheLargestShow(benchmark::State& state)
{
    const bench_support::TemporaryFile file(bench_support::LargeFileText());
    Compare(state, file.Name().string());
}

BENCHMARK(BM_StartWithoutDocument)->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StartWithTheLargestShow)->Iterations(9)->Unit(benchmark::kMillisecond);

}  // namespace
