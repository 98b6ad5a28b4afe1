#include "ui/help_search.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

namespace ui {
namespace {

constexpr int kMostResults = 50;

QStringList Words(const QString& typed)
{
    static const QRegularExpression kSigns(QStringLiteral("[^\\p{L}\\p{N}]+"));
    return typed.split(kSigns, Qt::SkipEmptyParts);
}

}  // namespace

QString SearchQuery(const QString& typed)
{
    QStringList query = Words(typed);
    for (QString& word : query)
        word = QStringLiteral("\"%1\"*").arg(word.toLower());
    return query.join(QLatin1Char(' '));
}

HelpSearch::HelpSearch(QHelpSearchEngine& engine, QWidget* parent)
    : QWidget(parent), engine_(engine)
{
    txtSearch_ = new QLineEdit(this);
    txtSearch_->setObjectName(QStringLiteral("txtSearch"));
    txtSearch_->setAccessibleName(QStringLiteral("Search for"));
    txtSearch_->setPlaceholderText(QStringLiteral("Search for..."));
    txtSearch_->setToolTip(QStringLiteral("Words that the pages must hold; Enter searches"));
    txtSearch_->setClearButtonEnabled(true);
    lblFound_ = new QLabel(QStringLiteral("Type a word and press Enter."), this);
    lblFound_->setObjectName(QStringLiteral("lblFound"));
    lblFound_->setWordWrap(true);
    lstFound_ = new QListWidget(this);
    lstFound_->setObjectName(QStringLiteral("lstFound"));
    lstFound_->setAccessibleName(QStringLiteral("Pages found"));
    lstFound_->setWordWrap(true);
    lstFound_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstFound_->setSpacing(3);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtSearch_);
    layout->addWidget(lblFound_);
    layout->addWidget(lstFound_, 1);

    connect(txtSearch_, &QLineEdit::returnPressed, this, &HelpSearch::Search);
    const auto choose = [this](const QListWidgetItem* item) {
        emit Chosen(item->data(Qt::UserRole).toUrl(), searched_);
    };
    connect(lstFound_, &QListWidget::itemClicked, this, choose);
    connect(lstFound_, &QListWidget::itemActivated, this, choose);
    connect(&engine_, &QHelpSearchEngine::searchingFinished, this, &HelpSearch::ShowResults);
    connect(&engine_, &QHelpSearchEngine::indexingStarted, this, [this] { indexed_ = false; });
    connect(&engine_, &QHelpSearchEngine::indexingFinished, this, [this] {
        indexed_ = true;
        if (!searched_.isEmpty())
            engine_.search(SearchQuery(searched_));
    });
    engine_.scheduleIndexDocumentation();
}

void HelpSearch::FocusField()
{
    txtSearch_->setFocus();
    txtSearch_->selectAll();
}

void HelpSearch::Search()
{
    searched_ = txtSearch_->text().trimmed();
    lstFound_->clear();
    if (SearchQuery(searched_).isEmpty()) {
        lblFound_->setText(QStringLiteral("Type a word and press Enter."));
        return;
    }
    lblFound_->setText(QStringLiteral("Searching..."));
    if (indexed_)
        engine_.search(SearchQuery(searched_));
}

void HelpSearch::ShowResults()
{
    lstFound_->clear();
    const int found = engine_.searchResultCount();
    for (const QHelpSearchResult& result : engine_.searchResults(0, kMostResults)) {
        const QString excerpt = QTextDocumentFragment::fromHtml(result.snippet()).toPlainText();
        auto* item = new QListWidgetItem(
            QStringLiteral("%1\n%2").arg(result.title(), excerpt.simplified()), lstFound_);
        item->setData(Qt::UserRole, result.url());
    }
    lblFound_->setText(found == 0
                           ? QStringLiteral("No page holds \u201c%1\u201d.").arg(searched_)
                           : QStringLiteral("%1 %2 with \u201c%3\u201d:")
                                 .arg(found)
                                 .arg(QLatin1String(found == 1 ? "page" : "pages"), searched_));
}

}  // namespace ui
