// What the mouse, its wheel and the keys do in the time strip.
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "timeline/timeline.h"
#include "ui/time_strip.h"

namespace ui {
namespace {

using timeline::kGrid;

constexpr int kSecond = 1'000;  // ms
constexpr int kNotch = 120;     // of a wheel
constexpr double kZoomOfNotch = 1.5;
constexpr double kPanOfNotch = 0.1;  // of the view
constexpr double kZoomOfKey = 2;
constexpr double kSteadiness = 3;   // pixels; a hand that clicks moves less
constexpr int kEdgeInterval = 40;   // ms
constexpr double kEdgePan = 0.002;  // of the view, for every pixel outside of it
constexpr double kMostEdgePan = 0.1;

}  // namespace

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
    // The window may be behind: that it shows this tenth does not mean that it stays there.
    if (std::exchange(scrubbedTo_, tenth) != tenth)
        emit TimeChosen(tenth);
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
    } else if (event->timerId() == frameTimer_.timerId()) {
        PlaceCursor();
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

}  // namespace ui
