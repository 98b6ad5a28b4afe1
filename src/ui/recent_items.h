#pragma once

#include <QMenu>
#include <array>

#include "editor/recent.h"

namespace ui {

/// The shows opened last, `mnuRecent`, at the end of a menu.
class RecentItems final : public QObject {
    Q_OBJECT

 public:
    explicit RecentItems(QMenu* menu);

    void Show(const editor::RecentFiles& files, bool enabled);

 signals:
    void Chosen(int index);

 private:
    QMenu* menu_;
    QAction* separator_;
    std::array<QAction*, editor::kMostRecent> items_{};
    editor::RecentFiles shown_;
    QFont font_;
};

}  // namespace ui
