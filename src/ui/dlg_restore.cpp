#include "ui/dlg_restore.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

#include "document/control_file.h"
#include "document/journal_format.h"
#include "ui/dialog_look.h"

namespace ui {
namespace {

namespace fs = std::filesystem;

constexpr QSize kDesign(760, 540);
constexpr int kRowGap = 4;
enum Column : int { kSaved, kHolds, kMeans, kColumns };

}  // namespace

std::vector<Backup> FindBackups(const fs::path& controlFile)
{
    std::vector<Backup> backups;
    for (int number = 1; number <= document::kBackups && !controlFile.empty(); ++number) {
        Backup backup{number, document::BackupName(controlFile, number), 0, {}};
        const document::FileStamp stamp = document::StampOf(backup.file);
        if (!stamp.exists || document::ReadControlFile(backup.show, backup.file).error)
            continue;
        backup.modified = stamp.modified;
        backups.push_back(std::move(backup));
    }
    return backups;
}

dlgRestore::dlgRestore(document::Choreography now, QWidget* window)
    : QDialog(window), now_(std::move(now))
{
    setObjectName(QStringLiteral("dlgRestore"));
    setWindowTitle(QStringLiteral("Restore a Backup"));
    setAccessibleName(windowTitle());
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);

    auto* lblIntroduction = new QLabel(
        QStringLiteral("Every save of %1 puts the version before aside; the last five are kept. "
                       "Restoring one puts it in place of what is open. It can be undone, and the "
                       "file stays as it is until you save.")
            .arg(QString::fromStdString(now_.fileName.filename().string())),
        this);
    lblIntroduction->setObjectName(QStringLiteral("lblIntroduction"));
    lblIntroduction->setTextFormat(Qt::PlainText);
    lblIntroduction->setWordWrap(true);
    BuildList();
    difference_ = new DiffView(QStringLiteral("What restoring the backup would change"), this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblIntroduction);
    layout->addWidget(lstBackups_);
    layout->addWidget(difference_, 1);
    layout->addLayout(BuildButtons());
    FitDialog(*this, kDesign);
    lstBackups_->setFixedHeight((document::kBackups + 2) * (fontMetrics().height() + kRowGap));
    lstBackups_->setFocus();
    Read();
}

void dlgRestore::BuildList()
{
    lstBackups_ = new QTreeWidget(this);
    lstBackups_->setObjectName(QStringLiteral("lstBackups"));
    lstBackups_->setAccessibleName(QStringLiteral("Backups, the newest first"));
    lstBackups_->setColumnCount(kColumns);
    lstBackups_->setHeaderLabels(
        {QStringLiteral("Saved"), QStringLiteral("Holds"), QStringLiteral("Restoring it means")});
    lstBackups_->setRootIsDecorated(false);
    lstBackups_->setUniformRowHeights(true);
    lstBackups_->setAllColumnsShowFocus(true);
    lstBackups_->header()->setSectionResizeMode(kSaved, QHeaderView::ResizeToContents);
    lstBackups_->header()->setSectionResizeMode(kHolds, QHeaderView::ResizeToContents);
    connect(lstBackups_, &QTreeWidget::currentItemChanged, this, &dlgRestore::ShowSelected);
    connect(lstBackups_, &QTreeWidget::itemActivated, this, [this] { cmdRestore_->click(); });
}

QLayout* dlgRestore::BuildButtons()
{
    cmdRestore_ = AddDialogButton(*this, "cmdRestore", "&Restore",
                                  "Put the selected backup in place of what is open");
    cmdRestore_->setDefault(true);
    cmdRestore_->setEnabled(false);
    auto* cancel =
        AddDialogButton(*this, "cmdCancel", "&Cancel", "Leave everything as it is (Esc)");
    connect(cmdRestore_, &QPushButton::clicked, this, [this] {
        const int row = lstBackups_->indexOfTopLevelItem(lstBackups_->currentItem());
        if (row >= 0 && row < static_cast<int>(backups_.size()))
            emit Chosen(backups_[static_cast<std::size_t>(row)]);
    });
    connect(cancel, &QPushButton::clicked, this, &dlgRestore::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdRestore_);
    buttons->addWidget(cancel);
    return buttons;
}

void dlgRestore::Read()
{
    auto found = std::make_shared<std::vector<Backup>>();
    work_.Run([found, name = now_.fileName] { *found = FindBackups(name); },
              [this, found] { Fill(std::move(*found)); });
}

void dlgRestore::Fill(std::vector<Backup> backups)
{
    backups_ = std::move(backups);
    for (int row = 0; row < static_cast<int>(backups_.size()); ++row) {
        const Backup& backup = backups_[static_cast<std::size_t>(row)];
        auto* item = new QTreeWidgetItem(lstBackups_);
        item->setText(kSaved, MomentText(backup.modified));
        item->setText(kHolds, CountsText(backup.show));
        item->setToolTip(kSaved, QString::fromStdString(backup.file.string()));
        SumUp(row);
    }
    if (!backups_.empty()) {
        lstBackups_->setCurrentItem(lstBackups_->topLevelItem(0));
        return;
    }
    auto* none = new QTreeWidgetItem(lstBackups_);
    none->setText(kSaved, QStringLiteral("There are no backups of this show."));
    none->setFirstColumnSpanned(true);
    none->setFlags(Qt::NoItemFlags);
    difference_->hide();
    static_cast<void>(layout()->activate());  // else its old least size would hold
    resize(width(), layout()->totalHeightForWidth(width()));
}

void dlgRestore::SumUp(int row)
{
    auto summary = std::make_shared<QString>();
    const auto sumUp = [summary, now = now_, show = backups_[static_cast<std::size_t>(row)].show] {
        *summary = SummaryLine(SameShow(now, show) ? std::vector<timeline::Change>{}
                                                   : timeline::Diff(now, show));
    };
    work_.Run(sumUp, [this, row, summary] {
        lstBackups_->topLevelItem(row)->setText(kMeans, *summary);
        lstBackups_->topLevelItem(row)->setToolTip(kMeans, *summary);
    });
}

void dlgRestore::ShowSelected()
{
    const int row = lstBackups_->indexOfTopLevelItem(lstBackups_->currentItem());
    if (row < 0 || row >= static_cast<int>(backups_.size()))
        return;
    const document::Choreography& show = backups_[static_cast<std::size_t>(row)].show;
    cmdRestore_->setEnabled(!SameShow(now_, show));
    difference_->Compare(now_, show, QStringLiteral("Restoring it means: "));
}

}  // namespace ui
