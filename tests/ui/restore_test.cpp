// The versions that saving put aside are brought back.
#include <QTreeWidget>

#include "desk.h"
#include "ui/dlg_restore.h"

using namespace ui_test;
using ui::dlgRestore;

namespace {

/// Saves the ring at one level after another.
void SaveOften(Desk& desk, std::initializer_list<int> levels)
{
    for (const int level : levels) {
        desk.Edit(level);
        desk.editor.Save();
    }
    desk.window.Refresh();
}

}  // namespace

class RestoreTest : public QObject {
    Q_OBJECT

 private slots:
    void backupsAreListedAndOneIsRestored();
    void cancelLeavesAllAsItIs();
    void withoutBackupsNothingIsRestored();
    void aShowThatIsGoneIsOfferedItsBackups();
    void itIsNotOfferedWhereItCannotBeDone();
};

void RestoreTest::backupsAreListedAndOneIsRestored()
{
    const Folder folder;
    folder.Write(kShow);
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    SaveOften(desk, {2, 3, 4, 5, 1, 2});
    desk.Edit(3);
    const QByteArray before = folder.Bytes();
    desk.window.findChild<QAction*>("mnuRestore")->trigger();
    auto* dialog = desk.Dialog<dlgRestore>();
    QVERIFY(dialog != nullptr);
    auto* list = dialog->findChild<QTreeWidget*>("lstBackups");
    QTRY_COMPARE(list->topLevelItemCount(), 5);
    QTRY_VERIFY(!list->topLevelItem(4)->text(2).isEmpty());
    for (int row = 0; row < 5; ++row) {
        QVERIFY(list->topLevelItem(row)->text(0).contains(
            QString::number(QDate::currentDate().year())));
        QCOMPARE(list->topLevelItem(row)->text(1), "5 times, 18 commands");
        QCOMPARE(list->topLevelItem(row)->text(2), row == 3 ? "nothing changed" : "1 time changed");
    }
    list->setCurrentItem(list->topLevelItem(2));
    QTRY_VERIFY(LinesOf(dialog).join(' ').contains("level 3 -> level 4"));
    Click(dialog, "cmdRestore");
    QVERIFY(desk.Dialog<dlgRestore>() == nullptr);
    QCOMPARE(desk.editor.Panel().updnRings[3].Value, 4);
    QVERIFY(desk.editor.Choreography().blnChanged);
    QCOMPARE(desk.editor.Choreography().fileName, folder.Path());
    QCOMPARE(folder.Bytes(), before);
    QVERIFY2(desk.editor.UndoText().starts_with("Undo Restoring "), desk.editor.UndoText().c_str());
    QVERIFY(desk.editor.Undo());
    QCOMPARE(desk.editor.Panel().updnRings[3].Value, 3);
}

void RestoreTest::cancelLeavesAllAsItIs()
{
    const Folder folder;
    folder.Write(kShow);
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    SaveOften(desk, {2, 3});
    const std::string before = desk.Text();
    desk.keeper.RestoreBackup();
    auto* dialog = desk.Dialog<dlgRestore>();
    auto* list = dialog->findChild<QTreeWidget*>("lstBackups");
    QTRY_COMPARE(list->topLevelItemCount(), 2);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(desk.Dialog<dlgRestore>() == nullptr);
    QCOMPARE(desk.Text(), before);
    QVERIFY(!desk.editor.Choreography().blnChanged);
}

void RestoreTest::withoutBackupsNothingIsRestored()
{
    const Folder folder;
    folder.Write(kShow);
    fs::create_directory(folder.Path("Gala.001"));
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    desk.keeper.RestoreBackup();
    auto* dialog = desk.Dialog<dlgRestore>();
    auto* list = dialog->findChild<QTreeWidget*>("lstBackups");
    QTRY_COMPARE(list->topLevelItemCount(), 1);
    QVERIFY(list->topLevelItem(0)->text(0).contains("no backups"));
    QTest::qWait(0);
    const auto* introduction = dialog->findChild<QLabel*>("lblIntroduction");
    QVERIFY2(list->geometry().top() - introduction->geometry().top() <
                 2 * introduction->heightForWidth(introduction->width()),
             "the list stands below its introduction");
    QVERIFY(!dialog->findChild<QPushButton*>("cmdRestore")->isEnabled());
}

void RestoreTest::aShowThatIsGoneIsOfferedItsBackups()
{
    for (const bool yes : {false, true}) {
        const Folder folder;
        folder.Write(kShow, "Gala.001");
        Desk desk(folder);
        desk.answers.yes = yes;
        desk.Start(folder, folder.Path());
        QTRY_COMPARE(desk.answers.asked.size(), 1);
        QVERIFY(desk.answers.asked.front().contains("backups of it are"));
        QTRY_VERIFY(!desk.keeper.Busy());
        auto* dialog = desk.Dialog<dlgRestore>();
        QCOMPARE(dialog != nullptr, yes);
        if (!yes) {
            QCOMPARE(desk.editor.Choreography().lngLastSlot(), 0);
            continue;
        }
        auto* list = dialog->findChild<QTreeWidget*>("lstBackups");
        QTRY_COMPARE(list->topLevelItemCount(), 1);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(desk.editor.Choreography().lngLastSlot(), 5);
        QVERIFY(!fs::exists(folder.Path()));
        desk.editor.Save();
        QVERIFY(folder.Bytes().contains("00:04.0006-020 033-097"));
    }
}

void RestoreTest::itIsNotOfferedWhereItCannotBeDone()
{
    const Folder folder;
    folder.Write(kShow);
    std::ofstream(folder.Path("Gala.mp3")) << "music";
    Desk desk(folder);
    desk.Start(folder, {});
    const auto* item = desk.window.findChild<QAction*>("mnuRestore");
    QVERIFY2(!item->isEnabled(), "the show has no name");
    desk.editor.OpenShow(folder.Path("Gala"));
    desk.window.Refresh();
    QVERIFY(item->isEnabled());
    desk.editor.mmSong_PlayClick();
    desk.player.Poll();
    desk.window.Refresh();
    QVERIFY2(!item->isEnabled(), "it plays");
    desk.keeper.RestoreBackup();
    QVERIFY(desk.Dialog<dlgRestore>() == nullptr);
}

QTEST_MAIN(RestoreTest)
#include "restore_test.moc"
