#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace sound {

enum class Sink {
    Automatic,  ///< the best that the machine has; the silent one where it has none
    Silent      ///< no sound, in real time
};

enum class OpenResult { Opened, NotMusic, NoDecoder, NoSound, SinkFailed, TimedOut };

/// Why `file` cannot be music, seen without decoding it; empty when it may be.
[[nodiscard]] std::string FileProblem(const std::filesystem::path& file);

/// The sentence for a failed opening.
[[nodiscard]] std::string OpenProblem(OpenResult result, const std::filesystem::path& file);

/// One music file on its way to one sink. Used by one thread at a time. A sound server that hangs
/// can block every call that changes its state and the destructor, the latter for ever.
class Pipeline {
 public:
    enum class News { None, Ended, SinkFailed, Failed };

    /// GStreamer runs (`GstreamerProblem` is empty).
    Pipeline(const std::filesystem::path& file, Sink sink);
    ~Pipeline();
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    /// Brings the music to its first sample, paused.
    OpenResult Open(std::chrono::milliseconds patience);

    /// ms of sound; 0 when there is none. Decodes no sound but may have to read the whole file.
    [[nodiscard]] std::int32_t Length() const;

    /// Pauses and moves to `start`; what plays from there ends at `stop`, -1 for the end of the
    /// music.
    bool Cue(std::int32_t start, std::int32_t stop, std::chrono::milliseconds patience);
    bool Run();
    bool Halt(std::chrono::milliseconds patience);

    /// ms; nothing while the pipeline does not know.
    [[nodiscard]] std::optional<std::int32_t> Position() const;

    /// What has happened since the last call, one thing a call.
    News NextNews();

    [[nodiscard]] bool Silent() const;

    /// Expires when the destructor has come to its end.
    [[nodiscard]] std::weak_ptr<const bool> Life() const { return life_; }

 private:
    struct Parts;

    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
    std::filesystem::path file_;
    std::unique_ptr<Parts> parts_;
    bool hasRun_ = false;
};

}  // namespace sound
