#include <QAction>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>
#include <memory>

#include "studio.h"
#include "ui/frm_splash.h"

using ui_test::Music;
using ui_test::Studio;

namespace {

/// The splash of a window, null when there is none on the screen.
ui::frmSplash* Shown(Studio& studio)
{
    for (auto* splash : studio.window.findChildren<ui::frmSplash*>())
        if (splash->isVisible())
            return splash;
    return nullptr;
}

ui::frmSplash* ShowAtStartUp(Studio& studio)
{
    auto* splash = new ui::frmSplash(&studio.window);
    splash->ShowAtStartUp();
    return splash;
}

}  // namespace

class SplashTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { ui::SetUpQt(); }
    void versionHasItsRevisionOnlyWhereThereIsOne();
    void creditsNameLicencePurposeAndArtwork();
    void startUpScreenClosesByItself();
    void anyInputClosesItAndDoesNothingElse_data();
    void anyInputClosesItAndDoesNothingElse();
    void questionIsNotAskedBehindThePicture();
    void programClosesFromBehindIt();
    void programEndsWhileItShows();
    void aboutStaysUntilItIsClosed_data();
    void aboutStaysUntilItIsClosed();
    void pictureFitsTheSmallestScreenAndIsSharp();
};

void SplashTest::versionHasItsRevisionOnlyWhereThereIsOne()
{
    const struct {
        int major;
        int minor;
        int revision;
        const char* text;
    } rows[] = {{2, 3, 5, "Version 2.03 Revision 5"},
                {2, 3, 0, "Version 2.03"},
                {3, 81, 0, "Version 3.81"},
                {0, 0, 12, "Version 0.00 Revision 12"},
                {10, 100, 0, "Version 10.100"}};
    for (const auto& row : rows)
        QCOMPARE(ui::VersionText(row.major, row.minor, row.revision), row.text);

    Studio studio;
    studio.Show();
    studio.Choose("mnuHelpAction_3");
    QCOMPARE(studio.Text("lblVersion"), "Version 3.81");
    QCOMPARE(studio.Text("lblCredits"), ui::CreditsText());
}

void SplashTest::creditsNameLicencePurposeAndArtwork()
{
    const QStringList parts = ui::CreditsText().split("\n\n    ");
    QCOMPARE(parts.size(), 2);
    QVERIFY(parts[0].contains("GNU General Public License"));
    QVERIFY(parts[1].section('\n', -1).contains("Artwork"));
}

void SplashTest::startUpScreenClosesByItself()
{
    Studio studio;
    studio.Show();
    ui::frmSplash* splash = ShowAtStartUp(studio);
    QVERIFY(!studio.Find("cmdOK")->isVisible());
    auto* timer = studio.Find<QTimer>("tmrSplash");
    QCOMPARE(timer->interval(), 5'000);
    QVERIFY(timer->isActive());
    QCOMPARE(splash->geometry().center(), studio.window.geometry().center());
    studio.player.Advance(100);
    QVERIFY(splash->isVisible());
    QVERIFY(QMetaObject::invokeMethod(timer, "timeout"));
    QVERIFY(!splash->isVisible());
}

void SplashTest::anyInputClosesItAndDoesNothingElse_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("onWindow");
    QTest::newRow("a click on the picture") << false << false;
    QTest::newRow("a click on the window") << false << true;
    QTest::newRow("a key on the picture") << true << false;
    QTest::newRow("a key on the window") << true << true;
}

void SplashTest::anyInputClosesItAndDoesNothingElse()
{
    QFETCH(bool, byKey);
    QFETCH(bool, onWindow);
    Studio studio;
    studio.Open(ui_test::kShow, Music::Open);
    studio.Show();
    auto* play = studio.Find("mmSong_play");
    const auto act = [&](QWidget* on) {
        if (byKey)
            QTest::keyClick(on, Qt::Key_Space);
        else
            QTest::mouseClick(on, Qt::LeftButton);
    };
    QPointer<ui::frmSplash> splash = ShowAtStartUp(studio);
    act(onWindow ? play : splash.data());
    QVERIFY(Shown(studio) == nullptr);
    QCOMPARE(studio.player.Mode(), timeline::PlayerMode::Stopped);

    act(play);
    QCOMPARE(studio.player.Mode(), timeline::PlayerMode::Playing);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(splash == nullptr);
}

void SplashTest::questionIsNotAskedBehindThePicture()
{
    Studio studio;
    studio.Show();
    ShowAtStartUp(studio);
    QMessageBox box(&studio.window);
    box.open();
    QVERIFY(Shown(studio) == nullptr);
    QTest::keyClick(&box, Qt::Key_Escape);
    QVERIFY(!box.isVisible());
}

void SplashTest::programClosesFromBehindIt()
{
    Studio studio;
    studio.Show();
    ShowAtStartUp(studio);
    QVERIFY(studio.window.close());
    QVERIFY(Shown(studio) == nullptr);
}

void SplashTest::programEndsWhileItShows()
{
    const QTemporaryDir home;
    const std::string folder = home.path().toStdString();
    auto program =
        std::make_unique<ui::Application>(ui::StartOptions{.base = {},
                                                           .silent = true,
                                                           .splash = true,
                                                           .settings = folder + "/settings.conf",
                                                           .recovery = folder + "/recovery"});
    program->Start();
    QTRY_VERIFY(program->Window().findChild<ui::frmSplash*>() != nullptr);
    QPointer<ui::frmSplash> splash = program->Window().findChild<ui::frmSplash*>();
    QTRY_VERIFY(splash->isVisible());
    QTest::qWait(100);  // the start-up goes on behind it
    program.reset();
    QVERIFY(splash == nullptr);
}

void SplashTest::aboutStaysUntilItIsClosed_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("enter") << int(Qt::Key_Return);
    QTest::newRow("escape") << int(Qt::Key_Escape);
    QTest::newRow("the button") << 0;
}

void SplashTest::aboutStaysUntilItIsClosed()
{
    QFETCH(int, key);
    Studio studio;
    studio.Show();
    studio.Choose("mnuHelpAction_3");
    ui::frmSplash* about = Shown(studio);
    QVERIFY(about != nullptr);
    QVERIFY(about->isModal());
    QVERIFY(!studio.Find<QTimer>("tmrSplash")->isActive());
    auto* ok = studio.Find<QPushButton>("cmdOK");
    QVERIFY(ok->isVisible());
    QCOMPARE(ok->text(), "&Ok");
    QTest::mouseClick(about, Qt::LeftButton, {}, {4, 4});
    QTest::keyClick(about, Qt::Key_X);
    QVERIFY(about->isVisible());
    if (key == 0)
        QTest::mouseClick(ok, Qt::LeftButton);
    else
        QTest::keyClick(ok, static_cast<Qt::Key>(key));
    QVERIFY(Shown(studio) == nullptr);
}

void SplashTest::pictureFitsTheSmallestScreenAndIsSharp()
{
    Studio studio;
    ui::frmSplash splash(&studio.window);
    QVERIFY(splash.width() <= 800 && splash.height() <= 600);
    for (const auto* label : splash.findChildren<QLabel*>()) {
        QVERIFY2(label->sizeHint().width() <= label->width() || label->wordWrap(),
                 qPrintable(label->objectName()));
        QVERIFY2(label->heightForWidth(label->width()) <= label->height(),
                 qPrintable(label->objectName()));
    }
    // Twice as many pixels show more than the same pixels twice. Most of it is quiet sky.
    QImage fine(splash.size() * 2, QImage::Format_RGB32);
    fine.setDevicePixelRatio(2);
    splash.render(&fine);
    QImage coarse(splash.size(), QImage::Format_RGB32);
    splash.render(&coarse);
    const QImage doubled = coarse.scaled(fine.size());
    int differ = 0;
    for (int y = 0; y < fine.height(); ++y)
        for (int x = 0; x < fine.width(); ++x)
            differ += fine.pixel(x, y) != doubled.pixel(x, y) ? 1 : 0;
    QVERIFY2(differ > fine.width() * fine.height() / 40, qPrintable(QString::number(differ)));
}

QTEST_MAIN(SplashTest)
#include "splash_test.moc"
