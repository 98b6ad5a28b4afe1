// The time strip by itself, worked by mouse, wheel and keys.
#include "ui/time_strip.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <QtTest>
#include <memory>

#include "document/packed.h"
#include "sound/peaks.h"

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 56;
constexpr int kLength = 100'000;  // 100 ms a pixel
constexpr int kRuler = 6;         // a height within the ruler

/// A strip of a piece with music, which goes where its user wants as the window lets it.
struct Stage {
    document::Choreography show;
    ui::TimeStrip strip{nullptr};
    QList<int> chosen;
    bool playing = false;
    bool behind = false;  // the window has not yet gone where it was told to

    explicit Stage(bool withMusic = true)
    {
        Put(20'000, "001-017 017-001");
        Put(50'000,
            "099-000 001-017 002-017 003-017 004-017 005-017 006-017 007-018 017-001 "
            "018-002 019-004 020-001 021-001 022-001");
        QObject::connect(&strip, &ui::TimeStrip::TimeChosen, &strip, [this](std::int32_t time) {
            chosen << time;
            if (!behind)
                strip.ShowPosition(time, kLength, playing);
        });
        strip.resize(kWidth, kHeight);
        strip.ShowChoreography(show, 1);
        if (withMusic) {
            auto peaks = std::make_shared<sound::Peaks>();
            peaks->bins.assign(kLength / sound::Peaks::kBin, {-50, 50});
            strip.ShowPeaks(peaks);
        }
        strip.ShowPosition(40'000, kLength, false);
        strip.show();
        if (!QTest::qWaitForWindowExposed(&strip))
            qFatal("the strip is not shown");
    }

    void Put(std::int32_t time, const char* commands)
    {
        document::InsertSlot(show, show.lngLastSlot(), time, testing_support::Packed(commands));
    }

    void Play(std::int32_t time)
    {
        playing = true;
        strip.ShowPosition(time, kLength, true);
    }

    void Stop(std::int32_t time)
    {
        playing = false;
        strip.ShowPosition(time, kLength, false);
    }

    void Wheel(QPoint delta, double x, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPointF place(x, kRuler);
        QWheelEvent event(place, place, {}, delta, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&strip, &event);
    }
    void Drag(int x) { Mouse(QEvent::MouseMove, x, Qt::NoButton, Qt::LeftButton); }
    void Press(int x, int y = kRuler)
    {
        Mouse(QEvent::MouseButtonPress, x, Qt::LeftButton, Qt::LeftButton, y);
    }
    void Release(int x) { Mouse(QEvent::MouseButtonRelease, x, Qt::LeftButton, Qt::NoButton); }

 private:
    void Mouse(QEvent::Type type, int x, Qt::MouseButton button, Qt::MouseButtons buttons,
               int y = kRuler)
    {
        const QPointF place(x, y);
        QMouseEvent event(type, place, strip.mapToGlobal(place), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(&strip, &event);
    }
};

/// Sees what a widget repaints.
class PaintSpy final : public QObject {
 public:
    QRegion painted;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted |= static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

/// Counts how often a widget is woken.
class TimerSpy final : public QObject {
 public:
    int ticks = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        ticks += event->type() == QEvent::Timer ? 1 : 0;
        return false;
    }
};

constexpr QPoint kNotchUp(0, 120);
constexpr QPoint kNotchDown(0, -120);

}  // namespace

class TimeStripTest : public QObject {
    Q_OBJECT

 private slots:
    static void AClickGoesToTheTenthUnderThePointer();
    static void ADragTellsEveryTenthOnce();
    static void ADragBackCountsThoughTheWindowIsBehind();
    static void ADragBeyondTheEdgeScrolls();
    static void AFlagLeadsToItsMark();
    static void TheWheelZoomsAroundThePointer();
    static void TheWheelPans();
    static void KeysMove();
    static void KeysZoomAndScroll();
    static void NothingMovesWhileItPlays();
    static void ThePageTurnsWhileItPlays();
    static void APlayedStepRepaintsOnlyTheCursor();
    static void TheCursorRunsOnBetweenTwoPositions();
    static void AHiddenStripRests();
    static void AnEditShowsAtItsVersion();
    static void CommandsBehindTheMusicAreInReach();
    static void HoveringTellsTimeAndCommands();
    static void WithoutMusicAShowGoesOn();
    static void ScreenReadersFindASlider();
};

void TimeStripTest::AClickGoesToTheTenthUnderThePointer()
{
    Stage stage;
    for (const int x : {0, 123, 999})
        QTest::mouseClick(&stage.strip, Qt::LeftButton, {}, {x, 20});
    QCOMPARE(stage.chosen, QList<int>({0, 12'300, 99'900}));
    stage.chosen.clear();
    QTest::mouseDClick(&stage.strip, Qt::LeftButton, {}, {500, 20});
    QCOMPARE(stage.chosen, QList<int>({50'000}));
    QTest::mouseClick(&stage.strip, Qt::RightButton, {}, {700, 20});
    QCOMPARE(stage.chosen, QList<int>({50'000}));
}

// However many moves come before the strip gets to work, the last one counts.
void TimeStripTest::ADragTellsEveryTenthOnce()
{
    Stage stage;
    stage.Press(100);
    for (int x = 101; x <= 180; ++x)
        stage.Drag(x);
    QCOMPARE(stage.chosen, QList<int>({10'000}));
    QTRY_COMPARE(stage.chosen, QList<int>({10'000, 18'000}));
    stage.Drag(180);
    QTest::qWait(1);
    stage.Drag(170);
    stage.Release(170);
    QCOMPARE(stage.chosen, QList<int>({10'000, 18'000, 17'000}));
    stage.Drag(400);
    QTest::qWait(1);
    QCOMPARE(stage.chosen.size(), 3);
}

void TimeStripTest::ADragBackCountsThoughTheWindowIsBehind()
{
    Stage stage;
    stage.behind = true;
    stage.Press(100);
    stage.Drag(400);  // where the window still is
    stage.Release(400);
    QCOMPARE(stage.chosen, QList<int>({10'000, 40'000}));
    stage.chosen.clear();
    stage.Press(500);
    stage.strip.setEnabled(false);
    stage.strip.setEnabled(true);
    stage.Drag(600);
    stage.Release(600);
    QCOMPARE(stage.chosen, QList<int>({50'000}));
}

void TimeStripTest::ADragBeyondTheEdgeScrolls()
{
    Stage stage;
    stage.Wheel(kNotchUp * 6, 0);
    const double first = stage.strip.View().First();
    stage.Press(900);
    stage.Drag(kWidth + 40);
    QTRY_VERIFY(stage.strip.View().First() > first + stage.strip.View().Span());
    QVERIFY(stage.chosen.last() > first + stage.strip.View().Span());
    stage.Release(kWidth + 40);
    const double after = stage.strip.View().First();
    QTest::qWait(100);
    QCOMPARE(stage.strip.View().First(), after);
}

void TimeStripTest::AFlagLeadsToItsMark()
{
    Stage stage;
    timeline::Marks marks;
    timeline::AddMark(marks, 30'000);
    stage.strip.ShowMarks(marks);
    const QRect flag = render::FlagRect(stage.strip.View(), render::BandsOf(kHeight, true), 30'000);
    const QPoint tip(flag.right() - 1, flag.center().y());
    QCOMPARE(stage.strip.TextAt(tip), QStringLiteral("00:30.0: mark"));
    stage.Press(tip.x(), tip.y());
    stage.Drag(tip.x() + 1);
    stage.Release(tip.x() + 1);
    QCOMPARE(stage.chosen, QList<int>({30'000}));
}

void TimeStripTest::TheWheelZoomsAroundThePointer()
{
    Stage stage;
    const timeline::StripView& view = stage.strip.View();
    for (int notch = 0; notch < 30; ++notch) {
        stage.Wheel(kNotchUp, 300);
        QVERIFY(std::abs(view.TimeAt(300) - 30'000) < 1e-6);
    }
    QCOMPARE(view.Span(), 1'000.0);
    for (int notch = 0; notch < 30; ++notch)
        stage.Wheel(kNotchDown, 700);
    QCOMPARE(view.First(), 0.0);
    QCOMPARE(view.Span(), double{kLength});
    QVERIFY(stage.chosen.isEmpty());
}

void TimeStripTest::TheWheelPans()
{
    Stage stage;
    const timeline::StripView& view = stage.strip.View();
    stage.Wheel(kNotchUp * 5, 500);
    const double first = view.First();
    stage.Wheel(kNotchDown, 500, Qt::ShiftModifier);
    QVERIFY(std::abs(view.First() - first - view.Span() / 10) < 1e-6);
    stage.Wheel({120, 0}, 500);
    QVERIFY(std::abs(view.First() - first) < 1e-6);
    stage.Wheel({120 * 1000, 0}, 500);
    QCOMPARE(view.First(), 0.0);
}

void TimeStripTest::KeysMove()
{
    const struct {
        const char* name;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int from;
        QList<int> chosen;
    } cases[] = {
        {"a tenth on", Qt::Key_Right, Qt::NoModifier, 40'000, {40'100}},
        {"a tenth back", Qt::Key_Left, Qt::NoModifier, 40'000, {39'900}},
        {"a second on", Qt::Key_Right, Qt::ControlModifier, 40'000, {41'000}},
        {"a second back", Qt::Key_Left, Qt::ControlModifier, 40'000, {39'000}},
        {"up and down are seconds", Qt::Key_Up, Qt::NoModifier, 40'000, {41'000}},
        {"not before the start", Qt::Key_Left, Qt::NoModifier, 0, {}},
        {"a second back to the start", Qt::Key_Left, Qt::ControlModifier, 300, {0}},
        {"not behind the music", Qt::Key_Right, Qt::ControlModifier, 99'900, {}},
    };
    for (const auto& c : cases) {
        Stage stage;
        stage.strip.ShowPosition(c.from, kLength, false);
        QTest::keyClick(&stage.strip, c.key, c.modifiers);
        QVERIFY2(stage.chosen == c.chosen, c.name);
    }
}

void TimeStripTest::KeysZoomAndScroll()
{
    Stage stage;
    const timeline::StripView& view = stage.strip.View();
    const double x = view.PixelOf(40'000);
    QTest::keyClick(&stage.strip, Qt::Key_Plus);
    QTest::keyClick(&stage.strip, Qt::Key_Equal);
    QCOMPARE(view.Span(), kLength / 4.0);
    QVERIFY(std::abs(view.PixelOf(40'000) - x) < 1e-6);
    QTest::keyClick(&stage.strip, Qt::Key_Minus);
    QCOMPARE(view.Span(), kLength / 2.0);
    const double first = view.First();
    QTest::keyClick(&stage.strip, Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(view.First() > first);
    QTest::keyClick(&stage.strip, Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(std::abs(view.First() - first) < 1e-6);
    QTest::keyClick(&stage.strip, Qt::Key_0);
    QCOMPARE(view.Span(), double{kLength});
    QVERIFY(stage.chosen.isEmpty());
}

void TimeStripTest::NothingMovesWhileItPlays()
{
    Stage stage;
    stage.Press(100);
    stage.Play(41'000);
    stage.Drag(200);
    QTest::keyClick(&stage.strip, Qt::Key_Right);
    QAccessible::queryAccessibleInterface(&stage.strip)->valueInterface()->setCurrentValue(5.0);
    QTest::qWait(1);
    stage.Stop(41'500);
    stage.Drag(300);  // a drag ends when the music begins, and does not come to life again
    stage.Release(300);
    QCOMPARE(stage.chosen, QList<int>({10'000}));

    stage.Play(42'000);
    stage.Press(100);
    stage.Stop(42'500);
    stage.Drag(500);
    stage.Release(500);
    QCOMPARE(stage.chosen, QList<int>({10'000}));

    stage.Play(43'000);
    stage.Wheel(kNotchUp, 500);
    QVERIFY(stage.strip.View().Span() < kLength);
}

void TimeStripTest::ThePageTurnsWhileItPlays()
{
    Stage stage;
    const timeline::StripView& view = stage.strip.View();
    stage.Wheel(kNotchUp * 6, 400);
    stage.Play(40'000);
    const double first = view.First();
    const double end = first + view.Span();
    int pages = 0;
    double shown = first;
    for (std::int32_t time = 40'000; time < 60'000; time += 50) {
        stage.Play(time);
        QVERIFY(view.Shows(time));
        pages += view.First() != shown ? 1 : 0;
        shown = view.First();
        QVERIFY(time >= end || view.First() == first);
    }
    QVERIFY(pages >= 1 && pages <= 3);
    // Who looks elsewhere meanwhile is left there.
    stage.Wheel(kNotchUp * 100, 0, Qt::ShiftModifier);
    stage.Play(60'000);
    QCOMPARE(view.First(), 0.0);
    stage.Stop(60'100);
    QVERIFY(view.Shows(60'100));
}

void TimeStripTest::APlayedStepRepaintsOnlyTheCursor()
{
    Stage stage;
    stage.Play(50'000);
    QApplication::processEvents();
    PaintSpy spy;
    stage.strip.installEventFilter(&spy);
    stage.Play(50'050);  // less than a pixel
    QApplication::processEvents();
    QVERIFY(spy.painted.isEmpty());
    stage.Play(70'000);
    QApplication::processEvents();
    QVERIFY(spy.painted.contains(QPoint(500, 30)) && spy.painted.contains(QPoint(700, 30)));
    int pixels = 0;
    for (const QRect& rect : spy.painted)
        pixels += rect.width() * rect.height();
    QVERIFY2(pixels < 40 * kHeight, qPrintable(QString::number(pixels)));
}

void TimeStripTest::TheCursorRunsOnBetweenTwoPositions()
{
    Stage stage;
    for (int notch = 0; notch < 60; ++notch)
        stage.Wheel({0, 120}, 500);  // one second across: a pixel is a millisecond
    const QImage still = stage.strip.grab().toImage();
    const auto cursor = [&] {  // the first column that is not as without the cursor
        const QImage picture = stage.strip.grab().toImage();
        const auto same = [&](int x) {
            for (int y = 0; y < kHeight; ++y)
                if (picture.pixel(x, y) != still.pixel(x, y))
                    return false;
            return true;
        };
        int x = 0;
        while (x < kWidth && same(x))
            ++x;
        return x;
    };
    const auto start = static_cast<std::int32_t>(stage.strip.View().First());
    stage.Play(start + 200);
    const int first = cursor();
    QVERIFY2(first > 150 && first < kWidth, qPrintable(QString::number(first)));
    QTRY_VERIFY_WITH_TIMEOUT(cursor() > first + 20, 2000);
    constexpr int kAhead = 100;
    QTest::qWait(2 * kAhead);  // it waits for a position that does not come
    const int waiting = cursor();
    QVERIFY2(waiting <= first + kAhead, qPrintable(QString::number(waiting)));
    stage.Play(start + 220);  // which it has passed
    QVERIFY(cursor() >= waiting);
    stage.Stop(start + 200);
    QVERIFY(cursor() <= first);
}

void TimeStripTest::AHiddenStripRests()
{
    for (const bool plays : {true, false}) {
        Stage stage;
        for (int i = 0; i < 12; ++i)
            stage.Wheel(kNotchUp, 400);
        if (plays) {
            stage.Play(40'000);
        } else {
            stage.Press(500);
            stage.Drag(kWidth + 100);
        }
        TimerSpy spy;
        stage.strip.installEventFilter(&spy);
        QTRY_VERIFY(spy.ticks > 0);
        stage.strip.hide();
        spy.ticks = 0;
        QTest::qWait(100);
        QVERIFY2(spy.ticks == 0, plays ? "it plays" : "it is dragged");
    }
}

void TimeStripTest::AnEditShowsAtItsVersion()
{
    Stage stage;
    const QImage before = stage.strip.grab().toImage();
    document::StoreCommands(stage.show, 0, testing_support::Packed("033-097"));
    stage.strip.ShowChoreography(stage.show, 1);
    QCOMPARE(stage.strip.grab().toImage(), before);
    stage.strip.ShowChoreography(stage.show, 2);
    QVERIFY(stage.strip.grab().toImage() != before);
}

void TimeStripTest::CommandsBehindTheMusicAreInReach()
{
    Stage stage;
    stage.Put(150'000, "001-017");
    stage.strip.ShowChoreography(stage.show, 2);
    const double x = stage.strip.View().PixelOf(150'000);
    QVERIFY(x < kWidth);
    QTest::mouseClick(&stage.strip, Qt::LeftButton, {}, {static_cast<int>(x), 20});
    QCOMPARE(stage.chosen, QList<int>({150'000}));
}

void TimeStripTest::HoveringTellsTimeAndCommands()
{
    Stage stage;
    const render::StripBands bands = render::BandsOf(kHeight, true);
    QCOMPARE(stage.strip.TextAt({312, kRuler}), QStringLiteral("00:31.2"));
    QCOMPARE(stage.strip.TextAt({312, bands.lights.top + 1.0}), QStringLiteral("00:31.2: lights"));
    QCOMPARE(stage.strip.TextAt({202, 20}),
             QStringLiteral("00:20.0\nMove Ring 1 on Group A to level 1\nTurn Module 1 red lights "
                            "on"));
    const QStringList lines = stage.strip.TextAt({500, 20}).split(u'\n');
    QCOMPARE(lines.first(), QStringLiteral("00:50.0: 14 commands, more than 11"));
    QCOMPARE(lines.size(), 13);
    QCOMPARE(lines.last(), QStringLiteral("and 3 more"));

    stage.Put(50'100, "001-017");
    stage.strip.ShowChoreography(stage.show, 2);
    stage.strip.resize(100, kHeight);
    QApplication::processEvents();
    QVERIFY(stage.strip.TextAt({50, 20}).contains(QStringLiteral("1 more")));

    QHelpEvent help(QEvent::ToolTip, {20, 20}, stage.strip.mapToGlobal(QPoint(20, 20)));
    QApplication::sendEvent(&stage.strip, &help);
    QVERIFY(QToolTip::text().contains(QStringLiteral("Move Ring 1 on Group A to level 1")));
    QToolTip::hideText();
}

void TimeStripTest::WithoutMusicAShowGoesOn()
{
    Stage stage(false);
    stage.strip.ShowPosition(50'000, 50'000, false);
    QTest::keyClick(&stage.strip, Qt::Key_Right);
    QCOMPARE(stage.chosen, QList<int>({50'100}));
    document::Choreography empty;
    stage.strip.ShowChoreography(empty, 7);
    stage.strip.ShowPosition(0, 0, false);
    QVERIFY(!stage.strip.grab().isNull());
    QCOMPARE(stage.strip.TextAt({0, 30}).left(7), QStringLiteral("00:00.0"));
}

void TimeStripTest::ScreenReadersFindASlider()
{
    Stage stage;
    QAccessibleInterface* strip = QAccessible::queryAccessibleInterface(&stage.strip);
    QCOMPARE(strip->role(), QAccessible::Slider);
    QCOMPARE(strip->text(QAccessible::Name), QStringLiteral("Time strip"));
    QCOMPARE(strip->text(QAccessible::Value), QStringLiteral("00:40.0"));
    QAccessibleValueInterface* value = strip->valueInterface();
    QVERIFY(value != nullptr);
    QCOMPARE(value->currentValue().toDouble(), 40.0);
    QCOMPARE(value->maximumValue().toDouble(), 99.9);
    for (const QVariant& wish : {QVariant(12.34), QVariant(1e300), QVariant("no number")})
        value->setCurrentValue(wish);
    QCOMPARE(stage.chosen, QList<int>({12'300, 99'900}));
    QCOMPARE(stage.strip.focusPolicy(), Qt::TabFocus);
}

QTEST_MAIN(TimeStripTest)
#include "time_strip_test.moc"
