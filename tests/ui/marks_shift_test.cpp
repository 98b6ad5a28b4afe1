// Working against the music in the window: the marks, and the panel that shifts commands.
#include <QLineEdit>
#include <QStyleOptionSpinBox>

#include "studio.h"

using ui_test::Music;
using ui_test::Studio;

namespace {

/// The marks as they stand in the list, the selected one in brackets.
QString Marks(Studio& studio)
{
    const auto* list = studio.Find<QListWidget>("lstMarks");
    QStringList texts;
    for (int i = 0; i < list->count(); ++i) {
        const QString text = list->item(i)->text();
        texts << (i == list->currentRow() ? '[' + text + ']' : text);
    }
    return texts.join(' ');
}

/// A show whose music played until marks were set at 0.5, 1.5, 2.5 ... seconds.
void Mark(Studio& studio, int marks)
{
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.Click("mmSong_play");
    studio.Play(500);
    for (int i = 0; i < marks; ++i) {
        studio.Press(Qt::Key_M);
        studio.Play(1'000);
    }
    studio.Click("mmSong_stop");
}

void ClickMark(Studio& studio, int index, bool twice)
{
    auto* list = studio.Find<QListWidget>("lstMarks");
    list->scrollToItem(list->item(index));
    const QPoint place = list->visualItemRect(list->item(index)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    if (twice)
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

/// Opens the shift panel over the commands at `time`.
void OpenShift(Studio& studio, std::int32_t time)
{
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.editor.MoveTo(time);
    studio.window.Refresh();
    studio.Press(Qt::Key_F9);
}

bool ShiftOpen(Studio& studio)
{
    const auto* frame = studio.window.findChild<QWidget*>("fraShift");
    return frame != nullptr && frame->isVisible();
}

QPoint Arrow(QSpinBox& box, QStyle::SubControl arrow)
{
    QStyleOptionSpinBox option;
    option.initFrom(&box);
    return box.style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, &box).center();
}

QList<std::int32_t> Times(const Studio& studio)
{
    const auto& times = studio.editor.Choreography().lngTime;
    return {times.begin(), times.end() - 1};
}

}  // namespace

class MarksShiftTest : public QObject {
    Q_OBJECT

 private slots:
    void marksAreSetWhileListening();
    void marksAreVisited();
    void aClickSelectsTheMarkToReturnTo();
    void manyMarksKeepTheSelectedOneInSight();
    void marksAreClearedAfterTheQuestion();
    void theClearButtonAndTheStopKeyDoNotAskWhileTheyStop();
    void theShiftPanelOpensOnlyWhereCommandsLie();
    void theShiftPanelShiftsInEveryWay();
    void keysAnswerTheShiftPanel();
    void nothingElseWorksWhileTheShiftPanelIsOpen();
    void theWindowClosesOverTheShiftPanel();
    void shiftedTextsFit();
};

void MarksShiftTest::marksAreSetWhileListening()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.Press(Qt::Key_M);
    QCOMPARE(Marks(studio), "");
    QVERIFY(!studio.Find("mmEditing_add")->isEnabled());
    studio.Click("mmSong_play");
    studio.Play(2'000);
    studio.Click("mmEditing_add");
    studio.Play(1'340);
    studio.Press(Qt::Key_M);
    studio.Press(Qt::Key_M);
    QCOMPARE(Marks(studio), "00020 [00033]");
    QCOMPARE(studio.Find<QListWidget>("lstMarks")->item(1)->toolTip(), "00:03.3");
    for (const char* button : {"mmEditing_prev", "mmEditing_next", "mmEditing_clear"})
        QVERIFY(!studio.Find(button)->isEnabled());
    studio.Click("mmSong_pause");
    studio.Play(100);
    QVERIFY2(!studio.Find("mmEditing_add")->isEnabled(), "nothing is heard to be marked");
    studio.Click("mmSong_stop");
    QCOMPARE(studio.Text("lblTime"), "00:03.3");
    for (const char* button : {"mmEditing_prev", "mmEditing_next", "mmEditing_clear"})
        QVERIFY(studio.Find(button)->isEnabled());
}

void MarksShiftTest::marksAreVisited()
{
    Studio studio;
    Mark(studio, 3);
    QCOMPARE(Marks(studio), "[00005] 00015 00025");
    QCOMPARE(studio.Text("lblTime"), "00:00.5");
    QVERIFY(studio.editor.SetSpinner("updnSpout", 0, 3));
    const struct {
        const char* how;
        std::function<void()> step;
        const char* time;
        const char* marks;
    } rows[] = {
        {"next", [&] { studio.Click("mmEditing_next"); }, "00:01.5", "00005 [00015] 00025"},
        {"key of next",
         [&] { QTest::keyClick(&studio.window, Qt::Key_PageUp, Qt::ControlModifier); }, "00:02.5",
         "00005 00015 [00025]"},
        {"next at the end", [&] { studio.Click("mmEditing_next"); }, "00:02.5",
         "00005 00015 [00025]"},
        {"previous", [&] { studio.Click("mmEditing_prev"); }, "00:01.5", "00005 [00015] 00025"},
        {"key of previous",
         [&] { QTest::keyClick(&studio.window, Qt::Key_PageDown, Qt::ControlModifier); }, "00:00.5",
         "[00005] 00015 00025"},
        {"double-click", [&] { ClickMark(studio, 2, true); }, "00:02.5", "00005 00015 [00025]"},
        {"arrow selects", [&] { studio.PressIn("lstMarks", Qt::Key_Left); }, "00:02.5",
         "00005 [00015] 00025"},
        {"Enter goes there", [&] { studio.PressIn("lstMarks", Qt::Key_Return); }, "00:01.5",
         "00005 [00015] 00025"},
    };
    for (const auto& row : rows) {
        row.step();
        QVERIFY2(
            studio.Text("lblTime") == row.time && Marks(studio) == row.marks,
            qPrintable(QString("%1: %2 %3").arg(row.how, studio.Text("lblTime"), Marks(studio))));
    }
    QCOMPARE(Times(studio).value(1), 500);  // what was pending went with the first step
}

void MarksShiftTest::aClickSelectsTheMarkToReturnTo()
{
    Studio studio;
    Mark(studio, 3);
    studio.Click("mmSong_play");
    studio.Play(200);
    ClickMark(studio, 1, true);
    QCOMPARE(studio.Text("lblTime"), "00:00.7");  // it goes nowhere while the music plays
    studio.Click("mmSong_stop");
    QCOMPARE(studio.Text("lblTime"), "00:01.5");

    auto* list = studio.Find<QListWidget>("lstMarks");
    QWidget* viewport = list->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, Qt::ControlModifier,
                      list->visualItemRect(list->item(1)).center());
    QCOMPARE(list->selectedItems(), {list->item(1)});
    QTest::mouseClick(viewport, Qt::LeftButton, {}, viewport->rect().bottomRight() - QPoint(2, 2));
    QCOMPARE(list->selectedItems(), {list->item(1)});
}

void MarksShiftTest::manyMarksKeepTheSelectedOneInSight()
{
    Studio studio;
    Mark(studio, 50);
    auto* list = studio.Find<QListWidget>("lstMarks");
    QCOMPARE(list->count(), 50);
    const auto inSight = [list](int index) {
        return list->viewport()
            ->rect()
            .adjusted(0, 0, 1, 0)
            .contains(list->visualItemRect(list->item(index)));
    };
    QVERIFY(inSight(0));
    QVERIFY(!inSight(49));
    for (int i = 0; i < 49; ++i)
        studio.Click("mmEditing_next");
    QVERIFY(inSight(49));
    studio.Click("mmSong_play");
    studio.Play(10'000);
    studio.Press(Qt::Key_M);
    QCOMPARE(list->count(), 51);
    QVERIFY(inSight(50));
}

void MarksShiftTest::marksAreClearedAfterTheQuestion()
{
    Studio studio;
    Mark(studio, 2);
    for (const bool yes : {false, true}) {
        studio.answers.yes = yes;
        studio.Click("mmEditing_clear");
        QCOMPARE(studio.answers.asked.takeLast(), "Clear Marks: Are you sure?");
        QCOMPARE(Marks(studio), yes ? "" : "[00005] 00015");
        for (const char* button : {"mmEditing_prev", "mmEditing_next", "mmEditing_clear"})
            QCOMPARE(studio.Find(button)->isEnabled(), !yes);
    }
}

void MarksShiftTest::theClearButtonAndTheStopKeyDoNotAskWhileTheyStop()
{
    Studio studio;
    Mark(studio, 1);
    studio.Press(Qt::Key_MediaStop);
    QVERIFY(studio.window.close());
    QVERIFY2(studio.answers.asked.isEmpty(), qPrintable(studio.answers.asked.join(' ')));
    QCOMPARE(Marks(studio), "[00005]");
}

void MarksShiftTest::theShiftPanelOpensOnlyWhereCommandsLie()
{
    const struct {
        std::int32_t time;
        Qt::MouseButton button;  // none: F9
        bool opens;
    } rows[] = {{1'000, Qt::NoButton, true},
                {1'000, Qt::LeftButton, true},
                {1'000, Qt::RightButton, false},
                {1'100, Qt::NoButton, false},
                {1'100, Qt::LeftButton, false}};
    for (const auto& row : rows) {
        Studio studio;
        studio.Open(ui_test::kShow, Music::None);
        studio.Show();
        studio.editor.MoveTo(row.time);
        if (row.button == Qt::NoButton)
            studio.Press(Qt::Key_F9);
        else
            QTest::mouseClick(studio.Find("lblTime"), row.button);
        QCOMPARE(ShiftOpen(studio), row.opens);
    }
    Studio playing;
    playing.Open(ui_test::kShow, Music::Open);
    playing.Show();
    playing.Click("mmSong_play");
    playing.Play(1'000);
    playing.Press(Qt::Key_F9);
    QVERIFY(!ShiftOpen(playing));
}

void MarksShiftTest::theShiftPanelShiftsInEveryWay()
{
    Studio studio;
    OpenShift(studio, 4'000);
    QCOMPARE(studio.Text("lblShiftTime"), "00:04.0");
    QCOMPARE(studio.Text("lblShiftFactor"), "no shifting");
    const auto arrow = [&studio](const char* name, QStyle::SubControl part) {
        auto* box = studio.Find<QSpinBox>(name);
        QTest::mouseClick(box, Qt::LeftButton, {}, Arrow(*box, part));
    };
    const auto type = [&studio](const char* name, const char* text) {
        auto* box = studio.Find<QSpinBox>(name);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        studio.Find("cmdShift_1")->setFocus();
    };
    const struct {
        const char* how;
        std::function<void()> step;
        const char* time;
        const char* factor;
    } rows[] = {
        {"arrow", [&] { arrow("updnShiftTime_1", QStyle::SC_SpinBoxUp); }, "00:05.0",
         "shift upward 1.0 seconds"},
        {"key", [&] { studio.PressIn("updnShiftTime_2", Qt::Key_Down, 2); }, "00:04.8",
         "shift upward 0.8 seconds"},
        {"minutes", [&] { studio.PressIn("updnShiftTime_0", Qt::Key_Up, 2); }, "02:04.8",
         "shift upward 2 minutes 0.8 seconds"},
        {"typed minutes", [&] { type("updnShiftTime_0", "1"); }, "01:04.8",
         "shift upward 1 minute 0.8 seconds"},
        {"typed seconds", [&] { type("updnShiftTime_1", "30"); }, "01:30.8",
         "shift upward 1 minute 26.8 seconds"},
        {"Shift makes no longer steps",
         [&] { QTest::keyClick(studio.Find("updnShiftTime_1"), Qt::Key_Up, Qt::ShiftModifier); },
         "01:31.8", "shift upward 1 minute 27.8 seconds"},
        {"the lower limit", [&] { studio.PressIn("updnShiftTime_0", Qt::Key_Down, 3); }, "00:01.1",
         "shift downward 2.9 seconds"},
        {"the upper limit", [&] { studio.PressIn("updnShiftTime_0", Qt::Key_Up, 95); }, "89:47.9",
         "shift upward 89 minutes 43.9 seconds"},
    };
    for (const auto& row : rows) {
        row.step();
        QVERIFY2(
            studio.Text("lblShiftTime") == row.time && studio.Text("lblShiftFactor") == row.factor,
            qPrintable(
                QString("%1: %2 %3")
                    .arg(row.how, studio.Text("lblShiftTime"), studio.Text("lblShiftFactor"))));
    }
    QCOMPARE(studio.Text("lblTime"), "00:04.0");
    type("updnShiftTime_0", "0");
    type("updnShiftTime_1", "2");
    studio.PressIn("updnShiftTime_2", Qt::Key_Down, 9);
    QCOMPARE(studio.Text("lblShiftTime"), "00:02.0");
    studio.Click("cmdShift_0");
    QVERIFY(!ShiftOpen(studio));
    QCOMPARE(Times(studio), (QList<std::int32_t>{0, 1'000, 2'000, 8'000, 10'000}));
    QCOMPARE(studio.Text("lblTime"), "00:02.0");
    QVERIFY(studio.window.isWindowModified());
}

void MarksShiftTest::keysAnswerTheShiftPanel()
{
    const struct {
        const char* focus;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool shifts;
    } rows[] = {{"updnShiftTime_2", Qt::Key_Return, {}, true},
                {"updnShiftTime_1", Qt::Key_Enter, {}, true},
                {"cmdShift_0", Qt::Key_Space, {}, true},
                {"cmdShift_1", Qt::Key_Return, {}, false},
                {"updnShiftTime_2", Qt::Key_Escape, {}, false},
                {"cmdShift_0", Qt::Key_Escape, {}, false},
                {"updnShiftTime_0", Qt::Key_S, Qt::AltModifier, true},
                {"updnShiftTime_0", Qt::Key_C, Qt::AltModifier, false}};
    for (const auto& row : rows) {
        Studio studio;
        OpenShift(studio, 4'000);
        QVERIFY2(studio.Find("fraShift")->isAncestorOf(QApplication::focusWidget()),
                 "the keys belong to the panel");
        // The number stands typed and has not been left yet.
        auto* seconds = studio.Find<QSpinBox>("updnShiftTime_1");
        seconds->selectAll();
        QTest::keyClicks(seconds, "5");
        studio.Find(row.focus)->setFocus();
        QTest::keyClick(studio.Find(row.focus), row.key, row.modifiers);
        QTRY_VERIFY(!ShiftOpen(studio));
        QCOMPARE(studio.Text("lblTime"), row.shifts ? "00:05.0" : "00:04.0");
        QCOMPARE(QApplication::focusWidget(), studio.Find("cmdFocus"));
    }
}

void MarksShiftTest::nothingElseWorksWhileTheShiftPanelIsOpen()
{
    Studio studio;
    Mark(studio, 2);
    studio.Find<QAction>("mnuDisplayAction_8")->trigger();
    studio.editor.MoveTo(4'000);
    studio.window.Refresh();
    studio.Press(Qt::Key_F9);
    QVERIFY(ShiftOpen(studio));
    for (const char* name :
         {"timeStrip", "lstMarks", "mmSong_play", "mmEditing_play", "mmEditing_next",
          "mmEditing_clear", "updnTime_1", "fraControls", "scriptView"})
        QVERIFY2(!studio.Find(name)->isEnabled(), name);
    for (const QAction* action : studio.window.findChildren<QAction*>(QRegularExpression("^mnu")))
        if (!action->isSeparator() && !action->objectName().endsWith("Action"))
            QCOMPARE(action->isEnabled(),
                     action->objectName() == "mnuFileAction_9" || action->menu() != nullptr);
    const bool steps = studio.editor.CommandStepMode();
    QTest::mouseClick(studio.Find("lblTime"), Qt::RightButton);
    QCOMPARE(studio.editor.CommandStepMode(), steps);
    for (const Qt::Key key :
         {Qt::Key_Home, Qt::Key_PageUp, Qt::Key_Space, Qt::Key_M, Qt::Key_F9, Qt::Key_MediaPlay})
        studio.Press(key);
    QTest::keyClick(&studio.window, Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(&studio.window, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(&studio.window, Qt::Key_S, Qt::ControlModifier);
    QVERIFY(ShiftOpen(studio));
    QCOMPARE(studio.Text("lblTime"), "00:04.0");
    QVERIFY(studio.Find("fraShift")->isAncestorOf(QApplication::focusWidget()));
    QCOMPARE(studio.player.Mode(), timeline::PlayerMode::Stopped);

    // Tab stays within it.
    for (int i = 0; i < 12; ++i) {
        studio.Press(Qt::Key_Tab);
        QVERIFY2(studio.Find("fraShift")->isAncestorOf(QApplication::focusWidget()),
                 qPrintable(QApplication::focusWidget()->objectName()));
    }
    studio.Press(Qt::Key_Escape);
    QVERIFY(studio.Find("scriptView")->isEnabled());
    QVERIFY(studio.Find("lstMarks")->isEnabled());
}

void MarksShiftTest::theWindowClosesOverTheShiftPanel()
{
    Studio studio;
    OpenShift(studio, 4'000);
    studio.Choose("mnuFileAction_9");
    QVERIFY(!studio.window.isVisible());
    QCOMPARE(Times(studio), (QList<std::int32_t>{0, 1'000, 4'000, 10'000, 12'000}));
}

void MarksShiftTest::shiftedTextsFit()
{
    for (const QSize size : {QSize(800, 600), QSize(1366, 768), QSize(2560, 1440)}) {
        Studio studio;
        studio.window.resize(size);
        OpenShift(studio, 4'000);
        studio.PressIn("updnShiftTime_0", Qt::Key_Up, 90);
        for (const auto* label : studio.Find("fraShift")->findChildren<QLabel*>()) {
            const QRect text = label->fontMetrics().boundingRect(
                QRect(0, 0, label->width(), 10'000), label->wordWrap() ? Qt::TextWordWrap : 0,
                label->text());
            QVERIFY2(text.width() <= label->width() && text.height() <= label->height(),
                     qPrintable(label->objectName()));
        }
    }
}

QTEST_MAIN(MarksShiftTest)
#include "marks_shift_test.moc"
