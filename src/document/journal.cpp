#include "document/journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "document/file_io.h"

namespace document {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExtension = ".journal";
constexpr std::string_view kNewExtension = ".journal.new";
constexpr int kMostChanges = 5'000;                              // then the journal begins anew
constexpr std::size_t kMostChangedBytes = std::size_t{1} << 18;  // and beyond twice the show's size
static_assert(kMostChanges < kMostJournalChanges);

std::error_code LastError()
{
    return {errno, std::generic_category()};
}

std::error_code FlushData(int descriptor)
{
    while (::fdatasync(descriptor) != 0) {
        if (errno == EINVAL || errno == ENOTSUP)
            return {};
        if (errno != EINTR)
            return LastError();
    }
    return {};
}

void Close(int& descriptor)
{
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

}  // namespace

/// The side of the journal's thread: the file itself.
class Journal::Writer {
 public:
    explicit Writer(fs::path folder) : folder_(std::move(folder)) {}
    ~Writer() { Close(descriptor_); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    [[nodiscard]] const fs::path& File() const { return file_; }

    /// Does the jobs, of which one behind it makes what is ahead of it needless.
    std::error_code Do(const std::vector<Job>& jobs)
    {
        if (std::ranges::find(jobs, Kind::Drop, &Job::kind) != jobs.end())
            Remove();
        auto first = jobs.begin();
        for (auto job = jobs.begin(); job != jobs.end(); ++job)
            if (job->kind != Kind::Append)
                first = job;
        std::error_code error;
        if (first->kind == Kind::Rewrite)
            error = Rewrite(*first);
        if (first->kind != Kind::Append)
            ++first;
        const bool appends = first != jobs.end();
        for (; first != jobs.end() && !error; ++first)
            error = WriteAll(descriptor_, first->bytes);
        return error || !appends ? error : FlushData(descriptor_);
    }

 private:
    void Remove()
    {
        if (!file_.empty())
            RemoveJournal(file_);
        Close(descriptor_);
        file_.clear();
    }

    /// The new file takes the place of the old one when it is on the disk; until then the old one
    /// stays as it is.
    std::error_code Rewrite(const Job& job)
    {
        if (file_.empty())
            file_ = NewName(job.show);
        // Only its owner may look into the folder.
        std::error_code error;
        if (fs::create_directories(folder_, error))
            fs::permissions(folder_, fs::perms::owner_all, error);
        fs::path name = file_;
        name.replace_extension(kNewExtension);
        int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (descriptor < 0)
            return LastError();
        static_cast<void>(::flock(descriptor, LOCK_EX));  // not every file system has locks
        error = WriteAll(descriptor, JournalHeader(job.show, Stamp(job)) + job.bytes);
        if (!error)
            error = FlushData(descriptor);
        if (!error && ::rename(name.c_str(), file_.c_str()) != 0)
            error = LastError();
        if (error) {
            ::unlink(name.c_str());
            Close(descriptor);
            return error;
        }
        Close(descriptor_);
        descriptor_ = descriptor;
        return FlushFolderOf(file_);
    }

    // A journal of an earlier process with this one's number must stay.
    [[nodiscard]] fs::path NewName(const fs::path& show) const
    {
        constexpr std::size_t kRoom = 100;
        const std::string stem = show.empty() ? "unsaved" : show.stem().string().substr(0, kRoom);
        const std::string name = stem + '-' + std::to_string(::getpid()) + '-';
        std::error_code ignored;
        for (int number = 1;; ++number) {
            const fs::path file = folder_ / (name + std::to_string(number));
            if (!fs::exists(fs::path(file).concat(kExtension), ignored) &&
                !fs::exists(fs::path(file).concat(kNewExtension), ignored))
                return fs::path(file).concat(kExtension);
        }
    }

    // The bytes are looked at once, and not where they are others by now.
    FileStamp Stamp(const Job& job)
    {
        FileStamp stamp = job.opened;
        stamp.checksum = known_.checksum;
        if (knownShow_ == job.show && known_ == stamp)
            return stamp;
        stamp.checksum = 0;
        if (stamp.exists && StampOf(job.show) == stamp)
            stamp.checksum = Checksum(ReadWholeFile(job.show).Text());
        knownShow_ = job.show;
        known_ = stamp;
        return stamp;
    }

    fs::path folder_;
    fs::path file_;
    int descriptor_ = -1;
    fs::path knownShow_;  // whose checksum is known
    FileStamp known_;
};

// Without a thread there is no journal; that is told like a disk that fails.
Journal::Journal(fs::path folder)
{
    try {
        thread_ = std::thread([this, place = std::move(folder)] { Work(place); });
    } catch (const std::system_error& error) {
        problem_ = error.code();
    }
}

Journal::~Journal()
{
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable())
        thread_.join();
}

void Journal::Begin(const Choreography& show)
{
    show_ = show.fileName;
    opened_ = show.fileExists ? StampOf(show_) : FileStamp{};
    Drop();
}

void Journal::Drop()
{
    begun_ = changed_ = false;
    pending_.reset();
    Give({Kind::Drop, {}, {}, {}});
}

void Journal::Record(const Choreography& now, const std::vector<Patch>& patches)
{
    changed_ = true;
    pending_.reset();
    for (const Patch& patch : patches)
        work_ += JournalWork(patch, kMostSlots);
    if (MustRewrite())
        return Rewrite(now, patches.empty() ? 0 : TimeOf(patches.back()));
    Job job;
    for (const Patch& patch : patches)
        job.bytes += JournalPatch(patch);
    changedBytes_ += job.bytes.size();
    changes_ += static_cast<int>(patches.size());
    Give(std::move(job));
}

void Journal::RecordPending(const Choreography& now, std::int32_t time,
                            const std::optional<Commands>& pending)
{
    if (pending == pending_ && (!pending || time == pendingTime_))
        return;
    if (!pending && !changed_)
        return Drop();
    pending_ = pending;
    pendingTime_ = time;
    if (MustRewrite())
        return Rewrite(now, time);
    Job job{Kind::Append, JournalPending(time, pending), {}, {}};
    changedBytes_ += job.bytes.size();
    ++changes_;
    Give(std::move(job));
}

bool Journal::MustRewrite() const
{
    const std::lock_guard lock(mutex_);
    return !begun_ || broken_ || changes_ >= kMostChanges || work_ > kMostJournalWork ||
           changedBytes_ > std::max(kMostChangedBytes, 2 * snapshotBytes_);
}

void Journal::Rewrite(const Choreography& now, std::int32_t time)
{
    Job job{Kind::Rewrite, JournalSnapshot(now), show_, opened_};
    job.bytes += JournalPending(time, pending_);
    begun_ = true;
    changes_ = 0;
    work_ = 0;
    snapshotBytes_ = job.bytes.size();
    changedBytes_ = 0;
    Give(std::move(job));
}

void Journal::Give(Job job)
{
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        // What is about to be written whole lacks nothing that comes before.
        if (job.kind != Kind::Append)
            broken_ = false;
        jobs_.push_back(std::move(job));
    }
    wake_.notify_one();
}

void Journal::Work(const fs::path& folder)
{
    Writer writer(folder);
    std::unique_lock lock(mutex_);
    bool failing = false;
    for (;;) {
        wake_.wait(lock, [this] { return stop_ || !jobs_.empty(); });
        if (jobs_.empty())
            return;
        const std::vector<Job> jobs = std::exchange(jobs_, {});
        busy_ = true;
        lock.unlock();
        const std::error_code error = writer.Do(jobs);
        lock.lock();
        busy_ = false;
        file_ = writer.File();
        if (error && !failing)
            problem_ = error;
        failing = static_cast<bool>(error);
        const bool followed =
            std::ranges::any_of(jobs_, [](const Job& job) { return job.kind != Kind::Append; });
        broken_ = broken_ || (failing && !followed);
        if (jobs_.empty())
            idle_.notify_all();
    }
}

std::error_code Journal::TakeProblem()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(problem_, {});
}

bool Journal::Broken() const
{
    const std::lock_guard lock(mutex_);
    return broken_ || !thread_.joinable();
}

void Journal::Retry(const Choreography& now)
{
    if (Broken())
        Rewrite(now, pendingTime_);
}

void Journal::Flush()
{
    std::unique_lock lock(mutex_);
    idle_.wait(lock, [this] { return jobs_.empty() && !busy_; });
}

fs::path Journal::File() const
{
    const std::lock_guard lock(mutex_);
    return file_;
}

std::vector<fs::path> LeftoverJournals(const fs::path& folder)
{
    std::vector<std::pair<std::int64_t, fs::path>> found;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator{}; entry.increment(error)) {
        const fs::path& name = entry->path();
        const std::string file = name.filename().string();
        const bool half = file.ends_with(kNewExtension);
        if (!half && !file.ends_with(kExtension))
            continue;
        int descriptor = OpenToLock(name);
        if (descriptor < 0)
            continue;
        const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
        const bool lives = !locked && errno == EWOULDBLOCK;
        if (half && locked)
            ::unlink(name.c_str());
        else if (!half && !lives && StampOf(name).exists)
            found.emplace_back(StampOf(name).modified, name);
        Close(descriptor);
    }
    std::ranges::sort(found, std::ranges::greater{});
    std::vector<fs::path> names;
    for (auto& [modified, name] : found)
        names.push_back(std::move(name));
    return names;
}

std::optional<JournalContent> ReadJournal(const fs::path& name)
{
    return ReadJournalText(ReadWholeFile(name).Text());
}

void RemoveJournal(const fs::path& name)
{
    ::unlink(name.c_str());
}

}  // namespace document
