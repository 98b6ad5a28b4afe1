#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "ui/help_viewer.h"

namespace ui {

/// What the Help menu opens. Where the manual is gets known at start-up; it is opened when it is
/// asked for, and closes with the main window.
class HelpDesk final : public QObject {
    Q_OBJECT

 public:
    explicit HelpDesk(QWidget* window);

    /// `helpFile` is empty when there is none; the collection made of it goes to `userFolder`.
    void Use(const QString& helpFile, const QString& userFolder);

    /// Items of the Help menu, by index.
    enum Item : int { kContentsItem = 0, kSearchItem = 1, kAboutItem = 3 };

    /// Opens the contents or the search. What hinders it is told in English, empty when nothing
    /// did.
    [[nodiscard]] QString Open(Item item);

    /// Null before the manual has been opened.
    [[nodiscard]] HelpViewer* Viewer() { return viewer_.get(); }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QString helpFile_;
    QString userFolder_;
    std::unique_ptr<HelpViewer> viewer_;
};

}  // namespace ui
