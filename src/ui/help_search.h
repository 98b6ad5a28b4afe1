#pragma once

#include <QHelpSearchEngine>
#include <QUrl>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;

namespace ui {

/// The words that a search looks for, each of them with whatever may follow it: `ring` finds
/// "rings" too. Signs, which the index knows nothing of, only part words.
[[nodiscard]] QString SearchQuery(const QString& typed);

/// The search page: a field, and the pages with the words in it.
class HelpSearch final : public QWidget {
    Q_OBJECT

 public:
    /// `engine` outlives the page.
    HelpSearch(QHelpSearchEngine& engine, QWidget* parent);

    void FocusField();

 signals:
    /// A page of the results was chosen; `words` are those that were looked for.
    void Chosen(const QUrl& page, const QString& words);

 private:
    void Search();
    void ShowResults();

    QHelpSearchEngine& engine_;
    QLineEdit* txtSearch_ = nullptr;
    QLabel* lblFound_ = nullptr;
    QListWidget* lstFound_ = nullptr;
    QString searched_;
    bool indexed_ = false;
};

}  // namespace ui
