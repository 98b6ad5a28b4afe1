// The File and Edit menus, the file selection panel and what is dropped on the window, with real
// message boxes.
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <optional>

#include "studio.h"
#include "ui/settings_store.h"
#include "ui/volumes.h"

namespace {

constexpr const char* kOther = "ct0-381\r\n00:02.0003-018\r\n";

/// Answers every message box that opens, and remembers what they said.
class Clerk final : public QObject {
 public:
    Clerk()
    {
        look_.setInterval(1);
        connect(&look_, &QTimer::timeout, this, [this] { Look(); });
        look_.start();
    }

    QMessageBox::StandardButton answer = QMessageBox::No;
    QStringList said;
    QList<QMessageBox::Icon> icons;

 private:
    void Look()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        said << box->text().replace(u'\n', u' ');
        icons << box->icon();
        if (box->standardButtons().testFlag(QMessageBox::Ok))
            box->button(QMessageBox::Ok)->click();
        else if (box->defaultButton() == box->button(QMessageBox::No))
            box->button(answer)->click();
    }

    QTimer look_;
};

/// A window on a folder of shows: Gala with music, Other without; Sub and Empty are folders.
class Office {
 public:
    Office()
    {
        folder.mkdir("Sub.d");
        folder.mkdir("Empty");
        Write("Gala.ctl", ui_test::kShow);
        Write("Gala.mp3", "music");
        Write("Other.ctl", kOther);
        Write("Sub.d/Inner.ctl", kOther);
        prompts.SetWindow(&window);
        window.UseSettings(store);
        editor.Form_Activate(Path("Gala").toStdString());
        editor.OpenStartMusic();
        editor.FinishStartUp();
        window.resize(1024, 768);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QString Path(const QString& name) const { return folder.filePath(name); }
    void Write(const QString& name, const QByteArray& text) const
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    [[nodiscard]] QByteArray Read(const QString& name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    template <typename T = QWidget>
    T* Find(const QString& name)
    {
        T* found = window.findChild<T*>(name);
        if (found == nullptr)
            qFatal("there is no control %s", qPrintable(name));
        return found;
    }
    QAction* Item(const char* name) { return Find<QAction>(QString::fromLatin1(name)); }
    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    /// The control that has the focus. Behind a message box the window comes back only if asked.
    QWidget* Focus()
    {
        if (QApplication::focusWidget() == nullptr) {
            window.activateWindow();
            QCoreApplication::processEvents();
        }
        QWidget* focus = QApplication::focusWidget();
        return focus != nullptr ? focus : &window;
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(Focus(), key, modifiers);
    }
    void Type(const QString& text) { QTest::keyClicks(Focus(), text); }

    QStringList Names(const char* list)
    {
        const QAbstractItemModel* model = Find<QListView>(list)->model();
        QStringList names;
        for (int row = 0; row < model->rowCount(); ++row)
            names << model->index(row, 0).data().toString();
        return names;
    }
    void ClickName(const char* list, const QString& name, bool twice = false)
    {
        auto* view = Find<QListView>(list);
        const auto row = static_cast<int>(Names(list).indexOf(name));
        QVERIFY2(row >= 0, qPrintable(name));
        const QModelIndex index = view->model()->index(row, 0);
        view->scrollTo(index);
        const QPoint at = view->visualRect(index).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        if (twice)
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
    }

    [[nodiscard]] bool PanelOpen()
    {
        const auto* panel = window.findChild<QWidget*>("fraFileSelect");
        return panel != nullptr && panel->isVisible();
    }
    [[nodiscard]] QString Name() { return Find<QLineEdit>("txtFileSelect")->text(); }
    [[nodiscard]] QString Shown() const
    {
        return QString::fromStdString(editor.Choreography().fileName.filename().string());
    }
    [[nodiscard]] QString Song() const
    {
        return QString::fromStdString(player.FileName().filename().string());
    }
    /// An edit that is not written yet, at the time where one is.
    void Edit() { QTest::keyClick(Find("updnRings_4"), Qt::Key_Up); }

    QTemporaryDir home;
    QDir folder{home.path()};
    support::HandPlayer player;
    Clerk clerk;
    ui::MessagePrompts prompts;
    ui::QtSettingsStore store{home.filePath("settings.conf")};
    editor::Editor editor{player, prompts, &store};
    ui::frmFountain window{editor};
};

using Act = std::function<void(Office&)>;

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

class FilesTest : public QObject {
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
    void questionsAreAnsweredBothWays_data();
    void questionsAreAnsweredBothWays();
    void savingAsAsksBeforeItReplaces();
    void droppedFilesOpen();
    void recentFilesOpen();
    void editsAreTakenBack();
    void textsKeepTheirOwnUndo();
    void theTitleTellsWhatIsOpen();
    void closingWhileItPlays();
    void theSessionEnds();
    void theLastShowOpensAgain();
};

void FilesTest::volumesAreRead()
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

void FilesTest::thePanelShowsWhatIsThere()
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

void FilesTest::thePanelFitsTheWindow_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(800, 600), QSize(1024, 768), QSize(1366, 768), QSize(1920, 1080),
                             QSize(2560, 1440)})
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

void FilesTest::thePanelFitsTheWindow()
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

void FilesTest::everyControlActs_data()
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

void FilesTest::everyControlActs()
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

void FilesTest::foldersThatCannotBeRead()
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

void FilesTest::manyLongAndOddNames()
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

void FilesTest::questionsAreAnsweredBothWays_data()
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

void FilesTest::questionsAreAnsweredBothWays()
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
        QCOMPARE(office.Shown(), yes ? show : "Gala.ctl");
        QCOMPARE(office.window.isWindowModified(), !yes);
        if (office.window.isVisible())
            QCOMPARE(office.editor.Panel().updnRings[4].Value, yes ? 0 : 1);
        QCOMPARE(office.Read("Gala.ctl"), ui_test::kShow);
    }
}

void FilesTest::savingAsAsksBeforeItReplaces()
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
    office.Key(Qt::Key_Escape);
    QVERIFY(office.window.isWindowModified());
    QVERIFY(office.Find<QLabel>("lblControlFile")->toolTip().contains("not saved"));
}

void FilesTest::droppedFilesOpen()
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

void FilesTest::recentFilesOpen()
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

void FilesTest::editsAreTakenBack()
{
    Office office;
    QAction* undo = office.Item("mnuUndo");
    QAction* redo = office.Item("mnuRedo");
    QCOMPARE(office.Find<QMenuBar>("mnuBar")->actions()[1]->text(), "&Edit");
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    QCOMPARE(undo->text(), "&Undo");
    office.editor.MoveTo(10'000);
    office.Edit();
    QVERIFY(undo->isEnabled());  // not written yet, but done
    QCOMPARE(undo->toolTip(), "Undo Ring 3 on Group A to level 1 at 00:10.0");
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
    office.Click("mmSong_play");
    QVERIFY(!undo->isEnabled());
}

void FilesTest::textsKeepTheirOwnUndo()
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

void FilesTest::theTitleTellsWhatIsOpen()
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

void FilesTest::closingWhileItPlays()
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

void FilesTest::theSessionEnds()
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

void FilesTest::theLastShowOpensAgain()
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
    QVERIFY2(status(*gone).contains("the last show, " + home.filePath("Gala.ctl") +
                                    ", is not there any more"),
             qPrintable(status(*gone)));
    QVERIFY(gone->Window().close());
}

QTEST_MAIN(FilesTest)
#include "files_test.moc"
