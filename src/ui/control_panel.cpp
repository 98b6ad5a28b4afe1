#include "ui/control_panel.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include <QFontMetrics>
#include <QLabel>
#include <QPainter>

#include "panel/panel_state.h"
#include "ui/design_form.h"

namespace ui {
namespace {

using panel::PanelState;

constexpr QColor kGround(214, 214, 216);
constexpr QColor kEdge(176, 176, 180);
constexpr int kButtonMargin = 5;  // design pixels on both sides of a text together
constexpr double kSmallestFactor = 0.3;
constexpr double kFactorStep = 0.04;

// Where the panel keeps what a control shows.
// clang-format off
template <typename T>
struct Source {
    std::string_view name;
    const T& (*at)(const PanelState& panel, int index);
};
#define MEMBER(type, name) {#name, [](const PanelState& panel, int) -> const panel::type& { return panel.name; }}
#define ELEMENT(type, name) {#name, [](const PanelState& panel, int index) -> const panel::type& { return panel.name[index]; }}

constexpr Source<panel::Spinner> kSpinners[] = {
    ELEMENT(Spinner, updnRings),
    ELEMENT(Spinner, updnSweeps),
    ELEMENT(Spinner, updnCandelabra),
    ELEMENT(Spinner, updnCurtain),
    ELEMENT(Spinner, updnMultiValve),
    ELEMENT(Spinner, updnSweepPulsate),
    MEMBER(Spinner, updnBazookas),
    MEMBER(Spinner, updnSpout),
    MEMBER(Spinner, updnPeacock),
    MEMBER(Spinner, updnSweepSpeed),
    MEMBER(Spinner, updnDisplay),
};
constexpr Source<panel::ColorLabel> kColors[] = {
    ELEMENT(ColorLabel, lblMotion),
    ELEMENT(ColorLabel, lblLightMotion),
    MEMBER(ColorLabel, lblTimer),
    ELEMENT(ColorLabel, lblCopy),
    ELEMENT(ColorLabel, lblReset),
    ELEMENT(ColorLabel, lblLight),
    ELEMENT(ColorLabel, lblErase),
};
constexpr Source<panel::CaptionLabel> kCaptions[] = {
    ELEMENT(CaptionLabel, lblBypass),
    MEMBER(CaptionLabel, lblVoice),
    MEMBER(CaptionLabel, lblSweepTravel),
    ELEMENT(CaptionLabel, lblSweepTo),
    MEMBER(CaptionLabel, lblDisplay),
    MEMBER(CaptionLabel, lblRotateTime),
};
#undef MEMBER
#undef ELEMENT
// clang-format on

template <typename T, std::size_t Size>
const T* Find(const Source<T> (&sources)[Size], const PanelControl& control,
              const PanelState& panel)
{
    const auto* source = std::ranges::find(sources, control.name, &Source<T>::name);
    return source == std::end(sources) ? nullptr : &source->at(panel, std::max(control.index, 0));
}

PanelButton::Face FaceOf(PanelKind kind)
{
    switch (kind) {
        case PanelKind::Lamp:
            return PanelButton::Face::Lamp;
        case PanelKind::Target:
            return PanelButton::Face::Target;
        case PanelKind::Toggle:
            return PanelButton::Face::Toggle;
        default:
            return PanelButton::Face::Command;
    }
}

QFont FontFor(const PanelControl& control, double factor)
{
    QFont font = FormFont();
    font.setPixelSize(std::max(1, static_cast<int>(control.font * factor)));
    font.setBold(control.bold);
    return font;
}

/// How much of a control its text may fill.
QSize Room(const PanelControl& control, fountain::ScaleFactors scale)
{
    const QSize all = Scaled(control.place, scale).size();
    switch (control.kind) {
        case PanelKind::Heading:
        case PanelKind::Value:
            return all;
        case PanelKind::Level:
        case PanelKind::RotateTime:
            return {all.width() - ArrowWidth(all) - 4, all.height() - 2};
        default:
            return {all.width() - static_cast<int>(kButtonMargin * scale.x), all.height() - 1};
    }
}

QColor UnlitInk(const QString& letter)
{
    constexpr std::pair<char, QColor> kInks[] = {{'R', QColor(140, 16, 16)},
                                                 {'B', QColor(24, 32, 160)},
                                                 {'A', QColor(112, 72, 0)},
                                                 {'G', QColor(16, 88, 16)}};
    for (const auto& [name, ink] : kInks)
        if (letter == QLatin1Char(name))
            return ink;
    return {84, 86, 98};
}

// The names that lead a group of columns are as wide as what stands below them.
Qt::Alignment HeadingAlignment(const PanelControl& control)
{
    return (control.bold || control.place.width() > 46 ? Qt::AlignLeft : Qt::AlignHCenter) |
           Qt::AlignVCenter;
}

bool FitsItsRoom(const PanelControl& control, double factor, fountain::ScaleFactors scale)
{
    const QFontMetrics metrics(FontFor(control, factor));
    const QSize room = Room(control, scale);
    if (metrics.height() > room.height())
        return false;
    if (metrics.horizontalAdvance(control.sample) <= room.width())
        return true;
    const QRect needed =
        metrics.boundingRect(QRect(0, 0, room.width(), 10'000), Qt::TextWordWrap, control.sample);
    return needed.width() <= room.width() && needed.height() <= room.height();
}

// The control that did not fit last time is the likeliest not to fit now, so it is asked first.
double FittingFactor(fountain::ScaleFactors scale)
{
    const std::vector<PanelControl>& form = PanelForm();
    double factor = std::max(scale.x, scale.y);
    auto tightest = form.begin();
    while (factor > kSmallestFactor) {
        const auto misfit = [&](const PanelControl& control) {
            return !FitsItsRoom(control, factor, scale);
        };
        if (!misfit(*tightest)) {
            const auto found = std::ranges::find_if(form, misfit);
            if (found == form.end())
                break;
            tightest = found;
        }
        factor -= kFactorStep;
    }
    return factor;
}

}  // namespace

ControlPanel::ControlPanel(editor::Editor& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), style_(new PanelStyle(this))
{
    setObjectName(QStringLiteral("fraControls"));
    const PanelState& state = editor.Panel();
    for (const PanelControl& control : PanelForm()) {
        QWidget* widget = Build(control);
        widget->setObjectName(control.ObjectName());
        widget->setAccessibleName(control.accessibleName);
        widget->setToolTip(control.toolTip);
        items_.push_back({&control, widget, Find(kSpinners, control, state),
                          Find(kColors, control, state), Find(kCaptions, control, state)});
        Q_ASSERT_X(control.kind == PanelKind::Heading || control.kind == PanelKind::RotateTime ||
                       control.kind == PanelKind::Target || items_.back().spinner != nullptr ||
                       items_.back().color != nullptr || items_.back().caption != nullptr,
                   "ControlPanel", control.name.c_str());
    }
}

QWidget* ControlPanel::Build(const PanelControl& control)
{
    switch (control.kind) {
        case PanelKind::Heading:
        case PanelKind::Value:
            return BuildLabel(control);
        case PanelKind::Level:
            return BuildLevel(control);
        case PanelKind::RotateTime:
            return BuildRotateTime(control);
        default:
            return BuildButton(control);
    }
}

QWidget* ControlPanel::BuildLabel(const PanelControl& control)
{
    auto* label = new QLabel(control.caption, this);
    label->setTextFormat(Qt::PlainText);
    const bool value = control.kind == PanelKind::Value;
    label->setAlignment(value ? Qt::AlignRight | Qt::AlignVCenter : HeadingAlignment(control));
    return label;
}

QWidget* ControlPanel::BuildLevel(const PanelControl& control)
{
    auto* box = new PanelSpinBox(style_, this);
    const panel::Spinner* spinner = Find(kSpinners, control, editor_.Panel());
    box->setRange(spinner->Min, spinner->Max);
    box->setWrapping(spinner->Wrap);
    if (control.name == "updnSweepPulsate")
        box->SetWords({QStringLiteral("no command"), QStringLiteral("stop"),
                       QStringLiteral("upward"), QStringLiteral("downward")});
    const int index = std::max(control.index, 0);
    connect(box, &PanelSpinBox::Stepped, this, [this, &control, index](int direction) {
        editor_.PressSpinner(control.name, index, direction);
        emit Operated();
    });
    connect(box, &PanelSpinBox::Typed, this, [this, &control, index](int value) {
        editor_.SetSpinner(control.name, index, value);
        emit Operated();
    });
    return box;
}

QWidget* ControlPanel::BuildButton(const PanelControl& control)
{
    auto* button = new PanelButton(FaceOf(control.kind), this);
    button->setText(control.caption);
    if (control.name == "lblLightMotion")
        button->SetArrow(control.index);
    if (control.kind == PanelKind::Lamp)
        button->SetUnlitInk(UnlitInk(control.caption));
    connect(button, &QAbstractButton::clicked, this, [this, &control] { Click(control); });
    connect(button, &PanelButton::Left, this,
            [this, button](int dx, int dy) { FocusNeighbour(button, dx, dy); });
    return button;
}

QWidget* ControlPanel::BuildRotateTime(const PanelControl& control)
{
    auto* arrows = new StepArrows(style_, control.caption, this);
    connect(arrows, &PanelSpinBox::Stepped, this, [this, &control](int direction) {
        editor_.updnRotateTime_Press(control.index, direction);
        emit Operated();
    });
    return arrows;
}

void ControlPanel::Click(const PanelControl& control)
{
    if (control.name == "lblErase")
        editor_.lblErase_Click(control.index);
    else if (control.name == "lblOperator")
        editor_.lblOperator_Click();
    else if (control.name == "lblReset")
        editor_.lblReset_Click(control.index);
    else
        editor_.ClickLabel(control.name, std::max(control.index, 0));
    emit Operated();
}

// A name that was clicked is no button any more: the focus goes to the button that made it one.
void ControlPanel::Refresh()
{
    const QWidget* focus = focusWidget();
    const bool erasing = editor_.EraseMode();
    for (const Item& item : items_) {
        if (item.control->kind == PanelKind::Target) {
            auto* target = static_cast<PanelButton*>(item.widget);
            if (!erasing && target == focus && target->hasFocus())
                findChild<QWidget*>(QStringLiteral("lblErase_0"))->setFocus();
            target->ShowTarget(erasing);
        } else {
            RefreshItem(item);
        }
    }
}

void ControlPanel::RefreshItem(const Item& item)
{
    switch (item.control->kind) {
        case PanelKind::Level:
            static_cast<PanelSpinBox*>(item.widget)
                ->Show(item.spinner->Value, item.spinner->Changed());
            break;
        case PanelKind::Value: {
            auto* label = static_cast<QLabel*>(item.widget);
            const QString text = QString::fromStdString(item.caption->Caption);
            if (label->text() != text)
                label->setText(text);
            break;
        }
        case PanelKind::RotateTime:
            static_cast<PanelSpinBox*>(item.widget)
                ->Show(0,
                       editor_.Fountain().tmrLights.Interval() != editor_.Panel().lngLightTimerTag);
            break;
        case PanelKind::Toggle:
        case PanelKind::Lamp:
        case PanelKind::EraseMode:
        case PanelKind::Reset: {
            auto* button = static_cast<PanelButton*>(item.widget);
            if (item.color != nullptr) {
                const bool changed =
                    item.control->kind != PanelKind::EraseMode && item.color->Changed();
                button->Show(item.color->BackColor, item.control->caption, item.color->Lit(),
                             changed);
                break;
            }
            const bool on = item.caption->Caption == "X";
            button->Show(on ? fountain::kPanelOn : fountain::kPanelOff,
                         QString::fromStdString(item.caption->Caption), on,
                         item.caption->Changed());
            break;
        }
        case PanelKind::Heading:
        case PanelKind::Target:
            break;
    }
}

std::vector<QWidget*> ControlPanel::TabOrder() const
{
    std::vector<QWidget*> order;
    for (const Item& item : items_)
        if (item.control->kind != PanelKind::Heading && item.control->kind != PanelKind::Value)
            order.push_back(item.widget);
    return order;
}

// The nearest button on that side, so that the arrow keys go over the board as the eye does.
void ControlPanel::FocusNeighbour(const QWidget* from, int dx, int dy)
{
    const QPoint center = from->geometry().center();
    QWidget* nearest = nullptr;
    int least = 0;
    for (const Item& item : items_) {
        if (qobject_cast<PanelButton*>(item.widget) == nullptr ||
            item.widget->focusPolicy() == Qt::NoFocus || !item.widget->isEnabled())
            continue;
        const QPoint way = item.widget->geometry().center() - center;
        const int along = way.x() * dx + way.y() * dy;
        const int across = std::abs(way.x() * dy) + std::abs(way.y() * dx);
        if (along <= 0 || across > along)
            continue;
        const int distance = along + 3 * across;
        if (nearest == nullptr || distance < least) {
            nearest = item.widget;
            least = distance;
        }
    }
    if (nearest != nullptr)
        nearest->setFocus(Qt::TabFocusReason);
}

void ControlPanel::Fit(fountain::ScaleFactors scale)
{
    scale_ = scale;
    const double factor = FittingFactor(scale);
    const QPoint corner = geometry().topLeft();
    for (const Item& item : items_) {
        item.widget->setGeometry(Scaled(item.control->place, scale).translated(-corner));
        item.widget->setFont(FontFor(*item.control, factor));
        if (item.control->kind == PanelKind::Target)
            item.widget->setContentsMargins(static_cast<int>(kTargetMargin * scale.x), 0, 0, 0);
    }
}

void ControlPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kEdge, 1));
    painter.setBrush(kGround);
    const double inset = 0.5 + 5 * scale_.x;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, 0.5, -inset, -0.5), 5, 5);
    const QPoint corner = geometry().topLeft();
    for (const QRectF& line : PanelSeparators())
        painter.fillRect(Scaled(line, scale_).translated(-corner), kEdge);
}

}  // namespace ui
