#include "ui/position_bar.h"

#include <algorithm>
#include <cmath>

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolTip>

#include "document/time_text.h"

namespace ui {
namespace {

constexpr int kTenth = 100;  // ms
constexpr int kTenthsOfSecond = 10;
constexpr QColor kGround(12, 16, 40);
constexpr QColor kTrack(52, 60, 104);
constexpr QColor kOver(120, 156, 240);
constexpr QColor kHandle(255, 255, 255);
constexpr QColor kFocus(255, 208, 96);

}  // namespace

PositionBar::PositionBar(QWidget* parent) : QAbstractSlider(parent)
{
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::TabFocus);
    setSingleStep(1);
    setPageStep(kTenthsOfSecond);
    setRange(0, 0);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PositionBar::ShowPosition(std::int32_t time, std::int32_t length)
{
    const QSignalBlocker quiet(this);
    setRange(0, length / kTenth);
    setValue(time / kTenth);
    const double share = length > 0 ? std::clamp(double{1} * time / length, 0.0, 1.0) : 0;
    if (std::lround(share * width()) != std::lround(share_ * width()))
        update();
    share_ = share;
}

int PositionBar::TenthAt(double x) const
{
    if (width() <= 0)
        return minimum();
    return std::clamp(static_cast<int>(x / width() * (maximum() + 1)), minimum(), maximum());
}

bool PositionBar::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || maximum() == 0)
        return QAbstractSlider::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const std::string time = document::ReadoutText(TenthAt(help->pos().x()) * kTenth);
    QToolTip::showText(help->globalPos(), QString::fromStdString(time), this);
    return true;
}

void PositionBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kGround);
    painter.setRenderHint(QPainter::Antialiasing);
    const double wide = width();
    const double thick = std::max(4.0, height() * 0.34);
    const QRectF track(0, (height() - thick) / 2, wide, thick);
    painter.fillRect(track, kTrack);
    if (maximum() == 0)
        return;
    const double at = share_ * wide;
    painter.fillRect(QRectF(0, track.top(), at, thick), kOver);
    const double handle = std::max(4.0, height() * 0.36);
    const QRectF knob(std::clamp(at - handle / 2, 0.0, wide - handle), 1, handle, height() - 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHandle);
    painter.drawRoundedRect(knob, handle / 2, handle / 2);
    if (!hasFocus())
        return;
    painter.setPen(QPen(kFocus, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void PositionBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        setValue(TenthAt(event->position().x()));
}

void PositionBar::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        setValue(TenthAt(event->position().x()));
}

void PositionBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Up:
            setValue(value() + kTenthsOfSecond);
            break;
        case Qt::Key_Down:
            setValue(value() - kTenthsOfSecond);
            break;
        default:
            QAbstractSlider::keyPressEvent(event);
    }
}

}  // namespace ui
