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

/// A file's next content, which is written beside the file and takes its place at once when all of
/// it is on the disk: whatever happens, the name never stands for half a content. What does not
/// take the place is removed; what a killed process left over is when the file is next written.
class NextVersion {
 public:
    /// `file` is there or shall be; it is no symbolic link.
    explicit NextVersion(std::filesystem::path file);
    ~NextVersion();
    NextVersion(const NextVersion&) = delete;
    NextVersion& operator=(const NextVersion&) = delete;

    /// Creates it, with the permissions and the owner of the file that it will replace. Fails with
    /// `device_or_resource_busy` while another process writes the same file.
    [[nodiscard]] std::error_code Create();
    /// Writes the content to the disk.
    [[nodiscard]] std::error_code Write(std::string_view text) const;
    [[nodiscard]] std::error_code TakePlace();

 private:
    [[nodiscard]] std::error_code CreateAlone();
    [[nodiscard]] std::error_code RemoveLeftOver() const;
    void TakeAfter() const;

    std::filesystem::path file_;
    std::filesystem::path name_;
    int descriptor_ = -1;
};

/// Makes sure that what was created, renamed or removed in the folder of `name` stays so. Some file
/// systems have nothing to flush, and some folders cannot be opened for it: no error then.
[[nodiscard]] std::error_code FlushFolderOf(const std::filesystem::path& name);

/// Opens a file that is there to find out whether another process has locked it; -1 on failure.
[[nodiscard]] int OpenToLock(const std::filesystem::path& name);

/// Writes all of it, through interruptions.
[[nodiscard]] std::error_code WriteAll(int descriptor, std::string_view text);

}  // namespace document
