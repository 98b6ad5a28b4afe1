#include "ui/application.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include <QApplication>
#include <QMetaObject>
#include <QSessionManager>
#include <QStandardPaths>
#include <QStyleFactory>

#include "ui/app_icon.h"
#include "ui/frm_splash.h"
#include "ui/help_file.h"
#include "ui/help_library.h"

namespace ui {
namespace {

constexpr int kUsageExit = 2;
constexpr const char* kHelp =
    "Usage: choreographer [OPTION]... [BASE]\n"
    "Opens the choreography BASE.ctl and its music, BASE.mp3 or BASE.wav.\n"
    "\n"
    "  --silent     play without sound\n"
    "  --no-splash  start without the picture at the beginning\n"
    "  --help       show this text and exit\n"
    "  --version    show the version and exit\n";

void Complain(const std::string& problem)
{
    std::fprintf(stderr, "choreographer: %s\n", problem.c_str());
}

bool IsSet(const char* variable)
{
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool DisplayMissing()
{
    return !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("QT_QPA_PLATFORM");
}

// The platform ends the program at once when it cannot reach the display; its own message speaks
// to programmers, and the abort would leave a crash report.
void ExplainFailedStart(QtMsgType type, const QMessageLogContext&, const QString&)
{
    if (type != QtFatalMsg)
        return;
    Complain("the display cannot be opened; check DISPLAY and QT_QPA_PLATFORM");
    std::_Exit(kUsageExit);
}

std::filesystem::path CacheFolder()
{
    return std::filesystem::path(
               QStandardPaths::writableLocation(QStandardPaths::CacheLocation).toStdString()) /
           "peaks";
}

std::filesystem::path RecoveryFolder()
{
    return std::filesystem::path(
               QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString()) /
           "recovery";
}

void EndSession(frmFountain& window, QSessionManager& session)
{
    const bool mayAsk = session.allowsInteraction();
    if (!window.EndSession(mayAsk))
        session.cancel();
    if (mayAsk)
        session.release();
}

CommandLine Refuse(std::string problem)
{
    return {CommandLine::Request::Refused, {}, std::move(problem)};
}

StartOptions Completed(StartOptions options)
{
    if (options.recovery.empty())
        options.recovery = options.settings.empty() ? RecoveryFolder()
                                                    : options.settings.parent_path() / "recovery";
    return options;
}

}  // namespace

CommandLine ParseCommandLine(std::span<const char* const> arguments)
{
    CommandLine line;
    line.options.splash = true;
    bool options = true;
    bool based = false;
    for (const std::string_view argument : arguments) {
        if (options && argument == "--") {
            options = false;
        } else if (options && argument == "--silent") {
            line.options.silent = true;
        } else if (options && argument == "--no-splash") {
            line.options.splash = false;
        } else if (options && argument == "--help") {
            line.request = CommandLine::Request::Help;
            return line;
        } else if (options && argument == "--version") {
            line.request = CommandLine::Request::Version;
            return line;
        } else if (options && argument.size() > 1 && argument.front() == '-') {
            return Refuse("unknown option '" + std::string(argument) + "'; try --help");
        } else if (based) {
            return Refuse("only one show can be opened, '" + std::string(argument) +
                          "' is one too many; try --help");
        } else {
            line.options.base = argument;
            based = true;
        }
    }
    if (based && line.options.base.empty())
        return Refuse("the name of the show is empty; try --help");
    return line;
}

Application::Application(StartOptions options)
    : options_(Completed(std::move(options))),
      settings_(options_.settings.empty()
                    ? QtSettingsStore()
                    : QtSettingsStore(QString::fromStdString(options_.settings.string()))),
      mmSong_(options_.silent ? sound::Sink::Silent : sound::Sink::Automatic),
      peaks_(CacheFolder()),
      journal_(options_.recovery),
      editor_(mmSong_, prompts_, &settings_),
      window_(editor_),
      keeper_(editor_, prompts_, window_, journal_)
{
    prompts_.SetWindow(&window_);
    window_.UseHelp(FindHelpFile(QCoreApplication::applicationDirPath()), UserHelpFolder());
    window_.UseSettings(settings_);
    window_.UsePeaks(peaks_);
    // At once: the session waits for nobody who answers later.
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, &window_,
        [this](QSessionManager& session) { EndSession(window_, session); }, Qt::DirectConnection);
}

void Application::Start()
{
    editor_.Form_Activate(options_.base);
    window_.SetMusicPending(!editor_.StartBase().empty());
    // Only after the event of the painting is the picture on the screen.
    QObject::connect(
        &window_, &frmFountain::FirstPainted, &window_, [this] { ShowSplash(); },
        Qt::QueuedConnection);
    window_.ShowOnScreen();
}

void Application::ShowSplash()
{
    if (!options_.splash) {
        OpenMusic();
        return;
    }
    auto* splash = new frmSplash(&window_);
    splash_ = splash;
    QObject::connect(
        splash, &frmSplash::Shown, &window_, [this] { OpenMusic(); }, Qt::QueuedConnection);
    splash->ShowAtStartUp();
}

void Application::OpenMusic()
{
    editor_.OpenStartMusic();
    window_.SetMusicPending(false);
    editor_.FinishStartUp();
    window_.Refresh();
    // What is offered must not lie behind the picture.
    const auto begin = [this] { keeper_.Begin(options_.recovery); };
    if (splash_ != nullptr)
        QObject::connect(splash_, &QObject::destroyed, &keeper_, begin);
    else
        begin();
}

void SetUpQt()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Velmora"));
    QCoreApplication::setApplicationName(QString::fromLatin1(kCaption));
    QCoreApplication::setApplicationVersion(QStringLiteral(CHOREOGRAPHER_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.velmora.choreographer"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setWindowIcon(AppIcon());
}

int Run(int argc, char** argv)
{
    const CommandLine line = ParseCommandLine({argv + (argc > 0 ? 1 : 0), argv + argc});
    switch (line.request) {
        case CommandLine::Request::Help:
            std::fputs(kHelp, stdout);
            return 0;
        case CommandLine::Request::Version:
            std::puts("choreographer " CHOREOGRAPHER_VERSION);
            return 0;
        case CommandLine::Request::Refused:
            Complain(line.problem);
            return kUsageExit;
        case CommandLine::Request::Start:
            break;
    }
    if (DisplayMissing()) {
        Complain("there is no display to open the window on (DISPLAY is not set)");
        return kUsageExit;
    }
    int programName = 1;  // the arguments are ours, not the toolkit's
    const QtMessageHandler usual = qInstallMessageHandler(ExplainFailedStart);
    QApplication qt(programName, argv);
    qInstallMessageHandler(usual);
    SetUpQt();
    Application application(line.options);
    application.Start();
    return QApplication::exec();
}

}  // namespace ui
