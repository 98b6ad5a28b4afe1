// The program as it starts, on a screen, in real time, with the sample show.
#include <QElapsedTimer>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

#include "ui/application.h"

namespace {

QImage ViewOnScreen(ui::frmFountain& window)
{
    const auto* view = window.findChild<QWidget*>("fraView");
    const QPoint corner = view->mapToGlobal(QPoint(0, 0));
    return window.screen()
        ->grabWindow(0, corner.x(), corner.y(), view->width(), view->height())
        .toImage();
}

/// Share of the pixels that differ.
double Difference(const QImage& one, const QImage& other)
{
    if (one.size() != other.size() || one.isNull())
        return 1;
    qint64 differ = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            differ += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
    return static_cast<double>(differ) / (one.width() * one.height());
}

/// ms of "mm:ss.t"
int Milliseconds(const QString& readout)
{
    const QStringList parts = readout.split(QRegularExpression("[:.]"));
    return parts.size() == 3
               ? parts[0].toInt() * 60'000 + parts[1].toInt() * 1'000 + parts[2].toInt() * 100
               : -1;
}

}  // namespace

class XvfbPlayTest : public QObject {
    Q_OBJECT

 private slots:
    void sampleShowPlays();
};

void XvfbPlayTest::sampleShowPlays()
{
    qputenv("GST_REGISTRY", GST_REGISTRY_FILE);
    ui::Application program({.base = SAMPLES "/mountain_hall", .silent = true});
    program.Start();
    ui::frmFountain& window = program.Window();
    timeline::MusicPlayer& mmSong = program.GetEditor().mmSong();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY2(mmSong.Length() > 0, mmSong.LastError().c_str());
    QCOMPARE(window.geometry(), window.screen()->availableGeometry());

    const auto* readout = window.findChild<QLabel*>("lblTime");
    QTest::qWait(50);
    const QImage still = ViewOnScreen(window);
    QVERIFY(Difference(still, ViewOnScreen(window)) == 0);

    QTest::mouseClick(window.findChild<QWidget*>("mmSong_play"), Qt::LeftButton);
    QElapsedTimer clock;
    clock.start();
    int compared = 0;
    int worst = 0;
    QString shown = readout->text();
    while (clock.elapsed() < 2'000) {
        QTest::qWait(1);
        if (readout->text() == shown)
            continue;
        // Fresh from a status, so that it is not the readout's own age that is measured.
        shown = readout->text();
        worst = std::max(worst, std::abs(mmSong.Position() - Milliseconds(shown)));
        ++compared;
    }
    QCOMPARE(mmSong.Mode(), timeline::PlayerMode::Playing);
    QVERIFY2(std::abs(mmSong.Position() - 2'000) < 500,
             qPrintable(QString::number(mmSong.Position())));
    QVERIFY2(compared >= 10, qPrintable(QString::number(compared)));
    QVERIFY2(worst <= 100, qPrintable(QStringLiteral("%1 ms apart").arg(worst)));
    QVERIFY(Difference(still, ViewOnScreen(window)) > 0.005);

    QVERIFY(!window.close());  // music that plays is stopped first
    QTest::mouseClick(window.findChild<QWidget*>("mmSong_stop"), Qt::LeftButton);
    QVERIFY(window.close());
}

int main(int argc, char** argv)
{
    const QTemporaryDir home;  // nothing that this user keeps is read or changed
    for (const char* folder : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        qputenv(folder, home.path().toUtf8());
    QApplication application(argc, argv);
    ui::SetUpQt();
    XvfbPlayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "xvfb_play_test.moc"
