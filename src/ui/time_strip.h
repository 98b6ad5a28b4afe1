#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QImage>
#include <QPointF>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

#include "document/choreography.h"
#include "render/strip_painter.h"
#include "timeline/marks.h"
#include "timeline/strip.h"
#include "ui/spoken_value.h"

namespace sound {
struct Peaks;
}

namespace ui {

/// The piece at a glance: the outline of its music, a tick for every time of the choreography, the
/// marks and the current time. All times in ms.
class TimeStrip final : public QWidget, public SpokenValue {
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

    [[nodiscard]] const timeline::StripView& View() const { return view_; }
    /// What is at a place, in words: the time, and the commands of a tick.
    [[nodiscard]] QString TextAt(QPointF place) const;

 signals:
    /// A tenth of a second that the user wants to go to.
    void TimeChosen(std::int32_t time);

 protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    [[nodiscard]] QSize sizeHint() const override { return {1024, 56}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {100, 40}; }

 private:
    [[nodiscard]] render::StripBands Bands() const;
    [[nodiscard]] render::Cursor CursorKind() const;
    [[nodiscard]] QRect CursorRect() const;
    [[nodiscard]] std::int32_t TenthAt(QPointF place) const;
    [[nodiscard]] std::optional<std::int32_t> MarkAt(QPointF place) const;
    [[nodiscard]] QString TickText(double x) const;

    [[nodiscard]] QString ValueText() const override;
    [[nodiscard]] double Value() const override;
    [[nodiscard]] double LeastValue() const override { return 0; }
    [[nodiscard]] double MostValue() const override;
    [[nodiscard]] double ValueStep() const override;
    void AskForValue(double value) override;

    [[nodiscard]] std::int32_t LastTenth() const;
    void Choose(std::int32_t time);
    void UpdateLength();
    void Follow(std::int32_t before, bool wasPlaying);
    void PlaceCursor();
    void MoveCursor(std::int32_t time);
    void ChangeView(double x, double factor);
    void PanView(double amount);
    void Repicture();
    void Scrub();
    void StopScrubbing();
    void Hover(int x);
    [[nodiscard]] bool MoveByKey(const QKeyEvent& event);
    [[nodiscard]] bool ViewByKey(const QKeyEvent& event);
    void AnnounceTime();

    timeline::StripView view_;
    timeline::StripTicks ticks_;
    timeline::Marks marks_;
    render::Waveform waveform_;
    std::shared_ptr<const sound::Peaks> peaks_;
    const document::Choreography* choreography_ = nullptr;
    std::uint64_t version_ = 0;
    std::int32_t time_ = 0;
    std::int32_t cursor_ = 0;  // where it is drawn: while playing it runs on between two positions
    QElapsedTimer sincePosition_;
    QBasicTimer frameTimer_;
    std::int32_t length_ = 0;
    bool playing_ = false;

    QImage picture_;  // all but the cursor; null when it is to be painted anew
    int hoverX_ = -1;
    bool scrubbing_ = false;
    bool steady_ = false;          // since the press
    QPointF pointer_;              // while scrubbing
    std::int32_t scrubbedTo_ = 0;  // what was announced last
    QBasicTimer scrubTimer_;
    QBasicTimer edgeTimer_;
};

}  // namespace ui
