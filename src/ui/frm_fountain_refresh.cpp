#include <QAction>
#include <QApplication>
#include <QLocale>

#include "document/control_file.h"
#include "ui/frm_fountain.h"
#include "ui/menus.h"

namespace ui {
namespace {

QString FileText(const std::filesystem::path& file)
{
    return QString::fromStdString(file.filename().string());
}

// Thousands are separated by commas whatever the locale, as everywhere in the program.
QString Counted(std::int32_t count, const char* one, const char* many)
{
    static const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);
    return QStringLiteral("%1 %2").arg(kEnglish.toString(count),
                                       QLatin1String(count == 1 ? one : many));
}

}  // namespace

void frmFountain::Refresh()
{
    RefreshTransport();
    RefreshMarks();
    RefreshShift();
    RefreshFiles();
    viewArea_->ShowLegends(editor_.DisplayOptions().Legends);
    RefreshView();
    RefreshStrip();
    RefreshScript();
    RefreshTexts();
    RefreshPanel();
    RefreshMenus();
    RefreshTitle();
    driver_.Observe();
    emit Refreshed();
}

void frmFountain::RefreshTransport()
{
    const timeline::Transport& transport = editor_.Transport();
    if (shownTransport_ == transport)
        return;
    shownTransport_ = transport;
    const timeline::SongButtons& song = transport.mmSong;
    Enable(mmSong_[0], song.prev);
    Enable(mmSong_[1], song.play);
    Enable(mmSong_[2], song.pause);
    Enable(mmSong_[3], song.stop);
    const bool stops = editor_.Playback().tmrControlFile.Enabled();
    Enable(mmEditing_[0], transport.mmEditing.play);
    const bool plays = editor_.mmSong().Mode() == timeline::PlayerMode::Playing;
    Enable(mmEditing_[1], transport.mmEditing.add && plays);
    Enable(mmEditing_[2], transport.mmEditing.prev);
    Enable(mmEditing_[3], transport.mmEditing.next);
    Enable(mmEditing_[4], transport.mmEditing.clear);
    mmEditing_[4]->SetTransportIcon(stops ? TransportIcon::Stop : TransportIcon::ClearMarks);
    Enable(fraControls_, transport.fraControlsEnabled);
    for (TimeSpinner* spinner : updnTime_)
        Enable(spinner, transport.updnTimeEnabled);
}

// The focus does not stay on, or wander off, a control that can no longer be used.
void frmFountain::Enable(QWidget* widget, bool enabled)
{
    if (!enabled && (widget->hasFocus() || widget->isAncestorOf(QApplication::focusWidget())))
        cmdFocus_->setFocus();
    widget->setEnabled(enabled);
}

void frmFountain::RefreshMenus()
{
    for (std::size_t menu = 0; menu < actions_.size(); ++menu)
        for (std::size_t item = 0; item < actions_[menu].size(); ++item)
            actions_[menu][item]->setEnabled(
                Menus()[menu].items[item].works &&
                MayUse(static_cast<timeline::Menu>(menu), static_cast<int>(item)));
    // What is pending makes the show worth saving, though it is written only on the way.
    if (pendingShown_)
        actions_[timeline::kFileMenu][editor::kSaveItem]->setEnabled(true);
    const fountain::DisplayOptions& options = editor_.DisplayOptions();
    const std::vector<QAction*>& display = actions_[timeline::kDisplayMenu];
    display[editor::kLegendsItem]->setChecked(options.Legends);
    display[editor::kCandelabrasItem]->setChecked(options.Candelabras);
    display[editor::kBackCurtainItem]->setChecked(options.BackCurtain);
    display[editor::kABCodesItem]->setChecked(options.ABCodes);
    display[kTimeStripItem]->setChecked(stripShown_);
    display[kScriptItem]->setChecked(viewArea_->ScriptShown());
    lblABCodes_->setVisible(options.ABCodes);
}

bool frmFountain::MayUse(timeline::Menu menu, int item) const
{
    if (menu == timeline::kDisplayMenu && item >= kFirstWindowItem)
        return !Covered();
    return editor_.Transport().ItemEnabled(menu, item);
}

void frmFountain::RefreshView()
{
    // The drops move with the time that plays; at rest they stand, and nothing is repainted.
    const int phase =
        editor_.Playback().Playing() ? editor_.Timeline().CurrentTime() : fraView_->Phase();
    fraView_->SetScene(editor_.BuildScene(fraView_->FittedLayout(), fraView_->FittedMeasures()),
                       phase);
}

void frmFountain::RefreshTexts()
{
    const document::Choreography& choreography = editor_.Choreography();
    RefreshReadout();
    ShowText(lblABCodes_, "Commands at this time",
             QString::fromStdString(editor_.Timeline().lblABCodes()).trimmed());
    ShowText(lblControlFile_, "Control file",
             QString::fromStdString(document::ControlFileCaption(choreography)) + FileProblem(),
             Qt::ElideMiddle);
    ShowText(lblMusic_, "Music", MusicText(), Qt::ElideMiddle);
    ShowText(lblCounts_, "Contents",
             Counted(choreography.lngLastSlot(), "time", "times") + QStringLiteral(", ") +
                 Counted(document::CommandTotal(choreography), "command", "commands"));
}

void frmFountain::RefreshTitle()
{
    const document::Choreography& choreography = editor_.Choreography();
    QString show = QString::fromStdString(choreography.fileName.stem().string());
    show.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));  // in a name it is no marker
    const QString caption = QString::fromLatin1(kCaption);
    const QString title = show.isEmpty() ? caption + QStringLiteral("[*]")
                                         : show + QStringLiteral("[*] \u2013 ") + caption;
    if (windowTitle() != title)
        setWindowTitle(title);
    setWindowModified(choreography.blnChanged || pendingShown_);
}

// The reader and a failed open for writing are silent, so that the status line must tell.
QString frmFountain::FileProblem() const
{
    const auto failed = [](const char* what, const std::error_code& error) {
        return QStringLiteral(" (%1: %2)")
            .arg(QLatin1String(what), QString::fromStdString(error.message()));
    };
    using document::SaveOutcome;
    const document::SaveReport& save = editor_.LastSave();
    if (save.outcome == SaveOutcome::OpenFailed || save.outcome == SaveOutcome::WriteFailed)
        return failed("not saved", save.error);
    const std::error_code& read = editor_.LastRead().error;
    if (read)
        return failed("not read", read);
    const std::string& notice = editor_.FileNotice();
    return notice.empty() ? QString() : QStringLiteral(" (%1)").arg(QString::fromStdString(notice));
}

QString frmFountain::MusicText() const
{
    timeline::MusicPlayer& mmSong = editor_.mmSong();
    if (musicPending_)
        return QStringLiteral("Opening the music ...");
    if (editor_.Playback().SnippetPlays())
        return QStringLiteral("Playing three seconds from %1 ...")
            .arg(QString::fromStdString(editor_.Timeline().lblTime()));
    if (!mmSong.LastError().empty())
        return QString::fromStdString(mmSong.LastError());
    if (mmSong.FileName().empty())
        return QStringLiteral("No music file");
    const QString name = FileText(mmSong.FileName());
    return mmSong.Silent() ? name + QStringLiteral(" (without sound)") : name;
}

// A text that had to be cut is whole in the tool tip and for those who listen to the screen.
void frmFountain::ShowText(QLabel* label, const char* name, const QString& text,
                           Qt::TextElideMode cut)
{
    const QString shown =
        cut == Qt::ElideNone ? text : label->fontMetrics().elidedText(text, cut, label->width());
    if (label->text() != shown)
        label->setText(shown);
    const QString spoken = QStringLiteral("%1: %2").arg(QLatin1String(name), text);
    if (label->accessibleName() == spoken)
        return;
    label->setAccessibleName(spoken);
    if (cut != Qt::ElideNone)
        label->setToolTip(text);
}

void frmFountain::SetMusicPending(bool pending)
{
    musicPending_ = pending;
    Refresh();
}

}  // namespace ui
