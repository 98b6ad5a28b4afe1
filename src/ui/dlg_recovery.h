#pragma once

#include <QDialog>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "document/choreography.h"
#include "document/journal.h"
#include "editor/prompts.h"
#include "ui/diff_view.h"

class QGridLayout;
class QLabel;
class QListWidget;

namespace ui {

/// A show whose process ended before it was saved.
struct LeftShow {
    std::filesystem::path journal;
    std::int64_t modified = 0;  ///< of the journal, ns since 1970
    document::JournalContent content;
    document::Choreography saved;  ///< what its control file holds now
    document::FileStamp file;      ///< and what that file is
};

/// What `folder` holds of ended processes, the latest first. A journal that holds nothing but what
/// is saved is removed.
[[nodiscard]] std::vector<LeftShow> FindLeftShows(const std::filesystem::path& folder);

/// Offers what was not saved beside what is. Closing it decides nothing, and keeps everything.
class dlgRecovery final : public QDialog {
    Q_OBJECT

 public:
    /// At least one show; `prompts` outlives the dialog.
    dlgRecovery(std::vector<LeftShow> shows, editor::Prompts& prompts, QWidget* window);

 signals:
    /// The user wants to go on with one of them. The dialog stays until it is accepted.
    void RecoveredChosen(const ui::LeftShow& show);
    void SavedChosen(const ui::LeftShow& show);

 private:
    void BuildList(QLayout& layout);
    void BuildTable(QGridLayout& table);
    void BuildButtons(QLayout& layout);
    QLabel* AddCell(QGridLayout& table, int row, int column, const char* name);
    void ShowSelected();
    void ThrowAway();
    [[nodiscard]] const LeftShow& Selected() const;

    std::vector<LeftShow> shows_;
    editor::Prompts& prompts_;
    QListWidget* lstShows_ = nullptr;
    QLabel* lblName_ = nullptr;
    QLabel* lblRecoveredTime_ = nullptr;
    QLabel* lblSavedTime_ = nullptr;
    QLabel* lblRecoveredCounts_ = nullptr;
    QLabel* lblSavedCounts_ = nullptr;
    QLabel* lblRemark_ = nullptr;
    QPushButton* cmdSaved_ = nullptr;
    DiffView* difference_ = nullptr;
};

}  // namespace ui
