// What the user may operate when, and what each control does.
#include <QSignalSpy>
#include <functional>

#include "studio.h"

using timeline::PlayerMode;
using ui_test::Music;
using ui_test::Studio;

namespace {

/// The controls that work, by name.
QString Enabled(Studio& studio)
{
    QStringList names;
    for (const char* name : {"timeStrip", "mmSong_prev", "mmSong_play", "mmSong_pause",
                             "mmSong_stop", "mmEditing_play", "mmEditing_add", "mmEditing_prev",
                             "mmEditing_next", "mmEditing_clear", "fraControls"})
        if (studio.Find(name)->isEnabled())
            names << name;
    for (const char* menu : {"mnuFileAction_%1", "mnuDisplayAction_%1", "mnuHelpAction_%1"})
        for (int item = 0; item <= 9; ++item) {
            const QString name = QString(menu).arg(item);
            const auto* action = studio.window.findChild<QAction*>(name);
            if (action != nullptr && action->isEnabled() && !action->isSeparator())
                names << name;
        }
    return names.join(' ');
}

const QString kFile =
    " mnuFileAction_0 mnuFileAction_1 mnuFileAction_4 mnuFileAction_5 mnuFileAction_7 "
    "mnuFileAction_9";
const QString kDisplay =
    " mnuDisplayAction_0 mnuDisplayAction_2 mnuDisplayAction_3 mnuDisplayAction_5"
    " mnuDisplayAction_7 mnuDisplayAction_8";
const QString kHelp = " mnuHelpAction_0 mnuHelpAction_1 mnuHelpAction_3";

}  // namespace

class TransportTest : public QObject {
    Q_OBJECT

 private slots:
    void modesEnableTheirControls();
    void buttonsDoWhatTheySay();
    void keysMove();
    void keysDoNotMoveWhilePlaying();
    void spacePlaysAndPauses();
    void timeStripGoesToTheTenthUnderThePointer();
    void readoutFollowsTheMusic();
    void restIsQuiet();
    void effectsTickAtRest();
    void choreographyPlaysWithoutMusic();
    void snippetRefusesInputAndKeepsPainting();
    void closingStopsEverything();
};

void TransportTest::modesEnableTheirControls()
{
    const struct {
        const char* mode;
        Music music;
        const char* show;
        std::function<void(Studio&)> enter;
        QString enabled;
    } rows[] = {
        {"nothing open", Music::None, "", [](Studio&) {},
         "mmEditing_play fraControls mnuFileAction_0 mnuFileAction_1 mnuFileAction_9" + kDisplay +
             kHelp},
        {"a show without music", Music::None, ui_test::kShow, [](Studio&) {},
         "timeStrip mmEditing_play fraControls" + kFile + kDisplay + kHelp},
        {"the choreography plays", Music::None, ui_test::kShow,
         [](Studio& studio) { studio.Click("mmEditing_play"); },
         "timeStrip mmEditing_clear mnuFileAction_9" + kDisplay},
        {"music stands", Music::Open, ui_test::kShow, [](Studio&) {},
         "timeStrip mmSong_prev mmSong_play mmEditing_play fraControls" + kFile + kDisplay + kHelp},
        {"music plays", Music::Open, ui_test::kShow,
         [](Studio& studio) {
             studio.Click("mmSong_play");
             studio.Play(100);
         },
         "timeStrip mmSong_prev mmSong_pause mmSong_stop mmEditing_add" + kDisplay},
        {"music pauses", Music::Open, ui_test::kShow,
         [](Studio& studio) {
             studio.Click("mmSong_play");
             studio.Play(100);
             studio.Click("mmSong_pause");
             studio.Play(100);
         },
         "timeStrip mmSong_prev mmSong_play mmSong_stop" + kDisplay},
        {"music has stopped", Music::Open, ui_test::kShow,
         [](Studio& studio) {
             studio.Click("mmSong_play");
             studio.Play(100);
             studio.Click("mmSong_stop");
         },
         "timeStrip mmSong_prev mmSong_play mmEditing_play fraControls" + kFile + kDisplay + kHelp},
    };
    for (const auto& row : rows) {
        Studio studio;
        studio.Open(row.show, row.music);
        row.enter(studio);
        const QString enabled = Enabled(studio);
        QVERIFY2(enabled == row.enabled,
                 qPrintable(QStringLiteral("%1: %2").arg(row.mode, enabled)));
    }
}

void TransportTest::buttonsDoWhatTheySay()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.editor.MoveTo(2'000);
    studio.window.Refresh();
    const struct {
        const char* button;
        PlayerMode mode;
        const char* time;
    } rows[] = {{"mmSong_play", PlayerMode::Playing, "00:02.5"},
                {"mmSong_pause", PlayerMode::Paused, "00:02.5"},
                {"mmSong_play", PlayerMode::Playing, "00:03.0"},
                {"mmSong_stop", PlayerMode::Stopped, "00:03.0"},
                {"mmSong_prev", PlayerMode::Stopped, "00:00.0"}};
    for (const auto& row : rows) {
        studio.Click(row.button);
        studio.Play(500);
        QVERIFY2(studio.player.Mode() == row.mode, row.button);
        QCOMPARE(studio.Text("lblTime"), row.time);
        QCOMPARE(QApplication::focusWidget(), studio.Find("cmdFocus"));
    }
}

void TransportTest::keysMove()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    const struct {
        Qt::Key key;
        const char* time;
    } rows[] = {{Qt::Key_PageUp, "00:01.0"},   {Qt::Key_PageUp, "00:04.0"},
                {Qt::Key_PageDown, "00:01.0"}, {Qt::Key_End, "00:12.0"},
                {Qt::Key_PageUp, "89:59.9"},   {Qt::Key_Home, "00:00.0"},
                {Qt::Key_PageDown, "00:00.0"}};
    for (const char* focus : {"cmdFocus", "timeStrip"}) {
        studio.Find(focus)->setFocus();
        for (const auto& row : rows) {
            studio.Press(row.key);
            QCOMPARE(studio.Text("lblTime"), row.time);
        }
    }
    studio.Find("timeStrip")->setFocus();
    const std::pair<Qt::Key, const char*> steps[] = {{Qt::Key_Right, "00:00.1"},
                                                     {Qt::Key_Up, "00:01.1"},
                                                     {Qt::Key_Left, "00:01.0"},
                                                     {Qt::Key_Down, "00:00.0"}};
    for (const auto& [key, time] : steps) {
        studio.Press(key);
        QTRY_COMPARE(studio.Text("lblTime"), time);
    }
}

void TransportTest::keysDoNotMoveWhilePlaying()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.Click("mmSong_play");
    studio.Play(1'500);
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown}) {
        studio.Press(key);
        QCOMPARE(studio.Text("lblTime"), "00:01.5");
    }
    studio.Click("timeStrip");
    QCOMPARE(studio.Text("lblTime"), "00:01.5");
}

void TransportTest::spacePlaysAndPauses()
{
    Studio music;
    music.Open(ui_test::kShow, Music::Open);
    music.Show();
    for (const PlayerMode mode : {PlayerMode::Playing, PlayerMode::Paused, PlayerMode::Playing}) {
        music.Press(Qt::Key_Space);
        music.Play(100);
        QCOMPARE(music.player.Mode(), mode);
    }
    music.Press(Qt::Key_MediaStop);
    QCOMPARE(music.player.Mode(), PlayerMode::Stopped);
    // A focused button keeps the key for itself.
    music.Find("mmSong_prev")->setFocus();
    music.Press(Qt::Key_Space);
    QCOMPARE(music.player.Mode(), PlayerMode::Stopped);
    QCOMPARE(music.Text("lblTime"), "00:00.0");

    Studio quiet;
    quiet.Open(ui_test::kShow, Music::None);
    quiet.Show();
    for (const bool plays : {true, false}) {
        quiet.Press(Qt::Key_Space);
        QCOMPARE(quiet.editor.Playback().tmrControlFile.Enabled(), plays);
    }
}

void TransportTest::timeStripGoesToTheTenthUnderThePointer()
{
    Studio studio;
    studio.player.musicLength = 102'400;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    auto* strip = studio.Find<ui::TimeStrip>("timeStrip");
    const auto place = [strip](std::int32_t time) {
        return QPoint(static_cast<int>(strip->View().PixelOf(time)), strip->height() / 2);
    };
    QVERIFY(studio.editor.SetSpinner("updnSpout", 0, 3));
    QTest::mouseClick(strip, Qt::LeftButton, {}, place(51'200));
    QCOMPARE(studio.Text("lblTime"), "00:51.2");
    QVERIFY2(studio.editor.Choreography().blnChanged, "what was pending is written first");

    // Faster than the window can follow: the last place counts.
    QTest::mousePress(strip, Qt::LeftButton, {}, place(20'000));
    for (int x = place(20'000).x(); x <= place(40'000).x(); ++x)
        QTest::mouseMove(strip, {x, 20});
    QTest::mouseRelease(strip, Qt::LeftButton, {}, place(40'000));
    QTRY_COMPARE(studio.Text("lblTime"), "00:40.0");
}

void TransportTest::readoutFollowsTheMusic()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Click("mmSong_play");
    studio.Play(4'050);
    QCOMPARE(studio.Text("lblTime"), "00:04.0");
    QCOMPARE(studio.Text("lblABCodes"), "006-020 033-097");
    studio.Play(studio.player.Length());
    QCOMPARE(studio.Text("lblTime"), "00:59.9");
    QVERIFY(studio.Find("mmSong_play")->isEnabled());
}

void TransportTest::restIsQuiet()
{
    for (const Music music : {Music::None, Music::Open}) {
        Studio studio;
        studio.Open(ui_test::kShow, music);
        studio.Show();
        QCOMPARE(studio.RunningTimers(), 0);
        studio.Press(Qt::Key_Space);
        QVERIFY(studio.RunningTimers() > 0);
        studio.Press(Qt::Key_Space);
        QTRY_COMPARE(studio.RunningTimers(), 0);
    }
}

void TransportTest::effectsTickAtRest()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.editor.MoveTo(4'000);
    studio.window.Refresh();
    QCOMPARE(studio.RunningTimers(), 1);
    const auto before = studio.editor.Fountain().State().mintSweepPosition;
    QTRY_VERIFY(studio.editor.Fountain().State().mintSweepPosition != before);

    studio.Click("mmEditing_play");
    const auto standing = studio.editor.Fountain().State().mintSweepPosition;
    QTest::qWait(2 * studio.editor.TimerOf(editor::Editor::kSweeps).Interval());
    QCOMPARE(studio.editor.Fountain().State().mintSweepPosition, standing);
    studio.player.Elapse(timeline::kSnippetLength);
    QTRY_VERIFY(studio.editor.Fountain().State().mintSweepPosition != standing);
}

void TransportTest::choreographyPlaysWithoutMusic()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    studio.Click("mmEditing_play");
    QTRY_COMPARE(studio.Text("lblTime"), "00:00.3");
    studio.Click("mmEditing_clear");
    QCOMPARE(studio.Text("lblTime"), "00:00.3");
    QVERIFY(studio.Find("mmEditing_play")->isEnabled());
}

void TransportTest::snippetRefusesInputAndKeepsPainting()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    studio.editor.MoveTo(1'000);
    studio.window.Refresh();
    studio.Click("mmEditing_play");
    QVERIFY(studio.editor.Playback().SnippetPlays());
    QCOMPARE(studio.Text("lblMusic"), "Playing three seconds from 00:01.0 ...");

    const QSignalSpy moved(studio.Find<ui::TimeStrip>("timeStrip"), &ui::TimeStrip::TimeChosen);
    const QSignalSpy clicked(studio.Find<QAbstractButton>("mmEditing_play"),
                             &QAbstractButton::clicked);
    studio.player.TakeCalls();
    studio.Click("timeStrip");
    studio.Click("mmEditing_play");
    studio.Find("timeStrip")->setFocus();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Right, Qt::Key_Space, Qt::Key_MediaStop})
        studio.Press(key);
    QTest::keyClick(&studio.window, Qt::Key_D, Qt::AltModifier);
    QVERIFY(!studio.window.close());
    QVERIFY(studio.window.isVisible());
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
    QCOMPARE(moved.count() + clicked.count(), 0);
    QVERIFY(studio.player.TakeCalls().empty());

    const QSignalSpy painted(studio.Find<ui::ViewWidget>("fraView"), &ui::ViewWidget::Painted);
    studio.Find("fraView")->update();
    QTRY_COMPARE(painted.count(), 1);

    studio.player.Elapse(timeline::kSnippetLength);
    QTRY_VERIFY(!studio.editor.Playback().SnippetPlays());
    QCOMPARE(studio.Text("lblTime"), "00:01.0");
    QCOMPARE(studio.Text("lblMusic"), "Gala.mp3");
    studio.Press(Qt::Key_End);
    QCOMPARE(studio.Text("lblTime"), "00:12.0");
}

void TransportTest::closingStopsEverything()
{
    for (const Music music : {Music::None, Music::Open}) {
        Studio studio;
        studio.Open(ui_test::kShow, music);
        studio.Show();
        studio.editor.MoveTo(4'000);
        studio.Press(Qt::Key_Space);
        studio.Play(100);
        if (music == Music::Open) {
            QVERIFY(!studio.window.close());
            studio.Press(Qt::Key_MediaStop);
        }
        QVERIFY(studio.window.close());
        QCOMPARE(studio.player.Mode(), PlayerMode::NotReady);
        QCOMPARE(studio.RunningTimers(), 0);
    }
}

QTEST_MAIN(TransportTest)
#include "transport_test.moc"
