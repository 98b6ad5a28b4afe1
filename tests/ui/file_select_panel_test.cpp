// The file selection panel in the window, by mouse and keys, with real message boxes.
#include <QComboBox>
#include <QLineEdit>

#include "office.h"
#include "ui/volumes.h"

using ui_test::Act;
using ui_test::kOther;
using ui_test::Office;

class FilePanelTest : public QObject {
    Q_OBJECT

 private slots:
    void volumesAreRead();
    void thePanelShowsWhatIsThere();
    void thePanelFitsTheWindow_data();
    void thePanelFitsTheWindow();
    void everyControlActs_data();
    void everyControlActs();
    void foldersThatCannotBeRead();
    void manyLongAndOddNames();
    void savingAsAsksBeforeItReplaces();
};

void FilePanelTest::volumesAreRead()
{
    const QByteArray mounts =
        "proc /proc proc rw 0 0\n"
        "overlay / overlay rw 0 0\n"
        "/dev/sda2 /data ext4 rw 0 0\n"
        "/dev/sdb1 /media/anna/MY\\040STICK\\134 vfat rw 0 0\n"
        "/dev/sdb1 /media/anna/MY\\040STICK\\134 vfat rw 0 0\n"
        "/dev/sdc1 /run/media/anna/CARD exfat rw 0 0\n"
        "nas:/shows /mnt/nas nfs4 rw 0 0\n"
        "tank/home /home zfs rw 0 0\n"
        "/dev/sda1 /boot/efi vfat rw 0 0\n"
        "/dev/sda2 /etc/hosts ext4 rw 0 0\n"
        "/dev/loop3 /opt/snap squashfs ro 0 0\n"
        "tmpfs /run/user/1000 tmpfs rw 0 0\n"
        "gvfsd-fuse /run/user/1000/gvfs fuse.gvfsd-fuse rw 0 0\n"
        "garbage\n/dev/sdd none\n";
    const std::vector<std::filesystem::path> expected{
        "/home/anna",          "/", "/data", "/home", "/media/anna/MY STICK\\", "/mnt/nas",
        "/run/media/anna/CARD"};
    QCOMPARE(ui::VolumesOf(mounts, "/home/anna"), expected);
    QCOMPARE(ui::VolumesOf("", "/"), std::vector<std::filesystem::path>{"/"});
    QCOMPARE(ui::VolumesOf("", ""), std::vector<std::filesystem::path>{"/"});
}

void FilePanelTest::thePanelShowsWhatIsThere()
{
    Office office;
    for (const bool opens : {true, false}) {
        office.Key(opens ? Qt::Key_O : Qt::Key_S,
                   opens ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(office.PanelOpen());
        QCOMPARE(office.Find<QPushButton>("cmdFileSelect_0")->text(), opens ? "&Open" : "&Save");
        auto* filter = office.Find<QComboBox>("cboFileSelect");
        QCOMPARE(filter->isEnabled(), opens);
        QCOMPARE(filter->currentText(), opens ? "music (*.mp3)" : "control (*.ctl)");
        QCOMPARE(office.Names("filFileSelect"),
                 opens ? QStringList{"Gala.mp3"} : (QStringList{"Gala.ctl", "Other.ctl"}));
        QCOMPARE(office.Names("dirFileSelect"), (QStringList{"..", "Empty", "Sub.d"}));
        QCOMPARE(office.Find<QLabel>("lblFolder")->toolTip(), office.home.path());
        QVERIFY(office.Find<QComboBox>("drvFileSelect")->count() >= 2);
        const auto* summary = office.Find<QLabel>("lblFileSelect");
        QVERIFY(summary->toolTip().contains("gala.ctl\n"));
        QVERIFY(!summary->text().contains('\r'));
        QCOMPARE(summary->geometry().bottom(), office.Find("filFileSelect")->geometry().bottom());
        QCOMPARE(QApplication::focusWidget(), office.Find("txtFileSelect"));
        for (const char* name : {"mmSong_play", "mmEditing_play", "updnTime_1", "fraControls",
                                 "timeStrip", "lstMarks"})
            QVERIFY2(!office.Find(name)->isEnabled(), name);
        for (const char* item : {"mnuFileAction_0", "mnuFileAction_1", "mnuDisplayAction_0",
                                 "mnuDisplayAction_7", "mnuUndo", "mnuRedo", "mnuRecent_0"})
            QVERIFY2(!office.Item(item)->isEnabled(), item);
        QVERIFY(office.Item("mnuFileAction_9")->isEnabled());
        office.Key(Qt::Key_F9);
        QVERIFY(office.PanelOpen() && !office.editor.ShiftPanel().visible);
        office.Key(Qt::Key_Escape);
        QVERIFY(!office.PanelOpen());
        QVERIFY(office.Find("mmSong_play")->isEnabled());
        QCOMPARE(QApplication::focusWidget(), office.Find("cmdFocus"));
    }
}

void FilePanelTest::thePanelFitsTheWindow_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(800, 600), QSize(1024, 768), QSize(1366, 768), QSize(1920, 1080),
                             QSize(2560, 1440)})
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

void FilePanelTest::thePanelFitsTheWindow()
{
    QFETCH(QSize, size);
    Office office;
    office.Edit();
    office.Item("mnuFileAction_1")->trigger();
    office.window.resize(size);
    QCoreApplication::processEvents();
    const auto* panel = office.Find("fraFileSelect");
    QVERIFY(office.window.rect().contains(panel->geometry()));
    QList<QRect> places;
    for (const QWidget* control :
         panel->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const QString name = control->objectName();
        QVERIFY2(panel->rect().contains(control->geometry()), qPrintable(name));
        QVERIFY2(control->height() >= control->fontMetrics().height(), qPrintable(name));
        QVERIFY2(!control->accessibleName().isEmpty() || name == "lblFileNote", qPrintable(name));
        for (const QRect& place : places)
            QVERIFY2(!place.intersects(control->geometry()), qPrintable(name));
        places << control->geometry();
        if (const auto* label = qobject_cast<const QLabel*>(control))
            QVERIFY2(label->sizeHint().width() <= label->width() &&
                         label->sizeHint().height() <= label->height(),
                     qPrintable(name));
    }
    for (const char* name : {"cmdFileSelect_0", "cmdFileSelect_1"}) {
        const auto* button = office.Find<QPushButton>(name);
        QVERIFY(button->fontMetrics().horizontalAdvance(button->text()) < button->width() * 3 / 4);
    }
    QVERIFY(office.Find<QLabel>("lblFileSelect")->text().endsWith("has not been saved."));
}

void FilePanelTest::everyControlActs_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<bool>("open");     // the panel stays open
    QTest::addColumn<QString>("show");  // what is open then
    QTest::addColumn<QString>("song");
    const auto row = [](const char* name, Act act, bool open, const char* show, const char* song) {
        QTest::newRow(name) << act << open << show << song;
    };
    row(
        "a name typed, Enter",
        [](Office& o) {
            o.Type(" other.x ");
            o.Key(Qt::Key_Return);
        },
        false, "Other.ctl", "");
    row(
        "a name typed, the button",
        [](Office& o) {
            o.Type("Gala");
            o.Click("cmdFileSelect_0");
        },
        false, "Gala.ctl", "Gala.mp3");
    row(
        "a name with a folder",
        [](Office& o) {
            o.Type("Sub.d/Inner");
            o.Key(Qt::Key_Enter);
        },
        false, "Inner.ctl", "");
    row(
        "nothing typed",
        [](Office& o) {
            o.Type("  ");
            o.Click("cmdFileSelect_0");
        },
        true, "Gala.ctl", "Gala.mp3");
    row(
        "Cancel",
        [](Office& o) {
            o.Type("Other");
            o.Click("cmdFileSelect_1");
        },
        false, "Gala.ctl", "Gala.mp3");
    row(
        "Enter on Cancel",
        [](Office& o) {
            o.Type("Other");
            o.Find("cmdFileSelect_1")->setFocus();
            o.Key(Qt::Key_Return);
        },
        false, "Gala.ctl", "Gala.mp3");
    row(
        "Escape in a list",
        [](Office& o) {
            o.Find("dirFileSelect")->setFocus();
            o.Key(Qt::Key_Escape);
        },
        false, "Gala.ctl", "Gala.mp3");
    row(
        "a filter and a file, clicked once",
        [](Office& o) {
            o.Find("cboFileSelect")->setFocus();
            o.Key(Qt::Key_End);
            o.ClickName("filFileSelect", "Other.ctl");
            QCOMPARE(o.Name(), "Other.ctl");
        },
        true, "Gala.ctl", "Gala.mp3");
    row(
        "a filter and a file, clicked twice",
        [](Office& o) {
            o.Find("cboFileSelect")->setFocus();
            o.Key(Qt::Key_End);
            o.ClickName("filFileSelect", "Other.ctl", true);
        },
        false, "Other.ctl", "");
    row(
        "a file by keys",
        [](Office& o) {
            o.Find("filFileSelect")->setFocus();
            o.Key(Qt::Key_Down);
            QCOMPARE(o.Name(), "Gala.mp3");
            o.Key(Qt::Key_Return);
        },
        false, "Gala.ctl", "Gala.mp3");
    row(
        "into a folder and back by keys",
        [](Office& o) {
            o.Find("dirFileSelect")->setFocus();
            o.Key(Qt::Key_End);
            o.Key(Qt::Key_Return);
            QVERIFY(o.Find<QLabel>("lblFolder")->toolTip().endsWith("/Sub.d"));
            QCOMPARE(o.Names("dirFileSelect"), QStringList{".."});
            o.Find<QComboBox>("cboFileSelect")->setFocus();
            o.Key(Qt::Key_End);
            QCOMPARE(o.Names("filFileSelect"), QStringList{"Inner.ctl"});
            o.Find("filFileSelect")->setFocus();
            o.Key(Qt::Key_Backspace);
            QCOMPARE(o.Find<QLabel>("lblFolder")->toolTip(), o.home.path());
        },
        true, "Gala.ctl", "Gala.mp3");
    row(
        "into a folder by the mouse, a name there",
        [](Office& o) {
            o.ClickName("dirFileSelect", "Sub.d", true);
            o.Find("txtFileSelect")->setFocus();
            o.Type("Inner");
            o.Key(Qt::Key_Return);
        },
        false, "Inner.ctl", "");
    row(
        "another volume",
        [](Office& o) {
            auto* volumes = o.Find<QComboBox>("drvFileSelect");
            volumes->setFocus();
            o.Key(Qt::Key_Home);
            o.Key(Qt::Key_Down);
            QCOMPARE(o.Find<QLabel>("lblFolder")->toolTip(), volumes->currentText());
        },
        true, "Gala.ctl", "Gala.mp3");
}

void FilePanelTest::everyControlActs()
{
    QFETCH(Act, act);
    QFETCH(bool, open);
    QFETCH(QString, show);
    QFETCH(QString, song);
    Office office;
    office.Item("mnuFileAction_1")->trigger();
    act(office);
    QCOMPARE(office.PanelOpen(), open);
    QCOMPARE(office.Shown(), show);
    QCOMPARE(office.Song(), song);
    QVERIFY2(office.clerk.said.isEmpty(), qPrintable(office.clerk.said.join('\n')));
}

void FilePanelTest::foldersThatCannotBeRead()
{
    Office office;
    office.Item("mnuFileAction_1")->trigger();
    QVERIFY(office.folder.rmdir("Empty"));
    office.ClickName("dirFileSelect", "Empty", true);
    QCOMPARE(office.Find<QLabel>("lblFolder")->toolTip(), office.home.path());
    QCOMPARE(office.Find<QLabel>("lblFileNote")->toolTip(), "Empty cannot be read");
    office.ClickName("dirFileSelect", "Sub.d", true);
    QCOMPARE(office.Find<QLabel>("lblFileNote")->text(), "");
    QVERIFY(QDir(office.Path("Sub.d")).removeRecursively());
    office.Find<QComboBox>("cboFileSelect")->setFocus();
    office.Key(Qt::Key_End);  // lists again, where it still can
    QCOMPARE(office.Find<QLabel>("lblFolder")->toolTip(), office.home.path());

    office.editor.SetVolumes({"/", "/no/such/volume"});
    office.window.Refresh();
    auto* volumes = office.Find<QComboBox>("drvFileSelect");
    const int before = volumes->currentIndex();
    volumes->setFocus();
    office.Key(Qt::Key_End);
    QCOMPARE(volumes->currentIndex(), before);
    QCOMPARE(office.Find<QLabel>("lblFileNote")->toolTip(), "/no/such/volume cannot be read");
    QVERIFY(office.clerk.said.isEmpty());
}

void FilePanelTest::manyLongAndOddNames()
{
    Office office;
    const QString longName = QString(200, 'x') + ".ctl";
    for (int i = 0; i < 2'000; ++i)
        office.Write(QStringLiteral("Show %1.ctl").arg(i), "");
    office.Write(longName, kOther);
    office.Write("a & b.ctl", kOther);
    const std::string odd = office.home.path().toStdString() + "/\xff\xfe.ctl";
    std::ofstream(odd) << kOther;
    office.Item("mnuFileAction_4")->trigger();
    const QStringList names = office.Names("filFileSelect");
    QCOMPARE(names.size(), 2'005);
    office.ClickName("filFileSelect", longName);
    QCOMPARE(office.Name(), longName);
    office.Key(Qt::Key_Escape);
    office.Item("mnuFileAction_1")->trigger();
    office.Find("cboFileSelect")->setFocus();
    office.Key(Qt::Key_End);
    office.Find("filFileSelect")->setFocus();
    office.Key(Qt::Key_End);  // the odd one
    office.Key(Qt::Key_Return);
    QCOMPARE(office.editor.Choreography().fileName, std::filesystem::path(odd));
    QVERIFY(office.editor.Choreography().fileExists);
    std::filesystem::remove(odd);  // the folder cannot remove it by such a name
}

void FilePanelTest::savingAsAsksBeforeItReplaces()
{
    Office office;
    office.clerk.answer = QMessageBox::No;
    office.Edit();
    office.Item("mnuFileAction_4")->trigger();
    office.Type("Other");
    office.Key(Qt::Key_Return);
    QCOMPARE(office.clerk.said, QStringList{"Do you want to replace the existing file named " +
                                            office.Path("Other.ctl") + "?"});
    QVERIFY(office.PanelOpen());
    QCOMPARE(office.Read("Other.ctl"), kOther);
    QCOMPARE(office.Focus(), office.Find("txtFileSelect"));

    office.clerk.answer = QMessageBox::Yes;
    office.Click("cmdFileSelect_0");
    QVERIFY(!office.PanelOpen());
    QCOMPARE(office.Shown(), "Other.ctl");
    QVERIFY(office.Read("Other.ctl").contains("003-017"));
    QCOMPARE(office.Read("Gala.ctl"), ui_test::kShow);

    office.Edit();
    office.Item("mnuFileAction_4")->trigger();
    office.Type("New.one");
    office.Key(Qt::Key_Return);
    QCOMPARE(office.clerk.said.size(), 2);  // no question for a name that is free
    QVERIFY(office.Read("New.ctl").contains("003-018"));

    office.Edit();
    office.Item("mnuFileAction_4")->trigger();
    office.Type("no folder/New");
    office.Key(Qt::Key_Return);
    QVERIFY(office.PanelOpen());  // nothing was written
    QCOMPARE(office.Find<QLabel>("lblFileNote")->toolTip(), "Not saved: No such file or directory");
    office.Key(Qt::Key_Escape);
    QVERIFY(office.window.isWindowModified());
    QVERIFY(office.Find<QLabel>("lblControlFile")->toolTip().contains("not saved"));
}

QTEST_MAIN(FilePanelTest)
#include "file_select_panel_test.moc"
