// Composing: the control panel, what it will write, and the spinners that step in time.
#include <array>

#include "ui/frm_fountain.h"

namespace ui {
namespace {

constexpr QColor kReadout(0, 0, 128);
constexpr QColor kCommandSteps(255, 0, 0);
constexpr QColor kInk(24, 24, 32);
constexpr QColor kQuiet(96, 98, 108);
constexpr QColor kPending(156, 68, 0);

/// A field of a time: minutes, seconds, tenths.
struct TimeSpan {
    std::int32_t unit;  // ms
    std::int32_t count;
    int digits;
};
constexpr std::array<TimeSpan, 3> kFields{{{60'000, 90, 2}, {1'000, 60, 2}, {100, 10, 1}}};
constexpr std::array<const char*, 3> kFieldNames{"min", "sec", "1/10"};

int FieldOf(std::int32_t time, const TimeSpan& field)
{
    return static_cast<int>(time / field.unit % field.count);
}

void SetTextColor(QLabel* label, const QColor& color)
{
    QPalette palette = label->palette();
    if (palette.color(QPalette::WindowText) == color)
        return;
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

}  // namespace

void frmFountain::BuildPanel()
{
    fraControls_ = new ControlPanel(editor_, this);
    connect(fraControls_, &ControlPanel::Operated, this, &frmFountain::Refresh);
    lblStored_ = AddLabel("lblStored", Qt::AlignLeft | Qt::AlignVCenter);
    lblPending_ = AddLabel("lblPending", Qt::AlignLeft | Qt::AlignVCenter);
}

void frmFountain::BuildTimeSpinners()
{
    auto* style = new PanelStyle(this);
    for (int field = 0; field < 3; ++field) {
        const auto i = static_cast<std::size_t>(field);
        const QByteArray label = QByteArray("lblTimeField_") + QByteArray::number(field);
        AddLabel(label.constData(), Qt::AlignCenter)->setText(QString::fromLatin1(kFieldNames[i]));
        updnTime_[i] = new TimeSpinner(kFields[i].count - 1, kFields[i].digits, style, this);
        updnTime_[i]->setObjectName(QStringLiteral("updnTime_%1").arg(field));
        connect(updnTime_[i], &PanelSpinBox::Stepped, this,
                [this, field](int direction) { StepTime(field, direction); });
        connect(updnTime_[i], &PanelSpinBox::Typed, this,
                [this, field](int value) { TypeTime(field, value); });
    }
}

void frmFountain::StepTime(int field, int direction)
{
    const int multiplier = updnTime_[static_cast<std::size_t>(field)]->Multiplier();
    if (direction > 0)
        editor_.StepTimeUp(static_cast<timeline::TimeField>(field), multiplier);
    else
        editor_.StepTimeDown(static_cast<timeline::TimeField>(field), multiplier);
    Refresh();
}

void frmFountain::TypeTime(int field, int value)
{
    const std::int32_t time = editor_.Timeline().CurrentTime();
    const TimeSpan& span = kFields[static_cast<std::size_t>(field)];
    editor_.MoveTo(time + (value - FieldOf(time, span)) * span.unit);
    Refresh();
}

void frmFountain::RefreshReadout()
{
    ShowText(lblTime_, "Current time", QString::fromStdString(editor_.Timeline().lblTime()));
    SetTextColor(lblTime_, editor_.CommandStepMode() ? kCommandSteps : kReadout);
    for (std::size_t i = 0; i < updnTime_.size(); ++i)
        updnTime_[i]->Show(FieldOf(editor_.Timeline().CurrentTime(), kFields[i]), false);
}

void frmFountain::RefreshPanel()
{
    fraControls_->Refresh();
    const QString time = QString::fromStdString(editor_.Timeline().lblTime());
    // While something plays the times fly by, and the line would only flicker.
    const bool editing = editor_.Transport().fraControlsEnabled;
    const QString stored = QString::fromStdString(editing ? editor_.StoredText() : "");
    ShowText(lblStored_, "Stored here",
             !editing           ? QString()
             : stored.isEmpty() ? QStringLiteral("Nothing is stored at %1.").arg(time)
                                : QStringLiteral("Stored at %1: %2").arg(time, stored),
             Qt::ElideRight);
    SetTextColor(lblStored_, stored.isEmpty() ? kQuiet : kInk);

    const QString pending = editing ? QString::fromStdString(editor_.PendingText()) : QString();
    if (pending.isEmpty() == pendingShown_) {
        pendingShown_ = !pending.isEmpty();
        update();
    }
    QString text;
    if (editor_.EraseMode())
        text = QStringLiteral("Erase: click the pink name of what shall go from this time.");
    else if (pendingShown_)
        text = QStringLiteral("Will be written here: %1").arg(pending);
    else if (editing)
        text = QStringLiteral(
            "Set on the panel what shall happen at this time; it is written when you leave it.");
    ShowText(lblPending_, "Pending here", text, Qt::ElideRight);
    SetTextColor(lblPending_, pendingShown_ || editor_.EraseMode() ? kPending : kQuiet);
}

}  // namespace ui
