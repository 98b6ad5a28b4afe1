#include "ui/help_desk.h"

#include <QEvent>

namespace ui {

HelpDesk::HelpDesk(QWidget* window) : QObject(window)
{
    window->installEventFilter(this);
}

void HelpDesk::Use(const QString& helpFile, const QString& userFolder)
{
    helpFile_ = helpFile;
    userFolder_ = userFolder;
}

QString HelpDesk::Open(Item item)
{
    if (helpFile_.isEmpty())
        return QStringLiteral("Sorry, but the help file is not available.");
    if (viewer_ == nullptr) {
        QString problem;
        std::unique_ptr<HelpLibrary> library = HelpLibrary::Open(helpFile_, userFolder_, problem);
        if (library == nullptr)
            return QStringLiteral("Sorry, but the help file cannot be opened.\n%1").arg(problem);
        viewer_ = std::make_unique<HelpViewer>(std::move(library));
    }
    if (item == kSearchItem)
        viewer_->ShowSearch();
    else
        viewer_->ShowContents();
    return {};
}

// Without the main window the program would go on for the manual alone.
bool HelpDesk::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && !event->spontaneous() && viewer_ != nullptr)
        viewer_->close();
    return QObject::eventFilter(watched, event);
}

}  // namespace ui
