#pragma once

#include <QByteArray>
#include <QGuiApplication>

namespace cli {

/// The application object that pictures and pages need for their fonts, without a display. Its
/// platform's remarks would only disturb what the program prints.
class Offscreen {
 public:
    Offscreen(int& argc, char** argv) : application_(Prepared(argc), argv) {}

 private:
    static int& Prepared(int& argc)
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        return argc;
    }

    QGuiApplication application_;
};

}  // namespace cli
