#pragma once

#include <QMenu>

#include "editor/editor.h"

namespace ui {

/// `text` for an item of `menu`: cut in the middle where it is too long, "&" as itself.
[[nodiscard]] QString ItemText(const QMenu& menu, const QString& text);

/// `mnuEdit`: takes edits back and does them again, each called by its name.
class EditMenu final : public QMenu {
    Q_OBJECT

 public:
    /// `editor` outlives the menu.
    EditMenu(editor::Editor& editor, QWidget* parent);

    /// Shows what can be undone and redone now.
    void Refresh();

 signals:
    /// The user wants it; nothing is done yet.
    void UndoChosen();
    void RedoChosen();

 private:
    editor::Editor& editor_;
    QAction* mnuUndo_;
    QAction* mnuRedo_;
};

}  // namespace ui
