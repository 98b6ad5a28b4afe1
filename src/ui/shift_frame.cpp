#include "ui/shift_frame.h"

#include <algorithm>
#include <cstdlib>

#include <QApplication>

#include "document/time_text.h"
#include "timeline/shift.h"
#include "ui/design_form.h"

namespace ui {
namespace {

constexpr QColor kReadout(0, 0, 128);
constexpr QRectF kPlace(202, 494, 620, 198);  // over the panel, on the design screen

struct Field {
    const char* name;
    const char* word;
    std::int32_t unit;  // ms
    std::int32_t count;
    int digits;
};
constexpr std::array<Field, 3> kFields{{{"Minutes", "min", 60'000, 90, 2},
                                        {"Seconds", "sec", 1'000, 60, 2},
                                        {"Tenths of a second", "1/10", 100, 10, 1}}};

int FieldOf(std::int32_t time, const Field& field)
{
    return static_cast<int>(time / field.unit % field.count);
}

QString Indexed(const char* name, int index)
{
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

// clang-format off
constexpr std::array kControls = std::to_array<FormControl>({  // places within the frame
    // name                x    y  width height font  sample, accessible name, tool tip
    {"lblShiftHelp",       24,  14,  572,  42,  15, "", "What the shift panel does",
     "How to shift the commands"},
    {"lblShiftTime",       24,  66,  200,  50,  38, "00:00.0", "New time",
     "The time that the commands will have"},
    {"lblShiftField_0",   236,  74,   34,  34,  12, "min", "Minutes", "Minutes of the new time"},
    {"updnShiftTime_0",   270,  74,   66,  34,  16, "000", "Minutes of the new time",
     "Shift by a minute, or type the minutes"},
    {"lblShiftField_1",   350,  74,   34,  34,  12, "sec", "Seconds", "Seconds of the new time"},
    {"updnShiftTime_1",   384,  74,   66,  34,  16, "000", "Seconds of the new time",
     "Shift by a second, or type the seconds"},
    {"lblShiftField_2",   464,  74,   40,  34,  12, "1/10", "Tenths",
     "Tenths of a second of the new time"},
    {"updnShiftTime_2",   504,  74,   58,  34,  16, "00", "Tenths of a second of the new time",
     "Shift by a tenth of a second, or type the tenths"},
    {"lblShiftFactor",     26, 122,  570,  24,  15, "shift downward 89 minutes 59.9 seconds", "Shift",
     "By how much the commands will be shifted"},
    {"cmdShift_0",        376, 152,  104,  34,  15, "Set", "Set",
     "Shift the commands of this time and all after it (Enter)"},
    {"cmdShift_1",        492, 152,  104,  34,  15, "Cancel", "Cancel",
     "Close the panel and shift nothing (Escape)"},
});
// clang-format on

}  // namespace

ShiftFrame::ShiftFrame(editor::Editor& editor, QWidget* parent)
    : CoverFrame(parent), editor_(editor)
{
    setObjectName(QStringLiteral("fraShift"));
    setAccessibleName(QStringLiteral("Shift commands"));
    hide();
    BuildTexts();
    BuildControls();
    DescribeControls(kControls);
}

void ShiftFrame::BuildTexts()
{
    lblShiftHelp_ =
        AddLabel(QStringLiteral("lblShiftHelp"), kCoverInk, Qt::AlignLeft | Qt::AlignVCenter);
    lblShiftHelp_->setWordWrap(true);
    lblShiftHelp_->setText(
        QStringLiteral("Use the time controls to set the new time for these commands and then "
                       "click the Set button to shift playback times."));
    lblShiftTime_ =
        AddLabel(QStringLiteral("lblShiftTime"), kReadout, Qt::AlignLeft | Qt::AlignVCenter);
    lblShiftFactor_ =
        AddLabel(QStringLiteral("lblShiftFactor"), kCoverInk, Qt::AlignLeft | Qt::AlignVCenter);
    for (int i = 0; i < 3; ++i) {
        const auto at = static_cast<std::size_t>(i);
        lblShiftField_[at] = AddLabel(Indexed("lblShiftField", i), kCoverInk, Qt::AlignCenter);
        lblShiftField_[at]->setText(QString::fromLatin1(kFields[at].word));
    }
}

void ShiftFrame::BuildControls()
{
    auto* style = new PanelStyle(this);
    for (int i = 0; i < 3; ++i) {
        const Field& field = kFields[static_cast<std::size_t>(i)];
        auto* spinner = new TimeSpinner(field.count - 1, field.digits, style, this);
        spinner->setObjectName(Indexed("updnShiftTime", i));
        connect(spinner, &PanelSpinBox::Stepped, this, [this, i](int direction) {
            editor_.updnShiftTime_Press(i, direction);
            emit Operated();
        });
        connect(spinner, &PanelSpinBox::Typed, this, [this, i](int value) { TypeTime(i, value); });
        updnShiftTime_[static_cast<std::size_t>(i)] = spinner;
    }
    for (int i = 0; i < 2; ++i) {
        auto* button =
            new QPushButton(i == 0 ? QStringLiteral("&Set") : QStringLiteral("&Cancel"), this);
        button->setObjectName(Indexed("cmdShift", i));
        connect(button, &QPushButton::clicked, this, [this, i] { cmdShift_Click(i); });
        cmdShift_[static_cast<std::size_t>(i)] = button;
    }
    cmdShift_[0]->setDefault(true);
}

void ShiftFrame::Fit(fountain::ScaleFactors scale)
{
    setGeometry(Scaled(kPlace, scale));
    for (const FormControl& control : kControls) {
        auto* widget = findChild<QWidget*>(QString::fromLatin1(control.name));
        widget->setGeometry(PlaceOf(control, scale));
        QFont family = FormFont();
        family.setBold(widget == lblShiftTime_);
        const double lesser = std::min(scale.x, scale.y);
        const bool wraps = widget == lblShiftHelp_;  // its lines grow with both scales
        widget->setFont(
            FontOf(control, wraps ? fountain::ScaleFactors{lesser, lesser} : scale, family));
    }
}

void ShiftFrame::Refresh()
{
    const timeline::ShiftPanel& panel = editor_.ShiftPanel();
    if (panel.visible) {
        lblShiftTime_->setText(QString::fromStdString(document::ReadoutText(panel.newTime)));
        lblShiftFactor_->setText(QString::fromStdString(timeline::ShiftText(panel.Amount())));
        for (std::size_t i = 0; i < kFields.size(); ++i)
            updnShiftTime_[i]->Show(FieldOf(panel.newTime, kFields[i]), false);
    }
    if (panel.visible == isVisibleTo(parentWidget()))
        return;
    setVisible(panel.visible);
    if (!panel.visible)
        return;
    raise();
    updnShiftTime_[1]->setFocus();
    updnShiftTime_[1]->selectAll();
}

// The limits are those of the presses, so a number that is typed is a row of them.
void ShiftFrame::TypeTime(int field, int value)
{
    const int shown =
        FieldOf(editor_.ShiftPanel().newTime, kFields[static_cast<std::size_t>(field)]);
    for (int i = std::abs(value - shown); i > 0; --i)
        editor_.updnShiftTime_Press(field, value > shown ? 1 : -1);
    emit Operated();
}

void ShiftFrame::cmdShift_Click(int index)
{
    if (index == 0)
        for (TimeSpinner* spinner : updnShiftTime_)
            spinner->interpretText();  // what stands typed is meant
    editor_.cmdShift_Click(index);
    emit Operated();
}

}  // namespace ui
