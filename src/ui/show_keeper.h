#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <filesystem>
#include <map>
#include <memory>
#include <vector>

#include "document/journal.h"
#include "editor/editor.h"
#include "editor/prompts.h"
#include "editor/show_guard.h"
#include "ui/background_work.h"
#include "ui/dlg_recovery.h"
#include "ui/dlg_restore.h"
#include "ui/file_watch.h"
#include "ui/frm_fountain.h"
#include "ui/show_lock.h"

namespace ui {

/// Sees to it that nothing is lost: what a crash left is offered, two editors do not write over one
/// another unasked, changes on the disk are told, and backups are brought back.
class ShowKeeper final : public QObject, public editor::ShowGuard {
    Q_OBJECT

 public:
    /// All outlive the keeper, the journal the editor too.
    ShowKeeper(editor::Editor& editor, editor::Prompts& prompts, frmFountain& window,
               document::Journal& journal);
    ~ShowKeeper() override;
    Q_DISABLE_COPY_MOVE(ShowKeeper)

    /// The start-up is over: from now on dialogs are opened by themselves. What ended processes
    /// left in `journals` is looked for and offered.
    void Begin(const std::filesystem::path& journals);
    /// True until that was found, and whatever waits for its turn was done.
    [[nodiscard]] bool Busy() const { return looks_ || attend_.isActive(); }
    /// Looks whether the file of the show was changed, without waiting to be told.
    void LookNow();
    /// Offers the backups of the show that is open.
    void RestoreBackup();

    [[nodiscard]] bool MayOpen(const std::filesystem::path& file) override;
    void Reading(const std::filesystem::path& file) override;
    [[nodiscard]] bool MaySave(const std::filesystem::path& file) override;
    void Saved(const std::filesystem::path& file) override;

 private:
    void AddMenuItem();
    [[nodiscard]] bool MayShareWith(const std::filesystem::path& file, const char* question);
    [[nodiscard]] bool MayInterrupt() const;
    void Attend();
    void TellProblem();
    void RetryJournal();
    void OfferLeftShows();
    [[nodiscard]] bool Open(const std::filesystem::path& file);
    void OpenRecovered(const LeftShow& show);
    void OpenSaved(const LeftShow& show);
    void OfferMissing();
    void TellChange();
    void Restore(const Backup& backup);
    void Show(QDialog* dialog);

    editor::Editor& editor_;
    editor::Prompts& prompts_;
    frmFountain& window_;
    document::Journal& journal_;
    ShowLock lock_;
    FileWatch watch_;
    BackgroundWork work_;
    QTimer attend_;
    QTimer problem_;
    QTimer retry_{this};
    QPointer<QDialog> dialog_;

    bool begun_ = false;
    bool looks_ = false;           // for journals
    bool changed_ = false;         // on the disk, and not told yet
    bool looksForBackup_ = false;  // a show was read: is it there at all?
    std::vector<LeftShow> left_;   // to be offered as soon as it fits
    std::uint64_t version_ = 0;
    std::map<std::filesystem::path, QString> shared_;              // the user knows whom with
    std::map<std::filesystem::path, std::filesystem::path> kept_;  // journals, until this is saved
};

}  // namespace ui
