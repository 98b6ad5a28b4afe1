#pragma once

#include <chrono>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "sound/peak_bins.h"
#include "sound/peak_board.h"

namespace sound {

/// Reads the peaks of a piece of music on a thread of its own and keeps them in a folder, so that
/// they are there at once the next time. Used by one thread. No call waits long, whatever the disk
/// or GStreamer does: what hangs is left to itself.
class PeakReader {
 public:
    /// `cacheFolder` belongs to the reader, which removes old files from it; empty: nothing is
    /// kept. `patience`: how long no news may come before the rest is given up.
    explicit PeakReader(std::filesystem::path cacheFolder,
                        std::chrono::milliseconds patience = std::chrono::seconds(10));
    ~PeakReader();
    PeakReader(const PeakReader&) = delete;
    PeakReader& operator=(const PeakReader&) = delete;

    /// Drops what it read before; an empty path: just that. The file may be anything.
    void Start(const std::filesystem::path& file);

    /// What there is now, null when nothing yet; a new object whenever more has come, never changed
    /// once given out. A piece that breaks off stays as it came, never complete.
    [[nodiscard]] std::shared_ptr<const Peaks> Latest() const;

    /// More will come: worth asking for every 100 ms, and not at all when false.
    [[nodiscard]] bool Busy() const;

    /// An English sentence; empty while all is well.
    [[nodiscard]] std::string Problem() const;

 private:
    void Leave();

    const std::filesystem::path cacheFolder_;
    const std::chrono::milliseconds patience_;
    std::shared_ptr<PeakBoard> board_;  // null when there is nothing to read
    std::filesystem::path file_;
    std::thread thread_;
    std::future<void> threadEnd_;
};

}  // namespace sound
