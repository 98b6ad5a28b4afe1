// What a process left unsaved is offered, and gone only when the user decided so.
#include <QListWidget>

#include "desk.h"
#include "ui/dlg_recovery.h"

using namespace ui_test;
using ui::dlgRecovery;

namespace {

/// Leaves a journal behind: ring 4 on `level` at 00:00.0 of the show, which is not saved.
void LeaveUnsaved(const Folder& folder, const fs::path& show, int level)
{
    Desk desk(folder);
    desk.editor.Form_Activate(show);
    desk.editor.FinishStartUp();
    desk.Edit(level);
}

#define OFFERED(desk, dialog)                             \
    QTRY_VERIFY((desk).Dialog<dlgRecovery>() != nullptr); \
    dlgRecovery* dialog = (desk).Dialog<dlgRecovery>()

/// Lets the search of the start come to its end with nothing to offer.
#define NOTHING_OFFERED(desk)                             \
    do {                                                  \
        QTRY_VERIFY(!(desk).keeper.Busy());               \
        QCoreApplication::processEvents();                \
        QVERIFY((desk).Dialog<dlgRecovery>() == nullptr); \
    } while (false)

}  // namespace

class RecoveryTest : public QObject {
    Q_OBJECT

 private slots:
    void whatWasRecoveredIsOpenedAsOneEdit_data();
    void whatWasRecoveredIsOpenedAsOneEdit();
    void savedIsOpenedAndTheRestKeptUntilASave();
    void closingDecidesNothing();
    void throwingAwayIsAsked();
    void severalAreAList();
    void showsWithoutAFile_data();
    void showsWithoutAFile();
    void whatIsSavedIsNotOffered();
    void aCleanEndLeavesNothing();
    void aFileThatWentOnIsRemarkedOn();
    void aFolderThatCannotBeWrittenIsToldOnce();
};

void RecoveryTest::whatWasRecoveredIsOpenedAsOneEdit_data()
{
    QTest::addColumn<bool>("open");
    QTest::addColumn<bool>("edited");
    QTest::newRow("nothing is open") << false << false;
    QTest::newRow("it is open as it was saved") << true << false;
    QTest::newRow("it is open, and something was done") << true << true;
}

void RecoveryTest::whatWasRecoveredIsOpenedAsOneEdit()
{
    QFETCH(bool, open);
    QFETCH(bool, edited);
    const Folder folder;
    folder.Write(kShow);
    LeaveUnsaved(folder, folder.Path(), 4);
    const QByteArray before = folder.Bytes();
    Desk desk(folder);
    desk.Start(folder, open ? folder.Path() : fs::path());
    if (edited)
        desk.Edit(2, 1);
    OFFERED(desk, dialog);
    QCOMPARE(LabelOf(dialog, "lblName"), QString::fromStdString(folder.Path().string()));
    QCOMPARE(LabelOf(dialog, "lblSavedCounts"), "5 times, 17 commands");
    QCOMPARE(LabelOf(dialog, "lblRecoveredCounts"), "5 times, 18 commands");
    QTRY_COMPARE(LabelOf(dialog, "lblSummary"), "Not saved: 1 time changed.");
    QCOMPARE(LinesOf(dialog).size(), 1);
    QVERIFY2(LinesOf(dialog).front().contains("Ring"), qPrintable(LinesOf(dialog).front()));

    if (edited) {
        desk.answers.yes = false;
        Click(dialog, "cmdRecovered");
        QVERIFY(dialog->isVisible());
        QCOMPARE(document::LeftoverJournals(folder.Journals()).size(), 1U);
        desk.answers.yes = true;
    }
    Click(dialog, "cmdRecovered");
    QCOMPARE(desk.answers.asked.size(), edited ? 2 : 0);
    QVERIFY(desk.Dialog<dlgRecovery>() == nullptr);
    const document::Choreography& show = desk.editor.Choreography();
    QCOMPARE(document::CommandTotal(show), 18);
    QVERIFY(show.blnChanged);
    QCOMPARE(show.fileName, folder.Path());
    QCOMPARE(folder.Bytes(), before);
    desk.journal.Flush();
    QCOMPARE(folder.JournalCount(), 1U);
    QVERIFY(document::LeftoverJournals(folder.Journals()).empty());
    QCOMPARE(desk.editor.UndoText(), "Undo Recovered Changes");
    QVERIFY(desk.editor.Undo());
    QCOMPARE(document::CommandTotal(desk.editor.Choreography()), 17);
    QVERIFY(!desk.editor.Choreography().blnChanged);
}

void RecoveryTest::savedIsOpenedAndTheRestKeptUntilASave()
{
    const Folder folder;
    folder.Write(kShow);
    LeaveUnsaved(folder, folder.Path(), 4);
    Desk desk(folder);
    desk.Start(folder, {});
    OFFERED(desk, dialog);
    Click(dialog, "cmdSaved");
    QVERIFY(desk.Dialog<dlgRecovery>() == nullptr);
    QCOMPARE(document::CommandTotal(desk.editor.Choreography()), 17);
    QCOMPARE(document::LeftoverJournals(folder.Journals()).size(), 1U);
    desk.Edit(2, 2);
    desk.editor.Save();
    QVERIFY(document::LeftoverJournals(folder.Journals()).empty());
}

void RecoveryTest::closingDecidesNothing()
{
    const Folder folder;
    folder.Write(kShow);
    LeaveUnsaved(folder, folder.Path(), 4);
    for (int start = 0; start < 2; ++start) {
        Desk desk(folder);
        desk.Start(folder, folder.Path());
        OFFERED(desk, dialog);
        if (start == 0)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            Click(dialog, "cmdLater");
        QVERIFY(desk.Dialog<dlgRecovery>() == nullptr);
        QVERIFY(!desk.editor.Choreography().blnChanged);
        QCOMPARE(document::LeftoverJournals(folder.Journals()).size(), 1U);
    }
}

void RecoveryTest::throwingAwayIsAsked()
{
    const Folder folder;
    folder.Write(kShow);
    LeaveUnsaved(folder, folder.Path(), 4);
    Desk desk(folder);
    desk.Start(folder, {});
    OFFERED(desk, dialog);
    desk.answers.yes = false;
    Click(dialog, "cmdThrowAway");
    QCOMPARE(desk.answers.asked.size(), 1);
    QCOMPARE(folder.JournalCount(), 1U);
    QVERIFY(dialog->isVisible());
    desk.answers.yes = true;
    Click(dialog, "cmdThrowAway");
    QCOMPARE(folder.JournalCount(), 0U);
    QVERIFY(desk.Dialog<dlgRecovery>() == nullptr);
}

void RecoveryTest::severalAreAList()
{
    const Folder folder;
    const QStringList names{"One", "Two", "Three"};
    for (int i = 0; i < 3; ++i) {
        const QByteArray file = (names[i] + ".ctl").toLatin1();
        folder.Write(kShow, file.constData());
        LeaveUnsaved(folder, folder.Path(file.constData()), i + 1);
    }
    Desk desk(folder);
    desk.Start(folder, {});
    OFFERED(desk, dialog);
    auto* list = dialog->findChild<QListWidget*>("lstShows");
    QCOMPARE(list->count(), 3);
    const auto select = [&](const QString& name) {
        list->setCurrentItem(list->findItems(name + ' ', Qt::MatchStartsWith).value(0));
    };
    select("Two");
    QVERIFY(LabelOf(dialog, "lblName").endsWith("Two.ctl"));
    Click(dialog, "cmdThrowAway");
    QCOMPARE(list->count(), 2);
    select("Three");
    Click(dialog, "cmdRecovered");
    QCOMPARE(desk.editor.Choreography().fileName, folder.Path("Three.ctl"));
    const auto left = document::LeftoverJournals(folder.Journals());
    QCOMPARE(left.size(), 1U);
    QCOMPARE(document::ReadJournal(left.front())->fileName, folder.Path("One.ctl"));
}

void RecoveryTest::showsWithoutAFile_data()
{
    QTest::addColumn<bool>("named");
    QTest::newRow("never saved") << false;
    QTest::newRow("its file is gone") << true;
}

void RecoveryTest::showsWithoutAFile()
{
    QFETCH(bool, named);
    const Folder folder;
    if (named)
        folder.Write(kShow);
    LeaveUnsaved(folder, named ? folder.Path() : fs::path(), 4);
    fs::remove(folder.Path());
    Desk desk(folder);
    desk.Start(folder, {});
    OFFERED(desk, dialog);
    QVERIFY(!dialog->findChild<QPushButton*>("cmdSaved")->isEnabled());
    QVERIFY(LabelOf(dialog, "lblRemark").contains("not there any more") == named);
    Click(dialog, "cmdRecovered");
    QCOMPARE(document::CommandTotal(desk.editor.Choreography()), named ? 18 : 1);
    QCOMPARE(desk.editor.Choreography().fileName, named ? folder.Path() : fs::path());
    QVERIFY(desk.editor.Choreography().blnChanged);
    QCOMPARE(folder.JournalCount(), 1U);
}

void RecoveryTest::whatIsSavedIsNotOffered()
{
    const Folder folder;
    folder.Write(kShow);
    LeaveUnsaved(folder, folder.Path(), 4);
    {
        // It was saved in another way before the next start.
        document::Choreography show =
            document::ReadJournal(document::LeftoverJournals(folder.Journals()).front())->show;
        QCOMPARE(WriteControlFile(show, folder.Path()).outcome, document::SaveOutcome::Saved);
    }
    std::ofstream(folder.Journals() / "Gala-1-1.journal") << "no journal";
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    NOTHING_OFFERED(desk);
    QCOMPARE(folder.JournalCount(), 1U);
}

void RecoveryTest::aCleanEndLeavesNothing()
{
    for (const bool saves : {false, true}) {
        const Folder folder;
        folder.Write(kShow);
        {
            Desk desk(folder);
            desk.Start(folder, folder.Path());
            desk.Edit(4);
            desk.journal.Flush();
            QCOMPARE(folder.JournalCount(), 1U);
            if (saves)
                desk.editor.Save();
            QVERIFY(desk.editor.Form_QueryUnload(editor::UnloadMode::ControlMenu));
            QCOMPARE(desk.answers.asked.isEmpty(), saves);
            desk.editor.Form_Unload();
        }
        QCOMPARE(folder.JournalCount(), 0U);
    }
}

void RecoveryTest::aFileThatWentOnIsRemarkedOn()
{
    const Folder folder;
    folder.Write(kShow);
    LeaveUnsaved(folder, folder.Path(), 4);
    folder.Write("ct0-381\r\n00:02.0001-018\r\n");
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    OFFERED(desk, dialog);
    QVERIFY(LabelOf(dialog, "lblRemark").contains("changed after it was opened"));
    QTRY_VERIFY(LinesOf(dialog).size() > 4);
}

void RecoveryTest::aFolderThatCannotBeWrittenIsToldOnce()
{
    const Folder folder;
    folder.Write(kShow);
    folder.Write("in the way", "recovery");
    Desk desk(folder);
    desk.Start(folder, folder.Path());
    desk.Edit(4);
    QTRY_VERIFY(desk.editor.FileNotice().starts_with("unsaved changes cannot be kept safe"));
    desk.editor.Tell("");
    desk.Edit(5);
    desk.journal.Flush();
    QVERIFY(!desk.journal.TakeProblem());
    auto* retry = desk.keeper.findChild<QTimer*>("tmrRetry");
    QVERIFY(retry->isActive());
    desk.editor.Tell("told");
    const auto retried = [&] {
        QMetaObject::invokeMethod(retry, "timeout");
        desk.journal.Flush();
        return !desk.journal.Broken();
    };
    QVERIFY(!retried());
    fs::remove(folder.Path("recovery"));
    QVERIFY(retried());
    QCOMPARE(folder.JournalCount(), 1U);
    QVERIFY(retried());
    QVERIFY(!retry->isActive());
    QCOMPARE(desk.editor.FileNotice(), "");
    QCOMPARE(document::CommandTotal(desk.editor.Choreography()), 18);
    desk.editor.Save();
    QVERIFY(!desk.editor.Choreography().blnChanged);
}

QTEST_MAIN(RecoveryTest)
#include "recovery_test.moc"
