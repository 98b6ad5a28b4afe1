// The script beside the view: what it shows, how it follows the show, and what one does with it.
#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QToolButton>
#include <QToolTip>
#include <QtTest>

#include "document/control_text.h"
#include "document/random_show.h"
#include "ui/script_model.h"
#include "ui/script_rows.h"
#include "ui/script_view.h"

namespace {

document::Choreography Read(const std::string& lines)
{
    document::Choreography show;
    document::ReadControlText(show, "ct0-381\n" + lines);
    return show;
}

constexpr const char* kShow =
    "00:01.0003-020 017-001\n"
    "00:02.0001-019\n"
    "00:04.0009-101 009-037\n"
    "00:05.0120-001\n";

/// `count` times, 100 ms apart from 0 on, of two commands each.
document::Choreography Long(int count)
{
    document::Choreography show;
    for (int slot = 0; slot < count; ++slot)
        document::InsertSlot(show, slot, slot * 100, {'\x03', '\x14', '\x11', '\x01'});
    return show;
}

/// A view that is on the screen, and whatever it has announced.
struct Desk {
    ui::ScriptView view{nullptr};
    QList<std::int32_t> chosen;
    std::uint64_t version = 0;

    explicit Desk(const document::Choreography& show)
    {
        QObject::connect(&view, &ui::ScriptView::TimeChosen, &view,
                         [this](std::int32_t time) { chosen << time; });
        view.resize(400, 400);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view))
            qFatal("the window does not come");
        view.activateWindow();
        QCoreApplication::processEvents();
        Filter().clearFocus();
        Show(show);
    }

    void Show(const document::Choreography& show, std::int32_t musicLength = 0)
    {
        view.ShowChoreography(show, ++version, musicLength);
    }
    template <typename T>
    T& Find(const char* name)
    {
        T* found = view.findChild<T*>(QLatin1String(name));
        if (found == nullptr)
            qFatal("there is no %s", name);
        return *found;
    }
    ui::ScriptRows& Rows() { return Find<ui::ScriptRows>("lstScript"); }
    QLineEdit& Filter() { return Find<QLineEdit>("txtScriptFilter"); }
    QString Times() { return Find<QLabel>("lblScriptTimes").text(); }
    QModelIndex Index(int row) { return Rows().model()->index(row, 0); }
    int TopRow() { return Rows().indexAt(QPoint(1, 1)).row(); }
    /// "2" on row 2, "2-" between rows 2 and 3.
    QString Mark()
    {
        const auto mark = Rows().Marked();
        return QString::number(mark.row) + (mark.on ? "" : "-");
    }
    void Click(int row)
    {
        QTest::mouseClick(Rows().viewport(), Qt::LeftButton, {},
                          Rows().visualRect(Index(row)).center());
    }
    void Scroll(int steps)
    {
        QScrollBar* bar = Rows().verticalScrollBar();
        for (int i = 0; i < steps; ++i)
            bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QCoreApplication::processEvents();
    }
    bool OffersToFollow() { return Find<QToolButton>("cmdScriptFollow").isVisible(); }
};

}  // namespace

class ScriptViewTest final : public QObject {
    Q_OBJECT

 private slots:
    void ClickAndEnterGoToATime()
    {
        Desk desk(Read(kShow));
        desk.Click(2);
        QCOMPARE(desk.chosen, QList<std::int32_t>{4000});
        QTest::keyClick(&desk.Rows(), Qt::Key_Up);
        QTest::keyClick(&desk.Rows(), Qt::Key_Up);
        QCOMPARE(desk.chosen.size(), 1);  // the keys only select
        QTest::keyClick(&desk.Rows(), Qt::Key_Return);
        QCOMPARE(desk.chosen, (QList<std::int32_t>{4000, 1000}));
        QTest::mouseClick(desk.Rows().viewport(), Qt::RightButton, {}, QPoint(50, 5));
        QTest::mouseClick(desk.Rows().viewport(), Qt::LeftButton, {},
                          QPoint(50, 300));  // below all
        QCOMPARE(desk.chosen.size(), 2);
    }

    void MarksWhereTheShowStands()
    {
        Desk desk(Read(kShow));
        const struct {
            std::int32_t time;
            bool playing;
            const char* filter;
            const char* mark;
        } rows[] = {{0, false, "", "-1-"},        {1000, false, "", "0"},
                    {1900, false, "", "0-"},      {1900, true, "", "0"},
                    {2000, true, "", "1"},        {500, true, "", "-1-"},
                    {9000, false, "", "3-"},      {1000, false, "peacock", "-1-"},
                    {4000, true, "peacock", "0"}, {5000, true, "peacock", "0-"}};
        for (const auto& row : rows) {
            desk.Filter().setText(row.filter);
            desk.view.ShowTime(row.time, row.playing);
            QCOMPARE(desk.Mark(), QString(row.mark));
        }
        desk.Filter().clear();
        desk.view.ShowTime(4000, false);
        QCOMPARE(desk.Mark(), "2");
        desk.Show(Read("00:04.0009-101\n"));
        QCOMPARE(desk.Mark(), "0");
    }

    void FollowsTheShow()
    {
        Desk desk(Long(1000));
        int turned = 0;
        int top = 0;
        for (int time = 0; time <= 50'000; time += 50) {
            desk.view.ShowTime(time, true);
            QVERIFY(desk.Rows().ShowsMark());
            turned += desk.Rows().verticalScrollBar()->value() != top ? 1 : 0;
            top = desk.Rows().verticalScrollBar()->value();
        }
        QVERIFY2(turned > 10 && turned < 100, "by pages, not row by row");
    }

    void LeavesTheUserAloneWhoLooksElsewhere()
    {
        Desk desk(Long(1000));
        desk.view.ShowTime(0, true);
        desk.Scroll(5);
        const int top = desk.TopRow();
        QVERIFY(desk.OffersToFollow());
        desk.view.ShowTime(300, true);
        QCOMPARE(desk.TopRow(), top);

        desk.Find<QToolButton>("cmdScriptFollow").click();
        QVERIFY(desk.Rows().ShowsMark() && !desk.OffersToFollow());
        desk.Scroll(1);
        desk.view.ShowTime(40'000, false);  // a stop, or a move by another control
        QVERIFY(desk.Rows().ShowsMark() && !desk.OffersToFollow());

        desk.Scroll(1);
        const int ahead = desk.TopRow();
        for (int time = 40'000; time < ahead * 100 + 20'000; time += 100)
            desk.view.ShowTime(time, true);
        QVERIFY(desk.Rows().ShowsMark());  // it has come there by itself

        desk.view.EditFilter();
        const int typing = desk.TopRow();
        desk.view.ShowTime(90'000, false);
        QCOMPARE(desk.TopRow(), typing);
    }

    void FiltersWhileOneTypes()
    {
        Desk desk(Read(kShow));
        QCOMPARE(desk.Times(), "4 times");
        desk.Click(2);
        desk.view.EditFilter();
        QTest::keyClicks(&desk.Filter(), "peacock");
        QCOMPARE(desk.Times(), "1 of 4 times");
        QCOMPARE(desk.Rows().currentIndex().row(), 0);  // what was selected
        QTest::keyClicks(&desk.Filter(), "s");
        QCOMPARE(desk.Times(), "0 of 4 times");
        QVERIFY(desk.Rows().accessibleDescription().startsWith("No time"));
        QTest::keyClick(&desk.Filter(), Qt::Key_Escape);
        QCOMPARE(desk.Times(), "4 times");
        QVERIFY(desk.Filter().hasFocus());
        QTest::keyClick(&desk.Filter(), Qt::Key_Escape);
        QVERIFY(desk.Rows().hasFocus());

        desk.view.EditFilter();
        QTest::keyClicks(&desk.Filter(), "ring");
        desk.view.ShowTime(1100, false);
        QTest::keyClick(&desk.Filter(), Qt::Key_Return);  // to what comes next
        QVERIFY(desk.Rows().hasFocus());
        QTest::keyClick(&desk.Rows(), Qt::Key_Return);
        QCOMPARE(desk.chosen.last(), 2000);

        desk.Find<QToolButton>("cmdScriptProblems").click();
        QCOMPARE(desk.Times(), "2 of 4 times");
        desk.Find<QToolButton>("cmdScriptProblems").click();
        QCOMPARE(desk.Times(), "4 times");
    }

    void ShowsAndSpeaksProblems()
    {
        Desk desk(Read(kShow));
        QCOMPARE(desk.Find<QToolButton>("cmdScriptProblems").text(), "2 problems");
        QCOMPARE(desk.Index(3).data(Qt::AccessibleTextRole).toString(),
                 "00:05.0: * * * UNKNOWN COMMAND * * *. Problem: Goes to an address that drives "
                 "nothing; remove it");
        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&desk.Rows());
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->childCount(), 4);
        QVERIFY(list->child(2)->text(QAccessible::Name).contains("Warning: Raises the Peacock"));

        const QRect row = desk.Rows().visualRect(desk.Index(3));
        const QPoint second(row.center().x(), row.bottom() - 3);
        QHelpEvent help(QEvent::ToolTip, second, desk.Rows().viewport()->mapToGlobal(second));
        QCoreApplication::sendEvent(desk.Rows().viewport(), &help);
        QCOMPARE(QToolTip::text(), "Goes to an address that drives nothing; remove it");

        desk.Show(Read("00:04.0009-101\n00:05.0001-019\n"));
        QVERIFY(!desk.Find<QToolButton>("cmdScriptProblems").isVisible());
        desk.Show(Read("00:04.0009-101\n00:05.0001-019\n"), 4500);
        QCOMPARE(desk.Find<QToolButton>("cmdScriptProblems").text(), "1 problem");
    }

    // A show too large to be looked through at every edit.
    void FindsProblemsOfALargeShowSoon()
    {
        document::Choreography show = Long(51'000);
        Desk desk(show);
        QTRY_VERIFY(desk.Find<QToolButton>("cmdScriptProblems").isVisible());  // no reset at all
        const QString before = desk.Find<QToolButton>("cmdScriptProblems").text();
        document::StoreCommands(show, 50'999, {'\x09', '\x65', '\x09', '\x25'});
        desk.Show(show);
        QCOMPARE(desk.Find<QToolButton>("cmdScriptProblems").text(), before);
        QTRY_VERIFY(desk.Find<QToolButton>("cmdScriptProblems").text() != before);
        QVERIFY(desk.Index(50'999).data(Qt::AccessibleTextRole).toString().contains("Peacock and"));
    }

    void RowsStayInPlaceWhenOthersChange()
    {
        document::Choreography show = Long(1000);
        Desk desk(show);
        desk.view.ShowTime(50'000, false);
        const auto place = [&desk] {
            return desk.Rows().visualRect(desk.Index(desk.Rows().Marked().row)).top();
        };
        const int before = place();
        document::EraseSlot(show, 3);
        desk.Show(show);
        QCOMPARE(place(), before);
        document::InsertSlot(show, 8, 850, {'\x03', '\x14'});
        document::StoreCommands(show, 9, {'\x03', '\x14'});
        desk.Show(show);
        QCOMPARE(place(), before);
        QCOMPARE(desk.Mark(), "500");
    }

    // The tester of the model ends the program when a signal does not fit what the model holds.
    void TheModelAnnouncesWhatItDoes()
    {
        for (std::uint64_t seed = 1; seed <= 6; ++seed) {
            testing_support::Random random(seed);
            ui::ScriptModel model;
            ui::ScriptRows rows(model, nullptr);
            const QAbstractItemModelTester tester(
                &model, QAbstractItemModelTester::FailureReportingMode::Fatal);
            model.SetFilter(seed % 2 == 0 ? QStringLiteral("ring") : QString());
            for (int step = 0; step < 30; ++step) {
                const document::Choreography show =
                    testing_support::RandomShow(random, {.times = random.Below(40)});
                model.ShowChoreography(show);
                model.CheckShow(1000 * random.Below(60));
                QCOMPARE(rows.model()->rowCount(), model.List().RowCount());
                int top = 0;
                rows.verticalScrollBar()->setValue(0);
                for (int row = 0; row < model.List().RowCount(); ++row) {
                    const QRect rect = rows.visualRect(model.index(row));
                    QCOMPARE(rect.top(), top);
                    top = rect.bottom() + 1;
                }
            }
        }
    }

    void EverythingHasANameAndAPlace()
    {
        Desk desk(Read(kShow));
        QStringList order;
        QWidget* widget = &desk.Filter();
        do {
            order << widget->objectName();
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
            do
                widget = widget->nextInFocusChain();
            while ((widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy() != nullptr ||
                   widget->parentWidget() != &desk.view);
        } while (widget != &desk.Filter());
        QCOMPARE(order, (QStringList{"txtScriptFilter", "cmdScriptFollow", "cmdScriptProblems",
                                     "lstScript"}));
    }
};

QTEST_MAIN(ScriptViewTest)
#include "script_view_test.moc"
