// Where the window and its parts stand, and that this is remembered.
#include <QDockWidget>
#include <QLineEdit>
#include <QMainWindow>
#include <QToolTip>

#include "studio.h"
#include "ui/settings_store.h"
#include "ui/window_place.h"

using ui::DockPlace;
using ui::WindowPlace;
using ui_test::Music;
using ui_test::Studio;

namespace {

/// What is remembered between two windows.
class Memory {
 public:
    [[nodiscard]] QString File() const { return folder_.filePath(QStringLiteral("settings.conf")); }
    void Put(const char* key, const char* value) const
    {
        ui::QtSettingsStore(File()).SaveSettingValue(key, value);
    }
    [[nodiscard]] QString Get(const char* key) const
    {
        return QString::fromStdString(ui::QtSettingsStore(File()).GetSettingValue(key, "missing"));
    }

 private:
    QTemporaryDir folder_;
};

/// A window that remembers.
struct Remembering : Studio {
    explicit Remembering(const Memory& memory) : store(memory.File())
    {
        window.UseSettings(store);
        Open(ui_test::kShow, Music::None);
        window.ShowOnScreen();
        QCoreApplication::processEvents();
    }
    ui::QtSettingsStore store;
};

QRect Screen()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

}  // namespace

class WindowTest : public QObject {
    Q_OBJECT

 private slots:
    void placesAreTexts();
    void windowsComeOntoTheScreens();
    void theFirstStartFillsTheScreen();
    void theFrameComesOntoTheScreenToo();
    void placesAreRemembered();
    void garbageIsIgnored();
    void partsAreShownAsTheyWere();
    void theDockGoesToEverySide();
    void toolTipsGrowWithTheWindow();
    void theViewTakesTheRoomOfTheStrip();
    void findGoesToTheFilter();
    void truthValuesAreTexts();
    void aDeadLockHoldsNobodyUp();
};

void WindowTest::placesAreTexts()
{
    const WindowPlace normal{{100, -50, 1024, 768}, false};
    const WindowPlace maximised{{0, 0, 900, 700}, true};
    for (const WindowPlace& place : {normal, maximised})
        QCOMPARE(ui::WindowPlaceOf(ui::TextOf(place)), std::optional(place));
    const DockPlace docked{Qt::BottomDockWidgetArea, 120, {}};
    const DockPlace floating{Qt::LeftDockWidgetArea, 0, QRect(-5, 6, 300, 400)};
    for (const DockPlace& place : {docked, floating})
        QCOMPARE(ui::DockPlaceOf(ui::TextOf(place)), place);
    for (const char* text :
         {"", "garbage", "1 2 3", "1 2 3 4 5", "1 2 0 4", "1 2 3 -4", "1 2 3 4 maximized",
          "1 2 3 999999", "9999999999999999999 1 5 5", "1.5 2 3 4", "1 2 3 4 maximised x"})
        QVERIFY2(!ui::WindowPlaceOf(QString::fromLatin1(text)), text);
    for (const char* text : {"", "garbage", "right", "middle 300", "right -1", "right 300 1 2 3",
                             "right 300 1 2 0 4", "right x", "right 300 1 2 3 4 5"})
        QVERIFY2(ui::DockPlaceOf(QString::fromLatin1(text)) == DockPlace{}, text);
}

void WindowTest::windowsComeOntoTheScreens()
{
    const std::vector<QRect> two{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
    const struct {
        const char* name;
        QRect wanted;
        QRect given;
    } rows[] = {
        {"as it was", {100, 100, 1024, 768}, {100, 100, 1024, 768}},
        {"across both screens", {1500, 50, 1024, 768}, {1500, 50, 1024, 768}},
        {"across both, below the lower one", {1500, 300, 1024, 768}, {1920, 256, 1024, 768}},
        {"partly below", {300, 1000, 1024, 768}, {300, 312, 1024, 768}},
        {"partly beside them", {-800, 20, 1024, 768}, {0, 20, 1024, 768}},
        {"beside them", {-1000, 20, 1024, 768}, {0, 20, 1024, 768}},
        {"its upper edge above them", {300, -30, 1024, 768}, {300, 0, 1024, 768}},
        {"far away", {9000, 9000, 1024, 768}, {896, 312, 1024, 768}},
        {"below them", {300, 1070, 1024, 768}, {300, 312, 1024, 768}},
        {"larger than its screen", {0, 0, 5000, 4000}, {0, 0, 1920, 1080}},
        {"larger than the second screen", {1920, 0, 1300, 1030}, {1920, 0, 1280, 1024}},
    };
    for (const auto& row : rows) {
        const QRect given = ui::OnScreens(row.wanted, two);
        QVERIFY2(given == row.given, qPrintable(QString("%1: %2 %3 %4 x %5")
                                                    .arg(row.name)
                                                    .arg(given.x())
                                                    .arg(given.y())
                                                    .arg(given.width())
                                                    .arg(given.height())));
    }
    QCOMPARE(ui::OnScreens({1, 2, 3, 4}, {}), QRect(1, 2, 3, 4));
}

void WindowTest::theFirstStartFillsTheScreen()
{
    const Memory memory;
    Remembering first(memory);
    QVERIFY(first.window.isMaximized());
    QVERIFY(first.window.close());
    QVERIFY(memory.Get("Window").endsWith(" maximised"));
    Remembering second(memory);
    QVERIFY(second.window.isMaximized());
}

void WindowTest::theFrameComesOntoTheScreenToo()
{
    const Memory memory;
    Remembering first(memory);  // over the whole screen, and so is the place to return to
    first.window.setMinimumSize(1, 1);
    first.window.showNormal();
    QVERIFY(first.window.frameGeometry() != first.window.geometry());
    QTRY_VERIFY(Screen().contains(first.window.frameGeometry()));
}

void WindowTest::placesAreRemembered()
{
    const Memory memory;
    constexpr int kFrame = 2;  // of this platform, whose screen is as wide as the smallest window
    const QRect place(Screen().left() + kFrame, Screen().top() + 30, 800, 600);
    {
        Remembering first(memory);
        first.window.showNormal();
        first.window.setGeometry(place);
        QVERIFY(first.window.close());
    }
    Remembering second(memory);
    QVERIFY(!second.window.isMaximized());
    QCOMPARE(second.window.geometry(), place);
    second.window.showMaximized();
    QVERIFY(second.window.close());
    QCOMPARE(memory.Get("Window"), ui::TextOf(WindowPlace{place, true}));
}

void WindowTest::garbageIsIgnored()
{
    const Memory memory;
    memory.Put("Window", "\x01\xff 5 % maximised");
    memory.Put("TimeStrip", "perhaps");
    memory.Put("ScriptView", "True");
    memory.Put("Docks", "top top top");
    Remembering studio(memory);
    QVERIFY(studio.window.isMaximized());
    QVERIFY(studio.Find("timeStrip")->isVisible());
    QVERIFY(studio.Find("scriptView")->isVisible());

    const Memory away;
    away.Put("Window", "-30000 -30000 60000 60000");
    Remembering lost(away);
    QVERIFY(Screen().intersects(lost.window.geometry()));
}

void WindowTest::partsAreShownAsTheyWere()
{
    const Memory memory;
    for (const bool strip : {true, false})
        for (const bool script : {false, true}) {
            {
                Remembering studio(memory);
                if (studio.Find("timeStrip")->isVisible() != strip)
                    studio.Choose("mnuDisplayAction_7");
                const auto* view = studio.window.findChild<QWidget*>("scriptView");
                if ((view != nullptr && view->isVisible()) != script)
                    studio.Choose("mnuDisplayAction_8");
                QCOMPARE(studio.Find<QAction>("mnuDisplayAction_7")->isChecked(), strip);
                QCOMPARE(studio.Find<QAction>("mnuDisplayAction_8")->isChecked(), script);
                QVERIFY(studio.window.close());
            }
            QCOMPARE(memory.Get("TimeStrip"), strip ? "True" : "False");
            QCOMPARE(memory.Get("ScriptView"), script ? "True" : "False");
            Remembering again(memory);
            QCOMPARE(again.Find("timeStrip")->isVisible(), strip);
            const auto* view = again.window.findChild<QWidget*>("scriptView");
            QCOMPARE(view != nullptr && view->isVisible(), script);
        }
}

void WindowTest::theDockGoesToEverySide()
{
    for (const auto side : {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea, Qt::TopDockWidgetArea,
                            Qt::BottomDockWidgetArea}) {
        const Memory memory;
        const bool upright = side == Qt::LeftDockWidgetArea || side == Qt::RightDockWidgetArea;
        const DockPlace place{side, upright ? 250 : 110, {}};
        memory.Put("ScriptView", "True");
        memory.Put("Docks", ui::TextOf(place).toUtf8().constData());
        Remembering studio(memory);
        const auto* dock = studio.Find<QDockWidget>("dockScript");
        QCOMPARE(upright ? dock->width() : dock->height(), place.extent);
        QVERIFY(!dock->geometry().intersects(
            QRect(studio.Find("fraView")->mapTo(dock->parentWidget(), QPoint()),
                  studio.Find("fraView")->size())));
        QVERIFY(studio.window.close());
        QCOMPARE(memory.Get("Docks"), ui::TextOf(place));
    }
    for (const char* leave : {"cmdFloatScript", "cmdCloseScript"}) {
        const Memory memory;
        memory.Put("ScriptView", "True");
        Remembering studio(memory);
        studio.Find<QMainWindow>("viewArea")
            ->resizeDocks({studio.Find<QDockWidget>("dockScript")}, {280}, Qt::Horizontal);
        QTRY_COMPARE(studio.Find("dockScript")->width(), 280);
        studio.Click(leave);
        QVERIFY(studio.window.close());
        QVERIFY2(memory.Get("Docks").startsWith("right 280"), qPrintable(memory.Get("Docks")));
    }
    const Memory memory;
    memory.Put("ScriptView", "True");
    memory.Put("Docks", "left 200 -5000 -5000 300 300");
    Remembering studio(memory);
    const auto* dock = studio.Find<QDockWidget>("dockScript");
    QVERIFY(dock->isFloating());
    QVERIFY(Screen().contains(dock->geometry()));
    studio.Click("cmdFloatScript");
    QVERIFY(!dock->isFloating());
    studio.Click("cmdCloseScript");
    QTRY_VERIFY(!studio.Find<QAction>("mnuDisplayAction_8")->isChecked());
    QVERIFY(studio.window.close());
    QCOMPARE(memory.Get("ScriptView"), "False");
}

void WindowTest::toolTipsGrowWithTheWindow()
{
    Studio studio;
    for (const auto& [size, letters] :
         {std::pair{QSize(800, 600), 12}, {QSize(1024, 768), 12}, {QSize(2560, 1440), 22}}) {
        studio.window.resize(size);
        studio.Show();
        QCOMPARE(QToolTip::font().pixelSize(), letters);
    }
}

void WindowTest::theViewTakesTheRoomOfTheStrip()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    const int shared = studio.Find("fraView")->height();
    const int strip = studio.Find("timeStrip")->height();
    studio.Find("timeStrip")->setFocus();
    studio.Choose("mnuDisplayAction_7");
    QCOMPARE(studio.Find("fraView")->height(), shared + strip);
    QCOMPARE(QApplication::focusWidget(), studio.Find("cmdFocus"));
    studio.Choose("mnuDisplayAction_7");
    QCOMPARE(studio.Find("fraView")->height(), shared);
}

void WindowTest::findGoesToTheFilter()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    QTest::keyClick(&studio.window, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(studio.Find("scriptView")->isVisible());
    auto* filter = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(filter != nullptr && studio.Find("scriptView")->isAncestorOf(filter));
    QTest::keyClicks(filter, "ring m");
    QCOMPARE(filter->text(), "ring m");
    QTest::keyClick(filter, Qt::Key_Home);
    QCOMPARE(filter->cursorPosition(), 0);
    QCOMPARE(studio.Text("lblTime"), "00:00.0");
    QTest::keyClick(filter, Qt::Key_PageUp);
    QCOMPARE(studio.Text("lblTime"), "00:01.0");
    studio.Click("cmdFloatScript");
    QCOMPARE(studio.window.focusWidget(), studio.Find("cmdFocus"));
}

void WindowTest::truthValuesAreTexts()
{
    const Memory memory;
    const struct {
        const char* text;
        bool fallback;
        bool value;
    } rows[] = {{"True", false, true},   {"FALSE", true, false},    {"true", false, true},
                {"garbage", true, true}, {"garbage", false, false}, {"1", false, false},
                {"", true, true}};
    for (const auto& row : rows) {
        memory.Put("Legends", row.text);
        const ui::QtSettingsStore store(memory.File());
        QVERIFY2(editor::GetSettingValue(store, "Legends", row.fallback) == row.value, row.text);
        QCOMPARE(editor::GetSettingValue(store, "Missing", row.fallback), row.fallback);
    }
    ui::QtSettingsStore store(memory.File());
    editor::SaveSettingValue(store, "Legends", true);
    store.Sync();
    QCOMPARE(memory.Get("Legends"), "True");
    memory.Put("LastFile", "/shows/Gäste, 50 % = \"a;b\"\\n");
    QCOMPARE(memory.Get("LastFile"), "/shows/Gäste, 50 % = \"a;b\"\\n");
}

void WindowTest::aDeadLockHoldsNobodyUp()
{
    const Memory memory;
    const QString lock = memory.File() + QStringLiteral(".lock");
    QFile file(lock);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                             QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    std::filesystem::last_write_time(
        lock.toStdString(),
        std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1));
    memory.Put("LastFile", "gala");
    QCOMPARE(memory.Get("LastFile"), "gala");
    QVERIFY(!QFile::exists(lock));
}

QTEST_MAIN(WindowTest)
#include "window_test.moc"
