#include "document/file_io.h"

#include <fcntl.h>
#include <sys/file.h>
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
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(const std::filesystem::path& name, int flags)
        : Descriptor(::open(name.c_str(), flags | O_CLOEXEC))
    {
    }
    ~Descriptor()
    {
        if (IsOpen())
            ::close(descriptor_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int Get() const { return descriptor_; }
    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }

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

std::filesystem::path NameOfNext(const std::filesystem::path& file)
{
    constexpr std::size_t kRoom = 240;  // of the 255 bytes that a name may have
    return file.parent_path() / ("." + file.filename().string().substr(0, kRoom) + ".saving");
}

// The lock tells a process that writes from one that was killed; not every file system has locks.
bool LockedByAnother(int descriptor)
{
    return ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

bool StandsUnder(const std::filesystem::path& name, int descriptor)
{
    struct stat named = {};
    struct stat opened = {};
    return ::lstat(name.c_str(), &named) == 0 && ::fstat(descriptor, &opened) == 0 &&
           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev;
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

// A file system of the network locks only what is open for writing.
int OpenToLock(const std::filesystem::path& name)
{
    constexpr int kFlags = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int descriptor = ::open(name.c_str(), O_RDWR | kFlags);
    return descriptor >= 0 ? descriptor : ::open(name.c_str(), O_RDONLY | kFlags);
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

std::error_code FlushFolderOf(const std::filesystem::path& name)
{
    const auto parent = name.parent_path();
    const Descriptor folder(parent.empty() ? std::filesystem::path(".") : parent,
                            O_RDONLY | O_DIRECTORY);
    return folder.IsOpen() ? Flush(folder.Get()) : std::error_code{};
}

NextVersion::NextVersion(std::filesystem::path file)
    : file_(std::move(file)), name_(NameOfNext(file_))
{
}

NextVersion::~NextVersion()
{
    if (descriptor_ < 0)
        return;
    ::unlink(name_.c_str());
    ::close(descriptor_);
}

std::error_code NextVersion::Create()
{
    // Another process may remove the file between its creation and its lock.
    constexpr int kAttempts = 10;
    std::error_code error;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        error = CreateAlone();
        if (!error || error != std::errc::file_exists)
            return error;
        error = RemoveLeftOver();
        if (error)
            return error;
    }
    return std::make_error_code(std::errc::device_or_resource_busy);
}

std::error_code NextVersion::CreateAlone()
{
    descriptor_ = ::open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ < 0)
        return LastError();
    if (!LockedByAnother(descriptor_) && StandsUnder(name_, descriptor_)) {
        TakeAfter();
        return {};
    }
    ::close(std::exchange(descriptor_, -1));
    return std::make_error_code(std::errc::file_exists);
}

std::error_code NextVersion::RemoveLeftOver() const
{
    const Descriptor leftOver(OpenToLock(name_));
    if (leftOver.IsOpen() && LockedByAnother(leftOver.Get()))
        return std::make_error_code(std::errc::device_or_resource_busy);
    return ::unlink(name_.c_str()) == 0 || errno == ENOENT ? std::error_code{} : LastError();
}

// Who may not give the file to its owner keeps it; whoever could read it still can.
void NextVersion::TakeAfter() const
{
    struct stat status = {};
    if (::stat(file_.c_str(), &status) != 0)
        return;
    if (::fchown(descriptor_, status.st_uid, status.st_gid) != 0 &&
        ::fchown(descriptor_, static_cast<uid_t>(-1), status.st_gid) != 0)
        status.st_mode &= 0777;
    static_cast<void>(::fchmod(descriptor_, status.st_mode & 07777));
}

std::error_code NextVersion::Write(std::string_view text) const
{
    const std::error_code error = WriteAll(descriptor_, text);
    return error ? error : Flush(descriptor_);
}

std::error_code NextVersion::TakePlace()
{
    if (::rename(name_.c_str(), file_.c_str()) != 0)
        return LastError();
    ::close(std::exchange(descriptor_, -1));
    return FlushFolderOf(file_);
}

}  // namespace document
