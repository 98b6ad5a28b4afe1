// The File and Edit menus, what is dropped on the window, and the end, with real message boxes.
#include <QAbstractEventDispatcher>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <memory>

#include "office.h"

using ui_test::Act;
using ui_test::kOther;
using ui_test::Office;

namespace {

bool Drag(Office& office, const QList<QUrl>& urls, bool drop)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({100, 100}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(&office.window, &enter);
    if (!drop || !enter.isAccepted())
        return enter.isAccepted();
    QDropEvent event({100, 100}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&office.window, &event);
    QTest::qWait(1);
    return event.isAccepted();
}

bool Drop(Office& office, const QString& name)
{
    return Drag(office, {QUrl::fromLocalFile(office.Path(name))}, true);
}

}  // namespace

class FileMenuTest : public QObject {
    Q_OBJECT

 private slots:
    void questionsAreAnsweredBothWays_data();
    void questionsAreAnsweredBothWays();
    void droppedFilesOpen();
    void recentFilesOpen();
    void editsAreTakenBack();
    void textsKeepTheirOwnUndo();
    void theTitleTellsWhatIsOpen();
    void closingWhileItPlays();
    void theSessionEnds();
    void anEndOfTheSessionThatIsCalledOffGivesNothingUp();
    void theLastShowOpensAgain();
};

void FileMenuTest::questionsAreAnsweredBothWays_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("show");  // what is open after Yes
    const QString discard =
        "This choregraphy has not been saved. Do you really want to proceed without saving the "
        "changes?";
    QTest::newRow("New") << Act([](Office& o) { o.Key(Qt::Key_N, Qt::ControlModifier); }) << discard
                         << "";
    QTest::newRow("Open") << Act([](Office& o) {
        o.Key(Qt::Key_O, Qt::ControlModifier);
        o.Type("Other");
        o.Key(Qt::Key_Return);
        QVERIFY(!o.PanelOpen());
    }) << discard << "Other.ctl";
    QTest::newRow("a recent show") << Act([](Office& o) {
        o.editor.OpenShow(o.Path("Other").toStdString());
        o.editor.OpenShow(o.Path("Gala").toStdString());
        o.window.Refresh();
        o.Edit();
        o.Item("mnuRecent_1")->trigger();
    }) << discard << "Other.ctl";
    QTest::newRow("a dropped file")
        << Act([](Office& o) { QVERIFY(Drop(o, "Other.ctl")); }) << discard << "Other.ctl";
    QTest::newRow("Undo All") << Act([](Office& o) { o.Item("mnuFileAction_5")->trigger(); })
                              << "Do you want to cancel all changes and reload the original "
                                 "choreography?"
                              << "Gala.ctl";
    QTest::newRow("Exit") << Act([](Office& o) {
        o.Key(Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(o.window.isVisible(), o.clerk.answer == QMessageBox::No);
    }) << discard << "Gala.ctl";
    QTest::newRow("close") << Act([](Office& o) {
        QCOMPARE(o.window.close(), o.clerk.answer == QMessageBox::Yes);
    }) << discard << "Gala.ctl";
}

void FileMenuTest::questionsAreAnsweredBothWays()
{
    QFETCH(Act, act);
    QFETCH(QString, question);
    QFETCH(QString, show);
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        Office office;
        office.clerk.answer = answer;
        office.Edit();
        act(office);
        const bool yes = answer == QMessageBox::Yes;
        QCOMPARE(office.clerk.said, QStringList{question});
        QCOMPARE(office.clerk.icons.first(),
                 question.startsWith("Do") ? QMessageBox::Question : QMessageBox::Warning);
        QVERIFY(!office.clerk.pending.first().startsWith("Will be written"));
        QCOMPARE(office.Shown(), yes ? show : "Gala.ctl");
        QCOMPARE(office.window.isWindowModified(), !yes);
        if (office.window.isVisible())
            QCOMPARE(office.editor.Panel().updnRings[4].Value, yes ? 0 : 1);
        QCOMPARE(office.Read("Gala.ctl"), ui_test::kShow);
    }
}

void FileMenuTest::droppedFilesOpen()
{
    Office office;
    office.Write("notes.txt", "");
    QVERIFY(!Drop(office, "notes.txt"));
    QVERIFY(!Drag(office, {QUrl("https://example.org/Gala.ctl")}, false));
    QVERIFY(!Drag(office,
                  {QUrl::fromLocalFile(office.Path("Gala.ctl")),
                   QUrl::fromLocalFile(office.Path("Other.ctl"))},
                  false));
    QVERIFY(!Drag(office, {}, false));
    QVERIFY(Drop(office, "Other.ctl"));
    QCOMPARE(office.Shown(), "Other.ctl");
    QVERIFY(Drop(office, "Gala.mp3"));
    QCOMPARE(office.Shown(), "Gala.ctl");
    QCOMPARE(office.Song(), "Gala.mp3");

    const struct {
        const char* name;
        Act enter;
    } busy[] = {
        {"the panel is open", [](Office& o) { o.Item("mnuFileAction_1")->trigger(); }},
        {"the shift panel is open",
         [](Office& o) {
             o.editor.MoveTo(1'000);
             o.Key(Qt::Key_F9);
         }},
        {"music plays", [](Office& o) { o.Click("mmSong_play"); }},
        {"a snippet plays", [](Office& o) { o.Click("mmEditing_play"); }},
    };
    for (const auto& row : busy) {
        Office other;
        row.enter(other);
        QVERIFY2(!Drop(other, "Other.ctl"), row.name);
        QVERIFY2(other.Shown() == "Gala.ctl", row.name);
    }
}

void FileMenuTest::recentFilesOpen()
{
    Office office;
    QVERIFY(!office.Item("mnuRecent_1")->isVisible());
    const QString deep = "Sub.d/" + QString(60, 'y') + "/A & B";
    QVERIFY(office.folder.mkpath(deep));
    office.Write(deep + "/Deep.ctl", kOther);
    for (const QString& name : {QString("Other"), deep + "/Deep"})
        office.editor.OpenShow(office.Path(name).toStdString());
    office.window.Refresh();
    const QAction* first = office.Item("mnuRecent_0");
    QVERIFY2(first->text().startsWith("&1 ") && first->text().contains(QChar(0x2026)) &&
                 first->text().endsWith("A && B/Deep.ctl"),
             qPrintable(first->text()));
    QCOMPARE(first->toolTip(), office.Path(deep + "/Deep.ctl"));
    QCOMPARE(office.Find<QMenu>("mnuFile")->actions().indexOf(first),
             11);  // behind Exit and a line

    office.Item("mnuRecent_1")->trigger();
    QCOMPARE(office.Shown(), "Other.ctl");
    QVERIFY(office.Item("mnuRecent_0")->toolTip().endsWith("Other.ctl"));
    QVERIFY(QFile::remove(office.Path("Gala.ctl")));
    office.Item("mnuRecent_2")->trigger();
    QCOMPARE(office.clerk.said.size(), 1);
    QVERIFY(office.clerk.said[0].contains("Gala.ctl is not there any more"));
    QVERIFY(!office.Item("mnuRecent_2")->isVisible());
    QCOMPARE(office.Shown(), "Other.ctl");
    office.Click("mmEditing_play");
    QVERIFY(!office.Item("mnuRecent_0")->isEnabled());
}

void FileMenuTest::editsAreTakenBack()
{
    Office office;
    QAction* undo = office.Item("mnuUndo");
    QAction* redo = office.Item("mnuRedo");
    QCOMPARE(office.Find<QMenuBar>("mnuBar")->actions()[1]->text(), "&Edit");
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    QCOMPARE(undo->text().trimmed(), "&Undo");
    office.editor.MoveTo(10'000);
    office.Edit();
    QVERIFY(undo->isEnabled());  // not written yet, but done
    QCOMPARE(undo->toolTip(), "Undo Ring 3 on Group A to level 1 at 00:10.0");
    for (const QSize& size : {QSize(1024, 768), QSize(2560, 1440), QSize(1366, 768)}) {
        office.window.resize(size);
        QCOMPARE(undo->text().trimmed(), '&' + undo->toolTip());
    }
    office.window.resize(1024, 768);
    office.editor.MoveTo(0);
    office.window.Refresh();
    QVERIFY(office.window.isWindowModified());
    office.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(office.Find<QLabel>("lblTime")->text(), "00:10.0");
    QCOMPARE(office.Find<QSpinBox>("updnRings_4")->value(), 0);
    QVERIFY(!office.window.isWindowModified() && !undo->isEnabled());
    QVERIFY(redo->toolTip().startsWith("Redo Ring 3"));
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier}) {
        office.Key(modifiers == Qt::ControlModifier ? Qt::Key_Y : Qt::Key_Z, modifiers);
        QCOMPARE(office.Find<QSpinBox>("updnRings_4")->value(), 1);
        QVERIFY(!redo->isEnabled());
        undo->trigger();
    }
    for (const char* name : {"updnRings_0", "updnRings_2", "updnRings_6", "updnRings_8"})
        QTest::keyClick(office.Find(name), Qt::Key_Up);
    QVERIFY2(undo->text().size() < 80, qPrintable(undo->text()));
    auto* menu = office.Find<QMenu>("mnuEdit");
    QMenu touching;
    touching.setFont(menu->font());
    for (const QAction* item : {undo, redo})
        touching.addAction(item->text().trimmed())->setShortcut(item->shortcut());
    QVERIFY2(menu->sizeHint().width() >
                 touching.sizeHint().width() + menu->fontMetrics().averageCharWidth() / 2,
             "the keys stand off from the text");
    office.Click("mmSong_play");
    QVERIFY(!undo->isEnabled());
}

void FileMenuTest::textsKeepTheirOwnUndo()
{
    Office office;
    office.editor.MoveTo(10'000);
    office.Edit();
    office.editor.MoveTo(0);
    office.window.Refresh();
    const auto written = [&office] { return office.editor.CanUndo(); };

    auto* seconds = office.Find<QSpinBox>("updnTime_1");
    seconds->setFocus();
    seconds->selectAll();
    office.Type("4");
    office.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(written());
    QCOMPARE(seconds->cleanText(), "00");
    seconds->selectAll();
    office.Type("4");
    office.Key(Qt::Key_Return);
    QCOMPARE(office.Find<QLabel>("lblTime")->text(), "00:04.0");

    office.Key(Qt::Key_F, Qt::ControlModifier);
    auto* filter = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(filter != nullptr);
    office.Type("ring");
    office.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(filter->text(), "");
    office.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(filter->text(), "ring");
    QVERIFY(written());

    seconds->setFocus();  // the number in it is entered long since
    office.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!written());

    office.Item("mnuFileAction_1")->trigger();
    office.Type("Oth");
    office.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(office.Name(), "");
    office.Key(Qt::Key_Return);
    QVERIFY(office.PanelOpen());
}

void FileMenuTest::theTitleTellsWhatIsOpen()
{
    Office office;
    const QString caption = QString::fromLatin1(ui::kCaption);
    QVERIFY2(office.window.windowTitle().startsWith("Gala[*] "),
             qPrintable(office.window.windowTitle()));
    office.Edit();
    QVERIFY(office.window.isWindowModified());
    office.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!office.window.isWindowModified());
    office.Edit();
    office.Item("mnuFileAction_3")->trigger();
    QVERIFY(!office.window.isWindowModified());
    office.Key(Qt::Key_Z, Qt::ControlModifier);  // behind what was saved
    QVERIFY(office.window.isWindowModified());
    office.Item("mnuFileAction_4")->trigger();
    office.Type("Odd[*]");
    office.Key(Qt::Key_Return);
    QVERIFY(office.window.windowTitle().startsWith("Odd[*][*][*] "));
    office.Item("mnuFileAction_0")->trigger();
    QCOMPARE(office.window.windowTitle(), caption + "[*]");
    QCOMPARE(office.Song(), "");
}

void FileMenuTest::closingWhileItPlays()
{
    Office office;
    office.Click("mmSong_play");
    QVERIFY(!office.window.close());
    QVERIFY(office.window.isVisible());
    office.Click("mmSong_stop");
    QVERIFY(office.window.close());
    QCOMPARE(office.store.GetSettingValue("LastFile", ""), office.Path("Gala").toStdString());
    QCOMPARE(office.store.GetSettingValue("Legends", ""), "False");
    QCOMPARE(office.store.GetSettingValue("Recent1", ""), office.Path("Gala.ctl").toStdString());
}

void FileMenuTest::theSessionEnds()
{
    const struct {
        const char* name;
        bool changed;
        bool plays;
        bool mayAsk;
        QMessageBox::StandardButton answer;
        int asked;
        bool ends;
    } rows[] = {
        {"nothing to lose", false, false, true, QMessageBox::No, 0, true},
        {"while music plays", false, true, true, QMessageBox::No, 0, true},
        {"changes, kept", true, false, true, QMessageBox::No, 1, false},
        {"changes, given up", true, false, true, QMessageBox::Yes, 1, true},
        {"changes, and nobody to ask", true, false, false, QMessageBox::No, 0, true},
    };
    for (const auto& row : rows) {
        Office office;
        office.clerk.answer = row.answer;
        if (row.changed)
            office.Edit();
        if (row.plays)
            office.Click("mmSong_play");
        QVERIFY2(office.window.EndSession(row.mayAsk) == row.ends, row.name);
        QVERIFY2(office.clerk.said.size() == row.asked, row.name);
        if (row.ends && row.mayAsk) {
            QVERIFY2(office.window.close(), row.name);
            QVERIFY2(office.clerk.said.size() == row.asked, row.name);
        }
    }
}

void FileMenuTest::anEndOfTheSessionThatIsCalledOffGivesNothingUp()
{
    Office office;
    office.clerk.answer = QMessageBox::Yes;
    office.Edit();
    QVERIFY(office.window.EndSession(true));
    QVERIFY(!office.editor.Choreography().blnChanged);
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(&office.window);
    QCOMPARE(timers.size(), 1);
    QTimerEvent calledOff(timers.front().timerId);
    QCoreApplication::sendEvent(&office.window, &calledOff);
    QVERIFY(office.editor.Choreography().blnChanged);
    QVERIFY(QAbstractEventDispatcher::instance()->registeredTimers(&office.window).isEmpty());

    QVERIFY(office.window.EndSession(true));
    office.editor.OpenShow(office.Path("Other").toStdString());
    QCoreApplication::sendEvent(&office.window, &calledOff);
    QVERIFY(!office.editor.Choreography().blnChanged);  // nothing of this one was given up
}

void FileMenuTest::theLastShowOpensAgain()
{
    qputenv("GST_REGISTRY", GST_REGISTRY_FILE);
    const QTemporaryDir home;
    const std::string folder = home.path().toStdString();
    std::ofstream(folder + "/Gala.ctl") << kOther;
    const auto start = [&folder](const std::string& base) {
        auto program = std::make_unique<ui::Application>(
            ui::StartOptions{.base = base,
                             .silent = true,
                             .settings = folder + "/settings.conf",
                             .recovery = folder + "/recovery"});
        program->Start();
        QTest::qWait(1);
        return program;
    };
    const auto status = [](ui::Application& program) {
        return program.Window().findChild<QLabel*>("lblControlFile")->toolTip();
    };
    for (const char* base : {"/Gala.ctl", ""}) {
        const auto program = start(*base == '\0' ? "" : folder + base);
        QVERIFY(program->GetEditor().Choreography().fileExists);
        program->GetEditor().ToggleDisplayOption(editor::kLegendsItem);
        QVERIFY(program->Window().close());
    }
    const auto again = start("");
    QVERIFY(!again->GetEditor().DisplayOptions().Legends);
    QVERIFY(again->Window().close());
    QVERIFY(QFile::remove(home.filePath("Gala.ctl")));
    const auto gone = start("");
    QVERIFY2(status(*gone).contains("the show of the last time was not found as " +
                                    home.filePath("Gala.ctl")),
             qPrintable(status(*gone)));
    QVERIFY(gone->Window().close());
}

QTEST_MAIN(FileMenuTest)
#include "file_menu_test.moc"
