#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "timeline/music_player.h"

namespace cli {

/// The player of a face that makes no sound: no music ever opens, so the choreography plays alone.
class SilentPlayer final : public timeline::MusicPlayer {
 public:
    bool Open(const std::filesystem::path&) override { return false; }
    void Close() override {}

    [[nodiscard]] const std::filesystem::path& FileName() const override { return none_; }
    [[nodiscard]] std::int32_t Length() const override { return 0; }
    [[nodiscard]] timeline::PlayerMode Mode() override { return timeline::PlayerMode::NotReady; }
    [[nodiscard]] std::int32_t Position() override { return 0; }

    void SetFrom(std::int32_t) override {}
    void SetTo(std::int32_t) override {}
    void Play() override {}
    void Pause() override {}
    void Stop() override {}
    void SetUpdateInterval(std::int32_t) override {}
    void SetEvents(timeline::MusicEvents*) override {}
    void Poll() override {}
    [[nodiscard]] std::int32_t PollDelay() const override { return -1; }
    [[nodiscard]] bool Silent() const override { return true; }
    [[nodiscard]] const std::string& LastError() const override { return noError_; }

 private:
    std::filesystem::path none_;
    std::string noError_;
};

}  // namespace cli
