#include "document/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace document {
namespace {

std::error_code LastError()
{
    return {errno, std::generic_category()};
}

class Descriptor {
 public:
    Descriptor(const std::filesystem::path& name, int flags)
        : descriptor_(::open(name.c_str(), flags | O_CLOEXEC, 0666))
    {
    }
    ~Descriptor() { static_cast<void>(Close()); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int Get() const { return descriptor_; }
    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }

    /// An interrupted close has closed all the same.
    [[nodiscard]] std::error_code Close()
    {
        if (!IsOpen())
            return {};
        const bool failed = ::close(std::exchange(descriptor_, -1)) != 0 && errno != EINTR;
        return failed ? LastError() : std::error_code{};
    }

 private:
    int descriptor_;
};

std::error_code ReadAll(int descriptor, std::size_t most, FileBytes& file)
{
    while (file.size < most) {
        const ssize_t count = ::read(descriptor, file.bytes.get() + file.size, most - file.size);
        if (count == 0)
            return {};
        if (count > 0)
            file.size += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return LastError();
    }
    return {};
}

std::error_code WriteAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return LastError();
    }
    return {};
}

/// Some file systems have nothing to flush and say so.
std::error_code Flush(int descriptor)
{
    while (::fsync(descriptor) != 0) {
        if (errno == EINVAL || errno == ENOTSUP)
            return {};
        if (errno != EINTR)
            return LastError();
    }
    return {};
}

std::error_code FlushFolder(const std::filesystem::path& name)
{
    const auto parent = name.parent_path();
    const Descriptor folder(parent.empty() ? std::filesystem::path(".") : parent,
                            O_RDONLY | O_DIRECTORY);
    // A folder that may be written to but not listed cannot be opened; the file itself is safe.
    return folder.IsOpen() ? Flush(folder.Get()) : std::error_code{};
}

}  // namespace

FileBytes ReadWholeFile(const std::filesystem::path& name)
{
    FileBytes file;
    const Descriptor descriptor(name, O_RDONLY | O_NONBLOCK);  // opening a pipe must not wait
    struct stat status = {};
    if (!descriptor.IsOpen() || ::fstat(descriptor.Get(), &status) != 0) {
        file.error = LastError();
        return file;
    }
    if (!S_ISREG(status.st_mode)) {
        file.error = std::make_error_code(std::errc::invalid_argument);
        return file;
    }
    const auto size = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
    if (size > kMostFileBytes) {
        file.error = std::make_error_code(std::errc::file_too_large);
        return file;
    }
    file.bytes.reset(new (std::nothrow) char[size + 1]);
    if (!file.bytes) {
        file.error = std::make_error_code(std::errc::not_enough_memory);
        return file;
    }
    file.error = ReadAll(descriptor.Get(), size, file);
    return file;
}

WriteResult WriteNewFile(const std::filesystem::path& name, std::string_view text)
{
    Descriptor descriptor(name, O_WRONLY | O_CREAT | O_EXCL);
    if (!descriptor.IsOpen())
        return {false, LastError()};
    std::error_code error = WriteAll(descriptor.Get(), text);
    if (!error)
        error = Flush(descriptor.Get());
    const std::error_code closing = descriptor.Close();
    if (!error)
        error = closing;
    if (!error)
        error = FlushFolder(name);
    if (error)
        ::unlink(name.c_str());
    return {true, error};
}

}  // namespace document
