#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "document/choreography.h"
#include "timeline/diff.h"
#include "ui/background_work.h"

class QLabel;
class QListView;
class QStringListModel;

namespace ui {

/// `changes` in a line that is not too long: "2 times changed, 1 time added".
[[nodiscard]] QString SummaryLine(const std::vector<timeline::Change>& changes);

/// True when both hold the same times with the same commands.
[[nodiscard]] bool SameShow(const document::Choreography& one, const document::Choreography& other);

/// What differs between two choreographies, in English: a line that sums it up over a list of all.
/// Large ones are compared while the window goes on.
class DiffView final : public QWidget {
    Q_OBJECT

 public:
    /// The accessible name of the list is `name`.
    DiffView(const QString& name, QWidget* parent);

    /// Shows what makes `after` of `before`, behind the words `lead`.
    void Compare(document::Choreography before, document::Choreography after, const QString& lead);

 signals:
    /// The difference is on the screen.
    void Compared();

 private:
    QLabel* lblSummary_ = nullptr;
    QListView* lstChanges_ = nullptr;
    QStringListModel* lines_ = nullptr;
    BackgroundWork work_;
};

}  // namespace ui
