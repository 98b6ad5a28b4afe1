#include "parse_floor.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <ctime>
#include <fstream>
#include <utility>
#include <vector>

#include "document/command_list.h"
#include "document/time_text.h"

namespace bench_support {
namespace {

/// The same sequence on every platform.
class Random {
 public:
    unsigned Below(unsigned bound)
    {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<unsigned>((state_ >> 33) % bound);
    }

 private:
    std::uint64_t state_ = 381;
};

/// Ten commands of one time that are not alike, in any order.
std::string Commands(Random& random)
{
    static constexpr unsigned kWater[] = {1, 2, 3, 4, 5, 6, 8, 48};
    static constexpr unsigned kLights[] = {16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 49, 50, 51};
    static constexpr unsigned kOthers[] = {0, 9, 33, 54, 69, 85, 86};
    std::string packed;
    const auto add = [&packed](unsigned address, unsigned data) {
        packed += static_cast<char>(static_cast<unsigned char>(address));
        packed += static_cast<char>(static_cast<unsigned char>(data));
    };
    const unsigned water = random.Below(4);
    for (unsigned k = 0; k < 2; ++k) {
        add(kWater[water * 2 + k], 16 + 1 + random.Below(2));
        add(kWater[water * 2 + k], 32 + 3 + random.Below(2));
    }
    const unsigned lights = random.Below(14);
    for (unsigned k = 0; k < 4; ++k)
        add(kLights[(lights + 3 * k) % 14], 1 + random.Below(7));
    const unsigned others = random.Below(7);
    for (unsigned k = 0; k < 2; ++k)
        add(kOthers[(others + k) % 7], 33 + random.Below(2));
    return packed;
}

std::string ReadAll(const std::filesystem::path& name)
{
    std::string text(std::filesystem::file_size(name), '\0');
    std::ifstream(name, std::ios::binary)
        .read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
}

}  // namespace

std::string LargeFileText(int times, int resetEvery)
{
    Random random;
    std::string text = "ct0-381\r\n";
    text.reserve(static_cast<std::size_t>(times) * 96 + 16);
    for (int k = 0; k < times; ++k) {
        const bool reset = resetEvery > 0 && k % resetEvery == 0;
        std::string packed = Commands(random);
        packed.insert(0, reset ? std::string{'\x63', '\0'} : std::string{'\x07', '\x33'});
        text += document::TimeText(k * 100) + document::CommandText(packed) + "\r\n";
    }
    return text;
}

TemporaryFile::TemporaryFile(std::string_view content)
{
    static int number = 0;
    name_ = std::filesystem::temp_directory_path() /
            ("choreographer_bench_" + std::to_string(::getpid()) + "_" + std::to_string(++number) +
             ".ctl");
    std::ofstream(name_, std::ios::binary) << content;
}

TemporaryFile::~TemporaryFile()
{
    std::error_code ignored;
    std::filesystem::remove(name_, ignored);
}

std::int64_t ParseFloor(const std::filesystem::path& name)
{
    const std::string text = ReadAll(name);
    std::vector<std::int32_t> times;
    std::vector<std::uint8_t> numbers;
    std::int64_t sum = 0;
    const char* at = text.data() + std::min(text.find('\n') + 1, text.size());
    const char* const end = text.data() + text.size();
    const auto number = [&at, &sum](const char* to) {
        int value = 0;
        std::from_chars(at, to, value);
        sum += value;
        return value;
    };
    while (at + 14 <= end) {
        const int minutes = number(at + 2);
        at += 3;
        const int seconds = number(at + 2);
        at += 3;
        times.push_back(minutes * 60'000 + seconds * 1000 + number(at + 1) * 100);
        at += 1;
        for (; at + 7 <= end; at += 8) {
            numbers.push_back(static_cast<std::uint8_t>(number(at + 3)));
            at += 4;
            numbers.push_back(static_cast<std::uint8_t>(number(at + 3)));
            at -= 4;
            if (at[7] == '\r')
                break;
        }
        at += 9;
    }
    return sum + static_cast<std::int64_t>(times.size() + numbers.size());
}

double CpuSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double FloorSeconds()
{
    static const double least = [] {
        const TemporaryFile file(LargeFileText());
        double best = 1e9;
        for (int run = 0; run < 9; ++run) {
            const double start = CpuSeconds();
            volatile std::int64_t sum = ParseFloor(file.Name());
            static_cast<void>(sum);
            best = std::min(best, CpuSeconds() - start);
        }
        return best;
    }();
    return least;
}

}  // namespace bench_support
