#include "ui/help_browser.h"

#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

namespace ui {
namespace {

constexpr int kSmallestZoom = -4;
constexpr int kLargestZoom = 14;
constexpr int kFirstPoints = 11;
constexpr QColor kInk(28, 30, 40);

}  // namespace

HelpBrowser::HelpBrowser(QHelpEngineCore& engine, QWidget* parent)
    : QTextBrowser(parent), engine_(engine)
{
    setOpenExternalLinks(false);
    QFont font = this->font();
    font.setPointSize(kFirstPoints);
    setFont(font);
    // The manual has colours of its own, which a dark desktop would not show.
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::white);
    colors.setColor(QPalette::Text, kInk);
    colors.setColor(QPalette::Link, QColor(20, 76, 170));
    setPalette(colors);
    document()->setDocumentMargin(18);
}

QVariant HelpBrowser::loadResource(int /*type*/, const QUrl& name)
{
    const QUrl url = name.isRelative() ? source().resolved(name) : name;
    return engine_.fileData(url);
}

void HelpBrowser::Zoom(int steps)
{
    const int wanted = std::clamp(zoom_ + steps, kSmallestZoom, kLargestZoom);
    zoomIn(wanted - zoom_);
    zoom_ = wanted;
}

void HelpBrowser::ResetZoom()
{
    Zoom(-zoom_);
}

bool HelpBrowser::Find(const QString& text, QTextDocument::FindFlags flags, bool again)
{
    QTextCursor place = textCursor();
    if (!again)
        place.setPosition(place.selectionStart());
    QTextCursor found = document()->find(text, place, flags);
    if (found.isNull() && !text.isEmpty()) {
        place.movePosition((flags & QTextDocument::FindBackward) != 0 ? QTextCursor::End
                                                                      : QTextCursor::Start);
        found = document()->find(text, place, flags);
    }
    if (found.isNull()) {
        place.clearSelection();
        setTextCursor(place);
        return text.isEmpty();
    }
    setTextCursor(found);
    return true;
}

void HelpBrowser::wheelEvent(QWheelEvent* event)
{
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    Zoom(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

}  // namespace ui
