#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "document/control_file.h"
#include "document/prune.h"
#include "document/time_text.h"
#include "parse_floor.h"

namespace {

using bench_support::CpuSeconds;
using bench_support::FloorSeconds;
using bench_support::kMostTimes;
using bench_support::LargeFileText;
using bench_support::TemporaryFile;

constexpr std::size_t kFileSize = 5'184'000;

/// Runs `job` and reports its least CPU time as a ratio to the parse floor of the largest file.
template <typename Job>
void Measure(benchmark::State& state, Job job)
{
    const double floor = FloorSeconds();
    double best = 1e9;
    for ([[maybe_unused]] auto iteration : state) {
        const double start = CpuSeconds();
        job();
        best = std::min(best, CpuSeconds() - start);
    }
    state.counters["floor"] = best / floor;
    state.counters["ms"] = best * 1000;
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at) + 1;
        lines.push_back(text.substr(at, end - at));
        at = end;
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line;
    return text;
}

std::string WithResets()
{
    return LargeFileText(kMostTimes, 500);
}

std::string OnePercentOutOfOrder()
{
    std::vector<std::string> lines = Lines(LargeFileText());
    for (std::size_t k = 100; k + 1 < lines.size(); k += 200)
        std::swap(lines[k], lines[k + 1]);
    return Joined(lines);
}

std::string Reversed()
{
    std::vector<std::string> lines = Lines(LargeFileText());
    std::reverse(lines.begin() + 1, lines.end());
    return Joined(lines);
}

/// The largest file with every list replaced by `commands`, which has the width of a list.
std::string AllTimes(const std::string& commands)
{
    std::string text = "ct0-381\r\n";
    for (int k = 0; k < kMostTimes; ++k)
        text += document::TimeText(k * 100) + commands + "\r\n";
    return text;
}

std::string AllOff()
{
    return AllTimes(
        "001-016 002-032 003-048 004-016 006-016 008-016 016-000 017-000 048-016 069-000 085-000");
}

std::string AllToSplit()
{
    return AllTimes(
        "001-049 001-050 001-051 002-049 002-050 003-051 006-049 008-050 009-051 048-049 069-048");
}

std::string AllResets()
{
    return AllTimes(
        "099-000 001-016 003-049 003-050 004-016 006-016 008-016 016-000 017-000 048-016 085-000");
}

std::string OneLine()
{
    std::string text = "00:00.0";
    for (unsigned k = 0; text.size() < kFileSize; ++k) {
        const unsigned mixed = k * 2654435761U >> 8;
        const std::string pair{static_cast<char>(static_cast<unsigned char>(mixed)),
                               static_cast<char>(static_cast<unsigned char>(mixed >> 8))};
        text += document::CommandText(pair) + " ";
    }
    return text;
}

/// Two times by turns, each of which gathers a list as long as a list can get.
std::string TwoTimesByTurns()
{
    std::string text;
    for (unsigned k = 0; text.size() < kFileSize; ++k) {
        const unsigned mixed = k * 2654435761U >> 8;
        const std::string pair{static_cast<char>(static_cast<unsigned char>(mixed)),
                               static_cast<char>(static_cast<unsigned char>(mixed >> 8))};
        text += (k % 2 == 0 ? "00:00.0" : "00:00.1") + document::CommandText(pair) + "\n";
    }
    return text;
}

std::string QuarterOfTheLargest()
{
    return LargeFileText(kMostTimes / 4);
}

void Floor(benchmark::State& state)
{
    const TemporaryFile file(LargeFileText());
    Measure(state, [&file] { benchmark::DoNotOptimize(bench_support::ParseFloor(file.Name())); });
}

void Open(benchmark::State& state, std::string (*makeText)())
{
    const TemporaryFile file(makeText());
    document::Choreography read;
    document::ReadControlFile(read, file.Name());
    state.counters["times"] = read.intTimeCount[1];
    state.counters["commands"] = read.intCommandCount[1];
    state.counters["changed"] = read.blnChanged ? 1 : 0;
    Measure(state, [&file] {
        document::Choreography choreography;
        document::ReadControlFile(choreography, file.Name());
        benchmark::DoNotOptimize(choreography.lngTime.data());
    });
}

std::string Largest()
{
    return LargeFileText();
}

void Growth(benchmark::State& state)
{
    const TemporaryFile large(Largest());
    const TemporaryFile quarter(QuarterOfTheLargest());
    double best[2] = {1e9, 1e9};
    for ([[maybe_unused]] auto iteration : state)
        for (int k = 0; k < 2; ++k) {
            const double start = CpuSeconds();
            document::Choreography choreography;
            document::ReadControlFile(choreography, (k == 0 ? large : quarter).Name());
            best[k] = std::min(best[k], CpuSeconds() - start);
        }
    state.counters["growth"] = best[0] / best[1];
}

void WriteUnflushed(const std::filesystem::path& name, const std::string& text)
{
    std::FILE* const file = std::fopen(name.c_str(), "wb");
    std::setbuf(file, nullptr);
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
}

/// All of a save but the backups and the flush to the disk.
void Save(benchmark::State& state)
{
    const TemporaryFile source(Largest());
    const std::filesystem::path target = source.Name().string() + ".saved";
    document::Choreography choreography;
    document::ReadControlFile(choreography, source.Name());
    Measure(state, [&] {
        benchmark::DoNotOptimize(document::PruneChoreography(choreography));
        WriteUnflushed(target, document::ControlText(choreography));
    });
    std::filesystem::remove(target);
}

/// One commit's pruning at the end of a show without a reset.
void PruneAtTheEnd(benchmark::State& state)
{
    document::Choreography choreography;
    document::ReadControlText(choreography, Largest());
    Measure(state, [&choreography] {
        document::Commands list = choreography.strCommands[kMostTimes - 1];
        document::PruneCommands(list, choreography, kMostTimes - 1, document::kEndSentinel);
        benchmark::DoNotOptimize(list.data());
    });
}

}  // namespace

BENCHMARK(Floor)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, largest, &Largest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, with_resets, &WithResets)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, one_percent_out_of_order, &OnePercentOutOfOrder)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, reversed, &Reversed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, all_off, &AllOff)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, all_to_split, &AllToSplit)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, all_resets, &AllResets)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, one_line, &OneLine)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, two_times_by_turns, &TwoTimesByTurns)->Unit(benchmark::kMillisecond);
BENCHMARK(Growth)->Unit(benchmark::kMillisecond);
BENCHMARK(Save)->Unit(benchmark::kMillisecond);
BENCHMARK(PruneAtTheEnd)->Unit(benchmark::kMillisecond);
