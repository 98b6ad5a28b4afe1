// Two editors on one file know of one another, and ask before one writes over the other.
#include <sys/wait.h>
#include <unistd.h>

#include <QLockFile>

#include "desk.h"
#include "ui/show_lock.h"

using namespace ui_test;

namespace {

/// Opens the show in an editor in one of the ways there are.
enum class Way { Start, File, Recent, Dropped, Panel };

void OpenBy(Way way, Desk& desk, const Folder& folder)
{
    if (way == Way::Start)
        return desk.Start(folder, folder.Path("Gala"));
    folder.Write(kShow, "Other.ctl");
    desk.Start(folder, folder.Path("Other"));
    switch (way) {
        case Way::Start:
            break;
        case Way::File:
            static_cast<void>(desk.editor.OpenFile(folder.Path()));
            break;
        case Way::Recent:
            desk.editor.OpenShow(folder.Path("Gala"));
            desk.editor.OpenShow(folder.Path("Other"));
            desk.editor.OpenRecent(1);
            break;
        case Way::Dropped:
            static_cast<void>(desk.editor.OpenDropped(folder.Path()));
            break;
        case Way::Panel:
            desk.editor.ShowFilePanel(editor::FilePanelMode::Open);
            desk.editor.txtFileSelect_Change("Gala");
            desk.editor.cmdFileSelect_Click(0);
            break;
    }
}

}  // namespace

class LockTest : public QObject {
    Q_OBJECT

 private slots:
    void openingAsksWhoeverComesSecond_data();
    void openingAsksWhoeverComesSecond();
    void savingAsksAgainAndOnlyOnce();
    void savingOverAShowOfAnotherAsks();
    void theLockGoesWithTheShow();
    void aDeadProcessHoldsNothing();
    void everyNameOfTheFileIsTheSame();
    void withoutAFolderToWriteToNobodyIsAsked();
};

void LockTest::openingAsksWhoeverComesSecond_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("at the start") << static_cast<int>(Way::Start);
    QTest::newRow("by its name") << static_cast<int>(Way::File);
    QTest::newRow("from the recent files") << static_cast<int>(Way::Recent);
    QTest::newRow("dropped") << static_cast<int>(Way::Dropped);
    QTest::newRow("from the file selection panel") << static_cast<int>(Way::Panel);
}

void LockTest::openingAsksWhoeverComesSecond()
{
    QFETCH(int, way);
    for (const bool yes : {false, true}) {
        const Folder folder;
        folder.Write(kShow);
        Desk first(folder);
        first.Start(folder, folder.Path());
        QVERIFY(first.answers.asked.isEmpty());
        Desk second(folder);
        second.answers.yes = yes;
        OpenBy(static_cast<Way>(way), second, folder);
        QCOMPARE(second.answers.asked.size(), 1);
        const QString question = second.answers.asked.front();
        QVERIFY2(question.contains(QString::number(QCoreApplication::applicationPid())) &&
                     question.contains(QSysInfo::machineHostName()) &&
                     question.endsWith("Open it all the same?"),
                 qPrintable(question));
        QCOMPARE(second.editor.Choreography().fileName == folder.Path(), yes);
    }
}

void LockTest::savingAsksAgainAndOnlyOnce()
{
    const Folder folder;
    folder.Write(kShow);
    Desk first(folder);
    first.Start(folder, folder.Path());
    Desk second(folder);
    second.Start(folder, folder.Path());
    const QByteArray before = folder.Bytes();
    second.Edit(4);
    second.answers.yes = false;
    second.editor.Save();
    QCOMPARE(second.answers.asked.size(), 2);
    QVERIFY(second.answers.asked.back().endsWith("Save all the same?"));
    QCOMPARE(folder.Bytes(), before);
    QVERIFY(second.editor.Choreography().blnChanged);
    second.answers.yes = true;
    second.editor.Save();
    QCOMPARE(second.answers.asked.size(), 3);
    QVERIFY(folder.Bytes() != before);
    second.Edit(5);
    second.editor.Save();
    QCOMPARE(second.answers.asked.size(), 3);
    QVERIFY(!second.editor.Choreography().blnChanged);
    // Whoever has the lock is not asked for it, but for what was saved meanwhile.
    first.Edit(3);
    first.answers.yes = false;
    first.editor.Save();
    QCOMPARE(first.answers.asked.size(), 1);
    QVERIFY(first.answers.asked.back().contains("replace that version"));
}

void LockTest::savingOverAShowOfAnotherAsks()
{
    const Folder folder;
    folder.Write(kShow);
    folder.Write(kShow, "Other.ctl");
    Desk first(folder);
    first.Start(folder, folder.Path());
    Desk second(folder);
    second.Start(folder, folder.Path("Other"));
    second.answers.yes = false;
    QCOMPARE(second.editor.SaveTo(folder.Path()).outcome, document::SaveOutcome::Nothing);
    QCOMPARE(second.answers.asked.size(), 1);
    QVERIFY2(!ui::OtherHolder(folder.Path("Other.ctl")).isEmpty(), "its own lock is still there");
    second.answers.yes = true;
    QCOMPARE(second.editor.SaveTo(folder.Path()).outcome, document::SaveOutcome::Saved);
}

void LockTest::theLockGoesWithTheShow()
{
    const Folder folder;
    folder.Write(kShow);
    folder.Write(kShow, "Other.ctl");
    {
        Desk desk(folder);
        desk.Start(folder, folder.Path());
        QVERIFY(fs::exists(folder.Path(".Gala.ctl.lock")));
        QVERIFY(desk.editor.OpenFile(folder.Path("Other.ctl")));
        QVERIFY(!fs::exists(folder.Path(".Gala.ctl.lock")));
        QVERIFY(fs::exists(folder.Path(".Other.ctl.lock")));
        desk.editor.mnuFileAction_Click(editor::kNewItem);
        QVERIFY(!fs::exists(folder.Path(".Other.ctl.lock")));
        desk.Edit(3);
        QCOMPARE(desk.editor.SaveTo(folder.Path("New.ctl")).outcome, document::SaveOutcome::Saved);
        QVERIFY(fs::exists(folder.Path(".New.ctl.lock")));
    }
    QVERIFY(!fs::exists(folder.Path(".New.ctl.lock")));
}

void LockTest::aDeadProcessHoldsNothing()
{
    const Folder folder;
    folder.Write(kShow);
    const std::string lock = ui::LockName(folder.Path()).string();
    const pid_t child = ::fork();
    if (child == 0) {
        QLockFile file(QString::fromStdString(lock));
        ::_exit(file.tryLock(0) ? 0 : 1);
    }
    int status = 1;
    ::waitpid(child, &status, 0);
    QCOMPARE(status, 0);
    QVERIFY(fs::exists(lock));
    QCOMPARE(ui::OtherHolder(folder.Path()), QString());

    // Killed between making it and signing it.
    std::ofstream(lock).close();
    fs::last_write_time(lock, fs::file_time_type::clock::now() - std::chrono::minutes(1));
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    QVERIFY(desk.answers.asked.isEmpty());
    QVERIFY(fs::file_size(lock) > 0);
}

void LockTest::everyNameOfTheFileIsTheSame()
{
    const Folder folder;
    folder.Write(kShow);
    fs::create_symlink(folder.Path(), folder.Path("Link.ctl"));
    fs::create_directory_symlink(folder.Path("."), folder.Path("there"));
    Desk desk(folder);
    desk.Start(folder, folder.Path("Link.ctl"));
    for (const char* name : {"Gala.ctl", "there/Gala.ctl", "there/Link.ctl"})
        QVERIFY2(!ui::OtherHolder(folder.Path(name)).isEmpty(), name);
    QCOMPARE(ui::OtherHolder(folder.Path("Missing.ctl")), QString());
}

void LockTest::withoutAFolderToWriteToNobodyIsAsked()
{
    QCOMPARE(ui::OtherHolder("/proc/version"), QString());
    ui::ShowLock lock;
    QVERIFY(!lock.Take("/proc/version"));
    QVERIFY(!lock.Take({}));
}

QTEST_MAIN(LockTest)
#include "lock_test.moc"
