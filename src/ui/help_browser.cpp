#include "ui/help_browser.h"

#include <QImage>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace ui {
namespace {

constexpr int kSmallestZoom = -4;
constexpr int kLargestZoom = 14;
constexpr int kFirstPoints = 11;
constexpr int kMargin = 18;    // pixels
constexpr int kFitDelay = 80;  // ms
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
    document()->setDocumentMargin(kMargin);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    fitSoon_.setSingleShot(true);
    connect(&fitSoon_, &QTimer::timeout, this, &HelpBrowser::FitPictures);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    const QUrl url = name.isRelative() ? source().resolved(name) : name;
    const QByteArray content = engine_.fileData(url);
    if (type != QTextDocument::ImageResource)
        return content;
    return Fitted(QImage::fromData(content));
}

int HelpBrowser::RoomForPictures() const
{
    return std::max(1, viewport()->width() - 2 * kMargin);
}

QImage HelpBrowser::Fitted(const QImage& picture) const
{
    if (picture.isNull())
        return picture;
    const double ratio = devicePixelRatioF();
    const int width = std::min(picture.width(), RoomForPictures());
    QImage fitted = picture;
    const int pixels = static_cast<int>(std::lround(width * ratio));
    if (pixels != picture.width())
        fitted = picture.scaledToWidth(pixels, Qt::SmoothTransformation);
    fitted.setDevicePixelRatio(ratio);
    return fitted;
}

// The document keeps the pictures of a page as they were when it was loaded.
void HelpBrowser::FitPictures()
{
    if (fittedTo_ == RoomForPictures())
        return;
    fittedTo_ = RoomForPictures();
    const QScrollBar* bar = verticalScrollBar();
    const double place = bar->maximum() == 0 ? 0 : double{1} * bar->value() / bar->maximum();
    reload();
    verticalScrollBar()->setValue(static_cast<int>(std::lround(place * bar->maximum())));
}

void HelpBrowser::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    if (fittedTo_ != RoomForPictures())
        fitSoon_.start(kFitDelay);
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
