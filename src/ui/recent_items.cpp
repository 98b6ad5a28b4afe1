#include "ui/recent_items.h"

#include <QFile>

#include "ui/edit_menu.h"

namespace ui {

RecentItems::RecentItems(QMenu* menu) : QObject(menu), menu_(menu), separator_(menu->addSeparator())
{
    menu_->setToolTipsVisible(true);
    separator_->setVisible(false);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        items_[i] = menu_->addAction(QString());
        items_[i]->setObjectName(QStringLiteral("mnuRecent_%1").arg(i));
        items_[i]->setVisible(false);
        connect(items_[i], &QAction::triggered, this,
                [this, i] { emit Chosen(static_cast<int>(i)); });
    }
}

void RecentItems::Show(const editor::RecentFiles& files, bool enabled)
{
    for (QAction* item : items_)
        item->setEnabled(enabled);
    if (shown_ == files && font_ == menu_->font())
        return;
    shown_ = files;
    font_ = menu_->font();
    separator_->setVisible(!files.empty());
    for (std::size_t i = 0; i < items_.size(); ++i) {
        items_[i]->setVisible(i < files.size());
        if (i >= files.size())
            continue;
        const QString name = QFile::decodeName(QByteArray::fromStdString(files[i].string()));
        items_[i]->setText(QStringLiteral("&%1  ").arg(i + 1) + ItemText(*menu_, name));
        items_[i]->setToolTip(name);
    }
}

}  // namespace ui
