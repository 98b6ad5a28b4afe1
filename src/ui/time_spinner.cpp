#include "ui/time_spinner.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace ui {
namespace {

int MultiplierOf(Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::ShiftModifier))
        return 2;
    if (modifiers.testFlag(Qt::ControlModifier))
        return 5;
    return modifiers.testFlag(Qt::AltModifier) ? 10 : 1;
}

}  // namespace

TimeSpinner::TimeSpinner(int highest, int digits, QStyle* style, QWidget* parent)
    : PanelSpinBox(style, parent), digits_(digits)
{
    setRange(0, highest);
    setKeyboardTracking(false);  // a time that is half typed is none to go to
}

void TimeSpinner::keyPressEvent(QKeyEvent* event)
{
    multiplier_ = MultiplierOf(event->modifiers());
    PanelSpinBox::keyPressEvent(event);
}

void TimeSpinner::mousePressEvent(QMouseEvent* event)
{
    multiplier_ = MultiplierOf(event->modifiers());
    PanelSpinBox::mousePressEvent(event);
}

void TimeSpinner::wheelEvent(QWheelEvent* event)
{
    multiplier_ = MultiplierOf(event->modifiers());
    PanelSpinBox::wheelEvent(event);
}

QString TimeSpinner::textFromValue(int value) const
{
    return QStringLiteral("%1").arg(value, digits_, 10, QLatin1Char('0'));
}

}  // namespace ui
