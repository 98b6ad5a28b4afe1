#pragma once

#include <QDialog>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "document/choreography.h"
#include "ui/background_work.h"
#include "ui/diff_view.h"

class QPushButton;
class QTreeWidget;

namespace ui {

/// A version of a show that saving put aside.
struct Backup {
    int number = 0;  ///< 1 is the newest
    std::filesystem::path file;
    std::int64_t modified = 0;  ///< ns since 1970
    document::Choreography show;
};

/// Those of a control file that are there and can be read.
[[nodiscard]] std::vector<Backup> FindBackups(const std::filesystem::path& controlFile);

/// Offers the backups of the show, each with its date and its difference to now.
class dlgRestore final : public QDialog {
    Q_OBJECT

 public:
    /// `now` is what is open, under its name.
    dlgRestore(document::Choreography now, QWidget* window);

 signals:
    /// The dialog stays until it is accepted.
    void Chosen(const ui::Backup& backup);

 private:
    void BuildList();
    QLayout* BuildButtons();
    void Read();
    void Fill(std::vector<Backup> backups);
    void SumUp(int row);
    void ShowSelected();

    document::Choreography now_;
    std::vector<Backup> backups_;
    QTreeWidget* lstBackups_ = nullptr;
    DiffView* difference_ = nullptr;
    QPushButton* cmdRestore_ = nullptr;
    BackgroundWork work_;
};

}  // namespace ui
