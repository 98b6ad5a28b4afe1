#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace document {

inline constexpr std::size_t kMostFileBytes = std::size_t{256} << 20;

struct FileBytes {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
    std::error_code error;  ///< then `bytes` hold what was read until then

    [[nodiscard]] std::string_view Text() const { return {bytes.get(), size}; }
};

/// The content of a regular file; anything else (a folder, a pipe, a device) and more than
/// `kMostFileBytes` is an error.
[[nodiscard]] FileBytes ReadWholeFile(const std::filesystem::path& name);

struct WriteResult {
    bool opened = false;
    std::error_code error;
};

/// Creates the file, which must not exist, and writes `text`, flushed to the disk together with
/// its folder's entry. A file that could not be written in full does not stay.
[[nodiscard]] WriteResult WriteNewFile(const std::filesystem::path& name, std::string_view text);

}  // namespace document
