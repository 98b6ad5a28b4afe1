// One start to the first paint, as a process of its own, for start_bench to time:
//   start_main bare [FILE]  a plain window with as many widgets and menus as ours; parses FILE
//   start_main ours [BASE]  the program's own start
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>

#include "parse_floor.h"
#include "ui/application.h"

namespace {

constexpr int kLabels = 150;
constexpr int kButtons = 110;
constexpr int kMenus = 3;
constexpr int kMenuItems = 8;

/// Ends the program when it has painted for the first time.
class BareWindow : public QWidget {
 public:
    BareWindow()
    {
        auto* bar = new QMenuBar(this);
        for (int menu = 0; menu < kMenus; ++menu) {
            QMenu* entry = bar->addMenu(QStringLiteral("&Menu %1").arg(menu));
            for (int item = 0; item < kMenuItems; ++item)
                entry->addAction(QStringLiteral("&Item %1").arg(item));
        }
        for (int k = 0; k < kLabels + kButtons; ++k)
            Place(k < kLabels ? static_cast<QWidget*>(new QLabel(QString::number(k), this))
                              : new QPushButton(QString::number(k), this),
                  k);
    }

 protected:
    void paintEvent(QPaintEvent*) override
    {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }

 private:
    static void Place(QWidget* widget, int k)
    {
        widget->setGeometry(10 + k % 20 * 50, 40 + k / 20 * 50, 46, 24);
    }
};

int StartBare(const char* file)
{
    if (file != nullptr && bench_support::ParseFloor(file) == 0)
        return EXIT_FAILURE;
    BareWindow window;
    window.setGeometry(window.screen()->availableGeometry());
    window.show();
    return QApplication::exec();
}

int StartOurs(const char* base)
{
    // Nothing of this user's plays a part: without settings no show was open last.
    const std::filesystem::path nowhere =
        std::filesystem::temp_directory_path() / "choreographer_bench";
    ui::Application application({.base = base == nullptr ? "" : base,
                                 .silent = true,
                                 .settings = nowhere / "settings.conf",
                                 .recovery = nowhere});
    QObject::connect(&application.Window(), &ui::frmFountain::FirstPainted, qApp,
                     [] { std::_Exit(EXIT_SUCCESS); });
    application.Start();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv)
{
    const std::string_view which = argc > 1 ? argv[1] : "";
    const char* file = argc > 2 ? argv[2] : nullptr;
    if (which != "bare" && which != "ours") {
        std::fputs("usage: start_main bare|ours [FILE]\n", stderr);
        return 2;
    }
    int programName = 1;
    const QApplication qt(programName, argv);
    ui::SetUpQt();
    return which == "bare" ? StartBare(file) : StartOurs(file);
}
