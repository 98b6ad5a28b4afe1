#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace bench_support {

inline constexpr int kMostTimes = 54'000;

/// The content of a control file with `times` times, 100 ms apart, of 11 commands each that reading
/// leaves as they are: 5.18 MB for the most times. A reset at every `resetEvery`th time, 0 for
/// none.
[[nodiscard]] std::string LargeFileText(int times = kMostTimes, int resetEvery = 0);

/// A file of its own in the folder for temporary files, gone with the object.
class TemporaryFile {
 public:
    explicit TemporaryFile(std::string_view content);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const std::filesystem::path& Name() const { return name_; }

 private:
    std::filesystem::path name_;
};

/// Reads the file and parses its numbers with `from_chars` into fresh flat arrays, the least that
/// opening it can cost. Gives the sum of all numbers.
std::int64_t ParseFloor(const std::filesystem::path& name);

/// CPU seconds of `ParseFloor` on the largest file: the least of nine runs, measured once.
[[nodiscard]] double FloorSeconds();

/// CPU seconds that this thread has used.
[[nodiscard]] double CpuSeconds();

}  // namespace bench_support
