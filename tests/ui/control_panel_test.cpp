// What stands on the control panel, that it can be read and reached, and the spinners beside it.
#include <QAccessible>
#include <QLineEdit>
#include <QStyleOptionSpinBox>

#include "studio.h"
#include "ui/panel_form.h"

using ui_test::Music;
using ui_test::Studio;

namespace {

QStringList Numbered(const char* name, int first, int last)
{
    QStringList names;
    for (int i = first; i <= last; ++i)
        names << QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i);
    return names;
}

/// The controls that Tab goes through, group by group.
QStringList TabOrder()
{
    QStringList names;
    for (int ring = 1; ring <= 5; ++ring)
        names << Numbered("updnRings", 2 * ring - 2, 2 * ring - 1)
              << QStringLiteral("lblBypass_%1").arg(ring);
    names << Numbered("updnSweeps", 0, 1) << "lblBypass_6" << Numbered("updnCandelabra", 0, 1)
          << "lblBypass_8" << Numbered("updnMultiValve", 0, 1);
    names << "updnBazookas"
          << "updnSpout"
          << "updnPeacock" << Numbered("updnCurtain", 0, 1) << "lblVoice"
          << "updnDisplay";
    names << "updnSweepSpeed" << Numbered("lblMotion", 0, 5) << "lblSweepTravel"
          << Numbered("updnSweepPulsate", 0, 1);
    names << Numbered("lblLight", 0, 38) << Numbered("lblLight", 40, 42) << "lblLight_44"
          << "lblLight_45"
          << "lblLight_39"
          << "lblLight_43"
          << "lblLight_46";
    names << Numbered("lblLightMotion", 0, 3) << "lblTimer" << Numbered("updnRotateTime", 0, 1);
    return names << Numbered("lblCopy", 0, 3) << "lblErase_0" << Numbered("lblReset", 0, 2);
}

const QStringList kTargets = QStringList(Numbered("lblErase", 1, 19)) << "lblOperator";
const QStringList kValues = QStringList(Numbered("lblSweepTo", 0, 2)) << "lblDisplay"
                                                                      << "lblRotateTime";

QStringList FocusChain(Studio& studio)
{
    QStringList order;
    const QWidget* first = studio.Find("cmdFocus");
    for (const QWidget* widget = first->nextInFocusChain(); widget != first;
         widget = widget->nextInFocusChain())
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr &&
            widget->parentWidget()->objectName() == "fraControls")
            order << widget->objectName();
    return order;
}

/// The middle of an arrow of a spin box.
QPoint Arrow(QSpinBox& box, QStyle::SubControl arrow)
{
    QStyleOptionSpinBox option;
    option.initFrom(&box);
    return box.style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, &box).center();
}

/// Empty when the longest text of a control is whole in its font of now.
QString Clipped(Studio& studio, const ui::PanelControl& control)
{
    if (control.name.empty())
        return {};
    auto* widget = studio.Find(qPrintable(control.ObjectName()));
    const QFontMetrics metrics(widget->font());
    const auto* box = qobject_cast<QSpinBox*>(widget);
    const QSize room = box != nullptr ? box->findChild<QLineEdit*>()->size() : widget->size();
    const QRect needed =
        metrics.boundingRect(QRect(0, 0, room.width(), 10'000), Qt::TextWordWrap, control.sample);
    if (needed.width() <= room.width() && needed.height() <= room.height())
        return {};
    return QStringLiteral("%1 of %2 x %3 needs %4 x %5")
        .arg(control.ObjectName())
        .arg(room.width())
        .arg(room.height())
        .arg(needed.width())
        .arg(needed.height());
}

}  // namespace

class ControlPanelTest : public QObject {
    Q_OBJECT

 private slots:
    void everyControlSaysWhatItIs();
    void tabGoesGroupByGroup();
    void everythingFits_data();
    void everythingFits();
    void arrowKeysGoOverTheBoard();
    void targetsAreButtonsInEraseModeOnly();
    void changesAreMarkedUntilTheyAreWritten();
    void panelRestsWhilePlaying();
    void modifiersMultiplySteps_data();
    void modifiersMultiplySteps();
    void typedTimeIsGoneTo();
    void typedTimeIsGoneToFirst();
    void readoutTogglesCommandSteps();
    void heldKeysNeverLagBehind();
};

void ControlPanelTest::everyControlSaysWhatItIs()
{
    Studio studio;
    QStringList expected = QStringList(TabOrder()) << kTargets << kValues;
    QStringList present;
    for (const ui::PanelControl& control : ui::PanelForm()) {
        if (control.name.empty())
            continue;
        present << control.ObjectName();
        const auto found = studio.window.findChildren<QWidget*>(control.ObjectName());
        QVERIFY2(found.size() == 1, qPrintable(control.ObjectName()));
        QWidget* widget = found.first();
        QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(control.ObjectName()));
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(face != nullptr, qPrintable(control.ObjectName()));
        QVERIFY2(!face->text(QAccessible::Name).isEmpty(), qPrintable(control.ObjectName()));
        QVERIFY2(!qobject_cast<QAbstractButton*>(widget) || face->role() == QAccessible::Button ||
                     face->role() == QAccessible::CheckBox,
                 qPrintable(QStringLiteral("%1 %2").arg(control.ObjectName()).arg(face->role())));
    }
    std::ranges::sort(expected);
    std::ranges::sort(present);
    QCOMPARE(present, expected);
    const struct {
        const char* control;
        const char* tip;
    } rows[] = {{"updnRings_5", "Level of Ring 3 on Group B, 0 to 5; writes command 003"},
                {"lblLight_10", "Switch Module 3, amber on and off; writes command 019"},
                {"lblBypass_8", "Join the groups of Candelabras; writes command 008"}};
    for (const auto& row : rows)
        QCOMPARE(studio.Find(row.control)->toolTip(), row.tip);
}

void ControlPanelTest::tabGoesGroupByGroup()
{
    Studio studio;
    QCOMPARE(FocusChain(studio), TabOrder());
}

void ControlPanelTest::everythingFits_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(800, 600), QSize(1024, 768), QSize(1366, 768), QSize(1280, 1024),
                             QSize(1920, 1080), QSize(2560, 1440)})
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

void ControlPanelTest::everythingFits()
{
    QFETCH(QSize, size);
    Studio studio;
    studio.Show();
    studio.window.resize(size);
    const QWidget* panel = studio.Find("fraControls");
    const auto children = panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (const QWidget* one : children) {
        QVERIFY2(panel->rect().contains(one->geometry()), qPrintable(one->objectName()));
        for (const QWidget* other : children)
            QVERIFY2(one == other || !one->geometry().intersects(other->geometry()),
                     qPrintable(one->objectName() + " lies on " + other->objectName()));
    }
    for (const ui::PanelControl& control : ui::PanelForm())
        QVERIFY2(Clipped(studio, control).isEmpty(), qPrintable(Clipped(studio, control)));
}

void ControlPanelTest::arrowKeysGoOverTheBoard()
{
    Studio studio;
    studio.Show();
    studio.Find("lblLight_0")->setFocus();
    const struct {
        Qt::Key key;
        const char* control;
    } rows[] = {{Qt::Key_Right, "lblLight_4"}, {Qt::Key_Down, "lblLight_5"},
                {Qt::Key_Left, "lblLight_1"},  {Qt::Key_Up, "lblLight_0"},
                {Qt::Key_Up, "lblLight_0"},    {Qt::Key_Space, "lblLight_0"}};
    for (const auto& row : rows) {
        studio.Press(row.key);
        QCOMPARE(QApplication::focusWidget()->objectName(), row.control);
    }
    QVERIFY(studio.editor.Panel().lblLight[0].Lit());
}

void ControlPanelTest::targetsAreButtonsInEraseModeOnly()
{
    Studio studio;
    studio.Open("ct0-381\r\n00:02.0007-018 009-019 054-001\r\n", Music::None);
    studio.Show();
    studio.editor.MoveTo(2'000);
    studio.window.Refresh();
    studio.Find<QAction>("mnuDisplayAction_5")->trigger();
    studio.Click("lblErase_12");
    QCOMPARE(studio.Text("lblABCodes"), "007-018 009-019 054-001");

    studio.Find("lblErase_0")->setFocus();
    studio.Press(Qt::Key_Space);
    QCOMPARE(FocusChain(studio).size(), TabOrder().size() + kTargets.size());
    QVERIFY(studio.Text("lblPending").startsWith("Erase: "));
    studio.Find("lblErase_12")->setFocus();
    studio.Press(Qt::Key_Return);
    QCOMPARE(studio.Text("lblABCodes"), "009-019 054-001");
    QCOMPARE(FocusChain(studio), TabOrder());
    QCOMPARE(QApplication::focusWidget()->objectName(), "lblErase_0");
    for (const char* target : {"lblErase_13", "lblErase_11"}) {
        studio.Click("lblErase_0");
        studio.Click(target);
    }
    QCOMPARE(studio.Text("lblABCodes"), "");
    QCOMPARE(studio.Text("lblCounts"), "0 times, 0 commands");
}

void ControlPanelTest::changesAreMarkedUntilTheyAreWritten()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    const auto marked = [&studio](const char* name) {
        return studio.Find(name)->accessibleDescription().contains("changed");
    };
    const char* const controls[] = {"updnRings_4", "lblBypass_3", "lblLight_2", "lblSweepTravel",
                                    "updnRotateTime_1"};
    studio.PressIn("updnRings_4", Qt::Key_Up, 4);
    for (const char* control : {"lblBypass_3", "lblLight_2", "lblSweepTravel"})
        studio.Click(control);
    studio.PressIn("updnRotateTime_1", Qt::Key_Up);
    for (const char* control : controls)
        QVERIFY2(marked(control), control);
    QVERIFY(!marked("updnRings_5"));
    QCOMPARE(studio.Text("lblStored"), "Stored at 00:00.0: Reset Fountain");
    QVERIFY2(studio.Text("lblPending")
                 .startsWith("Will be written here: Move Ring 3 on Group A "
                             "to level 4 with joining; "),
             qPrintable(studio.Text("lblPending")));
    QVERIFY(studio.window.isWindowModified());

    studio.Press(Qt::Key_PageUp);
    studio.Press(Qt::Key_PageDown);
    for (const char* control : controls)
        QVERIFY2(!marked(control), control);
    QCOMPARE(studio.Find<QSpinBox>("updnRings_4")->value(), 4);
    QVERIFY(studio.Text("lblStored").contains("Move Ring 3 on Group A to level 4"));
    QVERIFY(!studio.Text("lblPending").startsWith("Will be written"));

    studio.PressIn("updnRings_4", Qt::Key_Up);
    studio.PressIn("updnRings_4", Qt::Key_Down);
    QVERIFY(!marked("updnRings_4"));
}

void ControlPanelTest::panelRestsWhilePlaying()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    QWidget* box = studio.Find("updnRings_0");
    box->setFocus();
    studio.Click("mmSong_play");
    studio.Play(1'500);
    QVERIFY(!box->isEnabled());
    QVERIFY(!studio.Find("updnTime_1")->isEnabled());
    QCOMPARE(studio.Find<QSpinBox>("updnTime_1")->value(), 1);
    QCOMPARE(QApplication::focusWidget()->objectName(), "cmdFocus");
    QCOMPARE(studio.Text("lblPending"), "");
    studio.Click("mmSong_stop");
    QVERIFY(box->isEnabled());
    QCOMPARE(studio.Find<QSpinBox>("updnRings_0")->value(), 2);
}

void ControlPanelTest::modifiersMultiplySteps_data()
{
    QTest::addColumn<QString>("spinner");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("up");
    QTest::addColumn<QString>("down");
    const auto row = [](const char* spinner, Qt::KeyboardModifiers modifiers, const char* up,
                        const char* down) {
        QTest::addRow("%s %x", spinner, modifiers.toInt())
            << QString(spinner) << static_cast<int>(modifiers.toInt()) << QString(up)
            << QString(down);
    };
    row("updnTime_0", Qt::NoModifier, "21:30.5", "19:30.5");
    row("updnTime_0", Qt::AltModifier, "30:30.5", "10:30.5");
    row("updnTime_1", Qt::NoModifier, "20:31.5", "20:29.5");
    row("updnTime_1", Qt::ShiftModifier, "20:32.5", "20:28.5");
    row("updnTime_1", Qt::ControlModifier, "20:35.5", "20:25.5");
    row("updnTime_1", Qt::ControlModifier | Qt::AltModifier, "20:35.5", "20:25.5");
    row("updnTime_2", Qt::NoModifier, "20:30.6", "20:30.4");
    row("updnTime_2", Qt::AltModifier, "20:31.5", "20:29.5");
}

void ControlPanelTest::modifiersMultiplySteps()
{
    QFETCH(QString, spinner);
    QFETCH(int, modifiers);
    QFETCH(QString, up);
    QFETCH(QString, down);
    Studio studio;
    studio.Show();
    auto* box = studio.Find<QSpinBox>(qPrintable(spinner));
    const auto held = Qt::KeyboardModifiers::fromInt(modifiers);
    const struct {
        Qt::Key key;
        QStyle::SubControl arrow;
        QString time;
    } rows[] = {{Qt::Key_Up, QStyle::SC_SpinBoxUp, up},
                {Qt::Key_Down, QStyle::SC_SpinBoxDown, down}};
    for (const auto& row : rows) {
        studio.editor.MoveTo(1'230'500);
        QTest::keyClick(box, row.key, held);
        QCOMPARE(studio.Text("lblTime"), row.time);
        studio.editor.MoveTo(1'230'500);
        QTest::mouseClick(box, Qt::LeftButton, held, Arrow(*box, row.arrow));
        QCOMPARE(studio.Text("lblTime"), row.time);
    }
}

void ControlPanelTest::typedTimeIsGoneTo()
{
    Studio studio;
    studio.Show();
    const struct {
        const char* spinner;
        const char* typed;
        const char* time;
    } rows[] = {{"updnTime_1", "12", "00:12.0"},
                {"updnTime_2", "7", "00:12.7"},
                {"updnTime_0", "89", "89:12.7"},
                {"updnTime_1", "60", "89:06.7"}};  // 60 is no field of seconds, its 6 is
    for (const auto& row : rows) {
        auto* box = studio.Find<QSpinBox>(row.spinner);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, row.typed);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(studio.Text("lblTime"), row.time);
    }
    QTest::keyClick(studio.Find("updnTime_0"), Qt::Key_Up);
    QCOMPARE(studio.Text("lblTime"), "89:59.9");
    QCOMPARE(studio.Find<QSpinBox>("updnTime_1")->text(), "59");
}

void ControlPanelTest::typedTimeIsGoneToFirst()
{
    const struct {
        const char* clicked;
        Qt::Key key;
        const char* time;
    } rows[] = {{"lblLight_0", {}, "00:08.0"},          {"mmEditing_play", {}, "00:08.0"},
                {nullptr, Qt::Key_Space, "00:08.0"},    {nullptr, Qt::Key_PageUp, "00:10.0"},
                {nullptr, Qt::Key_PageDown, "00:04.0"}, {nullptr, Qt::Key_Home, "00:00.0"}};
    for (const auto& row : rows) {
        Studio studio;
        studio.Open(ui_test::kShow, Music::None);
        studio.Show();
        auto* box = studio.Find<QSpinBox>("updnTime_1");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, "8");
        QCOMPARE(studio.Text("lblTime"), "00:00.0");
        if (row.clicked != nullptr)
            studio.Click(row.clicked);
        else
            QTest::keyClick(box, row.key);
        QCOMPARE(studio.Text("lblTime"), row.time);
        QCOMPARE(box->text(), QString(row.time).mid(3, 2));
    }
}

void ControlPanelTest::readoutTogglesCommandSteps()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.editor.MoveTo(100);  // where a click with the left button finds nothing to shift
    studio.Show();
    const struct {
        Qt::MouseButton button;
        QColor color;
        const char* afterStep;
    } rows[] = {{Qt::LeftButton, {0, 0, 128}, "00:01.1"},
                {Qt::RightButton, {255, 0, 0}, "00:04.0"},
                {Qt::MiddleButton, {0, 0, 128}, "00:05.0"}};
    QWidget* readout = studio.Find("lblTime");
    for (const auto& row : rows) {
        QTest::mouseClick(readout, row.button);
        QCOMPARE(readout->palette().color(QPalette::WindowText), row.color);
        studio.PressIn("updnTime_1", Qt::Key_Up);
        QCOMPARE(studio.Text("lblTime"), row.afterStep);
    }
}

// Repeats that come faster than the window can follow are left out, not stored up.
void ControlPanelTest::heldKeysNeverLagBehind()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    const struct {
        const char* control;
        Qt::Key key;
        const char* afterBurst;
        const char* afterTurns;
    } rows[] = {{"updnTime_2", Qt::Key_Up, "00:00.1", "00:00.4"},
                {"updnTime_1", Qt::Key_Up, "00:01.0", "00:04.0"},
                {"cmdFocus", Qt::Key_PageUp, "00:01.0", "00:12.0"}};
    for (const auto& row : rows) {
        studio.editor.MoveTo(0);
        QWidget* control = studio.Find(row.control);
        const auto repeat = [control, &row] {
            QKeyEvent event(QEvent::KeyPress, row.key, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(control, &event);
        };
        for (int i = 0; i < 20; ++i)
            repeat();
        QCOMPARE(studio.Text("lblTime"), row.afterBurst);
        for (int turn = 0; turn < 3; ++turn) {
            QTest::qWait(1);
            repeat();
        }
        QCOMPARE(studio.Text("lblTime"), row.afterTurns);
        QTest::qWait(1);
        QTest::keyRelease(control, row.key);
        QCOMPARE(studio.Text("lblTime"), row.afterTurns);
    }
}

QTEST_MAIN(ControlPanelTest)
#include "control_panel_test.moc"
