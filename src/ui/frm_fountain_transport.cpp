#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

#include "ui/frm_fountain.h"
#include "ui/menus.h"
#include "ui/print_preview.h"

namespace ui {
namespace {

bool IsInput(QEvent::Type type)
{
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
            return true;
        default:
            return false;
    }
}

}  // namespace

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
    if (watched == lblTime_ && event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) {
        editor_.lblTime_RightClick();
        Refresh();
        return true;
    }
    if (event->type() != QEvent::KeyPress || QApplication::activePopupWidget() != nullptr ||
        static_cast<QWidget*>(watched)->window() != this)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (LagsBehind(*key))
        return true;
    const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return plain && MoveByKey(key->key());
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
                editor_.mmEditing_ClearClick();
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
                editor_.mmEditing_ClearClick();
            else
                editor_.mmEditing_PlayClick();
            break;
    }
}

void frmFountain::mnuFileAction_Click(int item)
{
    if (item == editor::kPrintItem) {
        Transact([this] { editor_.mnuFile_Click(); });
        PrintShow(editor_.Choreography(), this);
    } else if (item == editor::kExitItem) {
        close();
    } else if (item == editor::kSaveItem) {
        editor_.Save();
        Refresh();
    }
}

void frmFountain::mnuDisplayAction_Click(int item)
{
    editor_.ToggleDisplayOption(item);
    if (item == editor::kLegendsItem)
        FitForm();
    else
        Refresh();
}

}  // namespace ui
