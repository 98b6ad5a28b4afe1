// Working against the music: the marks, and the panel that shifts commands.
#include <QKeyEvent>
#include <QLineEdit>

#include "ui/frm_fountain.h"

namespace ui {

void frmFountain::BuildMarks()
{
    AddLabel("lblMarks", Qt::AlignLeft | Qt::AlignVCenter)->setText(QStringLiteral("Marks"));
    lstMarks_ = new MarkList(this);
    lstMarks_->setObjectName(QStringLiteral("lstMarks"));
    connect(lstMarks_, &MarkList::Chosen, this, [this](int index) {
        editor_.lstMarks_Click(index);
        Refresh();
    });
    connect(lstMarks_, &MarkList::Opened, this, [this](int index) {
        editor_.lstMarks_DblClick(index);
        Refresh();
    });
}

void frmFountain::RefreshMarks()
{
    lstMarks_->ShowMarks(editor_.Playback().lstMarks());
    Enable(lstMarks_, !Covered());
}

// While one listens a single key must do; at rest it is a letter like any other.
bool frmFountain::MarkByKey(const QKeyEvent& key, const QWidget* watched)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::NoModifier && key.key() == Qt::Key_M) {
        if (!editor_.Transport().mmEditing.add ||
            qobject_cast<const QLineEdit*>(watched) != nullptr)
            return false;
        if (!key.isAutoRepeat())
            editor_.mmEditing_AddClick();
        Refresh();
        return true;
    }
    const bool next = key.key() == Qt::Key_PageUp;
    if (modifiers != Qt::ControlModifier || (!next && key.key() != Qt::Key_PageDown))
        return false;
    GoToTypedTime();
    if (next)
        editor_.mmEditing_NextClick();
    else
        editor_.mmEditing_PrevClick();
    Refresh();
    return true;
}

void frmFountain::OpenShiftPanel()
{
    GoToTypedTime();
    editor_.OpenShiftPanel();
    Refresh();
}

void frmFountain::RefreshShift()
{
    const bool open = editor_.ShiftPanel().visible;
    if (fraShift_ == nullptr) {
        if (!open)
            return;
        fraShift_ = new ShiftFrame(editor_, this);
        fraShift_->Fit(fountain::FitToScreen(width(), height()));
        connect(fraShift_, &ShiftFrame::Operated, this, &frmFountain::Refresh);
    }
    const bool wasOpen = fraShift_->isVisibleTo(this);
    fraShift_->Refresh();
    if (wasOpen && !open)
        cmdFocus_->setFocus();
}

}  // namespace ui
