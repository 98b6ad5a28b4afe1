#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "sound/pipeline.h"
#include "timeline/music_player.h"

namespace sound {

/// The music player on GStreamer, which the first `Open` starts. Stopped is a paused pipeline, so
/// that the next play starts at once.
///
/// A sound server that fails or hangs does not stop the music: it goes on without sound from where
/// it was. No call waits for a sound server longer than `patience`, twice that in `Open`.
class GstPlayer final : public timeline::MusicPlayer {
 public:
    explicit GstPlayer(Sink sink, std::chrono::milliseconds patience = std::chrono::seconds(3));
    ~GstPlayer() override;
    GstPlayer(const GstPlayer&) = delete;
    GstPlayer& operator=(const GstPlayer&) = delete;

    bool Open(const std::filesystem::path& name) override;
    void Close() override;

    [[nodiscard]] const std::filesystem::path& FileName() const override { return file_; }
    [[nodiscard]] std::int32_t Length() const override { return length_; }
    /// Says Playing at least once after a `Play`, however short the range is.
    [[nodiscard]] timeline::PlayerMode Mode() override;
    [[nodiscard]] std::int32_t Position() override;

    void SetFrom(std::int32_t time) override;
    void SetTo(std::int32_t time) override;

    /// While playing it plays on and is completed at once.
    void Play() override;
    void Pause() override;
    void Stop() override;

    void SetUpdateInterval(std::int32_t interval) override;
    void SetEvents(timeline::MusicEvents* events) override { events_ = events; }

    void Poll() override;
    [[nodiscard]] std::int32_t PollDelay() const override;

    [[nodiscard]] bool Silent() const override;
    [[nodiscard]] const std::string& LastError() const override { return lastError_; }

 private:
    using Clock = std::chrono::steady_clock;
    using Event = void (timeline::MusicEvents::*)();

    OpenResult Load(const std::filesystem::path& file, Sink sink);
    void Unload();
    void Abandon();
    void Measure();
    bool Cue();
    bool Run();
    void Halt();
    bool Begin(bool cue);
    bool GoOnSilently();
    void LoseMusic();
    void EndPlaying(std::int32_t position);
    void Pump();
    void WatchForHang();
    void Queue(Event event) { pending_.push_back(event); }
    void EmitPending();

    const Sink sink_;
    const std::chrono::milliseconds patience_;

    std::shared_ptr<Pipeline> pipeline_;   // null exactly when closed
    std::weak_ptr<const bool> abandoned_;  // alive while a pipeline hangs in the sound server
    Sink pipelineSink_ = Sink::Silent;
    std::filesystem::path file_;
    std::int32_t length_ = 0;
    std::string lastError_;

    timeline::PlayerMode mode_ = timeline::PlayerMode::NotReady;
    std::int32_t position_ = 0;
    std::int32_t from_ = 0;
    std::optional<std::int32_t> to_;
    std::int32_t rangeEnd_ = 0;
    bool rangeIsEmpty_ = false;   // it is over without having moved the pipeline
    bool playingUnseen_ = false;  // `Mode` has not told of this play yet
    std::int32_t watchedPosition_ = 0;
    Clock::time_point lastProgress_;  // when `watchedPosition_` was reached

    std::int32_t interval_ = 0;
    Clock::time_point statusDue_;
    timeline::MusicEvents* events_ = nullptr;
    std::deque<Event> pending_;
};

}  // namespace sound
