#include "ui/diff_view.h"

#include <QLabel>
#include <QListView>
#include <QStringListModel>
#include <QVBoxLayout>
#include <memory>
#include <utility>

namespace ui {
namespace {

using document::Choreography;

struct Difference {
    QString summary;
    QStringList lines;
};

Difference DifferenceOf(const Choreography& before, const Choreography& after)
{
    if (SameShow(before, after))
        return {SummaryLine({}), {}};
    const std::vector<timeline::Change> changes = timeline::Diff(before, after);
    Difference difference{SummaryLine(changes), {}};
    for (const timeline::Change& change : changes)
        difference.lines +=
            QString::fromStdString(timeline::ChangeText(change)).split(u'\n', Qt::SkipEmptyParts);
    return difference;
}

}  // namespace

QString SummaryLine(const std::vector<timeline::Change>& changes)
{
    constexpr qsizetype kLongest = 160;
    QString summary = QString::fromStdString(timeline::DiffSummary(changes));
    if (summary.size() <= kLongest)
        return summary;
    return summary.left(summary.lastIndexOf(QStringLiteral(", "), kLongest)) +
           QStringLiteral(" and more");
}

bool SameShow(const Choreography& one, const Choreography& other)
{
    return one.lngTime == other.lngTime && one.strCommands == other.strCommands;
}

DiffView::DiffView(const QString& name, QWidget* parent) : QWidget(parent)
{
    lblSummary_ = new QLabel(this);
    lblSummary_->setObjectName(QStringLiteral("lblSummary"));
    lblSummary_->setTextFormat(Qt::PlainText);
    lblSummary_->setWordWrap(true);
    lines_ = new QStringListModel(this);
    lstChanges_ = new QListView(this);
    lstChanges_->setObjectName(QStringLiteral("lstChanges"));
    lstChanges_->setAccessibleName(name);
    lstChanges_->setModel(lines_);
    lstChanges_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstChanges_->setUniformItemSizes(true);
    lstChanges_->setAlternatingRowColors(true);
    lstChanges_->setTextElideMode(Qt::ElideRight);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lblSummary_);
    layout->addWidget(lstChanges_, 1);
}

void DiffView::Compare(Choreography before, Choreography after, const QString& lead)
{
    work_.Forget();
    lines_->setStringList({});
    lblSummary_->setText(lead + QStringLiteral("comparing ..."));
    auto found = std::make_shared<Difference>();
    work_.Run([found, before = std::move(before),
               after = std::move(after)] { *found = DifferenceOf(before, after); },
              [this, found, lead] {
                  lblSummary_->setText(lead + found->summary + u'.');
                  lines_->setStringList(found->lines);
                  emit Compared();
              });
}

}  // namespace ui
