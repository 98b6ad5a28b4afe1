// What stands on the window's form, and that all of it can be read at every size.
#include <QAccessible>
#include <QMenu>
#include <QSignalSpy>

#include "studio.h"
#include "ui/design_form.h"

using ui_test::Music;
using ui_test::Studio;

namespace {

const QStringList kTabOrder{"timeStrip",      "mmSong_prev",     "mmSong_play",   "mmSong_pause",
                            "mmSong_stop",    "mmEditing_play",  "mmEditing_add", "mmEditing_prev",
                            "mmEditing_next", "mmEditing_clear", "updnTime_0",    "updnTime_1",
                            "updnTime_2",     "lstMarks"};

QStringList NamesOfForm()
{
    QStringList names = kTabOrder;
    names << "fraView"
          << "fraLegends"
          << "fraControls"
          << "lblTime"
          << "lblMarks"
          << "lblABCodes"
          << "lblControlFile"
          << "lblStored"
          << "lblPending";
    for (int i = 0; i <= 16; ++i)
        names << QStringLiteral("lblLegend_%1").arg(i) << QStringLiteral("lblLegendKey_%1").arg(i);
    for (int i = 0; i <= 2; ++i)
        names << QStringLiteral("lblNotes_%1").arg(i);
    return names;
}

QString AccessibleName(QWidget* widget)
{
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
    return face == nullptr ? QString() : face->text(QAccessible::Name);
}

/// Controls that lie side by side: those on a frame lie on their frame instead.
bool HoldsOthers(const QWidget* widget)
{
    static const QStringList kFrames{"fraSong", "fraEditing", "fraTime", "viewArea"};
    return kFrames.contains(widget->objectName());
}

QString Fault(const QLabel& label)
{
    const QFontMetrics metrics(label.font());
    const QRect room = label.contentsRect();
    const QSize needed = label.wordWrap()
                             ? metrics.boundingRect(room, Qt::TextWordWrap, label.text()).size()
                             : QSize(metrics.horizontalAdvance(label.text()), metrics.height());
    if (label.text().isEmpty() ||
        (needed.width() <= room.width() && needed.height() <= room.height()))
        return {};
    return QStringLiteral("%1 has %2 x %3 for %4 x %5")
        .arg(label.objectName())
        .arg(room.width())
        .arg(room.height())
        .arg(needed.width())
        .arg(needed.height());
}

}  // namespace

class FormTest : public QObject {
    Q_OBJECT

 private slots:
    void everyControlHasItsNameAndSaysWhatItIs();
    void tabGoesThroughTheControlsInOrder();
    void menusHaveTheirCaptions_data();
    void menusHaveTheirCaptions();
    void legendsShowEveryColorAndNote();
    void everythingFits_data();
    void everythingFits();
    void fontsFollowTheLargerScaleUnlessItClips();
    void displayMenuSwitches();
    void titleAndStatusSayWhatIsOpen();
    void nothingIsRepaintedWithoutNeed();
};

void FormTest::everyControlHasItsNameAndSaysWhatItIs()
{
    Studio studio;
    for (const QString& name : NamesOfForm()) {
        auto* widget = studio.window.findChild<QWidget*>(name);
        QVERIFY2(widget != nullptr, qPrintable(name));
        QVERIFY2(!AccessibleName(widget).isEmpty(), qPrintable(name));
        const bool frame = name.startsWith("fra");
        QVERIFY2(frame || !widget->toolTip().isEmpty(), qPrintable(name));
    }
    QVERIFY(studio.Find("cmdFocus")->focusPolicy() != Qt::NoFocus);
}

void FormTest::tabGoesThroughTheControlsInOrder()
{
    Studio studio;
    QStringList order;
    const QWidget* first = studio.Find("cmdFocus");
    for (const QWidget* widget = first->nextInFocusChain(); widget != first;
         widget = widget->nextInFocusChain())
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr &&
            widget->parentWidget()->objectName() != "fraControls")
            order << widget->objectName();
    QCOMPARE(order, kTabOrder);
}

void FormTest::menusHaveTheirCaptions_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("file") << "mnuFile"
                          << "&File"
                          << QStringList{"&New",      "&Open...", "-",      "&Save", "Save &As...",
                                         "&Undo All", "-",        "&Print", "-",     "E&xit"};
    QTest::newRow("display") << "mnuDisplay"
                             << "&Display"
                             << QStringList{"&Legends",  "-", "&Candelabras", "&Back curtain", "-",
                                            "&AB Codes", "-", "Time &Strip",  "Sc&ript"};
    QTest::newRow("help") << "mnuHelp"
                          << "&Help"
                          << QStringList{"&Contents", "&Search for...", "-", "&About..."};
}

void FormTest::menusHaveTheirCaptions()
{
    QFETCH(QString, menu);
    QFETCH(QString, caption);
    QFETCH(QStringList, items);
    Studio studio;
    auto* shown = studio.Find<QMenu>(qPrintable(menu));
    QCOMPARE(shown->title(), caption);
    QStringList captions;
    for (int i = 0; i < shown->actions().size(); ++i) {
        const QAction* action = shown->actions()[i];
        if (!action->isVisible())
            continue;  // no show was opened yet
        QCOMPARE(action->objectName(), QStringLiteral("%1Action_%2").arg(menu).arg(i));
        captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    QCOMPARE(captions, items);
}

void FormTest::legendsShowEveryColorAndNote()
{
    Studio studio;
    const struct {
        int index;
        QColor color;
        const char* caption;
    } rows[] = {{0, {64, 64, 64}, " no lights"},
                {7, {64, 0, 0}, " red, blue, and amber"},
                {16, {192, 224, 48}, " green and amber (curtain)"}};
    for (const auto& row : rows) {
        const QString index = QString::number(row.index);
        const auto* swatch = studio.Find(qPrintable("lblLegend_" + index));
        QCOMPARE(swatch->palette().color(QPalette::Window), row.color);
        QCOMPARE(studio.Text(qPrintable("lblLegendKey_" + index)), row.caption);
    }
    QCOMPARE(studio.Text("lblNotes_1"),
             "Due to screen-resolution contraints and limitations of the graphical elements used, "
             "the animations provide only an  approximation of the actual capabilities of the "
             "Musical Fountain.");
}

void FormTest::everythingFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("legends");
    for (const QSize size : {QSize(800, 600), QSize(1024, 768), QSize(1366, 768), QSize(1280, 1024),
                             QSize(1920, 1080), QSize(2560, 1440)})
        for (const bool legends : {false, true})
            QTest::addRow("%d x %d%s", size.width(), size.height(), legends ? " legends" : "")
                << size << legends;
}

void FormTest::everythingFits()
{
    QFETCH(QSize, size);
    QFETCH(bool, legends);
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.Choose("mnuDisplayAction_5");
    if (legends)
        studio.Choose("mnuDisplayAction_0");
    studio.editor.MoveTo(12'000);
    // What fitted a slightly higher window, with the same fonts, must not stay behind.
    studio.window.resize(size + QSize(0, 24));
    studio.window.resize(size);
    studio.window.Refresh();
    QCOMPARE(studio.window.size(), size);
    QCOMPARE(studio.Text("lblABCodes").size(), ui::kLongestCodesLine);

    QList<QWidget*> shown;
    for (const ui::FormControl& control : ui::Form()) {
        QWidget* widget = studio.Find(control.name);
        if (widget->isVisible() && !HoldsOthers(widget))
            shown << widget;
    }
    const auto place = [&studio](const QWidget* widget) {
        return QRect(widget->mapTo(&studio.window, QPoint()), widget->size());
    };
    for (const QWidget* one : shown) {
        QVERIFY2(studio.window.rect().contains(place(one)), qPrintable(one->objectName()));
        QVERIFY2(!one->size().isEmpty(), qPrintable(one->objectName()));
        for (const QWidget* other : shown)
            QVERIFY2(one == other || !place(one).intersects(place(other)),
                     qPrintable(one->objectName() + " lies on " + other->objectName()));
    }
    for (const QLabel* label : studio.window.findChildren<QLabel*>())
        if (label->isVisible())
            QVERIFY2(Fault(*label).isEmpty(), qPrintable(Fault(*label)));
    for (const QWidget* label : studio.Find("fraLegends")->findChildren<QLabel*>())
        QVERIFY2(!legends || label->parentWidget()->rect().contains(label->geometry()),
                 qPrintable(label->objectName()));
    const auto* bar = studio.Find<QMenuBar>("mnuBar");
    const auto* more = bar->findChild<QWidget*>("qt_menubar_ext_button");
    QVERIFY(more == nullptr || !more->isVisible());
    for (QAction* menu : bar->actions()) {
        QVERIFY(bar->rect().contains(bar->actionGeometry(menu)));
        QVERIFY(bar->actionGeometry(menu).height() >= QFontMetrics(bar->font()).height());
    }
}

void FormTest::fontsFollowTheLargerScaleUnlessItClips()
{
    Studio studio;
    studio.Show();
    studio.Choose("mnuDisplayAction_0");
    const struct {
        QSize size;
        const char* control;
        int pixels;
    } rows[] = {{{1024, 768}, "lblControlFile", 13}, {{1366, 768}, "lblControlFile", 17},
                {{1024, 768}, "lblTime", 38},        {{1366, 768}, "lblTime", 38},
                {{2048, 1536}, "lblTime", 76},       {{1024, 768}, "lblNotes_0", 10}};
    for (const auto& row : rows) {
        studio.window.resize(row.size);
        QVERIFY2(studio.Find(row.control)->font().pixelSize() == row.pixels,
                 qPrintable(QStringLiteral("%1 at %2: %3")
                                .arg(row.control)
                                .arg(row.size.width())
                                .arg(studio.Find(row.control)->font().pixelSize())));
    }
}

void FormTest::displayMenuSwitches()
{
    Studio studio;
    studio.Show();
    const int wide = studio.Find("fraView")->width();
    for (const bool on : {true, false}) {
        for (const char* item : {"mnuDisplayAction_0", "mnuDisplayAction_2", "mnuDisplayAction_3",
                                 "mnuDisplayAction_5"}) {
            studio.Choose(item);
            QCOMPARE(studio.Find<QAction>(item)->isChecked(), on);
        }
        const fountain::DisplayOptions& options = studio.editor.DisplayOptions();
        QCOMPARE(options.Legends, on);
        QCOMPARE(options.Candelabras, on);
        QCOMPARE(options.BackCurtain, on);
        QCOMPARE(options.ABCodes, on);
        QCOMPARE(studio.Find("fraLegends")->isVisible(), on);
        QCOMPARE(studio.Find("lblABCodes")->isVisible(), on);
        QCOMPARE(studio.Find("fraView")->width() < wide, on);
    }
}

void FormTest::titleAndStatusSayWhatIsOpen()
{
    const QString caption = "Velmora Musical Fountain Animated Choreographer";
    Studio studio;
    studio.Show();
    QCOMPARE(studio.window.windowTitle(), caption + "[*]");
    QCOMPARE(studio.Text("lblControlFile"), "unsaved choreography");
    QCOMPARE(studio.Text("lblMusic"), "No music file");
    QCOMPARE(studio.Text("lblCounts"), "0 times, 0 commands");

    studio.player.openFailure = "Gala.mp3: no sound in it";
    studio.Open("ct0-381\r\n00:01.0001-018\r\n", Music::Open);
    QVERIFY(studio.window.windowTitle().startsWith("Gala[*] "));
    QVERIFY(studio.window.windowTitle().endsWith(caption));
    QVERIFY(studio.Find("lblControlFile")->toolTip().endsWith("/gala.ctl"));
    QCOMPARE(studio.Text("lblMusic"), "Gala.mp3: no sound in it");
    QCOMPARE(studio.Text("lblCounts"), "1 time, 1 command");

    // A folder in the backup's place: the file cannot be rolled there, so it is not overwritten.
    const std::filesystem::path& file = studio.editor.Choreography().fileName;
    QVERIFY(std::filesystem::create_directory(document::BackupName(file, 1)));
    QVERIFY(studio.editor.SetSpinner("updnSpout", 0, 3));
    studio.editor.Save();
    studio.window.Refresh();
    QVERIFY(studio.Find("lblControlFile")->toolTip().contains("/gala.ctl (not saved: "));
    QVERIFY(studio.window.isWindowModified());

    studio.player.openFailure.clear();
    studio.Open(ui_test::kShow, Music::Open);
    QCOMPARE(studio.Text("lblMusic"), "Gala.mp3");
    studio.player.silent = true;
    studio.window.Refresh();
    QCOMPARE(studio.Text("lblMusic"), "Gala.mp3 (without sound)");
    studio.window.SetMusicPending(true);
    QCOMPARE(studio.Text("lblMusic"), "Opening the music ...");
}

void FormTest::nothingIsRepaintedWithoutNeed()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    QCoreApplication::processEvents();
    const QSignalSpy painted(studio.Find<ui::ViewWidget>("fraView"), &ui::ViewWidget::Painted);
    const struct {
        const char* what;
        std::int32_t time;
        int paintings;
    } rows[] = {{"nothing happened", 0, 0},
                {"a time with the same picture", 500, 0},
                {"a time with another picture", 1'000, 1}};
    for (const auto& row : rows) {
        const auto before = painted.count();
        studio.editor.MoveTo(row.time);
        studio.window.Refresh();
        studio.window.Refresh();
        QCoreApplication::processEvents();
        QVERIFY2(painted.count() - before == row.paintings, row.what);
    }
}

QTEST_MAIN(FormTest)
#include "form_test.moc"
