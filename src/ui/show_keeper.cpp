#include "ui/show_keeper.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QWindow>
#include <utility>

#include "document/control_file.h"
#include "ui/dialog_look.h"
#include "ui/dlg_changed.h"

namespace ui {
namespace {

namespace fs = std::filesystem;

constexpr int kJournalIsWritten = 300;  // ms after an edit, long enough for a disk to fail
constexpr int kRetry = 5'000;           // ms; how soon room on a disk is noticed

std::string NameOf(const fs::path& file)
{
    return file.filename().string();
}

}  // namespace

ShowKeeper::ShowKeeper(editor::Editor& editor, editor::Prompts& prompts, frmFountain& window,
                       document::Journal& journal)
    : editor_(editor), prompts_(prompts), window_(window), journal_(journal)
{
    attend_.setSingleShot(true);
    problem_.setSingleShot(true);
    problem_.setInterval(kJournalIsWritten);
    retry_.setObjectName(QStringLiteral("tmrRetry"));
    retry_.setInterval(kRetry);
    connect(&retry_, &QTimer::timeout, this, &ShowKeeper::RetryJournal);
    connect(&attend_, &QTimer::timeout, this, &ShowKeeper::Attend);
    connect(&problem_, &QTimer::timeout, this, &ShowKeeper::TellProblem);
    connect(&watch_, &FileWatch::Changed, this, [this] {
        changed_ = true;
        attend_.start();
    });
    connect(&window_, &frmFountain::Refreshed, this, [this] {
        if (!left_.empty() || looksForBackup_ || changed_)
            attend_.start();
        const bool edited = std::exchange(version_, editor_.Version()) != editor_.Version();
        if ((edited || editor_.Panel().blnTouched) && !problem_.isActive())
            problem_.start();
    });
    // Another window was closed, or the user comes back from another program.
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* focused) {
        if (focused != nullptr && begun_)
            LookNow();
    });
    AddMenuItem();
    editor_.SetGuard(this);
    editor_.SetJournal(journal_);
}

ShowKeeper::~ShowKeeper()
{
    editor_.SetGuard(nullptr);
}

// The items of the File menu have their numbers; this one stands among them without.
void ShowKeeper::AddMenuItem()
{
    auto* menu = window_.findChild<QMenu*>(QStringLiteral("mnuFile"));
    auto* before = window_.findChild<QAction*>(QStringLiteral("mnuFileAction_6"));
    if (menu == nullptr)
        return;
    auto* restore = new QAction(QStringLiteral("&Restore a Backup..."), menu);
    restore->setObjectName(QStringLiteral("mnuRestore"));
    menu->insertAction(before, restore);
    connect(restore, &QAction::triggered, this, &ShowKeeper::RestoreBackup);
    connect(&window_, &frmFountain::Refreshed, restore, [this, restore] {
        restore->setEnabled(editor_.MayReplace() && !editor_.Choreography().fileName.empty());
    });
}

bool ShowKeeper::MayShareWith(const fs::path& file, const char* question)
{
    const QString other = lock_.Holds(file) ? QString() : OtherHolder(file);
    if (other.isEmpty() || shared_[file] == other)
        return true;
    if (!prompts_.Ask(NameOf(file) + " is open in another editor as well:\n" + other.toStdString() +
                          ".\n" + question,
                      "", editor::Icon::Exclamation))
        return false;
    shared_[file] = other;
    return true;
}

bool ShowKeeper::MayOpen(const fs::path& file)
{
    if (lock_.Holds(file))
        return true;
    const QString other = OtherHolder(file);
    if (other.isEmpty())
        return true;
    if (!prompts_.Ask(NameOf(file) + " is already open in another editor:\n" + other.toStdString() +
                          ".\nWhat one of you saves, the other may write over. Open it all the "
                          "same?",
                      "", editor::Icon::Exclamation))
        return false;
    shared_.erase(file);  // saving asks again
    return true;
}

void ShowKeeper::Reading(const fs::path& file)
{
    lock_.Take(file);
    watch_.Follow(file);
    looksForBackup_ = !file.empty();
}

bool ShowKeeper::MaySave(const fs::path& file)
{
    if (!MayShareWith(file, "What is done there may be written over. Save all the same?"))
        return false;
    if (file != watch_.File() || watch_.Look() != FileWatch::State::Changed)
        return true;
    if (!prompts_.Ask(NameOf(file) +
                          " was changed by another program while it was open here.\nDo you want to "
                          "replace that version? It is kept as the newest backup.",
                      "", editor::Icon::Exclamation))
        return false;
    watch_.Accept();
    return true;
}

void ShowKeeper::Saved(const fs::path& file)
{
    lock_.Take(file);
    watch_.Follow(file);
    looksForBackup_ = false;
    if (const auto kept = kept_.find(file); kept != kept_.end()) {
        document::RemoveJournal(kept->second);
        kept_.erase(kept);
    }
}

void ShowKeeper::Begin(const fs::path& journals)
{
    begun_ = looks_ = true;
    auto found = std::make_shared<std::vector<LeftShow>>();
    work_.Run([found, journals] { *found = FindLeftShows(journals); },
              [this, found] {
                  looks_ = false;
                  left_ = std::move(*found);
                  attend_.start();
              });
}

void ShowKeeper::LookNow()
{
    watch_.LearnContent();
    attend_.start();
}

bool ShowKeeper::MayInterrupt() const
{
    return begun_ && dialog_ == nullptr && QApplication::activeModalWidget() == nullptr &&
           QApplication::activePopupWidget() == nullptr && !editor_.Unloaded() &&
           editor_.MayReplace();
}

void ShowKeeper::Attend()
{
    if (!MayInterrupt())
        return;
    if (!left_.empty())
        OfferLeftShows();
    else if (std::exchange(looksForBackup_, false) && editor_.LastRead().onlyBackup)
        OfferMissing();
    else
        TellChange();
}

void ShowKeeper::TellProblem()
{
    const std::error_code problem = journal_.TakeProblem();
    if (!problem)
        return;
    editor_.Tell("unsaved changes cannot be kept safe: " + problem.message());
    retry_.start();
    window_.Refresh();
}

// Until room was made on the disk, or what was unsaved was saved.
void ShowKeeper::RetryJournal()
{
    if (journal_.Broken()) {
        journal_.Retry(editor_.Choreography());
        return;
    }
    retry_.stop();
    editor_.Tell({});
    window_.Refresh();
}

// Rejected by whatever means, it leaves all as it is.
void ShowKeeper::Show(QDialog* dialog)
{
    dialog_ = dialog;
    connect(dialog, &QDialog::finished, this, [this] {
        dialog_ = nullptr;
        window_.activateWindow();
        window_.Refresh();
        attend_.start();
    });
    dialog->open();
}

void ShowKeeper::OfferLeftShows()
{
    auto* dialog = new dlgRecovery(std::exchange(left_, {}), prompts_, &window_);
    connect(dialog, &dlgRecovery::RecoveredChosen, this, &ShowKeeper::OpenRecovered);
    connect(dialog, &dlgRecovery::SavedChosen, this, &ShowKeeper::OpenSaved);
    Show(dialog);
}

// A show that is open already, and to which nothing was done, stays as it is: opening it again
// could only ask for what nobody did.
bool ShowKeeper::Open(const fs::path& file)
{
    const bool open = file == editor_.Choreography().fileName && !editor_.CanUndo();
    return open || editor_.OpenFile(file);
}

// The old journal goes when the new one holds what was in it.
void ShowKeeper::OpenRecovered(const LeftShow& show)
{
    if (!Open(show.content.fileName))
        return;
    looksForBackup_ = false;
    if (editor_.Replace(show.content.show, "Recovered Changes")) {
        journal_.Flush();
        if (const auto again = document::ReadJournal(journal_.File());
            again && SameShow(again->show, show.content.show))
            document::RemoveJournal(show.journal);
    }
    editor_.MoveTo(show.content.time);
    if (dialog_ != nullptr)
        dialog_->accept();
}

void ShowKeeper::OpenSaved(const LeftShow& show)
{
    if (!Open(show.content.fileName))
        return;
    kept_[editor_.Choreography().fileName] = show.journal;
    if (dialog_ != nullptr)
        dialog_->accept();
}

void ShowKeeper::OfferMissing()
{
    const fs::path& file = editor_.Choreography().fileName;
    if (prompts_.Ask(
            NameOf(file) + " is not there, but backups of it are.\nDo you want to restore one?", "",
            editor::Icon::Question))
        RestoreBackup();
}

void ShowKeeper::RestoreBackup()
{
    if (!MayInterrupt())
        return;
    editor_.mnuFile_Click();
    auto* dialog = new dlgRestore(editor_.Choreography(), &window_);
    connect(dialog, &dlgRestore::Chosen, this, &ShowKeeper::Restore);
    Show(dialog);
}

void ShowKeeper::Restore(const Backup& backup)
{
    const std::string title = "Restoring " + MomentText(backup.modified).toStdString();
    static_cast<void>(editor_.Replace(backup.show, title));
    dialog_->accept();
}

// Until the user has chosen, and whatever happens meanwhile, what is open counts as unsaved.
void ShowKeeper::TellChange()
{
    changed_ = false;
    const FileWatch::State state = watch_.Look();
    if (state == FileWatch::State::Same)
        return;
    editor_.mnuFile_Click();
    auto* dialog =
        new dlgChanged(editor_.Choreography(), state == FileWatch::State::Gone, &window_);
    editor_.KeepMine();
    watch_.Accept();
    connect(dialog, &dlgChanged::ReloadChosen, this, [this] {
        if (editor_.Reload())
            dialog_->accept();
    });
    Show(dialog);
    window_.Refresh();
}

}  // namespace ui
