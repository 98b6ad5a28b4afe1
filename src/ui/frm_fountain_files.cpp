// The File and Edit menus, the file selection panel, files that are dropped, and the end.
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFile>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "ui/frm_fountain.h"
#include "ui/print_preview.h"
#include "ui/volumes.h"

namespace ui {
namespace {

constexpr int kSessionEnds = 30'000;  // ms; it may still be called off

/// The one local file that is dragged; empty for anything else.
std::filesystem::path DraggedFile(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.front().isLocalFile())
        return {};
    return QFile::encodeName(urls.front().toLocalFile()).toStdString();
}

}  // namespace

void frmFountain::BuildFileMenus()
{
    mnuRecent_ = new RecentItems(menus_[timeline::kFileMenu]);
    connect(mnuRecent_, &RecentItems::Chosen, this,
            [this](int index) { TransactFile([this, index] { editor_.OpenRecent(index); }); });
    mnuEdit_ = new EditMenu(editor_, this);
    mnuBar_->insertMenu(menus_[timeline::kDisplayMenu]->menuAction(), mnuEdit_);
    connect(mnuEdit_, &EditMenu::UndoChosen, this, [this] {
        GoToTypedTime();
        editor_.Undo();
        Refresh();
    });
    connect(mnuEdit_, &EditMenu::RedoChosen, this, [this] {
        GoToTypedTime();
        editor_.Redo();
        Refresh();
    });
    setAcceptDrops(true);
}

void frmFountain::mnuFileAction_Click(int item)
{
    switch (item) {
        case editor::kExitItem:
            close();
            return;
        case editor::kPrintItem: {
            bool may = false;
            Transact([this, &may] { may = editor_.MayPrint(); });
            if (may)
                PrintShow(editor_.Choreography(), this);
            return;
        }
        case editor::kOpenItem:
        case editor::kSaveAsItem:
            editor_.SetVolumes(Volumes());
            break;
        default:
            break;
    }
    TransactFile([this, item] { editor_.mnuFileAction_Click(item); });
}

// What was pending stands as written behind a question.
void frmFountain::TransactFile(const std::function<void()>& operation)
{
    Transact([this, &operation] {
        editor_.mnuFile_Click();
        Refresh();
        operation();
    });
}

void frmFountain::RefreshFiles()
{
    const bool mayOpen = editor_.Transport().ItemEnabled(timeline::kFileMenu, editor::kOpenItem);
    mnuRecent_->Show(editor_.Recent(), mayOpen);
    mnuEdit_->Refresh();
    const bool open = editor_.fraFileSelect().visible;
    if (fraFileSelect_ == nullptr) {
        if (!open)
            return;
        fraFileSelect_ = new FileSelectPanel(editor_, this);
        fraFileSelect_->Fit(fountain::FitToScreen(width(), height()));
        connect(fraFileSelect_, &FileSelectPanel::Operated, this, &frmFountain::Refresh);
    }
    const bool wasOpen = fraFileSelect_->isVisibleTo(this);
    fraFileSelect_->Refresh();
    if (wasOpen && !open)
        cmdFocus_->setFocus();
}

// Nothing but a panel over the window can be used.
bool frmFountain::Covered() const
{
    return editor_.ShiftPanel().visible || editor_.fraFileSelect().visible;
}

bool frmFountain::MayDrop(const QMimeData& dragged) const
{
    return editor::Editor::IsShowFile(DraggedFile(dragged)) && !editor_.Playback().SnippetPlays() &&
           editor_.Transport().ItemEnabled(timeline::kFileMenu, editor::kOpenItem);
}

void frmFountain::dragEnterEvent(QDragEnterEvent* event)
{
    if (MayDrop(*event->mimeData()))
        event->acceptProposedAction();
}

// The questions come when the drop is done: whoever let go the file waits for its end.
void frmFountain::dropEvent(QDropEvent* event)
{
    if (!MayDrop(*event->mimeData()))
        return;
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, file = DraggedFile(*event->mimeData())] {
        activateWindow();
        TransactFile([this, &file] { editor_.OpenDropped(file); });
    });
}

bool frmFountain::EndSession(bool mayAsk)
{
    editor_.mnuFile_Click();
    Refresh();
    const bool unsaved = editor_.Choreography().blnChanged;
    if (mayAsk && !editor_.Form_QueryUnload(editor::UnloadMode::SessionEnds))
        return false;
    Refresh();
    sessionEnds_.setRemainingTime(kSessionEnds);
    if (unsaved) {
        givenUp_ = editor_.Version();
        sessionCalledOff_.start(kSessionEnds, this);
    }
    return true;
}

// Changes that were given up for an end of the session which did not come are unsaved as before.
void frmFountain::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != sessionCalledOff_.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    sessionCalledOff_.stop();
    if (givenUp_ == editor_.Version())
        editor_.KeepMine();
    Refresh();
}

void frmFountain::closeEvent(QCloseEvent* event)
{
    using editor::UnloadMode;
    const bool sessionEnds = !sessionEnds_.hasExpired();
    event->ignore();
    if (!sessionEnds && editor_.Playback().SnippetPlays())
        return;
    GoToTypedTime();
    editor_.mnuFile_Click();
    Refresh();  // what was pending stands as written behind the question
    if (!editor_.Form_QueryUnload(sessionEnds ? UnloadMode::SessionEnds
                                              : UnloadMode::ControlMenu)) {
        Refresh();
        return;
    }
    sessionCalledOff_.stop();
    SaveSettings();
    editor_.Form_Unload();
    Refresh();
    driver_.Halt();
    peaksPoll_.stop();
    event->accept();
}

}  // namespace ui
