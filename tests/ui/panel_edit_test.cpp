// An edit of each family through the real controls, and how edits are saved, reset and closed.
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "studio.h"

using ui_test::Music;
using ui_test::Studio;

namespace {

constexpr const char* kQuietShow = "ct0-381\r\n00:01.0001-018\r\n";

/// Answers the message box that is about to open, and tells what it said.
struct BoxAnswer {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QString defaultButton;
    int pixels = 0;
    int lines = 0;
    bool titleFits = false;

    void Await(QMessageBox::StandardButton answer)
    {
        QTimer::singleShot(0, [this, answer] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            defaultButton = box->defaultButton()->text().remove('&');
            pixels = box->font().pixelSize();
            const auto* label = box->findChild<QLabel*>("qt_msgbox_label");
            lines = label->height() / label->fontMetrics().lineSpacing();
            QFont bold = box->font();
            bold.setBold(true);
            titleFits = box->width() > QFontMetrics(bold).horizontalAdvance(title) + 100;
            box->button(answer)->click();
        });
    }
};

}  // namespace

class PanelEditTest : public QObject {
    Q_OBJECT

 private slots:
    void editsWriteTheirCommands_data();
    void editsWriteTheirCommands();
    void controlsMoveOneAnother();
    void resetsAskFirst();
    void questionsLookAsTheyShould();
    void saveWritesWhatIsPending();
    void fileMenuWritesWhatIsPending();
    void closingAsksForWhatIsNotSaved();
};

using Operate = std::function<void(Studio&)>;

void PanelEditTest::editsWriteTheirCommands_data()
{
    QTest::addColumn<Operate>("operate");
    QTest::addColumn<QString>("codes");
    const auto row = [](const char* name, Operate operate, const char* codes) {
        QTest::newRow(name) << std::move(operate) << QString(codes);
    };
    const auto up = [](const char* control, int times) -> Operate {
        return [=](Studio& studio) { studio.PressIn(control, Qt::Key_Up, times); };
    };
    const auto click = [](std::vector<const char*> controls) -> Operate {
        return [=](Studio& studio) {
            for (const char* control : controls)
                studio.Click(control);
        };
    };
    row("a ring", up("updnRings_5", 3), "003-035");
    row("sweeps", up("updnSweeps_0", 2), "006-018");
    row("candelabras", up("updnCandelabra_1", 5), "008-037");
    row("multi-valve", up("updnMultiValve_0", 6), "048-022");
    row("a join", click({"lblBypass_2"}), "002-064");
    row(
        "bazookas and spout",
        [=](Studio& studio) {
            up("updnBazookas", 1)(studio);
            up("updnSpout", 5)(studio);
        },
        "007-017 007-037");
    row("the curtains", up("updnCurtain_1", 4), "009-036");
    row("peacock", up("updnPeacock", 3), "009-099");
    row("voice", click({"lblVoice"}), "054-001");
    row(
        "the operator's display, typed",
        [](Studio& studio) {
            auto* box = studio.Find<QSpinBox>("updnDisplay");
            box->setFocus();
            box->selectAll();
            QTest::keyClicks(box, "171");
        },
        "000-171");
    row("sweep speed by its spinner", up("updnSweepSpeed", 3), "033-097");
    row("sweep motion by its labels", click({"lblMotion_2", "lblMotion_5", "lblSweepTravel"}),
        "034-067");
    row("pulsation", up("updnSweepPulsate_1", 1), "069-032");
    row("lamps of a module", click({"lblLight_8", "lblLight_11"}), "019-009");
    row("group lamps", click({"lblLight_29"}), "049-002");
    row("lamps of both groups", click({"lblLight_29", "lblLight_33"}), "051-002");
    row("peacock lamps", click({"lblLight_36", "lblLight_42"}), "025-001 026-004");
    row("curtain lamps", click({"lblLight_44", "lblLight_45"}), "024-048");
    row("white lamps", click({"lblLight_39", "lblLight_46"}), "016-006");
    row("moving lights once", click({"lblLightMotion_3"}), "085-033");
    row(
        "moving lights on the timer",
        [=](Studio& studio) {
            click({"lblLightMotion_1", "lblTimer"})(studio);
            up("updnRotateTime_0", 1)(studio);
            up("updnRotateTime_1", 2)(studio);
        },
        "086-016 085-082");
    row("copy", click({"lblCopy_1", "lblCopy_2", "lblCopy_3"}), "080-035");
    row("half a copy", click({"lblCopy_0"}), "");
    row("reset", click({"lblReset_0"}), "099-000");
}

void PanelEditTest::editsWriteTheirCommands()
{
    QFETCH(Operate, operate);
    QFETCH(QString, codes);
    Studio studio;
    studio.Open(kQuietShow, Music::None);
    studio.Show();
    studio.Choose("mnuDisplayAction_5");
    studio.editor.MoveTo(5'000);
    studio.window.Refresh();
    operate(studio);
    studio.PressIn("updnTime_1", Qt::Key_Up);
    studio.PressIn("updnTime_1", Qt::Key_Down);
    QCOMPARE(studio.Text("lblTime"), "00:05.0");
    QCOMPARE(studio.Text("lblABCodes"), codes);
}

void PanelEditTest::controlsMoveOneAnother()
{
    Studio studio;
    studio.Open(kQuietShow, Music::None);
    studio.Show();
    const auto value = [&studio](const char* name) { return studio.Find<QSpinBox>(name)->value(); };
    studio.PressIn("updnMultiValve_1", Qt::Key_Up, 6);
    for (int ring = 1; ring <= 5; ++ring)
        QCOMPARE(value(qPrintable(QStringLiteral("updnRings_%1").arg(2 * ring - 1))), ring);
    QCOMPARE(value("updnRings_0"), 0);

    studio.PressIn("updnPeacock", Qt::Key_Up, 2);
    studio.PressIn("updnCurtain_1", Qt::Key_Up);
    QCOMPARE(value("updnPeacock"), 0);

    studio.Click("lblMotion_3");
    QCOMPARE(value("updnSweepSpeed"), 3);
    studio.PressIn("updnSweepSpeed", Qt::Key_Down);
    QVERIFY(studio.Find<QAbstractButton>("lblMotion_2")->isChecked());
    studio.Click("lblSweepTravel");
    QCOMPARE(studio.Text("lblSweepTo_0"), "-30");

    studio.PressIn("updnSweepPulsate_0", Qt::Key_Up, 2);
    QCOMPARE(studio.Find<QSpinBox>("updnSweepPulsate_0")->text(), "downward");
    studio.PressIn("updnSweepPulsate_0", Qt::Key_Up);
    QCOMPARE(studio.Find<QSpinBox>("updnSweepPulsate_0")->text(), "no command");
    studio.PressIn("updnRings_0", Qt::Key_Up, 7);
    QCOMPARE(value("updnRings_0"), 5);

    studio.PressIn("updnDisplay", Qt::Key_Up, 10);
    QCOMPARE(studio.Text("lblDisplay"), "0A");
    studio.PressIn("updnRotateTime_0", Qt::Key_Up, 12);
    QCOMPARE(studio.Text("lblRotateTime"), "9.9");
}

void PanelEditTest::resetsAskFirst()
{
    const struct {
        const char* label;
        bool yes;
        const char* question;
        const char* codes;
        int ring;
    } rows[] = {
        {"lblReset_0", false, "Reset All: Are you sure?", "002-018 099", 4},
        {"lblReset_0", true, "Reset All: Are you sure?", "099-000", 0},
        {"lblReset_1", false, "Undo Changes: Are you sure?", "001-018", 4},
        {"lblReset_1", true, "Undo Changes: Are you sure?", "001-018", 2},
        {"lblReset_2", false, "Clear (Remove Choreography): Are you sure?", "001-018", 4},
        {"lblReset_2", true, "Clear (Remove Choreography): Are you sure?", "", 0},
    };
    for (const auto& row : rows) {
        Studio studio;
        studio.Open(kQuietShow, Music::None);
        studio.Show();
        studio.editor.MoveTo(1'000);
        studio.window.Refresh();
        studio.PressIn("updnRings_0", Qt::Key_Up, 2);
        studio.answers.yes = row.yes;
        studio.Click(row.label);
        QCOMPARE(studio.answers.asked, QStringList{row.question});
        QCOMPARE(studio.Find<QSpinBox>("updnRings_0")->value(), row.ring);
        if (row.yes)
            QCOMPARE(studio.Text("lblABCodes"), row.codes);
        else
            QCOMPARE(studio.Text("lblABCodes"), "001-018");
    }
}

void PanelEditTest::questionsLookAsTheyShould()
{
    Studio studio;
    studio.Open(kQuietShow, Music::None);
    studio.Show();
    ui::MessagePrompts prompts;
    prompts.SetWindow(&studio.window);
    BoxAnswer box;
    box.Await(QMessageBox::Yes);
    studio.window.resize(1024, 768);
    const char* title = "Clear (Remove Choreography)";
    QVERIFY(prompts.Ask("Are you sure?", title, editor::Icon::Question));
    const int small = box.pixels;
    QCOMPARE(box.title, title);
    QVERIFY(box.titleFits);
    QCOMPARE(box.text, "Are you sure?");
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.defaultButton, "No");
    box.Await(QMessageBox::No);
    studio.window.resize(2048, 1536);
    QVERIFY(!prompts.Ask("Do you really, really, and not only for once, want\nto proceed?", "",
                         editor::Icon::Exclamation));
    QCOMPARE(box.lines, 2);
    QVERIFY2(small >= 12 && box.pixels == 2 * small, "the letters grow with the window");
    QCOMPARE(box.icon, QMessageBox::Warning);
    QVERIFY2(box.title.startsWith("Gala ") && !box.title.contains('*'), qPrintable(box.title));
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    QVERIFY(!prompts.Ask("Escaped", "No", editor::Icon::Question));
}

void PanelEditTest::saveWritesWhatIsPending()
{
    Studio studio;
    studio.Open(kQuietShow, Music::None);
    studio.Show();
    QVERIFY(!studio.Find<QAction>("mnuFileAction_3")->isEnabled());
    studio.PressIn("updnRings_2", Qt::Key_Up, 3);
    QVERIFY(studio.window.isWindowModified());
    QTest::keyClick(studio.Find("updnRings_2"), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(studio.Saved(), "ct0-381\r\n00:00.0002-019\r\n00:01.0001-018\r\n");
    QVERIFY(!studio.window.isWindowModified());
    QVERIFY(!studio.Find<QAction>("mnuFileAction_3")->isEnabled());
    QCOMPARE(studio.Find<QSpinBox>("updnRings_2")->value(), 3);
}

void PanelEditTest::fileMenuWritesWhatIsPending()
{
    Studio studio;
    studio.Open(kQuietShow, Music::None);
    studio.Show();
    studio.Click("lblVoice");
    auto* menu = studio.Find<QMenu>("mnuFile");
    menu->popup(QPoint(0, 0));
    QCOMPARE(studio.Text("lblABCodes"), "054-001");
    QVERIFY(studio.Find<QAction>("mnuFileAction_3")->isEnabled());
    menu->close();
    studio.Choose("mnuFileAction_3");
    QVERIFY(studio.Saved().contains("00:00.0054-001"));
}

void PanelEditTest::closingAsksForWhatIsNotSaved()
{
    Studio unchanged;
    unchanged.Open(kQuietShow, Music::None);
    unchanged.Show();
    QVERIFY(unchanged.window.close());
    QVERIFY(unchanged.answers.asked.isEmpty());

    Studio studio;
    studio.Open(kQuietShow, Music::None);
    studio.Show();
    studio.Click("lblLight_0");
    studio.answers.yes = false;
    QVERIFY(!studio.window.close());
    QVERIFY(studio.window.isVisible());
    QCOMPARE(studio.answers.asked.size(), 1);
    QVERIFY(studio.answers.asked[0].startsWith(": This choregraphy has not been saved."));
    QVERIFY(studio.editor.Panel().lblLight[0].Lit());
    QCOMPARE(studio.Text("lblABCodes"), "017-001");
    studio.answers.yes = true;
    studio.Choose("mnuFileAction_9");
    QVERIFY(!studio.window.isVisible());
    QCOMPARE(studio.Saved(), kQuietShow);
}

QTEST_MAIN(PanelEditTest)
#include "panel_edit_test.moc"
