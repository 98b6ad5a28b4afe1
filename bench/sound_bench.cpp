#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <thread>

#include "sound/peaks.h"

namespace {

namespace fs = std::filesystem;

// Files of the bench, removed at its end.
struct Folder {
    Folder() { fs::create_directories(path); }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }

    const fs::path path = fs::temp_directory_path() / "sound_bench";
};

void Put(std::ofstream& file, std::uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        file.put(static_cast<char>(value >> (8 * i) & 0xFF));
    }
}

// Ten minutes as a compact disc holds them: 44,100 Hz, two channels.
void WriteTenMinutes(const fs::path& name)
{
    constexpr std::uint64_t kFrames = 600 * 44'100;
    std::ofstream file(name, std::ios::binary);
    file << "RIFF";
    Put(file, 36 + kFrames * 4, 4);
    file << "WAVEfmt ";
    Put(file, 16, 4);
    Put(file, 1, 2);
    Put(file, 2, 2);
    Put(file, 44'100, 4);
    Put(file, 44'100 * 4, 4);
    Put(file, 4, 2);
    Put(file, 16, 2);
    file << "data";
    Put(file, kFrames * 4, 4);
    for (std::uint64_t i = 0; i < kFrames * 2; ++i) {
        Put(file, i * 40'503 % 65'521, 2);
    }
}

// Wall time, for the work is done on other threads.
void ReadWhole(benchmark::State& state, sound::PeakReader& reader, const fs::path& file)
{
    for ([[maybe_unused]] auto iteration : state) {
        reader.Start(file);
        while (reader.Busy()) {
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
        const std::shared_ptr<const sound::Peaks> peaks = reader.Latest();
        if (!peaks || !peaks->complete) {
            state.SkipWithError(reader.Problem().c_str());
            return;
        }
        state.counters["seconds_of_music"] = peaks->length / 1000;
    }
}

// The music of the sample show, for nothing here could make an mp3.
void ReadSampleMusic(benchmark::State& state)
{
    sound::PeakReader reader("");
    ReadWhole(state, reader, SAMPLE_MUSIC);
}
BENCHMARK(ReadSampleMusic)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadTenMinutesOfWav(benchmark::State& state)
{
    const Folder folder;
    WriteTenMinutes(folder.path / "ten.wav");
    sound::PeakReader reader("");
    ReadWhole(state, reader, folder.path / "ten.wav");
}
BENCHMARK(ReadTenMinutesOfWav)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadTenMinutesThatAreKept(benchmark::State& state)
{
    const Folder folder;
    WriteTenMinutes(folder.path / "ten.wav");
    sound::PeakReader reader(folder.path / "cache");
    reader.Start(folder.path / "ten.wav");
    while (reader.Busy()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ReadWhole(state, reader, folder.path / "ten.wav");
}
BENCHMARK(ReadTenMinutesThatAreKept)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
