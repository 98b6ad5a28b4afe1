#include "sound/gst_player.h"

#include <algorithm>
#include <utility>

#include "sound/gstreamer.h"
#include "sound/within.h"

namespace sound {

using timeline::MusicEvents;
using timeline::PlayerMode;

namespace {

constexpr std::int32_t kEndWatch = 50;  // ms, the latest that the end of the music is noticed

}  // namespace

GstPlayer::GstPlayer(Sink sink, std::chrono::milliseconds patience)
    : sink_(sink), patience_(patience)
{
}

GstPlayer::~GstPlayer()
{
    Unload();
}

bool GstPlayer::Open(const std::filesystem::path& name)
{
    const std::filesystem::path file = name;  // it may be our own
    Close();
    lastError_ = GstreamerProblem();
    if (lastError_.empty()) {
        lastError_ = FileProblem(file);
    }
    if (!lastError_.empty()) {
        return false;
    }
    // A pipeline that still hangs says that the next would hang too.
    const Sink sink = abandoned_.expired() ? sink_ : Sink::Silent;
    OpenResult result = Load(file, sink);
    if (sink != Sink::Silent &&
        (result == OpenResult::SinkFailed || result == OpenResult::TimedOut)) {
        result = Load(file, Sink::Silent);
    }
    if (result == OpenResult::Opened) {
        length_ = pipeline_->Length();
        result = length_ > 0 ? OpenResult::Opened : OpenResult::NoSound;
    }
    if (result != OpenResult::Opened) {
        Unload();
        lastError_ = OpenProblem(result, file);
        return false;
    }
    file_ = file;
    rangeEnd_ = length_;
    mode_ = PlayerMode::Stopped;
    return true;
}

void GstPlayer::Close()
{
    Unload();
    lastError_.clear();
}

OpenResult GstPlayer::Load(const std::filesystem::path& file, Sink sink)
{
    pipeline_ = std::make_shared<Pipeline>(file, sink);
    pipelineSink_ = sink;
    const OpenResult result =
        Within(patience_, OpenResult::TimedOut,
               [pipeline = pipeline_, patience = patience_] { return pipeline->Open(patience); });
    if (result == OpenResult::TimedOut) {
        Abandon();
    } else if (result != OpenResult::Opened) {
        pipeline_.reset();
    }
    return result;
}

void GstPlayer::Unload()
{
    if (pipeline_) {
        const std::weak_ptr<const bool> life = pipeline_->Life();
        const bool closed = Within(patience_, false, [pipeline = std::move(pipeline_)]() mutable {
            pipeline.reset();
            return true;
        });
        if (!closed) {
            abandoned_ = life;
        }
    }
    file_.clear();
    length_ = 0;
    mode_ = PlayerMode::NotReady;
    position_ = 0;
    from_ = 0;
    to_.reset();
    rangeEnd_ = 0;
    rangeIsEmpty_ = false;
    playingUnseen_ = false;
    pending_.clear();
}

// Leaves the pipeline to a thread that nobody waits for: even its end may hang.
void GstPlayer::Abandon()
{
    abandoned_ = pipeline_->Life();
    Within(std::chrono::milliseconds(0), false, [pipeline = std::move(pipeline_)]() mutable {
        pipeline.reset();
        return true;
    });
}

PlayerMode GstPlayer::Mode()
{
    if (playingUnseen_) {
        playingUnseen_ = false;
        return mode_;
    }
    Pump();
    return mode_;
}

std::int32_t GstPlayer::Position()
{
    if (mode_ == PlayerMode::Playing && !rangeIsEmpty_) {
        Measure();
    }
    return position_;
}

void GstPlayer::Measure()
{
    const std::int32_t measured = pipeline_->Position().value_or(position_);
    position_ = std::clamp(measured, position_, rangeEnd_);
}

void GstPlayer::SetFrom(std::int32_t time)
{
    from_ = std::clamp(time, 0, length_);
}

void GstPlayer::SetTo(std::int32_t time)
{
    to_ = std::clamp(time, 0, length_);
}

void GstPlayer::Play()
{
    Pump();
    if (mode_ == PlayerMode::NotReady) {
        if (lastError_.empty()) {
            lastError_ = "No music is open.";
        }
        Queue(&MusicEvents::mmSong_PlayCompleted);
        return;
    }
    lastError_.clear();
    pending_.clear();  // a new command supersedes what the last has to report
    Queue(&MusicEvents::mmSong_PlayCompleted);
    if (mode_ == PlayerMode::Playing) {
        return;
    }
    const bool resume = mode_ == PlayerMode::Paused;
    const bool cue = !resume || to_.has_value();
    if (!resume) {
        position_ = from_;
    }
    if (cue) {
        rangeEnd_ = std::max(to_.value_or(length_), position_);
    }
    to_.reset();
    mode_ = PlayerMode::Playing;
    playingUnseen_ = true;
    rangeIsEmpty_ = position_ >= rangeEnd_;
    watchedPosition_ = position_;
    lastProgress_ = Clock::now();
    if (rangeIsEmpty_ || Begin(cue) || GoOnSilently()) {
        return;
    }
    LoseMusic();
    Queue(&MusicEvents::mmSong_PlayCompleted);
}

void GstPlayer::Pause()
{
    Pump();
    if (mode_ != PlayerMode::Playing) {
        return;
    }
    pending_.clear();
    mode_ = PlayerMode::Paused;
    Halt();
    Queue(&MusicEvents::mmSong_PauseCompleted);
}

void GstPlayer::Stop()
{
    Pump();
    if (mode_ == PlayerMode::NotReady) {
        return;
    }
    pending_.clear();
    const bool wasPlaying = mode_ == PlayerMode::Playing;
    mode_ = PlayerMode::Stopped;
    if (wasPlaying) {
        Halt();
    }
}

bool GstPlayer::Cue()
{
    const std::int32_t stop = rangeEnd_ < length_ ? rangeEnd_ : -1;
    return Within(patience_, false,
                  [pipeline = pipeline_, start = position_, stop, patience = patience_] {
                      return pipeline->Cue(start, stop, patience);
                  });
}

bool GstPlayer::Run()
{
    return Within(patience_, false, [pipeline = pipeline_] { return pipeline->Run(); });
}

bool GstPlayer::Begin(bool cue)
{
    return (!cue || Cue()) && Run();
}

// The mode has been changed already, so that a new pipeline starts in the new one.
void GstPlayer::Halt()
{
    playingUnseen_ = false;
    rangeIsEmpty_ = false;
    const bool halted = Within(patience_, false, [pipeline = pipeline_, patience = patience_] {
        return pipeline->Halt(patience);
    });
    if (halted) {
        Measure();
    } else if (!GoOnSilently()) {
        LoseMusic();
    }
}

// False when there is nothing left to try.
bool GstPlayer::GoOnSilently()
{
    if (pipelineSink_ == Sink::Silent) {
        return false;
    }
    Abandon();
    if (Load(file_, Sink::Silent) != OpenResult::Opened) {
        return false;
    }
    lastError_ = "The sound device has failed: the music goes on without sound.";
    return Cue() && (mode_ != PlayerMode::Playing || Run());
}

void GstPlayer::LoseMusic()
{
    const std::filesystem::path file = file_;
    Unload();
    lastError_ = OpenProblem(OpenResult::SinkFailed, file);
}

void GstPlayer::EndPlaying(std::int32_t position)
{
    position_ = position;
    mode_ = PlayerMode::Stopped;
    Halt();
    Queue(&MusicEvents::mmSong_PlayingEnded);
}

void GstPlayer::Pump()
{
    if (rangeIsEmpty_) {
        EndPlaying(rangeEnd_);
    }
    while (pipeline_) {
        const bool playing = mode_ == PlayerMode::Playing;
        const bool paused = mode_ == PlayerMode::Paused;
        switch (pipeline_->NextNews()) {
            case Pipeline::News::None:
                WatchForHang();
                return;
            case Pipeline::News::Ended:
                if (playing) {
                    EndPlaying(rangeEnd_);
                }
                break;
            case Pipeline::News::SinkFailed:
                position_ = Position();
                if (GoOnSilently()) {
                    break;
                }
                // A pause ends as well, or its buttons would stay for music that is gone.
                LoseMusic();
                if (playing || paused) {
                    Queue(&MusicEvents::mmSong_PlayingEnded);
                }
                break;
            case Pipeline::News::Failed:
                if (playing) {
                    lastError_ = "The music cannot be played any further.";
                    EndPlaying(Position());
                }
                break;
        }
    }
}

// A sound server that hangs reports nothing: the position just stands still.
void GstPlayer::WatchForHang()
{
    if (mode_ != PlayerMode::Playing || pipelineSink_ == Sink::Silent) {
        return;
    }
    const Clock::time_point now = Clock::now();
    if (Position() > watchedPosition_) {
        watchedPosition_ = position_;
        lastProgress_ = now;
    } else if (now - lastProgress_ > patience_ && !GoOnSilently()) {
        LoseMusic();
        Queue(&MusicEvents::mmSong_PlayingEnded);
    }
}

void GstPlayer::SetUpdateInterval(std::int32_t interval)
{
    interval_ = std::max(interval, 0);
    statusDue_ = Clock::now() + std::chrono::milliseconds(interval_);
}

// A handler may give any command, even close: what is not pending any more is not emitted. What a
// handler queues waits for the next poll.
void GstPlayer::EmitPending()
{
    for (std::size_t left = pending_.size(); left > 0 && !pending_.empty(); --left) {
        const Event event = pending_.front();
        pending_.pop_front();
        if (events_ != nullptr) {
            (events_->*event)();
        }
    }
}

void GstPlayer::Poll()
{
    EmitPending();  // first, so that a completed play is reported before its end
    playingUnseen_ = false;
    Pump();
    EmitPending();
    const Clock::time_point now = Clock::now();
    if (mode_ != PlayerMode::Playing || interval_ == 0 || now < statusDue_) {
        return;
    }
    // Keeps the beat; updates that were missed are left out.
    const std::chrono::milliseconds interval(interval_);
    statusDue_ += ((now - statusDue_) / interval + 1) * interval;
    if (events_ != nullptr) {
        events_->mmSong_StatusUpdate();
    }
}

std::int32_t GstPlayer::PollDelay() const
{
    if (!pending_.empty() || rangeIsEmpty_) {
        return 0;
    }
    if (mode_ != PlayerMode::Playing) {
        return -1;
    }
    if (interval_ == 0) {
        return kEndWatch;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(statusDue_ - Clock::now());
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(left.count(), 0, kEndWatch));
}

bool GstPlayer::Silent() const
{
    return pipeline_ && pipeline_->Silent();
}

}  // namespace sound
