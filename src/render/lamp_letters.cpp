#include "render/lamp_letters.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

namespace render {
namespace {

QRectF Pixels(const fountain::Box& box, double unit)
{
    return {box.left * unit, box.top * unit, box.width * unit, box.height * unit};
}

// The largest that all four letters fit in.
QFont LetterFont(QSizeF room)
{
    const auto wide = [](const QFont& font) {
        return QFontMetricsF(font).horizontalAdvance(QStringLiteral("R B A W"));
    };
    QFont font;
    font.setBold(true);
    font.setPixelSize(std::max(1, static_cast<int>(room.height() * 0.8)));
    const double most = room.width() * 0.88;
    if (wide(font) > most)
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * most / wide(font))));
    while (font.pixelSize() > 1 && wide(font) > most)  // hinting widens small letters
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

QString Spaced(const std::string& letters)
{
    QString text;
    for (const char letter : letters)
        text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + QLatin1Char(letter);
    return text;
}

}  // namespace

void PaintLampLetters(QPainter& painter, const fountain::Scene& scene, double unit)
{
    if (!scene.lampLetters)
        return;
    painter.setFont(LetterFont(Pixels(scene.lblLamps[1], unit).size()));
    for (const fountain::LampLetters& lamps : scene.lblLamps) {
        const QRectF box = Pixels(lamps, unit);
        painter.setPen(QPen(QColor(92, 102, 134), std::max(1.0, box.height() / 24)));
        painter.setBrush(QColor(5, 8, 20));
        painter.drawRoundedRect(box, box.height() / 4, box.height() / 4);
        painter.setPen(QColor(240, 244, 255));
        painter.drawText(box, Qt::AlignCenter, Spaced(lamps.text));
    }
}

}  // namespace render
