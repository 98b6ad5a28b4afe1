#include <QProcess>
#include <QtTest>
#include <vector>

#include "ui/application.h"

using Request = ui::CommandLine::Request;

class CommandLineTest : public QObject {
    Q_OBJECT

 private slots:
    void argumentsAreRead();
    void programSaysWhatIsWrong();
};

void CommandLineTest::argumentsAreRead()
{
    const struct {
        std::vector<const char*> arguments;
        Request request;
        const char* base;
        bool silent;
        bool splash = true;
    } rows[] = {
        {{}, Request::Start, "", false},
        {{"shows/gala"}, Request::Start, "shows/gala", false},
        {{"gala", "--silent"}, Request::Start, "gala", true},
        {{"--no-splash", "gala"}, Request::Start, "gala", false, false},
        {{"--", "--silent"}, Request::Start, "--silent", false},
        {{"--help", "--nonsense"}, Request::Help, "", false},
        {{"--version"}, Request::Version, "", false},
        {{"--loud"}, Request::Refused, "", false},
        {{"-s"}, Request::Refused, "", false},
        {{"one", "two"}, Request::Refused, "", false},
        {{""}, Request::Refused, "", false},
    };
    for (const auto& row : rows) {
        const ui::CommandLine line = ui::ParseCommandLine(row.arguments);
        QCOMPARE(line.request, row.request);
        QCOMPARE(line.problem.empty(), row.request != Request::Refused);
        if (row.request != Request::Start)
            continue;
        QCOMPARE(line.options.base, std::filesystem::path(row.base));
        QCOMPARE(line.options.silent, row.silent);
        QCOMPARE(line.options.splash, row.splash);
    }
}

void CommandLineTest::programSaysWhatIsWrong()
{
    const struct {
        const char* argument;
        const char* display;
        int exitCode;
        const char* out;
        const char* err;
    } rows[] = {{"--help", "", 0, "Usage: choreographer", ""},
                {"--version", "", 0, "choreographer ", ""},
                {"--loud", "", 2, "", "choreographer: unknown option '--loud'"},
                {"gala", "", 2, "", "choreographer: there is no display"},
                {"gala", ":4242", 2, "", "choreographer: the display cannot be opened"}};
    for (const auto& row : rows) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"})
            environment.remove(variable);
        if (*row.display != '\0')
            environment.insert("DISPLAY", row.display);
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(CHOREOGRAPHER, {row.argument});
        QVERIFY2(program.waitForFinished(), qPrintable(program.errorString()));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), row.exitCode);
        const QString out = program.readAllStandardOutput();
        const QString err = program.readAllStandardError();
        QCOMPARE(out.left(QString(row.out).size()), row.out);
        QCOMPARE(out.isEmpty(), *row.out == '\0');
        QCOMPARE(err.left(QString(row.err).size()), row.err);
        QCOMPARE(err.count('\n'), *row.err == '\0' ? 0 : 1);
    }
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "command_line_test.moc"
