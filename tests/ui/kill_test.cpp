// The program is killed in the midst of editing, again and again, and never loses more than the
// click in flight. KILLS says how often.
#include <QProcess>
#include <csignal>

#include "desk.h"
#include "document/random_show.h"
#include "ui/dlg_recovery.h"

using namespace ui_test;
using testing_support::Random;

namespace {

constexpr int kSteps = 30;

std::string Fingerprint(const document::Choreography& show)
{
    return std::to_string(document::Checksum(document::ControlText(show)));
}

/// What the session said until it was killed after so many lines, or all that it says.
QStringList Session(const Folder& folder, const char* journals, int seed, int lines)
{
    QProcess session;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* home : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        environment.insert(home, QString::fromStdString(folder.Path("home").string()));
    session.setProcessEnvironment(environment);
    session.start(EDITING_SESSION, {QString::fromStdString(folder.Path().string()),
                                    QString::fromStdString(folder.Path(journals).string()),
                                    QString::number(seed), QString::number(kSteps)});
    QByteArray said;
    while (said.count('\n') < lines && session.waitForReadyRead(30'000))
        said += session.readAllStandardOutput();
    if (said.count('\n') < kSteps)
        ::kill(static_cast<pid_t>(session.processId()), SIGKILL);
    session.waitForFinished();
    said += session.readAllStandardOutput();
    return QString::fromLatin1(said).split('\n', Qt::SkipEmptyParts);
}

/// The state in a line that may not be whole; empty when it is not there.
QString StateOf(const QString& line)
{
    return line.contains(' ') ? line.section(' ', 0, 0) : QString();
}

}  // namespace

class KillTest : public QObject {
    Q_OBJECT

 private slots:
    void aKillLosesNoMoreThanTheClickInFlight();
};

void KillTest::aKillLosesNoMoreThanTheClickInFlight()
{
    const int kills = std::max(10, qEnvironmentVariableIntValue("KILLS"));
    int recovered = 0;
    for (int seed = 1; seed <= kills; ++seed) {
        const Folder folder;
        Random random(static_cast<std::uint64_t>(seed));
        document::Choreography opened = testing_support::RandomShow(random, {.times = 6});
        QCOMPARE(WriteControlFile(opened, folder.Path()).outcome, document::SaveOutcome::Saved);
        const QByteArray before = folder.Bytes();
        const QStringList whole = Session(folder, "whole", seed, kSteps);
        QCOMPARE(whole.size(), kSteps);
        const QStringList said = Session(folder, "recovery", seed, 1 + random.Below(kSteps - 2));
        QVERIFY(!said.isEmpty());
        QCOMPARE(folder.Bytes(), before);

        Desk desk(folder);
        desk.Start(folder, folder.Path());
        QTRY_VERIFY(!desk.keeper.Busy());
        if (auto* dialog = desk.Dialog<ui::dlgRecovery>()) {
            Click(dialog, "cmdRecovered");
            ++recovered;
        }
        const QString now = QString::fromStdString(Fingerprint(desk.editor.Choreography()));
        const qsizetype safe = said.filter(QStringLiteral("safe")).size();
        const QStringList right{StateOf(said.value(safe - 1)), StateOf(said.value(safe)),
                                StateOf(whole.value(safe))};
        QVERIFY2(right.contains(now),
                 qPrintable(QStringLiteral("seed %1, killed after %2 steps: %3 is none of %4")
                                .arg(seed)
                                .arg(safe)
                                .arg(now, right.join(u' '))));
    }
    QVERIFY2(recovered > kills / 2, qPrintable(QString::number(recovered)));
    qInfo("%d kills, %d recoveries", kills, recovered);
}

QTEST_MAIN(KillTest)
#include "kill_test.moc"
