#include "ui/time_strip.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include "document/time_text.h"
#include "fountain/describe.h"
#include "sound/peaks.h"
#include "timeline/timeline.h"

namespace ui {
namespace {

using timeline::kGrid;

constexpr int kSecond = 1'000;  // ms
constexpr int kNotch = 120;     // of a wheel
constexpr double kZoomOfNotch = 1.5;
constexpr double kPanOfNotch = 0.1;  // of the view
constexpr double kZoomOfKey = 2;
constexpr double kTickReach = 3;   // pixels
constexpr double kSteadiness = 3;  // pixels; a hand that clicks moves less
constexpr int kMostTipLines = 12;
constexpr int kEdgeInterval = 40;   // ms
constexpr double kEdgePan = 0.002;  // of the view, for every pixel outside of it
constexpr double kMostEdgePan = 0.1;
constexpr QColor kFocus(255, 208, 96);

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
    const QRect before = CursorRect();
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
    const QRect now = CursorRect();
    if (before != now || wasPlaying != playing) {
        update(before);
        update(now);
    }
    if (!playing && (timeBefore / kGrid != time / kGrid || wasPlaying))
        AnnounceTime();
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
    return render::CursorRect(view_, height(), time_, CursorKind());
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
    render::PaintStripCursor(painter, view_, Bands(), height(), time_, CursorKind());
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
    QWidget::changeEvent(event);
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

void TimeStrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || playing_)
        return;
    scrubbing_ = true;
    steady_ = true;
    pointer_ = event->position();
    scrubbedTo_ = TenthAt(pointer_);
    Choose(scrubbedTo_);
}

// However slow the window is, it is only told the last of the tenths passed meanwhile.
void TimeStrip::mouseMoveEvent(QMouseEvent* event)
{
    Hover(static_cast<int>(event->position().x()));
    const double moved = std::abs(event->position().x() - pointer_.x());
    if (!scrubbing_ || (steady_ && moved < kSteadiness))
        return;
    steady_ = false;
    // Along the flags a drag goes through the tenths as anywhere else.
    pointer_ = QPointF(event->position().x(), height());
    if (!scrubTimer_.isActive())
        scrubTimer_.start(0, this);
    const bool outside = pointer_.x() < 0 || pointer_.x() >= width();
    if (!outside)
        edgeTimer_.stop();
    else if (!edgeTimer_.isActive())
        edgeTimer_.start(kEdgeInterval, this);
}

void TimeStrip::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !scrubbing_)
        return;
    if (scrubTimer_.isActive())
        Scrub();
    StopScrubbing();
}

void TimeStrip::Scrub()
{
    scrubTimer_.stop();
    const std::int32_t tenth = TenthAt(pointer_);
    if (std::exchange(scrubbedTo_, tenth) != tenth)
        Choose(tenth);
}

void TimeStrip::StopScrubbing()
{
    scrubTimer_.stop();
    edgeTimer_.stop();
    scrubbing_ = false;
}

void TimeStrip::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == edgeTimer_.timerId()) {
        const double outside = pointer_.x() < 0 ? pointer_.x() : pointer_.x() - width();
        PanView(std::clamp(outside * kEdgePan, -kMostEdgePan, kMostEdgePan) * view_.Span());
        Scrub();
    } else if (event->timerId() == scrubTimer_.timerId()) {
        Scrub();
    } else {
        QWidget::timerEvent(event);
    }
}

void TimeStrip::Hover(int x)
{
    const int shown = x >= 0 && x < width() ? x : -1;
    if (shown == hoverX_)
        return;
    for (const int place : {std::exchange(hoverX_, shown), shown})
        if (place >= 0)
            update(render::HoverRect(view_, height(), place, font()));
}

void TimeStrip::leaveEvent(QEvent*)
{
    Hover(-1);
}

// A wheel to the side pans, as does one that is turned with Shift.
void TimeStrip::wheelEvent(QWheelEvent* event)
{
    const QPoint delta = event->angleDelta();
    const bool sideways = std::abs(delta.x()) > std::abs(delta.y());
    const double notches = (sideways ? delta.x() : delta.y()) / double{kNotch};
    if (sideways || event->modifiers().testFlag(Qt::ShiftModifier))
        PanView(-notches * kPanOfNotch * view_.Span());
    else
        ChangeView(event->position().x(), std::pow(kZoomOfNotch, -notches));
    event->accept();
}

bool TimeStrip::MoveByKey(const QKeyEvent& event)
{
    const bool bySecond = event.modifiers().testFlag(Qt::ControlModifier);
    const int step = bySecond ? kSecond : kGrid;
    switch (event.key()) {
        case Qt::Key_Left:
            Choose(time_ - step);
            return true;
        case Qt::Key_Right:
            Choose(time_ + step);
            return true;
        case Qt::Key_Up:
            Choose(time_ + kSecond);
            return true;
        case Qt::Key_Down:
            Choose(time_ - kSecond);
            return true;
        default:
            return false;
    }
}

bool TimeStrip::ViewByKey(const QKeyEvent& event)
{
    const double cursor = view_.Shows(time_) ? view_.PixelOf(time_) : width() / 2.0;
    const bool pans = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            ChangeView(cursor, 1 / kZoomOfKey);
            return true;
        case Qt::Key_Minus:
            ChangeView(cursor, kZoomOfKey);
            return true;
        case Qt::Key_0:
            view_.ShowAll();
            Repicture();
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right:
            if (pans)
                PanView((event.key() == Qt::Key_Left ? -kPanOfNotch : kPanOfNotch) * view_.Span());
            return pans;
        default:
            return false;
    }
}

void TimeStrip::keyPressEvent(QKeyEvent* event)
{
    if (!ViewByKey(*event) && !MoveByKey(*event))
        QWidget::keyPressEvent(event);
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
    const QString tick = TickText(place.x());
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
