#include "ui/time_strip.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "document/time_text.h"
#include "fountain/describe.h"
#include "sound/peaks.h"
#include "timeline/playback.h"
#include "timeline/timeline.h"

namespace ui {
namespace {

using timeline::kGrid;

constexpr int kSecond = 1'000;    // ms
constexpr double kTickReach = 3;  // pixels
constexpr int kMostTipLines = 12;
constexpr double kFrame = 16;            // ms, a picture of a usual screen
constexpr qint64 kLongestGlide = 100;    // ms that the cursor runs on without a new position
constexpr std::int32_t kJumpBack = 250;  // ms; less is the glide having been ahead
constexpr QColor kFocus(255, 208, 96);
constexpr QColor kDisabled(12, 16, 40, 150);

std::vector<render::Peak> BinsOf(const sound::Peaks& peaks)
{
    std::vector<render::Peak> bins(peaks.bins.size());
    std::ranges::transform(peaks.bins, bins.begin(), [](const sound::Peaks::Bin& bin) {
        return render::Peak{bin.low, bin.high};
    });
    return bins;
}

QString Readout(std::int32_t time)
{
    return QString::fromStdString(document::ReadoutText(time));
}

}  // namespace

TimeStrip::TimeStrip(QWidget* parent) : QWidget(parent)
{
    InstallSpokenValues();
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Time strip"));
    setAccessibleDescription(QStringLiteral(
        "Left and Right move by a tenth of a second, with Ctrl by a second; plus and "
        "minus zoom, 0 shows the whole piece, Shift with Left and Right scrolls"));
}

void TimeStrip::ShowChoreography(const document::Choreography& choreography, std::uint64_t version)
{
    if (choreography_ == &choreography && version_ == version)
        return;
    choreography_ = &choreography;
    version_ = version;
    if (ticks_.Read(choreography))
        Repicture();
    UpdateLength();
}

void TimeStrip::ShowMarks(const timeline::Marks& marks)
{
    if (marks_ == marks)
        return;
    marks_ = marks;
    Repicture();
}

void TimeStrip::ShowPeaks(std::shared_ptr<const sound::Peaks> peaks)
{
    if (peaks_ == peaks)
        return;
    peaks_ = std::move(peaks);
    waveform_ = peaks_ ? render::Waveform(BinsOf(*peaks_), sound::Peaks::kBin) : render::Waveform();
    Repicture();
}

void TimeStrip::ShowPosition(std::int32_t time, std::int32_t length, bool playing)
{
    if (time == time_ && length == length_ && playing == playing_)
        return;
    const std::int32_t timeBefore = std::exchange(time_, time);
    const bool wasPlaying = std::exchange(playing_, playing);
    if (length_ != length) {
        length_ = length;
        Repicture();
    }
    UpdateLength();
    if (playing)
        StopScrubbing();
    Follow(timeBefore, wasPlaying);
    if (wasPlaying != playing)
        update(CursorRect());
    sincePosition_.restart();
    PlaceCursor();
    if (!playing && (timeBefore / kGrid != time / kGrid || wasPlaying))
        AnnounceTime();
}

// The positions come too seldom for a cursor that crosses many pixels a second.
void TimeStrip::PlaceCursor()
{
    const double perPixel = view_.Span() / std::max(width(), 1);
    const bool glides = playing_ && perPixel < timeline::kStatusInterval;
    if (!glides)
        frameTimer_.stop();
    else if (!frameTimer_.isActive())
        frameTimer_.start(static_cast<int>(std::max(perPixel, kFrame)), Qt::PreciseTimer, this);
    if (!glides || time_ < cursor_ - kJumpBack) {
        MoveCursor(time_);
        return;
    }
    const qint64 ahead = std::min(sincePosition_.elapsed(), kLongestGlide);
    MoveCursor(std::max(cursor_, time_ + static_cast<std::int32_t>(ahead)));
}

void TimeStrip::MoveCursor(std::int32_t time)
{
    const QRect before = CursorRect();
    cursor_ = time;
    const QRect now = CursorRect();
    if (before == now)
        return;
    update(before);
    update(now);
}

void TimeStrip::UpdateLength()
{
    const std::int32_t length = timeline::StripLength(length_, ticks_.LastTime(), time_);
    if (length == view_.Length())
        return;
    view_.SetLength(length);
    Repicture();
}

// A part that the user chose to look at while it plays elsewhere stays.
void TimeStrip::Follow(std::int32_t before, bool wasPlaying)
{
    const bool lookedElsewhere = playing_ && wasPlaying && !view_.Shows(before);
    if (lookedElsewhere || scrubbing_ || view_.Shows(time_) ||
        (before == time_ && playing_ == wasPlaying))
        return;
    view_.Reveal(time_);
    Repicture();
}

std::int32_t TimeStrip::LastTenth() const
{
    const double end = std::min(view_.Length() - 1, double{timeline::kLastSettledTime});
    return static_cast<std::int32_t>(end) / kGrid * kGrid;
}

void TimeStrip::Choose(std::int32_t time)
{
    // Where there is no music to end, a show may be composed on and on.
    const std::int32_t last = peaks_ ? LastTenth() : timeline::kLastSettledTime;
    const std::int32_t tenth = std::clamp(time, 0, last) / kGrid * kGrid;
    if (!playing_ && tenth != time_)
        emit TimeChosen(tenth);
}

void TimeStrip::AnnounceTime()
{
    QAccessibleValueChangeEvent event(this, Value());
    QAccessible::updateAccessibility(&event);
}

QString TimeStrip::ValueText() const
{
    return Readout(time_);
}

double TimeStrip::Value() const
{
    return double{1} * time_ / kSecond;
}

double TimeStrip::MostValue() const
{
    return double{1} * LastTenth() / kSecond;
}

double TimeStrip::ValueStep() const
{
    return double{1} * kGrid / kSecond;
}

void TimeStrip::AskForValue(double value)
{
    const double seconds = std::clamp(value, 0.0, MostValue());
    Choose(static_cast<std::int32_t>(std::lround(seconds * kSecond)));
}

void TimeStrip::Repicture()
{
    picture_ = {};
    update();
}

render::StripBands TimeStrip::Bands() const
{
    return render::BandsOf(height(), peaks_ != nullptr);
}

render::Cursor TimeStrip::CursorKind() const
{
    return playing_ ? render::Cursor::Playing : render::Cursor::Editing;
}

QRect TimeStrip::CursorRect() const
{
    return render::CursorRect(view_, height(), cursor_, CursorKind());
}

void TimeStrip::paintEvent(QPaintEvent* event)
{
    const double ratio = devicePixelRatio();
    if (picture_.isNull() || picture_.devicePixelRatio() != ratio) {
        const render::StripContent content{view_, ticks_, marks_, peaks_ ? &waveform_ : nullptr,
                                           length_};
        picture_ = render::PaintStrip(content, height(), ratio, font());
    }
    QPainter painter(this);
    // One after the other: a painter copies fastest into a plain rectangle.
    for (const QRect& rect : event->region()) {
        painter.setClipRect(rect);
        painter.drawImage(QPointF(), picture_);
    }
    painter.setClipping(false);
    if (hoverX_ >= 0)
        render::PaintStripHover(painter, view_, Bands(), height(), hoverX_,
                                TenthAt(QPointF(hoverX_, height())), font());
    render::PaintStripCursor(painter, view_, Bands(), height(), cursor_, CursorKind());
    if (!isEnabled())
        painter.fillRect(rect(), kDisabled);
    if (!hasFocus())
        return;
    painter.setPen(QPen(kFocus, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void TimeStrip::resizeEvent(QResizeEvent*)
{
    view_.SetWidth(width());
    Repicture();
}

void TimeStrip::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        Repicture();
    if (event->type() == QEvent::EnabledChange) {
        StopScrubbing();
        Hover(-1);
        update();
    }
    QWidget::changeEvent(event);
}

// Nobody tells a hidden strip that the music or the drag has ended.
void TimeStrip::hideEvent(QHideEvent*)
{
    frameTimer_.stop();
    StopScrubbing();
}

void TimeStrip::focusInEvent(QFocusEvent*)
{
    update();
}

void TimeStrip::focusOutEvent(QFocusEvent*)
{
    update();
}

void TimeStrip::ChangeView(double x, double factor)
{
    const timeline::StripView before = view_;
    view_.ZoomAround(x, factor);
    if (view_ != before)
        Repicture();
}

void TimeStrip::PanView(double amount)
{
    const timeline::StripView before = view_;
    view_.Pan(amount);
    if (view_ != before)
        Repicture();
}

std::optional<std::int32_t> TimeStrip::MarkAt(QPointF place) const
{
    const render::StripBands bands = Bands();
    for (const std::int32_t tenths : marks_.tenths)
        if (render::FlagRect(view_, bands, tenths * kGrid).contains(place.toPoint()))
            return tenths * kGrid;
    return std::nullopt;
}

std::int32_t TimeStrip::TenthAt(QPointF place) const
{
    if (const std::optional<std::int32_t> mark = MarkAt(place))
        return *mark;
    return ticks_.TenthAt(view_, std::clamp(place.x(), 0.0, width() - 1.0));
}

QString TimeStrip::TickText(double x) const
{
    const std::int32_t tick = ticks_.Near(view_, x, kTickReach);
    if (tick < 0 || choreography_ == nullptr)
        return {};
    const std::int32_t time = ticks_.Times()[static_cast<std::size_t>(tick)];
    const std::int32_t slot = document::SlotAt(*choreography_, time);
    if (slot < 0)
        return {};
    const document::Commands& commands = choreography_->strCommands[static_cast<std::size_t>(slot)];
    const int count = document::CommandCount(commands);
    QString text = Readout(time);
    if (count > document::kMostCommands)
        text +=
            QStringLiteral(": %1 commands, more than %2").arg(count).arg(document::kMostCommands);
    const int lines = count <= kMostTipLines ? count : kMostTipLines - 1;
    for (int k = 0; k < lines; ++k) {
        const document::Command command = document::CommandAt(commands, k);
        text += u'\n' +
                QString::fromStdString(fountain::DescribeCommand(command.address, command.data));
    }
    if (lines < count)
        text += QStringLiteral("\nand %1 more").arg(count - lines);
    const std::int32_t others = ticks_.CountAt(view_, view_.PixelOf(time)) - 1;
    if (others > 0)
        text += QStringLiteral("\n(%1 more times here: zoom in with the wheel)").arg(others);
    return text;
}

QString TimeStrip::TextAt(QPointF place) const
{
    if (const std::optional<std::int32_t> mark = MarkAt(place))
        return Readout(*mark) + QStringLiteral(": mark");
    QString tick = TickText(place.x());
    if (!tick.isEmpty())
        return tick;
    const render::StripBands bands = Bands();
    const std::pair<render::StripBand, const char*> lanes[] = {{bands.resets, ": resets"},
                                                               {bands.water, ": water"},
                                                               {bands.lights, ": lights"},
                                                               {bands.motion, ": motion"}};
    QString text = Readout(TenthAt(place));
    for (const auto& [band, name] : lanes)
        if (band.Holds(place.y()))
            text += QLatin1String(name);
    return text;
}

bool TimeStrip::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int reach = static_cast<int>(kTickReach);
    const QRect around(help->pos().x() - reach, 0, 2 * reach + 1, height());
    // A description never becomes markup, nor is it wrapped.
    const QString text = QStringLiteral("<p style='white-space:pre'>%1</p>")
                             .arg(TextAt(help->pos()).toHtmlEscaped());
    QToolTip::showText(help->globalPos(), text, this, around);
    return true;
}

}  // namespace ui
