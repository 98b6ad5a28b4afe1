#include "ui/help_viewer.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/design_form.h"

namespace ui {
namespace {

constexpr QSize kWindow(1080, 760);
constexpr double kOfScreen = 0.94;
constexpr int kGuideWidth = 300;
constexpr int kPoints = 10;
enum GuideTab : int { kContentsTab, kIndexTab, kSearchTab };

}  // namespace

HelpViewer::HelpViewer(std::unique_ptr<HelpLibrary> library) : library_(std::move(library))
{
    setObjectName(QStringLiteral("helpViewer"));
    setWindowTitle(QStringLiteral("Help"));
    setAccessibleName(QStringLiteral("The manual"));
    QFont font = FormFont();
    font.setPointSize(kPoints);
    setFont(font);
    browser_ = new HelpBrowser(library_->Engine(), this);
    browser_->setObjectName(QStringLiteral("page"));
    browser_->setAccessibleName(QStringLiteral("Page of the manual"));
    BuildTools();
    BuildGuide();
    BuildFindBar();

    auto* page = new QWidget(this);
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    pageLayout->setSpacing(0);
    pageLayout->addWidget(browser_, 1);
    pageLayout->addWidget(findBar_);
    parts_ = new QSplitter(this);
    parts_->addWidget(guide_);
    parts_->addWidget(page);
    parts_->setStretchFactor(1, 1);
    parts_->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tools_);
    layout->addWidget(parts_, 1);
    resize(kWindow.boundedTo(screen()->availableSize() * kOfScreen));
    parts_->setSizes({kGuideWidth, width() - kGuideWidth});
    move(screen()->availableGeometry().center() - rect().center());

    connect(browser_, &QTextBrowser::sourceChanged, this, &HelpViewer::ShowPlace);
    Open(HelpLibrary::Page());
}

// What shows the manual goes before the manual.
HelpViewer::~HelpViewer()
{
    delete parts_;
}

QAction* HelpViewer::AddTool(const char* name, const char* caption, const char* toolTip,
                             const QList<QKeySequence>& keys)
{
    auto* action = new QAction(QString::fromLatin1(caption), this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(
        QLatin1String(toolTip), keys.front().toString(QKeySequence::NativeText)));
    tools_->addAction(action);
    addAction(action);
    return action;
}

void HelpViewer::BuildTools()
{
    tools_ = new QToolBar(this);
    tools_->setAccessibleName(QStringLiteral("Tools"));
    QAction* back =
        AddTool("mnuBack", "Back", "The page before", {QKeySequence(Qt::ALT | Qt::Key_Left)});
    QAction* forward = AddTool("mnuForward", "Forward", "The page you came back from",
                               {QKeySequence(Qt::ALT | Qt::Key_Right)});
    QAction* home =
        AddTool("mnuHome", "Home", "The first page", {QKeySequence(Qt::ALT | Qt::Key_Home)});
    tools_->addSeparator();
    QAction* find =
        AddTool("mnuFind", "Find in Page", "Find a word in this page", {QKeySequence::Find});
    QAction* search = AddTool("mnuSearch", "Search", "Search the whole manual",
                              {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F)});
    tools_->addSeparator();
    QAction* smaller = AddTool("mnuZoomOut", "Smaller", "Smaller letters", {QKeySequence::ZoomOut});
    QAction* usual = AddTool("mnuZoomReset", "100 %", "Letters of the usual size",
                             {QKeySequence(Qt::CTRL | Qt::Key_0)});
    QAction* larger = AddTool("mnuZoomIn", "Larger", "Larger letters",
                              {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});

    back->setEnabled(false);
    forward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(home, &QAction::triggered, this, [this] { Open(HelpLibrary::Page()); });
    connect(find, &QAction::triggered, this, &HelpViewer::OpenFindBar);
    connect(search, &QAction::triggered, this, &HelpViewer::ShowSearch);
    connect(smaller, &QAction::triggered, browser_, [this] { browser_->Zoom(-1); });
    connect(usual, &QAction::triggered, browser_, &HelpBrowser::ResetZoom);
    connect(larger, &QAction::triggered, browser_, [this] { browser_->Zoom(1); });
}

void HelpViewer::BuildGuide()
{
    guide_ = new QTabWidget(this);
    guide_->setObjectName(QStringLiteral("guide"));
    guide_->setDocumentMode(true);
    QHelpContentWidget* contents = library_->Engine().contentWidget();
    contents->setObjectName(QStringLiteral("contents"));
    contents->setAccessibleName(QStringLiteral("Contents"));
    contents->setStyleSheet(QStringLiteral("QTreeView::item { padding: 3px 0; }"));
    contents->setFont(font());
    connect(contents, &QHelpContentWidget::linkActivated, this, &HelpViewer::Open);
    connect(contents, &QHelpContentWidget::clicked, contents, &QHelpContentWidget::activated);
    connect(library_->Engine().contentModel(), &QHelpContentModel::contentsCreated, this, [this] {
        library_->Engine().contentWidget()->expandAll();
        ShowPlace(browser_->source());
    });
    guide_->addTab(contents, QStringLiteral("&Contents"));
    BuildIndex();
    search_ = new HelpSearch(*library_->Engine().searchEngine(), this);
    connect(search_, &HelpSearch::Chosen, this, [this](const QUrl& page, const QString& words) {
        Open(page);
        browser_->Find(words.section(QLatin1Char(' '), 0, 0), {}, false);
    });
    guide_->addTab(search_, QStringLiteral("&Search"));
}

void HelpViewer::BuildIndex()
{
    auto* page = new QWidget(this);
    auto* txtIndex = new QLineEdit(page);
    txtIndex->setObjectName(QStringLiteral("txtIndex"));
    txtIndex->setAccessibleName(QStringLiteral("Look for"));
    txtIndex->setPlaceholderText(QStringLiteral("Look for..."));
    txtIndex->setClearButtonEnabled(true);
    QHelpIndexWidget* index = library_->Engine().indexWidget();
    index->setObjectName(QStringLiteral("index"));
    index->setAccessibleName(QStringLiteral("Index"));
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(txtIndex);
    layout->addWidget(index, 1);
    connect(txtIndex, &QLineEdit::textChanged, index,
            [index](const QString& text) { index->filterIndices(text); });
    connect(txtIndex, &QLineEdit::returnPressed, index, &QHelpIndexWidget::activateCurrentItem);
    connect(index, &QHelpIndexWidget::clicked, index, &QHelpIndexWidget::activateCurrentItem);
    connect(index, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink& link) { Open(link.url); });
    connect(index, &QHelpIndexWidget::documentsActivated, this,
            [this](const QList<QHelpLink>& links) { Open(links.front().url); });
    guide_->addTab(page, QStringLiteral("&Index"));
}

void HelpViewer::BuildFindBar()
{
    findBar_ = new QWidget(this);
    findBar_->setObjectName(QStringLiteral("findBar"));
    txtFind_ = new QLineEdit(findBar_);
    txtFind_->setObjectName(QStringLiteral("txtFind"));
    txtFind_->setAccessibleName(QStringLiteral("Find in this page"));
    txtFind_->setPlaceholderText(QStringLiteral("Find in this page"));
    auto* layout = new QHBoxLayout(findBar_);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->addWidget(txtFind_, 1);
    const auto addButton = [&](const char* caption, const char* toolTip) {
        auto* button = new QToolButton(findBar_);
        button->setText(QString::fromLatin1(caption));
        button->setToolTip(QString::fromLatin1(toolTip));
        button->setAccessibleName(QString::fromLatin1(toolTip));
        layout->addWidget(button);
        return button;
    };
    const auto next = [this] { FindInPage({}, true); };
    const auto previous = [this] { FindInPage(QTextDocument::FindBackward, true); };
    connect(addButton("Previous", "The place before (Shift+F3)"), &QToolButton::clicked, this,
            previous);
    connect(addButton("Next", "The next place (F3)"), &QToolButton::clicked, this, next);
    connect(addButton("Close", "Close the bar (Esc)"), &QToolButton::clicked, findBar_,
            &QWidget::hide);
    connect(txtFind_, &QLineEdit::textEdited, this, [this] { FindInPage({}, false); });
    connect(txtFind_, &QLineEdit::returnPressed, this, next);
    auto* nextKey = new QAction(this);
    nextKey->setShortcut(Qt::Key_F3);
    connect(nextKey, &QAction::triggered, this, next);
    auto* previousKey = new QAction(this);
    previousKey->setShortcut(Qt::SHIFT | Qt::Key_F3);
    connect(previousKey, &QAction::triggered, this, previous);
    addActions({nextKey, previousKey});
    findBar_->hide();
}

void HelpViewer::Open(const QUrl& page)
{
    if (page.isValid())
        browser_->setSource(page);
}

// The contents show where one is, wherever one came from.
void HelpViewer::ShowPlace(const QUrl& page)
{
    QHelpContentWidget* contents = library_->Engine().contentWidget();
    QModelIndex place = contents->indexOf(page);
    if (!place.isValid())
        place = contents->indexOf(page.adjusted(QUrl::RemoveFragment));
    if (place.isValid())
        contents->setCurrentIndex(place);
    const QString title = browser_->documentTitle();
    setWindowTitle(title.isEmpty() ? QStringLiteral("Help")
                                   : title + QStringLiteral(" \u2013 Help"));
}

void HelpViewer::OpenFindBar()
{
    findBar_->show();
    txtFind_->setFocus();
    txtFind_->selectAll();
}

void HelpViewer::FindInPage(QTextDocument::FindFlags flags, bool again)
{
    const bool found = browser_->Find(txtFind_->text(), flags, again);
    QPalette colors = palette();
    if (!found)
        colors.setColor(QPalette::Base, QColor(255, 214, 214));
    txtFind_->setPalette(colors);
}

void HelpViewer::ShowContents()
{
    guide_->setCurrentIndex(kContentsTab);
    Open(HelpLibrary::Page());
    BringToFront();
    browser_->setFocus();
}

void HelpViewer::ShowSearch()
{
    guide_->setCurrentIndex(kSearchTab);
    BringToFront();
    search_->FocusField();
}

void HelpViewer::BringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void HelpViewer::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (findBar_->isVisible()) {
        findBar_->hide();
        browser_->setFocus();
    } else {
        close();
    }
}

}  // namespace ui
