#pragma once

#include <QWidget>
#include <cstdint>
#include <memory>

#include "document/choreography.h"
#include "timeline/marks.h"

namespace sound {
struct Peaks;
}

namespace ui {

/// The piece at a glance: the outline of its music, a tick for every time of the choreography, the
/// marks and the current time. All times in ms.
class TimeStrip final : public QWidget {
    Q_OBJECT

 public:
    explicit TimeStrip(QWidget* parent);

    /// Looks at the choreography, which outlives the strip, when it or its version is another one.
    void ShowChoreography(const document::Choreography& choreography, std::uint64_t version);
    void ShowMarks(const timeline::Marks& marks);
    /// Null while there is no music.
    void ShowPeaks(std::shared_ptr<const sound::Peaks> peaks);
    /// `length` of the show; later commands are shown all the same. While it plays, nothing that
    /// the user does moves the time.
    void ShowPosition(std::int32_t time, std::int32_t length, bool playing);

 signals:
    /// A tenth of a second that the user wants to go to.
    void TimeChosen(std::int32_t time);

 protected:
    [[nodiscard]] QSize sizeHint() const override { return {1024, 56}; }

 private:
    std::int32_t time_ = 0;
};

}  // namespace ui
