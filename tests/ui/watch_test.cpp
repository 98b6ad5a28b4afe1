// What others do to the open file is told, and nobody's work is written over unasked.
#include "desk.h"
#include "ui/dlg_changed.h"

using namespace ui_test;
using ui::dlgChanged;

namespace {

constexpr const char* kTheirs = "ct0-381\r\n00:01.0001-018\r\n00:02.0001-020\r\n";

/// How another program writes a file.
enum class Writes { InPlace, Beside };

void WriteAs(Writes how, const Folder& folder, const std::string& text)
{
    if (how == Writes::InPlace)
        return folder.Write(text);
    folder.Write(text, "new");
    fs::rename(folder.Path("new"), folder.Path());
}

#define TOLD(desk, dialog)                               \
    QTRY_VERIFY((desk).Dialog<dlgChanged>() != nullptr); \
    dlgChanged* dialog = (desk).Dialog<dlgChanged>()

/// A desk whose show is open and known to the last byte.
struct Watching : Desk {
    explicit Watching(const Folder& folder) : Desk(folder)
    {
        folder.Write(kShow);
        Start(folder, folder.Path());
    }
};

/// Looks at the file at once, as when the user comes back to the window.
void ComeBack(Desk& desk)
{
    desk.keeper.LookNow();
    QTRY_VERIFY(!desk.keeper.Busy());
}

}  // namespace

class WatchTest : public QObject {
    Q_OBJECT

 private slots:
    void reloadingIsOneEdit_data();
    void reloadingIsOneEdit();
    void keepingMineIsUnsaved();
    void theDifferenceIsShown();
    void aFileThatIsGoneIsTold();
    void whatIsTheSameIsNotTold();
    void severalChangesAreTold();
    void aChangeWaitsForItsTime();
    void savingOverAChangeAsks();
};

void WatchTest::reloadingIsOneEdit_data()
{
    QTest::addColumn<int>("how");
    QTest::addColumn<bool>("savedBefore");
    for (const bool saved : {false, true}) {
        const char* when = saved ? " after a save" : "";
        QTest::addRow("written in place%s", when) << static_cast<int>(Writes::InPlace) << saved;
        QTest::addRow("replaced%s", when) << static_cast<int>(Writes::Beside) << saved;
    }
}

void WatchTest::reloadingIsOneEdit()
{
    QFETCH(int, how);
    QFETCH(bool, savedBefore);
    const Folder folder;
    Watching desk(folder);
    const int commands = savedBefore ? 19 : 18;
    if (savedBefore) {
        desk.Edit(2, 1);
        desk.editor.Save();
    }
    desk.editor.MoveTo(1000);
    QVERIFY(desk.editor.SetSpinner("updnRings", 3, 4));  // pending
    WriteAs(static_cast<Writes>(how), folder, kTheirs);
    TOLD(desk, dialog);
    QVERIFY(LabelOf(dialog, "lblText").contains("unsaved changes here, too"));
    Click(dialog, "cmdReload");
    QVERIFY(desk.Dialog<dlgChanged>() == nullptr);
    QCOMPARE(desk.editor.Choreography().lngLastSlot(), 2);
    QVERIFY(!desk.editor.Choreography().blnChanged);
    QCOMPARE(desk.editor.Timeline().CurrentTime(), 1000);
    QCOMPARE(desk.editor.UndoText(), "Undo Reload");
    QVERIFY(desk.editor.Undo());
    QCOMPARE(document::CommandTotal(desk.editor.Choreography()), commands);
    QVERIFY(desk.editor.Choreography().blnChanged);
    desk.journal.Flush();
    QCOMPARE(document::CommandTotal(document::ReadJournal(desk.journal.File())->show), commands);
}

void WatchTest::keepingMineIsUnsaved()
{
    const Folder folder;
    Watching desk(folder);
    const std::string before = desk.Text();
    folder.Write(kTheirs);
    TOLD(desk, dialog);
    QVERIFY(!LabelOf(dialog, "lblText").contains("unsaved changes"));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(desk.Dialog<dlgChanged>() == nullptr);
    QCOMPARE(desk.Text(), before);
    QVERIFY(desk.editor.Choreography().blnChanged);
    desk.journal.Flush();
    const auto kept = document::ReadJournal(desk.journal.File());
    QVERIFY2(kept && kept->show.lngLastSlot() == 5, "it is nowhere else now");
    desk.editor.Save();
    QVERIFY2(desk.answers.asked.isEmpty(), "that was decided already");
    QCOMPARE(folder.Bytes("Gala.001"), QByteArray(kTheirs));
}

void WatchTest::theDifferenceIsShown()
{
    const Folder folder;
    Watching desk(folder);
    folder.Write(std::string(kShow) + "00:20.0002-018\r\n");
    TOLD(desk, dialog);
    QVERIFY(!dialog->findChild<QListView*>("lstChanges")->isVisible());
    Click(dialog, "cmdDifference");
    QVERIFY(dialog->findChild<QListView*>("lstChanges")->isVisible());
    QTRY_COMPARE(LabelOf(dialog, "lblSummary"), "Loading it means: 1 time added.");
    QCOMPARE(LinesOf(dialog).size(), 1);
    QVERIFY(LinesOf(dialog).front().startsWith("00:20.0"));
    Click(dialog, "cmdDifference");
    QVERIFY(!dialog->findChild<QListView*>("lstChanges")->isVisible());
}

void WatchTest::aFileThatIsGoneIsTold()
{
    const Folder folder;
    Watching desk(folder);
    fs::remove(folder.Path());
    TOLD(desk, dialog);
    QVERIFY(LabelOf(dialog, "lblText").contains("not there any more"));
    QVERIFY(!dialog->findChild<QPushButton*>("cmdReload")->isVisible());
    Click(dialog, "cmdKeep");
    QVERIFY(desk.editor.Choreography().blnChanged);
    desk.editor.Save();
    QVERIFY(desk.answers.asked.isEmpty());
    QCOMPARE(folder.Bytes(), QByteArray::fromStdString(desk.Text()));
    ComeBack(desk);
    QVERIFY(desk.Dialog<dlgChanged>() == nullptr);
}

void WatchTest::whatIsTheSameIsNotTold()
{
    const Folder folder;
    Watching desk(folder);
    desk.Edit(4);
    desk.editor.Save();
    ComeBack(desk);
    QVERIFY2(desk.Dialog<dlgChanged>() == nullptr, "it was saved here");

    desk.keeper.LookNow();
    folder.Write(desk.Text());
    ComeBack(desk);
    QVERIFY2(desk.Dialog<dlgChanged>() == nullptr, "it holds the same");
    fs::last_write_time(folder.Path(), fs::file_time_type::clock::now());
    ComeBack(desk);
    QVERIFY2(desk.Dialog<dlgChanged>() == nullptr, "it was only touched");
    folder.Write("another file", "Other.ctl");
    ComeBack(desk);
    QVERIFY(desk.Dialog<dlgChanged>() == nullptr);
    QVERIFY(!desk.editor.Choreography().blnChanged);
}

void WatchTest::severalChangesAreTold()
{
    const Folder folder;
    Watching desk(folder);
    folder.Write("ct0-381\r\n");
    folder.Write(kTheirs);
    TOLD(desk, dialog);
    Click(dialog, "cmdReload");
    QCOMPARE(desk.editor.Choreography().lngLastSlot(), 2);
    QTRY_VERIFY(!desk.keeper.Busy());
    QVERIFY2(desk.Dialog<dlgChanged>() == nullptr, "they were one");

    folder.Write("ct0-381\r\n00:07.0001-018\r\n");
    TOLD(desk, again);
    folder.Write(kShow);  // while it is told
    Click(again, "cmdReload");
    QCOMPARE(desk.editor.Choreography().lngLastSlot(), 5);
}

void WatchTest::aChangeWaitsForItsTime()
{
    const Folder folder;
    std::ofstream(folder.Path("Gala.mp3")) << "music";
    Watching desk(folder);
    desk.editor.OpenMusicOf(folder.Path("Gala"));
    desk.editor.mmSong_PlayClick();
    desk.player.Poll();
    folder.Write(kTheirs);
    ComeBack(desk);
    QVERIFY2(desk.Dialog<dlgChanged>() == nullptr, "it plays");
    desk.editor.mmSong_StopClick();
    desk.player.Poll();
    QDialog other(&desk.window);
    other.setModal(true);
    other.show();
    desk.window.Refresh();
    ComeBack(desk);
    QVERIFY2(desk.Dialog<dlgChanged>() == nullptr, "something else is asked");
    other.close();
    desk.window.Refresh();
    QTRY_VERIFY(desk.Dialog<dlgChanged>() != nullptr);
}

void WatchTest::savingOverAChangeAsks()
{
    for (const bool yes : {false, true}) {
        const Folder folder;
        Watching desk(folder);
        desk.Edit(4);
        folder.Write(kTheirs);
        desk.answers.yes = yes;
        desk.editor.Save();
        QCOMPARE(desk.answers.asked.size(), 1);
        QVERIFY(desk.answers.asked.front().contains("replace that version"));
        QCOMPARE(folder.Bytes() == QByteArray(kTheirs), !yes);
        QCOMPARE(desk.editor.Choreography().blnChanged, !yes);
        if (yes)
            QCOMPARE(folder.Bytes("Gala.001"), QByteArray(kTheirs));
    }
}

QTEST_MAIN(WatchTest)
#include "watch_test.moc"
