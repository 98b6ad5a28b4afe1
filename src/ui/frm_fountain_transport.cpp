#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

#include "ui/frm_fountain.h"
#include "ui/input_events.h"
#include "ui/menus.h"
#include "ui/text_keys.h"

namespace ui {

// After an action of the transport the keys belong to the window again.
void frmFountain::Transact(const std::function<void()>& operation)
{
    GoToTypedTime();
    operation();
    cmdFocus_->setFocus();
    Refresh();
}

// A time that stands typed in its field is the one that the next action is meant for.
void frmFountain::GoToTypedTime()
{
    for (TimeSpinner* spinner : updnTime_)
        if (spinner->hasFocus())
            spinner->interpretText();
}

// The window sees every key first, whatever control has the focus.
bool frmFountain::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched->isWidgetType())
        return false;
    if (editor_.Playback().SnippetPlays() && IsInput(event->type()))
        return true;
    if (event->type() == QEvent::MouseButtonPress)
        GoToTypedTime();
    if (watched == lblTime_ && event->type() == QEvent::MouseButtonPress) {
        lblTime_MouseDown(static_cast<QMouseEvent*>(event)->button());
        return true;
    }
    auto* widget = static_cast<QWidget*>(watched);
    if (IsOurs(widget) && ActOnTextKey(widget, event))
        return true;
    return event->type() == QEvent::KeyPress && QApplication::activePopupWidget() == nullptr &&
           IsOurs(widget) && ActOnKey(*static_cast<QKeyEvent*>(event), widget);
}

// A control on the window, or on the script where that floats; not on a dialog.
bool frmFountain::IsOurs(const QWidget* widget) const
{
    const QWidget* window = widget->window();
    return window == this || window == viewArea_->FloatingScript();
}

void frmFountain::lblTime_MouseDown(Qt::MouseButton button)
{
    if (Covered())
        return;
    if (button == Qt::LeftButton) {
        OpenShiftPanel();
        return;
    }
    editor_.lblTime_RightClick();
    Refresh();
}

// True for a key that belongs to the window whatever control has the focus.
bool frmFountain::ActOnKey(const QKeyEvent& key, const QWidget* watched)
{
    if (LagsBehind(key))
        return true;
    if (MarkByKey(key, watched))
        return true;
    if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    if (key.key() == Qt::Key_F9) {
        OpenShiftPanel();
        return true;
    }
    // In a text one goes to its ends by these keys; a spin box has a text too, but a short one.
    const bool text = qobject_cast<const QLineEdit*>(watched) != nullptr &&
                      qobject_cast<const QAbstractSpinBox*>(watched->parentWidget()) == nullptr;
    const bool ends = key.key() == Qt::Key_Home || key.key() == Qt::Key_End;
    return !(text && ends) && MoveByKey(key.key());
}

// A held key that repeats faster than the window can follow is answered once in a while, never
// later than it is released.
bool frmFountain::LagsBehind(const QKeyEvent& key)
{
    if (!key.isAutoRepeat() || key.key() < Qt::Key_Home || key.key() > Qt::Key_PageDown)
        return false;
    if (behind_)
        return true;
    behind_ = true;
    QTimer::singleShot(0, this, [this] { behind_ = false; });
    return false;
}

bool frmFountain::MoveByKey(int key)
{
    const bool whole = key == Qt::Key_Home || key == Qt::Key_End;
    const bool up = key == Qt::Key_PageUp || key == Qt::Key_End;
    const bool down = key == Qt::Key_PageDown || key == Qt::Key_Home;
    if ((!up && !down) || !editor_.Transport().updnTimeEnabled)
        return false;
    GoToTypedTime();
    constexpr timeline::StepMode kToCommand{.multiplier = 1, .commandStep = true};
    const auto field = whole ? timeline::TimeField::WholeRange : timeline::TimeField::Tenths;
    if (up)
        editor_.StepUp(field, kToCommand);
    else
        editor_.StepDown(field, kToCommand);
    Refresh();
    return true;
}

void frmFountain::keyPressEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat()) {
        event->ignore();
        return;
    }
    switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_MediaTogglePlayPause:
        case Qt::Key_MediaPlay:
            Transact([this] { TogglePlaying(); });
            break;
        case Qt::Key_MediaPause:
            Transact([this] { editor_.mmSong_PauseClick(); });
            break;
        case Qt::Key_MediaStop:
            Transact([this] {
                editor_.mmSong_StopClick();
                StopControlFile();
            });
            break;
        case Qt::Key_MediaPrevious:
            Transact([this] { editor_.mmSong_PrevClick(); });
            break;
        default:
            event->ignore();
    }
}

void frmFountain::TogglePlaying()
{
    switch (editor_.mmSong().Mode()) {
        case timeline::PlayerMode::Playing:
            editor_.mmSong_PauseClick();
            break;
        case timeline::PlayerMode::Stopped:
        case timeline::PlayerMode::Paused:
            editor_.mmSong_PlayClick();
            break;
        case timeline::PlayerMode::NotReady:
            if (editor_.Playback().tmrControlFile.Enabled())
                StopControlFile();
            else
                editor_.mmEditing_PlayClick();
            break;
    }
}

// The button that stops the choreography is, with music, the one that clears the marks.
void frmFountain::StopControlFile()
{
    if (editor_.Playback().tmrControlFile.Enabled())
        editor_.mmEditing_ClearClick();
}

void frmFountain::mnuDisplayAction_Click(int item)
{
    if (item == kTimeStripItem)
        ShowTimeStrip(!stripShown_);
    else if (item == kScriptItem)
        ShowScript(!viewArea_->ScriptShown());
    else
        editor_.ToggleDisplayOption(item);
    Refresh();
}

}  // namespace ui
