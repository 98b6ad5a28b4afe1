#include <QAction>
#include <QDir>
#include <QHelpContentWidget>
#include <QHelpIndexModel>
#include <QHelpIndexWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollBar>
#include <QTabWidget>
#include <QtTest>

#include "studio.h"
#include "ui/help_desk.h"
#include "ui/help_file.h"
#include "ui/help_library.h"
#include "ui/help_search.h"

using ui_test::Studio;

namespace {

template <typename T>
T* In(ui::HelpViewer& viewer, const char* name)
{
    T* found = viewer.findChild<T*>(name);
    if (found == nullptr)
        qFatal("the help viewer has no %s", name);
    return found;
}

/// Types into the search and waits for the answer.
void Search(ui::HelpViewer& viewer, const QString& words)
{
    auto* field = In<QLineEdit>(viewer, "txtSearch");
    field->setText(words);
    QTest::keyClick(field, Qt::Key_Return);
    const auto* found = In<QLabel>(viewer, "lblFound");
    QTRY_VERIFY_WITH_TIMEOUT(found->text() != "Searching...", 20'000);
}

void Write(const QString& name, const QByteArray& content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

}  // namespace

class HelpTest : public QObject {
    Q_OBJECT

 private slots:
    void fileIsFoundBesideTheProgramOrInThePackage();
    void menuTellsThatTheFileIsMissing_data();
    void menuTellsThatTheFileIsMissing();
    void contentsAndSearchOpenOneWindow();
    void viewerGoesWithTheMainWindow();
    void searchFindsWhereAWordStands();
    void searchedWordsBecomeAQuery();
    void linksBackAndFindLeadThroughThePages();
    void picturesAreNeverWiderThanThePage();
    void libraryOpensWhateverTheUsersFolderIsLike();

 private:
    QTemporaryDir folder_;
};

void HelpTest::fileIsFoundBesideTheProgramOrInThePackage()
{
    const QDir root(folder_.path());
    root.mkpath("beside");
    root.mkpath("usr/bin");
    root.mkpath("usr/share/choreographer");
    root.mkpath("none/TANDRI.HLP");  // a folder of that name is no help file
    Write(root.filePath("beside/TANDRI.HLP"), "a");
    Write(root.filePath("usr/share/choreographer/TANDRI.HLP"), "b");
    QCOMPARE(ui::FindHelpFile(root.filePath("beside")), root.filePath("beside/TANDRI.HLP"));
    QCOMPARE(ui::FindHelpFile(root.filePath("usr/bin")),
             root.filePath("usr/share/choreographer/TANDRI.HLP"));
    QCOMPARE(ui::FindHelpFile(root.filePath("none")), QString());
}

void HelpTest::menuTellsThatTheFileIsMissing_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");
    Write(folder_.filePath("garbage"), "no help file at all");
    const QString missing = "Sorry, but the help file is not available.";
    QTest::newRow("contents") << "mnuHelpAction_0" << QString() << missing;
    QTest::newRow("search") << "mnuHelpAction_1" << QString() << missing;
    QTest::newRow("damaged") << "mnuHelpAction_0" << folder_.filePath("garbage")
                             << "Sorry, but the help file cannot be opened.";
    QTest::newRow("gone since the start") << "mnuHelpAction_1" << folder_.filePath("gone")
                                          << "Sorry, but the help file cannot be opened.";
}

void HelpTest::menuTellsThatTheFileIsMissing()
{
    QFETCH(QString, item);
    QFETCH(QString, file);
    QFETCH(QString, message);
    Studio studio;
    studio.window.UseHelp(file, folder_.filePath("user"));
    studio.Show();
    QString shown;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QTimer::singleShot(0, this, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        shown = box->text();
        icon = box->icon();
        box->accept();
    });
    studio.Choose(qPrintable(item));
    QCOMPARE(shown.section('\n', 0, 0), message);
    QCOMPARE(icon, QMessageBox::Warning);
}

void HelpTest::contentsAndSearchOpenOneWindow()
{
    Studio studio;
    studio.window.UseHelp(HELP_FILE, folder_.filePath("one"));
    studio.Show();
    const auto viewers = [] {
        QList<ui::HelpViewer*> open;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* viewer = qobject_cast<ui::HelpViewer*>(widget))
                open << viewer;
        return open;
    };
    QVERIFY(viewers().isEmpty());
    QTest::keyClick(&studio.window, Qt::Key_F1);
    QCOMPARE(viewers().size(), 1);
    ui::HelpViewer& viewer = *viewers().front();
    QVERIFY(viewer.isVisible());
    auto* guide = In<QTabWidget>(viewer, "guide");
    QCOMPARE(guide->tabText(guide->currentIndex()), "&Contents");
    const auto* contents = In<QHelpContentWidget>(viewer, "contents");
    QTRY_VERIFY(contents->model()->rowCount() > 0);
    QVERIFY(contents->model()->rowCount(contents->model()->index(0, 0)) >= 10);
    const auto* index = In<QHelpIndexWidget>(viewer, "index");
    QTRY_VERIFY(index->model()->rowCount() > 40);

    viewer.close();
    studio.Choose("mnuHelpAction_1");
    QCOMPARE(viewers(), QList<ui::HelpViewer*>{&viewer});
    QVERIFY(viewer.isVisible());
    QCOMPARE(guide->tabText(guide->currentIndex()), "&Search");
    QTRY_VERIFY(In<QLineEdit>(viewer, "txtSearch")->hasFocus());
    QTest::keyClick(In<QLineEdit>(viewer, "txtSearch"), Qt::Key_Escape);
    QVERIFY(!viewer.isVisible());
}

void HelpTest::viewerGoesWithTheMainWindow()
{
    Studio studio;
    studio.Show();
    ui::HelpDesk desk(&studio.window);
    desk.Use(HELP_FILE, folder_.filePath("goes"));
    QCOMPARE(desk.Open(ui::HelpDesk::kContentsItem), QString());
    QVERIFY(desk.Viewer()->isVisible());
    QVERIFY(studio.window.close());
    QVERIFY(!desk.Viewer()->isVisible());
}

void HelpTest::searchFindsWhereAWordStands()
{
    QString problem;
    ui::HelpViewer viewer(ui::HelpLibrary::Open(HELP_FILE, folder_.filePath("search"), problem));
    viewer.ShowSearch();
    const struct {
        const char* words;
        const char* page;  // among the results; empty for none at all
    } rows[] = {{"wedding cake", "water.html"},
                {"SNIPP", "moving.html"},
                {"\"pulsate\" (", "water.html"},
                {"F9", "marks.html"},
                {"zebra", ""},
                {"***", ""}};
    const auto* found = In<QListWidget>(viewer, "lstFound");
    for (const auto& row : rows) {
        Search(viewer, row.words);
        QStringList pages;
        for (int i = 0; i < found->count(); ++i)
            pages << found->item(i)->data(Qt::UserRole).toUrl().fileName();
        if (*row.page == '\0')
            QVERIFY2(pages.isEmpty(), row.words);
        else
            QVERIFY2(pages.contains(row.page), qPrintable(row.words + pages.join(' ')));
    }

    Search(viewer, "wedding");
    QVERIFY(found->count() > 0);
    emit In<QListWidget>(viewer, "lstFound")->itemClicked(found->item(0));
    const auto* page = In<QTextBrowser>(viewer, "page");
    QCOMPARE(page->source(), found->item(0)->data(Qt::UserRole).toUrl());
    QCOMPARE(page->textCursor().selectedText().toLower(), "wedding");
}

void HelpTest::searchedWordsBecomeAQuery()
{
    const struct {
        const char* typed;
        const char* query;
    } rows[] = {{"Ring", "\"ring\"*"},
                {"  wedding   cake ", "\"wedding\"* \"cake\"*"},
                {"A-B OR \"x\"*", "\"a\"* \"b\"* \"or\"* \"x\"*"},
                {"()*\"", ""},
                {"", ""}};
    for (const auto& row : rows)
        QCOMPARE(ui::SearchQuery(row.typed), row.query);
}

void HelpTest::linksBackAndFindLeadThroughThePages()
{
    QString problem;
    ui::HelpViewer viewer(ui::HelpLibrary::Open(HELP_FILE, folder_.filePath("links"), problem));
    viewer.ShowContents();
    auto* page = In<ui::HelpBrowser>(viewer, "page");
    QCOMPARE(page->source(), ui::HelpLibrary::Page());
    page->setSource(QUrl("water.html"));  // as a link does
    QVERIFY(page->toPlainText().startsWith("The water"));
    QTRY_COMPARE(viewer.windowTitle(), QStringLiteral("The water \u2013 Help"));
    viewer.findChild<QAction*>("mnuBack")->trigger();
    QCOMPARE(page->source(), ui::HelpLibrary::Page());
    viewer.findChild<QAction*>("mnuForward")->trigger();
    QVERIFY(page->toPlainText().startsWith("The water"));

    viewer.findChild<QAction*>("mnuFind")->trigger();
    auto* field = In<QLineEdit>(viewer, "txtFind");
    QTest::keyClicks(field, "sweeps");
    const int first = page->textCursor().position();
    QCOMPARE(page->textCursor().selectedText(), "Sweeps");
    QTest::keyClick(field, Qt::Key_Return);
    QVERIFY(page->textCursor().position() != first);
    QVERIFY(page->Find("sweeps", QTextDocument::FindBackward, true));
    QCOMPARE(page->textCursor().position(), first);
    QVERIFY(!page->Find("zebra", {}, false));

    const double letters = page->font().pointSizeF();
    for (int i = 0; i < 100; ++i)
        page->Zoom(-1);
    QVERIFY(page->font().pointSizeF() >= 6);
    page->ResetZoom();
    QCOMPARE(page->font().pointSizeF(), letters);
}

void HelpTest::picturesAreNeverWiderThanThePage()
{
    QString problem;
    ui::HelpViewer viewer(ui::HelpLibrary::Open(HELP_FILE, folder_.filePath("pictures"), problem));
    viewer.ShowContents();
    auto* page = In<ui::HelpBrowser>(viewer, "page");
    const auto shown = [page] {
        return page->document()
            ->resource(QTextDocument::ImageResource, QUrl("window.png"))
            .value<QImage>()
            .width();
    };
    const auto room = [page] {
        return page->viewport()->width() - 2 * int(page->document()->documentMargin());
    };
    for (const int width : {1'200, 640, 900}) {
        viewer.resize(width, 500);
        QTRY_COMPARE(shown(), std::min(700, room()));
        QCOMPARE(page->horizontalScrollBar()->maximum(), 0);
    }
}

void HelpTest::libraryOpensWhateverTheUsersFolderIsLike()
{
    const auto open = [](const QString& folder) {
        QString problem;
        auto library = ui::HelpLibrary::Open(HELP_FILE, folder, problem);
        if (library == nullptr)
            qFatal("%s", qPrintable(problem));
        return library;
    };
    const auto holdsPages = [](ui::HelpLibrary& library) {
        return library.Engine().fileData(ui::HelpLibrary::Page()).contains("<h1>");
    };
    const QString folder = folder_.filePath("kept");
    {
        const auto first = open(folder);
        QVERIFY(first->Lasting() && holdsPages(*first));
        const auto second = open(folder);  // another program has it open
        QVERIFY(!second->Lasting() && holdsPages(*second));
    }
    for (const char* damaged : {"manual.qhc", "TANDRI.HLP", "stamp"}) {
        Write(folder + "/" + damaged, "damaged");
        const auto again = open(folder);
        QVERIFY2(again->Lasting() && holdsPages(*again), damaged);
    }
    Write(folder_.filePath("in_the_way"), "");
    const auto elsewhere = open(folder_.filePath("in_the_way") + "/help");
    QVERIFY(!elsewhere->Lasting() && holdsPages(*elsewhere));
    const auto nowhere = open({});
    QVERIFY(!nowhere->Lasting() && holdsPages(*nowhere));
}

QTEST_MAIN(HelpTest)
#include "help_test.moc"
