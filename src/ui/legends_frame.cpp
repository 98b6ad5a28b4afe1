#include "ui/legends_frame.h"

#include <algorithm>
#include <string_view>

#include <QFontMetrics>

#include "fountain/colors.h"
#include "ui/design_form.h"

namespace ui {
namespace {

constexpr int kMargin = 10;  // design pixels
constexpr int kSwatchWidth = 26;
constexpr int kSmallestFont = 6;

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString Indexed(const char* name, std::size_t index)
{
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

}  // namespace

LegendsFrame::LegendsFrame(QWidget* parent) : QFrame(parent)
{
    setFrameShape(QFrame::NoFrame);
    setAutoFillBackground(true);
    QPalette palette = this->palette();
    palette.setColor(QPalette::Window, QColor(236, 236, 238));
    palette.setColor(QPalette::WindowText, QColor(24, 24, 32));
    setPalette(palette);
    BuildRows();
    BuildNotes();
}

void LegendsFrame::BuildRows()
{
    for (std::size_t i = 0; i < lblLegend_.size(); ++i) {
        const fountain::LegendEntry& entry = fountain::kLegend[static_cast<int>(i)];
        const QString caption = Text(entry.caption);
        const QString tip = QStringLiteral("Water in this color is lit by:%1").arg(caption);

        auto* swatch = new QLabel(this);
        swatch->setObjectName(Indexed("lblLegend", i));
        swatch->setAccessibleName(QStringLiteral("Color:%1").arg(caption));
        swatch->setToolTip(tip);
        swatch->setFrameShape(QFrame::Box);
        swatch->setAutoFillBackground(true);
        QPalette palette = swatch->palette();
        palette.setColor(QPalette::Window,
                         QColor(entry.color.red, entry.color.green, entry.color.blue));
        palette.setColor(QPalette::WindowText, QColor(120, 120, 128));
        swatch->setPalette(palette);
        lblLegend_[i] = swatch;

        auto* key = new QLabel(caption, this);
        key->setObjectName(Indexed("lblLegendKey", i));
        key->setAccessibleName(caption.trimmed());
        key->setToolTip(tip);
        lblLegendKey_[i] = key;
    }
}

void LegendsFrame::BuildNotes()
{
    for (std::size_t i = 0; i < lblNotes_.size(); ++i) {
        auto* note = new QLabel(Text(fountain::kLegendNotes[i]), this);
        note->setObjectName(Indexed("lblNotes", i));
        note->setAccessibleName(note->text());
        note->setToolTip(QStringLiteral("A note on the animation"));
        note->setTextFormat(Qt::PlainText);
        note->setWordWrap(true);
        note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        lblNotes_[i] = note;
    }
}

void LegendsFrame::Fit(fountain::ScaleFactors scale)
{
    QFont font = FormFont();
    const int design = FormEntry("fraLegends").font;
    int pixels = std::max(1, static_cast<int>(design * std::max(scale.x, scale.y)));
    do
        font.setPixelSize(pixels);
    while (!Arrange(font, scale) && --pixels >= kSmallestFont);
}

bool LegendsFrame::Arrange(const QFont& font, fountain::ScaleFactors scale)
{
    const QFontMetrics metrics(font);
    const int margin = static_cast<int>(kMargin * scale.x);
    const int gap = std::max(3, static_cast<int>(5 * scale.y));
    const int wide = width() - 2 * margin;
    const int swatch = static_cast<int>(kSwatchWidth * scale.x);

    std::array<int, 3> noteHeights{};
    int notes = 0;
    for (std::size_t i = 0; i < lblNotes_.size(); ++i) {
        const QRect room(0, 0, wide, 10'000);
        noteHeights[i] =
            metrics.boundingRect(room, Qt::TextWordWrap, lblNotes_[i]->text()).height();
        notes += noteHeights[i] + gap;
    }
    const int rows = static_cast<int>(lblLegend_.size());
    const int row = std::min((height() - notes - 2 * gap) / rows, metrics.height() * 3 / 2);
    int widest = 0;
    for (const QLabel* key : lblLegendKey_)
        widest = std::max(widest, metrics.horizontalAdvance(key->text()));

    const int between = std::max(1, row / 12);
    int y = gap;
    for (std::size_t i = 0; i < lblLegend_.size(); ++i, y += row) {
        lblLegend_[i]->setGeometry(margin, y + between, swatch, row - 2 * between);
        lblLegendKey_[i]->setFont(font);
        lblLegendKey_[i]->setGeometry(margin + swatch + 2, y, wide - swatch - 2, row);
    }
    y += gap;
    for (std::size_t i = 0; i < lblNotes_.size(); ++i) {
        lblNotes_[i]->setFont(font);
        lblNotes_[i]->setGeometry(margin, y, wide, noteHeights[i]);
        y += noteHeights[i] + gap;
    }
    return row >= metrics.height() && widest <= wide - swatch - 2;
}

}  // namespace ui
