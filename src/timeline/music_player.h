#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace timeline {

/// What the player does, by the numbers of the multimedia control that it stands in for.
enum class PlayerMode { NotReady = 524, Stopped = 525, Playing = 526, Paused = 529 };

/// What the player reports, always from within `Poll`.
class MusicEvents {
 public:
    virtual ~MusicEvents() = default;

    virtual void
    mmSong_PlayCompleted() = 0;  ///< a play command has started the music, or failed to
    virtual void mmSong_PauseCompleted() = 0;  ///< a pause command is done
    virtual void mmSong_StatusUpdate() = 0;    ///< the update interval is over while playing
    virtual void mmSong_PlayingEnded() = 0;    ///< the end of the music or of the range was reached
};

/// The music player `mmSong` that the engine needs. Everything runs on one thread; no call blocks
/// for longer than the opening of a file takes. All times in ms from the start of the music.
class MusicPlayer {
 public:
    virtual ~MusicPlayer() = default;

    /// Closes what is open, then opens `file`. False leaves the player closed; `LastError` says
    /// why.
    virtual bool Open(const std::filesystem::path& file) = 0;
    virtual void Close() = 0;

    [[nodiscard]] virtual const std::filesystem::path& FileName() const = 0;  ///< empty when closed
    [[nodiscard]] virtual std::int32_t Length() const = 0;                    ///< 0 when closed
    [[nodiscard]] virtual PlayerMode Mode() = 0;

    /// 0 .. Length; stands still while not playing.
    [[nodiscard]] virtual std::int32_t Position() = 0;

    /// Where the next play from a stop starts; clamped to the music.
    virtual void SetFrom(std::int32_t time) = 0;
    /// Where the next play ends, this one time; plays without it run to the end of the music.
    virtual void SetTo(std::int32_t time) = 0;

    virtual void Play() = 0;   ///< goes on from a pause, else starts at From
    virtual void Pause() = 0;  ///< while playing only
    virtual void Stop() = 0;   ///< has stopped when it returns; the position stays

    /// 0 for no status updates, else the ms between two of them.
    virtual void SetUpdateInterval(std::int32_t interval) = 0;

    /// Receives the events; null for none. Not owned.
    virtual void SetEvents(MusicEvents* events) = 0;

    /// Emits what has happened since the last call. The driver calls it within `PollDelay`.
    virtual void Poll() = 0;
    /// ms until `Poll` wants to be called next, 0 for at once, -1 when nothing can happen by
    /// itself.
    [[nodiscard]] virtual std::int32_t PollDelay() const = 0;

    /// True when the music makes no sound because there is no sound device or server.
    [[nodiscard]] virtual bool Silent() const = 0;
    /// The reason of the last failure in English, for the status line; empty after a success.
    [[nodiscard]] virtual const std::string& LastError() const = 0;
};

}  // namespace timeline
