#include "ui/dialog_look.h"

#include <QDateTime>
#include <QLayout>
#include <QLocale>
#include <QScreen>
#include <algorithm>

#include "ui/design_form.h"

namespace ui {
namespace {

constexpr double kFontHeight = 14;  // pixels of the design screen
constexpr double kMargin = 16;
constexpr double kSpacing = 10;
constexpr double kLargestScale = 2;
constexpr double kOfScreen = 0.92;

const QLocale& English()
{
    static const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);
    return kEnglish;
}

double ScaleOf(const QWidget* window)
{
    if (window == nullptr)
        return 1;
    const fountain::ScaleFactors scale =
        fountain::FitToScreen(window->window()->width(), window->window()->height());
    return std::clamp(std::min(scale.x, scale.y), 1.0, kLargestScale);
}

}  // namespace

QFont DialogFont(const QWidget* window)
{
    QFont font = FormFont();
    font.setPixelSize(qRound(kFontHeight * ScaleOf(window)));
    return font;
}

void FitDialog(QDialog& dialog, QSize design)
{
    const double scale = ScaleOf(dialog.parentWidget());
    dialog.setFont(DialogFont(dialog.parentWidget()));
    if (dialog.layout() != nullptr) {
        const int margin = qRound(kMargin * scale);
        dialog.layout()->setContentsMargins(margin, margin, margin, margin);
        dialog.layout()->setSpacing(qRound(kSpacing * scale));
    }
    const QScreen* screen =
        dialog.parentWidget() != nullptr ? dialog.parentWidget()->screen() : dialog.screen();
    dialog.resize((design * scale).boundedTo(screen->availableSize() * kOfScreen));
}

QPushButton* AddDialogButton(QDialog& dialog, const char* name, const char* caption,
                             const char* toolTip)
{
    auto* button = new QPushButton(QString::fromLatin1(caption), &dialog);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(QString::fromLatin1(caption).remove(u'&'));
    button->setAccessibleDescription(QString::fromLatin1(toolTip));
    button->setToolTip(QString::fromLatin1(toolTip));
    button->setAutoDefault(false);
    return button;
}

QString MomentText(qint64 modified)
{
    constexpr qint64 kPerMillisecond = 1'000'000;
    return English().toString(QDateTime::fromMSecsSinceEpoch(modified / kPerMillisecond),
                              QStringLiteral("d MMMM yyyy, HH:mm:ss"));
}

QString CountsText(const document::Choreography& show)
{
    const auto counted = [](qint64 count, const char* what) {
        return English().toString(count) + u' ' + QLatin1String(what) +
               (count == 1 ? QString() : QStringLiteral("s"));
    };
    return counted(show.lngLastSlot(), "time") + QStringLiteral(", ") +
           counted(document::CommandTotal(show), "command");
}

}  // namespace ui
