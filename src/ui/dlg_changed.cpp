#include "ui/dlg_changed.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "document/control_file.h"
#include "ui/dialog_look.h"
#include "ui/window_place.h"

namespace ui {
namespace {

constexpr QSize kDesign(560, 140);
constexpr int kListHeight = 320;

QString TextFor(const document::Choreography& mine, bool gone)
{
    const QString name = QString::fromStdString(mine.fileName.string());
    if (gone)
        return QStringLiteral(
                   "%1\nis not there any more: it was moved, renamed or deleted. The show is still "
                   "open here; save it to have the file again.")
            .arg(name);
    return QStringLiteral(
               "%1\nwas changed by another program. %2You can load that version, which can be "
               "undone, or go on with yours.")
        .arg(name,
             mine.blnChanged ? QStringLiteral("There are unsaved changes here, too. ") : QString());
}

}  // namespace

dlgChanged::dlgChanged(const document::Choreography& mine, bool gone, QWidget* window)
    : QDialog(window), mine_(mine)
{
    setObjectName(QStringLiteral("dlgChanged"));
    setWindowTitle(gone ? QStringLiteral("The File Is Gone")
                        : QStringLiteral("The File Was Changed"));
    setAccessibleName(windowTitle());
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);

    auto* lblText = new QLabel(TextFor(mine, gone), this);
    lblText->setObjectName(QStringLiteral("lblText"));
    lblText->setTextFormat(Qt::PlainText);
    lblText->setWordWrap(true);
    lblText->setAlignment(Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblText);
    difference_ = new DiffView(QStringLiteral("What loading it would change"), this);
    difference_->hide();
    layout->addWidget(difference_, 1);
    auto* buttons = new QHBoxLayout;
    layout->addLayout(buttons);

    auto* difference = AddDialogButton(*this, "cmdDifference", "Show the &Difference",
                                       "List what loading the file would change");
    difference->setCheckable(true);
    auto* reload = AddDialogButton(*this, "cmdReload", "&Reload",
                                   "Load what the file holds now; Undo takes it back");
    auto* keep = AddDialogButton(*this, "cmdKeep", gone ? "&OK" : "&Keep Mine",
                                 "Go on with what is open here; it counts as unsaved");
    keep->setDefault(true);
    keep->setFocus();
    buttons->addWidget(difference);
    buttons->addStretch(1);
    buttons->addWidget(reload);
    buttons->addWidget(keep);
    difference->setVisible(!gone);
    reload->setVisible(!gone);
    connect(difference, &QPushButton::toggled, this, [this, difference](bool shown) {
        difference->setText(shown ? QStringLiteral("Hide the &Difference")
                                  : QStringLiteral("Show the &Difference"));
        ToggleDifference(shown);
    });
    connect(reload, &QPushButton::clicked, this, &dlgChanged::ReloadChosen);
    connect(keep, &QPushButton::clicked, this, &dlgChanged::reject);
    FitDialog(*this, kDesign);
}

void dlgChanged::ToggleDifference(bool shown)
{
    difference_->setVisible(shown);
    if (!shown) {
        resize(small_);
        return;
    }
    small_ = size();
    const QRect frame = frameGeometry();
    const QRect grown = OnScreens(frame.adjusted(0, 0, 0, kListHeight), AvailableScreens());
    resize(width(), height() + grown.height() - frame.height());
    move(grown.topLeft());
    document::Choreography disk;
    static_cast<void>(document::ReadControlFile(disk, mine_.fileName));
    difference_->Compare(mine_, std::move(disk), QStringLiteral("Loading it means: "));
}

}  // namespace ui
