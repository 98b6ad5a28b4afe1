// The manual names things that are there: pages, pictures, menus, captions.
#include <QAction>
#include <QDir>
#include <QHelpLink>
#include <QMenu>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

#include "studio.h"
#include "ui/help_library.h"
#include "ui/panel_form.h"

using ui_test::Studio;

namespace {

QString Plain(QString caption)
{
    return caption.remove('&').remove("...");
}

QStringList Matches(const QString& text, const char* pattern)
{
    QStringList found;
    QRegularExpression expression(pattern, QRegularExpression::DotMatchesEverythingOption);
    for (auto match = expression.globalMatch(text); match.hasNext();)
        found << match.next().captured(1);
    return found;
}

}  // namespace

class ManualTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void linksAndPicturesAreThere();
    void everyPageIsInTheContentsAndReached();
    void keywordsLeadToPages();
    void menusAndCaptionsAreThoseOfTheProgram();

 private:
    [[nodiscard]] QString Page(const QString& name)
    {
        return QString::fromUtf8(library_->Engine().fileData(ui::HelpLibrary::Page(name)));
    }

    QTemporaryDir folder_;
    std::unique_ptr<ui::HelpLibrary> library_;
    QStringList pages_;
};

void ManualTest::initTestCase()
{
    QString problem;
    library_ = ui::HelpLibrary::Open(HELP_FILE, folder_.path(), problem);
    QVERIFY2(library_ != nullptr, qPrintable(problem));
    pages_ = QDir(HELP_PAGES).entryList({"*.html"});
    QVERIFY(pages_.size() > 10);
}

void ManualTest::linksAndPicturesAreThere()
{
    int links = 0;
    for (const QString& name : pages_) {
        const QString page = Page(name);
        QVERIFY2(page.contains("</html>"), qPrintable(name));
        for (const QString& target : Matches(page, "(?:href|src)=\"([^\"]*)\"")) {
            const QUrl url = ui::HelpLibrary::Page(name).resolved(QUrl(target));
            QVERIFY2(!library_->Engine().fileData(url.adjusted(QUrl::RemoveFragment)).isEmpty(),
                     qPrintable(name + ": " + target));
            ++links;
        }
        QCOMPARE(page.count("<img"), Matches(page, "<img[^>]* alt=\"([^\"]+)\"").size());
    }
    QVERIFY(links > 80);
}

void ManualTest::everyPageIsInTheContentsAndReached()
{
    QFile project(HELP_PAGES "/manual.qhp");
    QVERIFY(project.open(QIODevice::ReadOnly));
    const QStringList contents =
        Matches(QString::fromUtf8(project.readAll()), "<section [^>]*ref=\"([^\"]+)\"");
    QCOMPARE(QSet(contents.begin(), contents.end()), QSet(pages_.begin(), pages_.end()));
    QSet<QString> reached{"index.html"};
    QStringList next = reached.values();
    while (!next.isEmpty())
        for (const QString& target : Matches(Page(next.takeFirst()), "href=\"([^\"]*[.]html)\""))
            if (!reached.contains(target)) {
                reached << target;
                next << target;
            }
    QCOMPARE(reached, QSet(pages_.begin(), pages_.end()));
}

void ManualTest::keywordsLeadToPages()
{
    for (const char* word : {"marks", "shifting", "wedding cake", "undo", "backups", "keys"}) {
        const QList<QHelpLink> links = library_->Engine().documentsForKeyword(word);
        QVERIFY2(!links.isEmpty(), word);
        QVERIFY2(!library_->Engine().fileData(links.front().url).isEmpty(), word);
    }
}

void ManualTest::menusAndCaptionsAreThoseOfTheProgram()
{
    Studio studio;
    QSet<QString> entries;
    for (const auto* menu : studio.window.findChildren<QMenu*>())
        for (const QAction* action : menu->actions())
            entries << (Plain(menu->title()) + " > " + Plain(action->text())).simplified();
    QSet<QString> captions;
    for (const ui::PanelControl& control : ui::PanelForm())
        captions << control.caption;
    int named = 0;
    for (const QString& name : pages_) {
        const QString page = Page(name);
        for (QString entry : Matches(page, "class=\"menu\">([^<]*)<")) {
            entry = Plain(entry.replace("&gt;", ">")).simplified();
            QVERIFY2(entries.contains(entry), qPrintable(name + ": " + entry));
            ++named;
        }
        for (const QString& caption : Matches(page, "class=\"panel\">([^<]*)<")) {
            QVERIFY2(captions.contains(caption.simplified()), qPrintable(name + ": " + caption));
            ++named;
        }
    }
    QVERIFY(named > 50);
}

QTEST_MAIN(ManualTest)
#include "manual_test.moc"
