#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "timeline/music_player.h"

namespace support {

/// A music player that is driven by hand: time passes only in `Advance`, events come only out of
/// `Poll`. It keeps the promises of the port, so that what passes here holds for a real player.
class HandPlayer final : public timeline::MusicPlayer {
 public:
    std::int32_t musicLength = 60'000;  ///< of the next file opened
    std::string openFailure;            ///< not empty: `Open` fails with it
    bool playFails = false;             ///< the next `Play` is completed without playing
    bool silent = false;
    std::vector<std::string> calls;  ///< as "open show.mp3", "from 500", "play", "interval 50"

    /// What has been called since the last question.
    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    /// Lets the music play for `duration` ms in steps of the update interval (of the whole where
    /// there is none), each followed by a poll. Nothing moves while it does not play.
    void Advance(std::int32_t duration)
    {
        while (duration > 0) {
            const std::int32_t step = interval_ > 0 ? std::min(interval_, duration) : duration;
            duration -= step;
            Elapse(step);
            Poll();
        }
    }

    /// Moves the playing music without a poll, as when the driver is late.
    void Elapse(std::int32_t duration)
    {
        if (mode_ != timeline::PlayerMode::Playing) {
            return;
        }
        position_ = std::min(position_ + duration, end_);
        sinceStatus_ += duration;
        if (position_ == end_) {
            mode_ = timeline::PlayerMode::Stopped;
            pending_.push_back(&timeline::MusicEvents::mmSong_PlayingEnded);
        }
    }

    /// Puts the music anywhere; the mode stays.
    void SetPosition(std::int32_t time) { position_ = std::clamp(time, 0, length_); }

    /// The music breaks off here, as when its file cannot be read any further.
    void BreakOff()
    {
        end_ = position_;
        Elapse(0);
    }

    bool Open(const std::filesystem::path& file) override
    {
        Unload();
        calls.push_back("open " + file.filename().string());
        lastError_ = openFailure;
        if (!lastError_.empty()) {
            return false;
        }
        file_ = file;
        length_ = musicLength;
        mode_ = timeline::PlayerMode::Stopped;
        return true;
    }

    void Close() override
    {
        calls.push_back("close");
        Unload();
    }

    [[nodiscard]] const std::filesystem::path& FileName() const override { return file_; }
    [[nodiscard]] std::int32_t Length() const override { return length_; }
    [[nodiscard]] timeline::PlayerMode Mode() override { return mode_; }
    [[nodiscard]] std::int32_t Position() override { return position_; }

    void SetFrom(std::int32_t time) override
    {
        calls.push_back("from " + std::to_string(time));
        from_ = std::clamp(time, 0, length_);
    }

    void SetTo(std::int32_t time) override
    {
        calls.push_back("to " + std::to_string(time));
        to_ = std::clamp(time, 0, length_);
    }

    void Play() override
    {
        calls.push_back("play");
        pending_.clear();
        pending_.push_back(&timeline::MusicEvents::mmSong_PlayCompleted);
        if (std::exchange(playFails, false) || mode_ == timeline::PlayerMode::NotReady ||
            mode_ == timeline::PlayerMode::Playing) {
            return;
        }
        const bool resume = mode_ == timeline::PlayerMode::Paused;
        position_ = resume ? position_ : from_;
        if (!resume || to_) {
            end_ = std::max(to_.value_or(length_), position_);
        }
        to_.reset();
        mode_ = timeline::PlayerMode::Playing;
        sinceStatus_ = 0;
    }

    void Pause() override
    {
        calls.push_back("pause");
        if (mode_ == timeline::PlayerMode::Playing) {
            mode_ = timeline::PlayerMode::Paused;
            pending_.assign(1, &timeline::MusicEvents::mmSong_PauseCompleted);
        }
    }

    void Stop() override
    {
        calls.push_back("stop");
        if (mode_ != timeline::PlayerMode::NotReady) {
            mode_ = timeline::PlayerMode::Stopped;
            pending_.clear();
        }
    }

    void SetUpdateInterval(std::int32_t interval) override
    {
        calls.push_back("interval " + std::to_string(interval));
        interval_ = std::max(interval, 0);
        sinceStatus_ = 0;
    }

    void SetEvents(timeline::MusicEvents* events) override { events_ = events; }

    void Poll() override
    {
        EmitPending();
        if (mode_ == timeline::PlayerMode::Playing && position_ >= end_) {
            Elapse(0);  // a range without length is over at once
            EmitPending();
        }
        if (mode_ == timeline::PlayerMode::Playing && interval_ > 0 && sinceStatus_ >= interval_) {
            sinceStatus_ %= interval_;
            Emit(&timeline::MusicEvents::mmSong_StatusUpdate);
        }
    }

    [[nodiscard]] std::int32_t PollDelay() const override
    {
        if (!pending_.empty()) {
            return 0;
        }
        if (mode_ != timeline::PlayerMode::Playing) {
            return -1;
        }
        return interval_ > 0 ? std::clamp(interval_ - sinceStatus_, 0, 50) : 50;
    }

    [[nodiscard]] bool Silent() const override { return silent; }
    [[nodiscard]] const std::string& LastError() const override { return lastError_; }

 private:
    using Event = void (timeline::MusicEvents::*)();

    void Unload()
    {
        file_.clear();
        lastError_.clear();
        length_ = position_ = from_ = end_ = 0;
        to_.reset();
        mode_ = timeline::PlayerMode::NotReady;
        pending_.clear();
    }

    void Emit(Event event)
    {
        if (events_ != nullptr) {
            (events_->*event)();
        }
    }

    void EmitPending()
    {
        for (std::size_t left = pending_.size(); left > 0 && !pending_.empty(); --left) {
            const Event event = pending_.front();
            pending_.pop_front();
            Emit(event);
        }
    }

    std::filesystem::path file_;
    std::string lastError_;
    timeline::PlayerMode mode_ = timeline::PlayerMode::NotReady;
    std::int32_t length_ = 0;
    std::int32_t position_ = 0;
    std::int32_t from_ = 0;
    std::int32_t end_ = 0;
    std::optional<std::int32_t> to_;
    std::int32_t interval_ = 0;
    std::int32_t sinceStatus_ = 0;
    timeline::MusicEvents* events_ = nullptr;
    std::deque<Event> pending_;
};

}  // namespace support
