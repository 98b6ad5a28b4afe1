#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "document/choreography.h"
#include "document/journal_format.h"
#include "document/patch.h"

namespace document {

/// Keeps on the disk what is not saved yet, so that a crash or a power cut loses no more than what
/// was done in its last moment. There is a file only while something is unsaved; it is locked while
/// its process lives. A thread of its own writes: no call waits for the disk but `Flush` and the
/// destructor.
class Journal {
 public:
    /// The file will be in `folder`, which is made when it is not there.
    explicit Journal(std::filesystem::path folder);
    /// Leaves the file for the next start, unless it was dropped.
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// From now on it is about `show`, which was just opened, saved or begun: nothing is unsaved.
    void Begin(const Choreography& show);
    /// `patches` made `now`, one after another. With them, what was pending was stored or given up.
    void Record(const Choreography& now, const std::vector<Patch>& patches);
    /// What leaving `time` would store there, empty when the time would go; nothing when nothing is
    /// pending.
    void RecordPending(const Choreography& now, std::int32_t time,
                       const std::optional<Commands>& pending);
    /// All that was unsaved is saved or given up.
    void Drop();

    /// Why the journal cannot be written, once for each time that it begins to fail. The next
    /// change, and `Retry`, write it anew.
    [[nodiscard]] std::error_code TakeProblem();
    /// True while the file lacks something that failed to get there, and when nothing can.
    [[nodiscard]] bool Broken() const;
    /// Writes what the file lacks, if it does, of the choreography as it is `now`.
    void Retry(const Choreography& now);
    /// Waits until all that was recorded is on the disk, or has failed to get there.
    void Flush();
    /// The file, empty when there is none.
    [[nodiscard]] std::filesystem::path File() const;

 private:
    enum class Kind { Append, Rewrite, Drop };
    struct Job {
        Kind kind = Kind::Append;
        std::string bytes;
        std::filesystem::path show;  // of a rewrite
        FileStamp opened;
    };
    class Writer;

    void Give(Job job);
    void Rewrite(const Choreography& now, std::int32_t time);
    [[nodiscard]] bool MustRewrite() const;
    void Work(const std::filesystem::path& folder);

    // What the callers' thread knows of the file.
    std::filesystem::path show_;
    FileStamp opened_;
    bool begun_ = false;    // a snapshot was given to the writer
    bool changed_ = false;  // and a patch
    int changes_ = 0;       // since the snapshot
    std::int64_t work_ = 0;
    std::size_t snapshotBytes_ = 0;
    std::size_t changedBytes_ = 0;
    std::int32_t pendingTime_ = 0;
    std::optional<Commands> pending_;

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::vector<Job> jobs_;  // what follows is shared with the writer's thread
    bool busy_ = false;
    bool stop_ = false;
    bool broken_ = false;  // the file lacks something
    std::error_code problem_;
    std::filesystem::path file_;
    std::thread thread_;
};

/// The journals in `folder` whose processes are no more, the latest first. Removes what a killed
/// process left half written beside them.
[[nodiscard]] std::vector<std::filesystem::path> LeftoverJournals(
    const std::filesystem::path& folder);

/// What a journal holds; nothing when that is not enough to recover from, or no journal at all.
[[nodiscard]] std::optional<JournalContent> ReadJournal(const std::filesystem::path& name);

/// Call it when the user has decided, and what was recovered is safe elsewhere.
void RemoveJournal(const std::filesystem::path& name);

}  // namespace document
