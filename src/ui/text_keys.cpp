#include "ui/text_keys.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSpinBox>

namespace ui {
namespace {

bool IsRedo(QKeyEvent* key)
{
    return key->matches(QKeySequence::Redo) ||
           (key->key() == Qt::Key_Y && key->modifiers() == Qt::ControlModifier);
}

bool IsBeingTyped(const QSpinBox& box, const QLineEdit& text)
{
    bool number = false;
    const int typed = text.text().toInt(&number);
    return !number || typed != box.value();
}

}  // namespace

bool ActOnTextKey(QWidget* focus, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    const bool redo = IsRedo(key);
    if (!redo && !key->matches(QKeySequence::Undo))
        return false;
    const auto* box = qobject_cast<const QSpinBox*>(focus);
    auto* text = box != nullptr ? box->findChild<QLineEdit*>() : qobject_cast<QLineEdit*>(focus);
    if (text == nullptr)
        return false;
    const bool texts =
        box == nullptr ||
        (redo ? text->isRedoAvailable() : text->isUndoAvailable() && IsBeingTyped(*box, *text));
    const bool asked = event->type() == QEvent::ShortcutOverride;
    event->setAccepted(texts || !asked);
    if (!texts || asked)
        return true;
    if (redo)
        text->redo();
    else
        text->undo();
    return true;
}

}  // namespace ui
