#include "ui/dlg_recovery.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "document/control_file.h"
#include "document/file_io.h"
#include "ui/dialog_look.h"

namespace ui {
namespace {

namespace fs = std::filesystem;

constexpr QSize kDesign(680, 520);
constexpr int kMostRows = 4;

QString NameOf(const LeftShow& show)
{
    const fs::path& name = show.content.fileName;
    return name.empty() ? QStringLiteral("A show without a name")
                        : QString::fromStdString(name.stem().string());
}

bool FileIsAnother(const LeftShow& show)
{
    const document::FileStamp& opened = show.content.opened;
    if (opened.exists != show.file.exists)
        return true;
    if (!opened.exists || (opened.size == show.file.size && opened.modified == show.file.modified))
        return false;
    return opened.checksum == 0 ||
           opened.checksum !=
               document::Checksum(document::ReadWholeFile(show.content.fileName).Text());
}

QString RemarkOn(const LeftShow& show)
{
    QString remark;
    if (show.content.pending)
        remark = QStringLiteral("The last edit was still on the panel; it is among the changes. ");
    if (!show.file.exists && show.content.opened.exists)
        remark += QStringLiteral("The saved file is not there any more.");
    else if (FileIsAnother(show))
        remark += QStringLiteral(
            "The file was changed after it was opened: the difference takes that back, too.");
    return remark.trimmed();
}

}  // namespace

std::vector<LeftShow> FindLeftShows(const fs::path& folder)
{
    std::vector<LeftShow> shows;
    for (const fs::path& journal : document::LeftoverJournals(folder)) {
        auto content = document::ReadJournal(journal);
        if (!content)
            continue;
        LeftShow show{journal, document::StampOf(journal).modified, std::move(*content), {}, {}};
        const fs::path& name = show.content.fileName;
        static_cast<void>(document::ReadControlFile(show.saved, name));
        show.file = document::StampOf(name);
        if (SameShow(show.content.show, show.saved))
            document::RemoveJournal(journal);
        else
            shows.push_back(std::move(show));
    }
    return shows;
}

dlgRecovery::dlgRecovery(std::vector<LeftShow> shows, editor::Prompts& prompts, QWidget* window)
    : QDialog(window), shows_(std::move(shows)), prompts_(prompts)
{
    setObjectName(QStringLiteral("dlgRecovery"));
    setWindowTitle(QStringLiteral("Unsaved Changes Were Recovered"));
    setAccessibleName(windowTitle());
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);

    auto* lblIntroduction = new QLabel(
        QStringLiteral("The program ended before these changes were saved. Choose with which "
                       "version you want to go on; no file is changed before you save."),
        this);
    lblIntroduction->setObjectName(QStringLiteral("lblIntroduction"));
    lblIntroduction->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblIntroduction);
    BuildList(*layout);
    auto* table = new QGridLayout;
    BuildTable(*table);
    layout->addLayout(table);
    lblRemark_ = new QLabel(this);
    lblRemark_->setObjectName(QStringLiteral("lblRemark"));
    lblRemark_->setWordWrap(true);
    layout->addWidget(lblRemark_);
    difference_ = new DiffView(QStringLiteral("Changes that were not saved"), this);
    layout->addWidget(difference_, 1);
    auto* buttons = new QHBoxLayout;
    BuildButtons(*buttons);
    layout->addLayout(buttons);
    FitDialog(*this, kDesign);
    const int rows = std::min(kMostRows, lstShows_->count());
    lstShows_->setFixedHeight(rows * lstShows_->sizeHintForRow(0) + 2 * lstShows_->frameWidth());
    ShowSelected();
}

void dlgRecovery::BuildList(QLayout& layout)
{
    lstShows_ = new QListWidget(this);
    lstShows_->setObjectName(QStringLiteral("lstShows"));
    lstShows_->setAccessibleName(QStringLiteral("Shows with unsaved changes"));
    for (const LeftShow& show : shows_)
        lstShows_->addItem(NameOf(show) + QStringLiteral("  \u2013  ") + MomentText(show.modified));
    lstShows_->setVisible(shows_.size() > 1);
    lstShows_->setCurrentRow(0);
    connect(lstShows_, &QListWidget::currentRowChanged, this, &dlgRecovery::ShowSelected);
    layout.addWidget(lstShows_);
}

QLabel* dlgRecovery::AddCell(QGridLayout& table, int row, int column, const char* name)
{
    auto* label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    table.addWidget(label, row, column);
    return label;
}

void dlgRecovery::BuildTable(QGridLayout& table)
{
    const char* const heads[] = {"Show", "Recovered", "Saved"};
    for (int row = 0; row < 3; ++row) {
        QLabel* head = AddCell(table, row, 0, "");
        head->setText(QString::fromLatin1(heads[row]));
        QFont bold = head->font();
        bold.setBold(true);
        head->setFont(bold);
    }
    lblName_ = new QLabel(this);
    lblName_->setObjectName(QStringLiteral("lblName"));
    lblName_->setTextFormat(Qt::PlainText);
    lblName_->setWordWrap(true);
    table.addWidget(lblName_, 0, 1, 1, 2);
    lblRecoveredTime_ = AddCell(table, 1, 1, "lblRecoveredTime");
    lblRecoveredCounts_ = AddCell(table, 1, 2, "lblRecoveredCounts");
    lblSavedTime_ = AddCell(table, 2, 1, "lblSavedTime");
    lblSavedCounts_ = AddCell(table, 2, 2, "lblSavedCounts");
    table.setColumnStretch(2, 1);
    table.setHorizontalSpacing(2 * table.spacing());
}

void dlgRecovery::BuildButtons(QLayout& layout)
{
    auto& row = static_cast<QHBoxLayout&>(layout);
    auto* throwAway = AddDialogButton(*this, "cmdThrowAway", "&Throw Away...",
                                      "Remove the recovered changes for ever, after a question");
    auto* later = AddDialogButton(*this, "cmdLater", "&Later",
                                  "Decide nothing now; this is offered again at the next start");
    cmdSaved_ = AddDialogButton(*this, "cmdSaved", "Open &Saved",
                                "Open what the file holds; the recovered changes are kept until "
                                "you save, or throw them away");
    auto* recovered = AddDialogButton(*this, "cmdRecovered", "Open &Recovered",
                                      "Open the show with the recovered changes; they can be "
                                      "undone in one step");
    recovered->setDefault(true);
    recovered->setFocus();
    row.addWidget(throwAway);
    row.addStretch(1);
    row.addWidget(later);
    row.addWidget(cmdSaved_);
    row.addWidget(recovered);
    connect(throwAway, &QPushButton::clicked, this, &dlgRecovery::ThrowAway);
    connect(later, &QPushButton::clicked, this, &dlgRecovery::reject);
    connect(cmdSaved_, &QPushButton::clicked, this, [this] { emit SavedChosen(Selected()); });
    connect(recovered, &QPushButton::clicked, this, [this] { emit RecoveredChosen(Selected()); });
}

const LeftShow& dlgRecovery::Selected() const
{
    return shows_[static_cast<std::size_t>(std::max(0, lstShows_->currentRow()))];
}

void dlgRecovery::ShowSelected()
{
    if (shows_.empty() || lstShows_->currentRow() < 0)
        return;
    const LeftShow& show = Selected();
    const fs::path& name = show.content.fileName;
    lblName_->setText(name.empty() ? QStringLiteral("never saved")
                                   : QString::fromStdString(name.string()));
    lblRecoveredTime_->setText(MomentText(show.modified));
    lblRecoveredCounts_->setText(CountsText(show.content.show));
    lblSavedTime_->setText(show.file.exists ? MomentText(show.file.modified)
                           : name.empty()   ? QStringLiteral("never saved")
                                            : QStringLiteral("no file"));
    lblSavedCounts_->setText(show.file.exists ? CountsText(show.saved) : QString());
    cmdSaved_->setEnabled(show.file.exists);
    const QString remark = RemarkOn(show);
    lblRemark_->setText(remark);
    lblRemark_->setVisible(!remark.isEmpty());
    difference_->Compare(show.saved, show.content.show, QStringLiteral("Not saved: "));
}

void dlgRecovery::ThrowAway()
{
    if (!prompts_.Ask("Do you want to throw the recovered changes of\n" +
                          NameOf(Selected()).toStdString() + " away? They cannot be brought back.",
                      "", editor::Icon::Question))
        return;
    const int row = lstShows_->currentRow();
    document::RemoveJournal(Selected().journal);
    shows_.erase(shows_.begin() + row);
    if (shows_.empty()) {
        reject();
        return;
    }
    const QSignalBlocker blocker(lstShows_);
    delete lstShows_->takeItem(row);
    lstShows_->setVisible(shows_.size() > 1);
    ShowSelected();
}

}  // namespace ui
