#include "ui/frm_print.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "timeline/script.h"

namespace ui {
namespace {

constexpr int kNarrowest = 340;  // pixels

}  // namespace

frmPrint::frmPrint(const QString& document, int steps, QWidget* window) : QDialog(window)
{
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(QStringLiteral("Printing"));
    setAccessibleName(windowTitle());
    setMinimumWidth(kNarrowest);

    auto* lblDocument = new QLabel(QStringLiteral("Printing the script of %1").arg(document), this);
    lblDocument->setObjectName(QStringLiteral("lblDocument"));
    lblDocument->setAccessibleName(QStringLiteral("What is printed"));
    lblDocument->setTextFormat(Qt::PlainText);
    lblDocument->setWordWrap(true);

    progress_ = new QProgressBar(this);
    progress_->setObjectName(QStringLiteral("progress"));
    progress_->setAccessibleName(QStringLiteral("Progress of the printing"));
    progress_->setRange(0, steps);

    cmdCancel_ = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel_->setAccessibleName(QStringLiteral("Cancel the printing"));
    cmdCancel_->setToolTip(QStringLiteral("Stop; nothing is printed (Esc)"));
    connect(cmdCancel_, &QPushButton::clicked, this, &frmPrint::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblDocument);
    layout->addWidget(progress_);
    layout->addWidget(cmdCancel_, 0, Qt::AlignRight);
}

void frmPrint::Advance()
{
    progress_->setValue(progress_->value() + 1);
    QCoreApplication::processEvents();
}

void frmPrint::BeginSending(int steps)
{
    sending_ = true;
    cmdCancel_->setEnabled(false);
    progress_->setRange(0, steps);
    progress_->setValue(0);
}

void frmPrint::reject()
{
    if (sending_)
        return;
    timeline::gblnPrint = false;
    QDialog::reject();
}

}  // namespace ui
