#include "ui/edit_menu.h"

namespace ui {
namespace {

constexpr int kLongestItem = 64;  // average characters
// The style leaves next to nothing between the longest text and its keys.
constexpr QLatin1String kBeforeKeys("\xa0\xa0");

void Show(QAction* action, const QMenu& menu, const std::string& text, bool enabled)
{
    const QString whole = QString::fromStdString(text);
    action->setText(u'&' + ItemText(menu, whole) + kBeforeKeys);
    action->setToolTip(whole);
    action->setEnabled(enabled);
}

}  // namespace

QString ItemText(const QMenu& menu, const QString& text)
{
    const QFontMetrics metrics = menu.fontMetrics();
    return metrics.elidedText(text, Qt::ElideMiddle, kLongestItem * metrics.averageCharWidth())
        .replace(u'&', QStringLiteral("&&"));
}

EditMenu::EditMenu(editor::Editor& editor, QWidget* parent)
    : QMenu(QStringLiteral("&Edit"), parent),
      editor_(editor),
      mnuUndo_(addAction(QStringLiteral("&Undo"))),
      mnuRedo_(addAction(QStringLiteral("&Redo")))
{
    setObjectName(QStringLiteral("mnuEdit"));
    setToolTipsVisible(true);
    mnuUndo_->setObjectName(QStringLiteral("mnuUndo"));
    mnuUndo_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    connect(mnuUndo_, &QAction::triggered, this, &EditMenu::UndoChosen);
    mnuRedo_->setObjectName(QStringLiteral("mnuRedo"));
    mnuRedo_->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    connect(mnuRedo_, &QAction::triggered, this, &EditMenu::RedoChosen);
}

void EditMenu::Refresh()
{
    Show(mnuUndo_, *this, editor_.UndoText(), editor_.CanUndo());
    Show(mnuRedo_, *this, editor_.RedoText(), editor_.CanRedo());
}

}  // namespace ui
