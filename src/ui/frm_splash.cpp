#include "ui/frm_splash.h"

#include <string_view>
#include <utility>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVersionNumber>

#include "fountain/fountain.h"
#include "fountain/scene.h"
#include "ui/design_form.h"
#include "ui/input_events.h"

namespace ui {
namespace {

constexpr QSize kSize(640, 440);
constexpr int kPictureTop = 84;
constexpr int kPictureHeight = 233;
constexpr int kDusk = 20;
constexpr int kMargin = 28;
constexpr QColor kSky(4, 6, 22);
constexpr QColor kStone(14, 18, 36);
constexpr QColor kEdge(44, 54, 96);
constexpr QColor kBright(244, 246, 255);
constexpr QColor kSoft(176, 188, 222);

struct NoListener final : fountain::FountainListener {
    void OnOperatorDisplay(std::uint8_t) override {}
    void OnResetDevices() override {}
};

/// The finale of an evening, in the fountain's own commands.
constexpr unsigned char kFinale[] = {
    99, 0,                    // from a fountain at rest
    48, 54,                   // the wedding cake, on both groups
    7,  21,                   // bazookas
    9,  100,                  // the peacock
    16, 6,                    // the cross and the bazookas white
    49, 2,   50, 10, 20, 10,  // blue and pale blue lights
    25, 4,   26, 4,           // the peacock amber
};

fountain::Fountain Finale()
{
    fountain::Fountain fountain;
    NoListener listener;
    // The engine's lists of commands are texts of 8-bit characters.
    fountain.ApplyCommands({reinterpret_cast<const char*>(kFinale), sizeof kFinale}, listener);
    return fountain;
}

void PaintFountain(QPainter& painter, render::SceneCache& cache)
{
    const double scale = double{kSize.width()} / fountain::kDesignWidth;
    const fountain::SceneLayout layout = fountain::Fitted(fountain::DesignLayout(), {scale, scale});
    const fountain::Fountain finale = Finale();
    render::PaintScene(painter,
                       fountain::BuildScene(finale.State(), finale.Drawn(),
                                            {.Candelabras = true, .BackCurtain = true}, layout,
                                            fountain::Measure(layout)),
                       cache);
}

}  // namespace

QString VersionText(int major, int minor, int revision)
{
    const QString version =
        QStringLiteral("Version %1.%2").arg(major).arg(minor, 2, 10, QLatin1Char('0'));
    return revision > 0 ? version + QStringLiteral(" Revision %1").arg(revision) : version;
}

QString CreditsText()
{
    return QStringLiteral(
               "Copyright \u00a9 2026 the developers of the choreographer. Free software under the "
               "GNU General Public License, version 3 or later, without any warranty.") +
           QStringLiteral("\n\n    ") +
           QStringLiteral("Writes what a musical fountain does at each moment of the music.") +
           QStringLiteral("\n    Artwork: the fountain of this program, painted by the program.");
}

frmSplash::frmSplash(QWidget* window) : QDialog(window)
{
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("About"));
    setAccessibleName(QStringLiteral("About the choreographer"));
    setAttribute(Qt::WA_DeleteOnClose);
    setFixedSize(kSize);
    tmrSplash_.setObjectName(QStringLiteral("tmrSplash"));
    tmrSplash_.setParent(this);
    tmrSplash_.setSingleShot(true);
    connect(&tmrSplash_, &QTimer::timeout, this, &frmSplash::close);
    BuildTexts();
    BuildButton();
}

QLabel* frmSplash::AddLabel(const char* name, const QString& text, int pixels)
{
    auto* label = new QLabel(text, this);
    label->setObjectName(QString::fromLatin1(name));
    label->setAccessibleName(text);
    label->setTextFormat(Qt::PlainText);
    QFont font = FormFont();
    font.setPixelSize(pixels);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, kSoft);
    label->setPalette(palette);
    return label;
}

void frmSplash::BuildTexts()
{
    const auto brighten = [](QLabel* label, double spacing) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, kBright);
        label->setPalette(palette);
        QFont font = label->font();
        font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
        label->setFont(font);
    };
    QLabel* title = AddLabel("lblTitle", QStringLiteral("Velmora Musical Fountain"), 31);
    brighten(title, 1.5);
    title->setAlignment(Qt::AlignCenter);
    title->setGeometry(0, 24, width(), 42);
    QLabel* subtitle = AddLabel("lblSubtitle", QStringLiteral("Animated Choreographer"), 17);
    subtitle->setAlignment(Qt::AlignCenter);
    subtitle->setGeometry(0, 66, width(), 26);

    const QVersionNumber version =
        QVersionNumber::fromString(QCoreApplication::applicationVersion());
    const int below = kPictureTop + kPictureHeight;
    QLabel* lblVersion = AddLabel(
        "lblVersion",
        VersionText(version.majorVersion(), version.minorVersion(), version.microVersion()), 15);
    brighten(lblVersion, 0.3);
    lblVersion->setGeometry(kMargin, below + 8, 300, 22);
    QLabel* lblCredits = AddLabel("lblCredits", CreditsText(), 11);
    lblCredits->setWordWrap(true);
    lblCredits->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblCredits->setGeometry(kMargin, below + 33, width() - 2 * kMargin - 104,
                            height() - below - 38);
}

void frmSplash::BuildButton()
{
    cmdOK_ = new QPushButton(QStringLiteral("&Ok"), this);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdOK_->setAccessibleName(QStringLiteral("Ok"));
    cmdOK_->setToolTip(QStringLiteral("Close (Enter)"));
    cmdOK_->setDefault(true);
    cmdOK_->setGeometry(width() - kMargin - 88, height() - 46, 88, 28);
    connect(cmdOK_, &QPushButton::clicked, this, &frmSplash::close);
}

void frmSplash::ShowAtStartUp()
{
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    tmrSplash_.setInterval(kSplashTime);
    qApp->installEventFilter(this);
    show();
    tmrSplash_.start();
}

void frmSplash::ShowAbout()
{
    setModal(true);
    show();
    cmdOK_->setFocus();
}

void frmSplash::showEvent(QShowEvent* event)
{
    cmdOK_->setVisible(!AtStartUp());
    const QRect window = parentWidget()->geometry();
    QRect place(QPoint(0, 0), size());
    place.moveCenter(window.center());
    move(place.topLeft());
    QDialog::showEvent(event);
}

void frmSplash::hideEvent(QHideEvent* event)
{
    if (!std::exchange(shown_, true))
        emit Shown();
    QDialog::hideEvent(event);
}

bool frmSplash::event(QEvent* event)
{
    // A question of the start-up, or one about a crash, is not to be asked from behind a picture.
    if (event->type() == QEvent::WindowBlocked && AtStartUp())
        close();
    return QDialog::event(event);
}

// At start-up a click or a key, wherever in the program it falls, closes the picture and does
// nothing else. A modal window would leave the clicks on the main window without any answer.
bool frmSplash::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Close)
        close();
    if (!isVisible() || !IsInput(event->type()) || !watched->isWidgetType())
        return QDialog::eventFilter(watched, event);
    const QWidget* window = static_cast<QWidget*>(watched)->window();
    if (window != this && window != parentWidget()->window())
        return false;
    event->accept();  // an override that stays unaccepted would become a shortcut
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress ||
        event->type() == QEvent::TouchBegin)
        close();
    return true;
}

void frmSplash::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QLinearGradient sky(0, 0, 0, kPictureTop);
    sky.setColorAt(0, kSky.darker(150));
    sky.setColorAt(1, kSky);
    painter.fillRect(rect(), sky);
    painter.save();
    painter.translate(0, kPictureTop);
    PaintFountain(painter, cache_);
    painter.restore();
    // The picture's own sky begins where ours ends, without an edge between them.
    QLinearGradient dusk(0, kPictureTop, 0, kPictureTop + kDusk);
    dusk.setColorAt(0, kSky);
    dusk.setColorAt(1, QColor(kSky.red(), kSky.green(), kSky.blue(), 0));
    painter.fillRect(QRect(0, kPictureTop, width(), kDusk), dusk);
    // The picture ends within its last pixel.
    painter.fillRect(QRect(0, kPictureTop + kPictureHeight - 1, width(), height()), kStone);
    painter.setPen(kEdge);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    painter.end();
    if (!std::exchange(shown_, true))
        emit Shown();
}

}  // namespace ui
