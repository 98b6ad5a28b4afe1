#include "ui/panel_widgets.h"

#include <algorithm>

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>
#include <QStyleOptionSpinBox>

#include "panel/panel_state.h"

namespace ui {
namespace {

constexpr QColor kInk(24, 24, 32);
constexpr QColor kFaintInk(132, 134, 142);
constexpr QColor kBright(255, 255, 255);
constexpr QColor kEdge(150, 150, 158);
constexpr QColor kFaintEdge(188, 188, 194);
constexpr QColor kLitEdge(40, 48, 96);
constexpr QColor kFocus(0, 0, 128);
constexpr QColor kChanged(232, 112, 0);
constexpr QColor kSurface(214, 214, 216);
constexpr const char* kChangedText = "changed, and written when you leave this time";
constexpr double kMarkShare = 0.36;  // of a control's height
constexpr double kArrowGrid = 20;

QColor ColorOf(fountain::Color color)
{
    return {color.red, color.green, color.blue};
}

QColor Mixed(const QColor& one, const QColor& other, double share)
{
    const auto part = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {part(one.red(), other.red()), part(one.green(), other.green()),
            part(one.blue(), other.blue())};
}

bool IsDark(const QColor& color)
{
    return color.red() * 299 + color.green() * 587 + color.blue() * 114 < 128'000;
}

// On a square of 20: an arrow, and for a movement that wraps the way back below it.
QPainterPath ArrowPath(int movement)
{
    const bool wraps = movement >= 2;
    const bool right = movement == 0 || movement == 3;
    const double y = wraps ? 7 : 10;
    QPainterPath path;
    if (wraps) {
        path.moveTo(14, y);
        path.lineTo(2, y);
        path.lineTo(2, 16);
        path.lineTo(18, 16);
        path.lineTo(18, y + 4);
    } else {
        path.moveTo(2, y);
        path.lineTo(18, y);
    }
    path.moveTo(13, y - 5);
    path.lineTo(18, y);
    path.lineTo(13, y + 5);
    if (wraps) {
        path.moveTo(12, y);
        path.lineTo(18, y);
    }
    return right ? path : QTransform(-1, 0, 0, 1, kArrowGrid, 0).map(path);
}

void ShowChange(QWidget* widget, bool changed)
{
    widget->setAccessibleDescription(
        changed ? QStringLiteral("%1 (%2)").arg(widget->toolTip(), QLatin1String(kChangedText))
                : QString());
}

QRectF MarkOf(const QRectF& control)
{
    const double side = std::max(5.0, control.height() * kMarkShare);
    return {control.right() - side, control.top(), side, side};
}

void FillTriangle(QPainter& painter, const QRectF& rect, bool up)
{
    const double half = std::min(rect.width() * 0.28, rect.height() * 0.4);
    const double tip = up ? -half * 0.6 : half * 0.6;
    const QPointF center = rect.center();
    const QPointF corners[] = {{center.x() - half, center.y() - tip},
                               {center.x() + half, center.y() - tip},
                               {center.x(), center.y() + tip}};
    painter.drawPolygon(corners, 3);
}

}  // namespace

void PaintChangedMark(QPainter& painter, const QRectF& corner)
{
    const QPointF corners[] = {corner.topLeft(), corner.topRight(), corner.bottomRight()};
    painter.setPen(QPen(kBright, 1));
    painter.setBrush(kChanged);
    painter.drawPolygon(corners, 3);
}

PanelButton::PanelButton(Face face, QWidget* parent) : QAbstractButton(parent), face_(face)
{
    // A click leaves the focus where it is.
    setFocusPolicy(face == Face::Target ? Qt::NoFocus : Qt::TabFocus);
    setCheckable(face == Face::Toggle || face == Face::Lamp);
    setAttribute(Qt::WA_Hover);
}

void PanelButton::SetArrow(int movement)
{
    arrow_ = movement;
    update();
}

void PanelButton::Show(fountain::Color color, const QString& caption, bool lit, bool changed)
{
    const QColor shown = ColorOf(color);
    if (shown == color_ && caption == text() && lit == isChecked() && changed == changed_)
        return;
    color_ = shown;
    changed_ = changed;
    setText(caption);
    setChecked(lit);
    ShowChange(this, changed);
    update();
}

void PanelButton::ShowTarget(bool erasing)
{
    if (erasing == erasing_)
        return;
    erasing_ = erasing;
    setFocusPolicy(erasing ? Qt::TabFocus : Qt::NoFocus);
    if (erasing)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    update();
}

void PanelButton::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat())
                click();
            break;
        case Qt::Key_Left:
            emit Left(-1, 0);
            break;
        case Qt::Key_Right:
            emit Left(1, 0);
            break;
        case Qt::Key_Up:
            emit Left(0, -1);
            break;
        case Qt::Key_Down:
            emit Left(0, 1);
            break;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

QColor PanelButton::Ink() const
{
    if (!isEnabled())
        return kFaintInk;
    if (face_ == Face::Lamp && !isChecked())
        return unlitInk_;
    return face_ == Face::Lamp && IsDark(color_) ? kBright : kInk;
}

void PanelButton::PaintGround(QPainter& painter) const
{
    if (face_ == Face::Target && !erasing_)
        return;
    QColor color = face_ == Face::Target ? ColorOf(panel::kEraseOn) : color_;
    if (!isEnabled())
        color = Mixed(color, kSurface, 0.6);
    else if (isDown())
        color = Mixed(color, kInk, 0.2);
    else if (underMouse())
        color = Mixed(color, kBright, 0.3);
    const QColor edge = !isEnabled() ? kFaintEdge : (isChecked() ? kLitEdge : kEdge);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

void PanelButton::PaintCaption(QPainter& painter) const
{
    if (arrow_ >= 0) {
        const double side = height() * 0.78;
        painter.save();
        painter.translate((width() - side) / 2, (height() - side) / 2);
        painter.scale(side / kArrowGrid, side / kArrowGrid);
        painter.setPen(
            QPen(Ink(), isChecked() ? 3 : 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(ArrowPath(arrow_));
        painter.restore();
        return;
    }
    QFont shown = font();
    shown.setBold(shown.bold() || (isChecked() && face_ == Face::Lamp));
    painter.setFont(shown);
    painter.setPen(Ink());
    const bool name = face_ == Face::Target;
    painter.drawText(
        name ? contentsRect() : rect(),
        (name ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter | Qt::TextWordWrap, text());
}

void PanelButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintGround(painter);
    PaintCaption(painter);
    if (hasFocus()) {
        painter.setPen(QPen(kFocus, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
    }
    if (changed_ && isEnabled())
        PaintChangedMark(painter, MarkOf(rect()));
}

int ArrowWidth(QSize box)
{
    return std::min(box.height() * 4 / 5, box.width() * 2 / 5);
}

PanelStyle::PanelStyle(QObject* parent) : QProxyStyle(QStringLiteral("Fusion"))
{
    setParent(parent);
}

QRect PanelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const
{
    if (control != CC_SpinBox)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const QRect all = option->rect;
    const int wide = ArrowWidth(all.size());
    const int half = all.height() / 2;
    const int left = all.right() - wide + 1;
    switch (part) {
        case SC_SpinBoxUp:
            return {left, all.top(), wide, half};
        case SC_SpinBoxDown:
            return {left, all.top() + half, wide, all.height() - half};
        case SC_SpinBoxEditField:
            return all.adjusted(3, 1, -wide, -1);
        default:
            return all;
    }
}

void PanelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const
{
    if (control != CC_SpinBox) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const bool enabled = option->state.testFlag(State_Enabled);
    const bool focused = option->state.testFlag(State_HasFocus);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(focused ? kFocus : (enabled ? kEdge : kFaintEdge), focused ? 2 : 1));
    painter->setBrush(enabled ? kBright : Mixed(kBright, kSurface, 0.7));
    const double inset = focused ? 1 : 0.5;
    painter->drawRoundedRect(QRectF(option->rect).adjusted(inset, inset, -inset, -inset), 3, 3);
    const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    for (const SubControl part : {SC_SpinBoxUp, SC_SpinBoxDown}) {
        const bool up = part == SC_SpinBoxUp;
        const bool steps = spin != nullptr && enabled &&
                           spin->stepEnabled.testFlag(up ? QAbstractSpinBox::StepUpEnabled
                                                         : QAbstractSpinBox::StepDownEnabled);
        const QRectF place = subControlRect(control, option, part, widget);
        if (steps && option->activeSubControls == part) {
            const bool pressed = option->state.testFlag(State_Sunken);
            painter->setPen(Qt::NoPen);
            painter->setBrush(pressed ? QColor(176, 184, 212) : QColor(222, 226, 240));
            painter->drawRoundedRect(place.adjusted(0, 1, -2, -1), 2, 2);
        }
        painter->setPen(Qt::NoPen);
        painter->setBrush(steps ? kInk : kFaintEdge);
        FillTriangle(*painter, place, up);
    }
    painter->restore();
}

int PanelStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const
{
    if (hint == SH_SpinBox_StepModifier)
        return Qt::NoModifier;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

PanelSpinBox::PanelSpinBox(QStyle* style, QWidget* parent) : QSpinBox(parent)
{
    setStyle(style);
    setAlignment(Qt::AlignCenter);
    lineEdit()->setFrame(false);
    QPalette clear = lineEdit()->palette();
    clear.setColor(QPalette::Base, Qt::transparent);
    lineEdit()->setPalette(clear);
    connect(this, &QSpinBox::valueChanged, this, &PanelSpinBox::Typed);
}

void PanelSpinBox::SetWords(const QStringList& words)
{
    words_ = words;
    lineEdit()->setReadOnly(true);
}

void PanelSpinBox::Show(int value, bool changed)
{
    if (value != this->value()) {
        const QSignalBlocker quiet(this);
        setValue(value);
    }
    if (changed == changed_)
        return;
    changed_ = changed;
    ShowChange(this, changed);
    update();
}

void PanelSpinBox::stepBy(int steps)
{
    interpretText();
    for (int i = 0; i < std::abs(steps); ++i)
        emit Stepped(steps > 0 ? 1 : -1);
    if (hasFocus())
        selectAll();  // a number that is typed now takes the place of this one
}

// One step for every key, so that a held key steps as fast as it repeats and stops with it.
void PanelSpinBox::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down: {
            const bool up = event->key() == Qt::Key_Up;
            if (stepEnabled().testFlag(up ? StepUpEnabled : StepDownEnabled))
                stepBy(up ? 1 : -1);
            break;
        }
        case Qt::Key_Space:
            event->ignore();  // it plays, wherever the focus is
            break;
        default:
            QSpinBox::keyPressEvent(event);
    }
}

void PanelSpinBox::paintEvent(QPaintEvent* event)
{
    QSpinBox::paintEvent(event);
    if (!changed_ || !isEnabled())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width(), 0);
    painter.scale(-1, 1);  // at the left, away from the arrows
    PaintChangedMark(painter, MarkOf(rect()));
}

QString PanelSpinBox::textFromValue(int value) const
{
    return value >= 0 && value < words_.size() ? words_[value] : QSpinBox::textFromValue(value);
}

StepArrows::StepArrows(QStyle* style, const QString& step, QWidget* parent)
    : PanelSpinBox(style, parent), step_(step)
{
    lineEdit()->setReadOnly(true);
    setRange(0, 0);
    lineEdit()->setText(step_);
}

}  // namespace ui
