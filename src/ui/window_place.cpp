#include "ui/window_place.h"

#include <algorithm>
#include <array>

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QStringList>

namespace ui {
namespace {

constexpr int kFarthest = 100'000;  // pixels; no desktop is as large
const QString kMaximised = QStringLiteral("maximised");

constexpr std::array<std::pair<const char*, Qt::DockWidgetArea>, 4> kSides{
    {{"left", Qt::LeftDockWidgetArea},
     {"right", Qt::RightDockWidgetArea},
     {"top", Qt::TopDockWidgetArea},
     {"bottom", Qt::BottomDockWidgetArea}}};

QString TextOfRect(const QRect& rect)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

std::optional<int> NumberOf(const QString& word, int least)
{
    bool good = false;
    const int number = word.toInt(&good);
    if (!good || number < least || number > kFarthest)
        return {};
    return number;
}

std::optional<QRect> RectOf(const QStringList& words, qsizetype first)
{
    if (words.size() < first + 4)
        return {};
    const auto x = NumberOf(words[first], -kFarthest);
    const auto y = NumberOf(words[first + 1], -kFarthest);
    const auto width = NumberOf(words[first + 2], 1);
    const auto height = NumberOf(words[first + 3], 1);
    if (!x || !y || !width || !height)
        return {};
    return QRect(*x, *y, *width, *height);
}

qint64 AreaOf(const QRect& rect)
{
    return qint64{rect.width()} * rect.height();
}

}  // namespace

QString TextOf(const WindowPlace& place)
{
    const QString text = TextOfRect(place.place);
    return place.maximised ? text + QLatin1Char(' ') + kMaximised : text;
}

std::optional<WindowPlace> WindowPlaceOf(const QString& text)
{
    const QStringList words = text.split(QLatin1Char(' '));
    const std::optional<QRect> place = RectOf(words, 0);
    const bool maximised = words.size() == 5 && words[4] == kMaximised;
    if (!place || (words.size() != 4 && !maximised))
        return {};
    return WindowPlace{*place, maximised};
}

QRect OnScreens(const QRect& place, std::span<const QRect> screens)
{
    if (screens.empty())
        return place;
    const auto shared = [&place](const QRect& screen) { return AreaOf(screen & place); };
    const QRect& screen = *std::ranges::max_element(screens, {}, shared);
    QRect on(place.topLeft(), place.size().boundedTo(screen.size()));
    QRegion desktop;
    for (const QRect& one : screens)
        desktop += one;
    if (QRegion(on).subtracted(desktop).isEmpty())
        return on;
    on.moveLeft(std::clamp(on.left(), screen.left(), screen.right() + 1 - on.width()));
    on.moveTop(std::clamp(on.top(), screen.top(), screen.bottom() + 1 - on.height()));
    return on;
}

std::vector<QRect> AvailableScreens()
{
    std::vector<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.push_back(screen->availableGeometry());
    return screens;
}

QString TextOf(const DockPlace& place)
{
    const auto* const side =
        std::ranges::find(kSides, place.side, &std::pair<const char*, Qt::DockWidgetArea>::second);
    const QString text = QStringLiteral("%1 %2")
                             .arg(QLatin1String(side == kSides.end() ? "right" : side->first))
                             .arg(place.extent);
    return place.floating ? text + QLatin1Char(' ') + TextOfRect(*place.floating) : text;
}

DockPlace DockPlaceOf(const QString& text)
{
    const QStringList words = text.split(QLatin1Char(' '));
    if (words.size() != 2 && words.size() != 6)
        return {};
    const auto* const side = std::ranges::find_if(
        kSides, [&words](const auto& one) { return words[0] == QLatin1String(one.first); });
    const std::optional<int> extent = NumberOf(words[1], 0);
    const std::optional<QRect> floating = RectOf(words, 2);
    if (side == kSides.end() || !extent || (words.size() == 6 && !floating))
        return {};
    return {side->second, *extent, floating};
}

}  // namespace ui
