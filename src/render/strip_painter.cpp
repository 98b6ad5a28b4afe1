#include "render/strip_painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include "document/time_text.h"
#include "timeline/timeline.h"

namespace render {
namespace {

constexpr int kDesignHeight = 56;
constexpr double kRulerShare = 14.0 / kDesignHeight;
constexpr double kResetShare = 3.0 / kDesignHeight;
constexpr double kLaneShare = 5.0 / kDesignHeight;
constexpr int kLanes = 3;
constexpr int kGap = 1;
constexpr double kLetterShare = 0.76;   // of the ruler's height
constexpr double kLabelDistance = 1.6;  // times the width of a label
constexpr double kQuietest = 24;        // of 127; quieter music is not made to look louder
constexpr double kLoudness = 0.5;       // the power by which soft music is lifted
constexpr double kNarrowestShade = 5;   // pixels
constexpr double kSmoothFrom = 2;       // pixels a bin
constexpr int kCursorHalf = 5;
constexpr int kFlagWidth = 8;
constexpr int kMostFlagHeight = 12;

constexpr QColor kRulerGround(18, 23, 54);
constexpr QColor kRulerLine(96, 108, 164);
constexpr QColor kRulerText(182, 192, 232);
constexpr QColor kGrid(30, 37, 78);
constexpr QColor kWaveCore(136, 162, 232);
constexpr QColor kWaveRim(70, 92, 172);
constexpr QColor kWaveMiddle(58, 70, 128);
constexpr QColor kLaneGround(22, 27, 58);
constexpr QColor kBehindEnd(0, 0, 0, 110);
constexpr QColor kChip(46, 56, 110);
constexpr QColor kHoverLine(200, 208, 255, 130);
constexpr QColor kShade(255, 255, 255, 38);
constexpr QColor kCursorRim(8, 10, 28);

QFont RulerFont(const QFont& font, const StripBands& bands)
{
    QFont ruler = font;
    ruler.setPixelSize(std::max(9, static_cast<int>(bands.ruler.height * kLetterShare)));
    return ruler;
}

QString TimeLabel(std::int32_t time, bool withTenths)
{
    const QString text = QString::fromStdString(document::ReadoutText(time));
    return withTenths ? text : text.left(text.lastIndexOf(u'.'));
}

// Writes straight into the image: filling a rectangle for each of thousands of columns takes longer
// than all the rest.
class Raster {
 public:
    Raster(QImage& image, double ratio)
        : bits_(image.bits()), stride_(image.bytesPerLine()), width_(image.width()), ratio_(ratio)
    {
    }

    [[nodiscard]] int Width() const { return width_; }
    [[nodiscard]] int Device(double logical) const
    {
        return static_cast<int>(std::lround(logical * ratio_));
    }
    [[nodiscard]] QRgb* Line(int y) const
    {
        return reinterpret_cast<QRgb*>(bits_ + y * stride_);  // as `QImage::scanLine` gives bytes
    }
    void FillRows(int top, int bottom, const std::vector<QRgb>& row) const
    {
        for (int y = top; y < bottom; ++y)
            std::copy(row.begin(), row.end(), Line(y));
    }

 private:
    uchar* bits_;
    qsizetype stride_;
    int width_;
    double ratio_;
};

QRgb Mixed(QRgb ground, QRgb over, double weight)
{
    const auto mix = [weight](int from, int to) {
        return from + static_cast<int>(std::lround(weight * (to - from)));
    };
    return qRgb(mix(qRed(ground), qRed(over)), mix(qGreen(ground), qGreen(over)),
                mix(qBlue(ground), qBlue(over)));
}

struct Reach {
    double low = 0;
    double high = 0;
};

Reach ReachOf(const StripContent& content, double perColumn, int x)
{
    const Waveform& wave = *content.waveform;
    const double time = content.view.First() + x * perColumn;
    if (wave.BinLength() < kSmoothFrom * perColumn) {
        const Peak peak = wave.Between(time, time + perColumn);
        return {double{1} * peak.low, double{1} * peak.high};
    }
    const Waveform::Smooth smooth = wave.At(time + perColumn / 2);
    return {smooth.low, smooth.high};
}

// A column from `top` to `bottom`, whose ends cover their pixels in part.
void FillColumn(const Raster& raster, int x, double top, double bottom,
                const std::vector<QRgb>& colors, int firstRow)
{
    const int from = static_cast<int>(std::floor(top));
    const int to = static_cast<int>(std::ceil(bottom));
    for (int y = std::max(from, 0); y < std::min(to, static_cast<int>(colors.size())); ++y) {
        const double weight = std::min(bottom, y + 1.0) - std::max(top, double{1} * y);
        const QRgb over = colors[static_cast<std::size_t>(y)];
        QRgb& pixel = raster.Line(firstRow + y)[x];
        pixel = weight < 1 ? Mixed(pixel, over, weight) : over;
    }
}

// Brighter towards the middle.
std::vector<QRgb> WaveColors(int rows)
{
    std::vector<QRgb> colors(static_cast<std::size_t>(rows));
    for (int y = 0; y < rows; ++y) {
        const double away = std::abs((y + 0.5) / rows * 2 - 1);
        colors[static_cast<std::size_t>(y)] = Mixed(kWaveCore.rgb(), kWaveRim.rgb(), away);
    }
    return colors;
}

void PaintWave(const Raster& raster, const StripContent& content, StripBand band)
{
    const int top = raster.Device(band.top);
    const int rows = raster.Device(band.Bottom()) - top;
    const double middle = rows / 2.0;
    const double perColumn = content.view.Span() / raster.Width();
    const int loudest = content.waveform->Loudest();
    const std::vector<QRgb> colors = WaveColors(rows);
    const double known = content.waveform->Length();
    QRgb* line = raster.Line(top + rows / 2);
    for (int x = 0; x < raster.Width(); ++x) {
        line[x] = kWaveMiddle.rgb();
        if (content.view.First() + x * perColumn >= known)
            continue;
        const Reach reach = ReachOf(content, perColumn, x);
        const double high = std::max(middle * WaveShare(reach.high, loudest), 0.5);
        const double low = std::min(middle * WaveShare(reach.low, loudest), -0.5);
        FillColumn(raster, x, middle - high, middle - low, colors, top);
    }
}

struct Lane {
    StripBand band;
    int kind;
    QColor color;
};

QRgb LaneColor(const Lane& lane, int kinds)
{
    if (kinds == 0)
        return kLaneGround.rgb();
    if ((kinds & timeline::kTooManyKind) != 0)
        return kStripWarning.rgb();
    if ((kinds & lane.kind) != 0)
        return lane.color.rgb();
    // Even a time that drives none of the lanes can be seen.
    const bool reset = (kinds & timeline::kResetKind) != 0;
    return Mixed(kLaneGround.rgb(), reset ? kStripReset.rgb() : kStripOther.rgb(), 0.42);
}

void PaintLanes(const Raster& raster, const StripContent& content, const StripBands& bands)
{
    const std::array<Lane, 4> lanes{{{bands.resets, timeline::kResetKind, kStripReset},
                                     {bands.water, timeline::kWaterKind, kStripWater},
                                     {bands.lights, timeline::kLightsKind, kStripLights},
                                     {bands.motion, timeline::kMotionKind, kStripMotion}}};
    const std::vector<std::uint8_t> kinds = content.ticks.Columns(content.view, raster.Width());
    std::vector<QRgb> row(kinds.size());
    for (const Lane& lane : lanes) {
        std::ranges::transform(kinds, row.begin(),
                               [&lane](std::uint8_t kind) { return LaneColor(lane, kind); });
        raster.FillRows(raster.Device(lane.band.top), raster.Device(lane.band.Bottom()), row);
    }
    // A warning goes through the gaps as well, so that its shape tells it too.
    std::ranges::transform(kinds, row.begin(), [](std::uint8_t kind) {
        return (kind & timeline::kTooManyKind) != 0 ? kStripWarning.rgb() : kStripGround.rgb();
    });
    for (std::size_t i = 0; i + 1 < lanes.size(); ++i)
        raster.FillRows(raster.Device(lanes[i].band.Bottom()), raster.Device(lanes[i + 1].band.top),
                        row);
}

void PaintRuler(QPainter& painter, const StripContent& content, const StripBands& bands,
                const QFont& font)
{
    const timeline::StripView& view = content.view;
    painter.fillRect(0, 0, view.Width(), bands.ruler.height, kRulerGround);
    painter.setFont(font);
    const int labelWidth = QFontMetrics(font).horizontalAdvance(TimeLabel(0, true));
    const timeline::RulerStep step = timeline::RulerStepOf(view, labelWidth * kLabelDistance);
    const auto first = static_cast<std::int32_t>(view.First() / step.major) * step.major;
    const double last = view.First() + view.Span();
    const int bottom = bands.ruler.Bottom();
    const bool crowded = step.minor * view.Width() < 4 * view.Span();
    for (std::int32_t time = first; time <= last; time += step.minor) {
        const bool major = time % step.major == 0;
        const int x = static_cast<int>(std::floor(view.PixelOf(time)));
        if (!major) {
            if (!crowded)
                painter.fillRect(x, bottom - 3, 1, 3, kRulerLine);
            continue;
        }
        painter.fillRect(x, 0, 1, bottom, kRulerLine);
        painter.fillRect(x, bottom, 1, bands.wave.height, kGrid);
        if (x < 0)
            continue;
        painter.setPen(kRulerText);
        painter.drawText(QRect(x + 4, 0, labelWidth * 2, bottom), Qt::AlignLeft | Qt::AlignVCenter,
                         TimeLabel(time, step.major < 1'000));
    }
}

void PaintMarks(QPainter& painter, const StripContent& content, const StripBands& bands, int height)
{
    painter.setPen(Qt::NoPen);
    const auto& tenths = content.marks.tenths;
    for (std::size_t i = 0; i < tenths.size(); ++i) {
        const std::int32_t time = tenths[i] * timeline::kGrid;
        const QRect flag = FlagRect(content.view, bands, time);
        if (flag.right() < 0 || flag.left() > content.view.Width())
            continue;
        const bool selected = static_cast<std::int32_t>(i) == content.marks.selected;
        QColor color = kStripMark;
        color.setAlpha(selected ? 255 : 150);
        painter.fillRect(flag.left(), flag.top(), 1, height - flag.top(), color);
        painter.setBrush(selected ? kStripMark.lighter(125) : kStripMark.darker(115));
        const int tip = flag.left() + flag.width();
        const QPoint pennant[] = {flag.topLeft(), QPoint(tip, flag.top() + flag.height() / 2),
                                  QPoint(flag.left(), flag.top() + flag.height())};
        painter.drawPolygon(pennant, 3);
    }
}

}  // namespace

double WaveShare(double sample, int loudest)
{
    const double part = sample / std::max(kQuietest, double{1} * loudest);
    return std::copysign(std::pow(std::abs(part), kLoudness), part);
}

StripBands BandsOf(int height, bool withMusic)
{
    const auto share = [height](double part, int least) {
        return std::max(least, static_cast<int>(std::lround(part * height)));
    };
    const int ruler = share(kRulerShare, 8);
    const int resets = share(kResetShare, 2);
    const int body = std::max(0, height - ruler - 2 * kGap);
    int lane = share(kLaneShare, 3);
    if (!withMusic)
        lane = std::max(lane, (body - resets - kLanes * kGap) / kLanes);
    const int lanes = resets + kLanes * (lane + kGap);
    const int wave = withMusic ? std::max(0, body - lanes - kGap) : 0;
    StripBands bands;
    bands.ruler = {0, ruler};
    bands.wave = {ruler + kGap, wave};
    bands.resets = {height - kGap - lanes, resets};
    bands.water = {bands.resets.Bottom() + kGap, lane};
    bands.lights = {bands.water.Bottom() + kGap, lane};
    bands.motion = {bands.lights.Bottom() + kGap, lane};
    return bands;
}

QImage PaintStrip(const StripContent& content, int height, double ratio, const QFont& font)
{
    const StripBands bands = BandsOf(height, content.waveform != nullptr);
    const QSize size(static_cast<int>(std::ceil(content.view.Width() * ratio)),
                     static_cast<int>(std::ceil(height * ratio)));
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(kStripGround);
    image.setDevicePixelRatio(ratio);
    {
        QPainter painter(&image);
        PaintRuler(painter, content, bands, RulerFont(font, bands));
    }
    const Raster raster(image, ratio);
    if (bands.wave.height > 0)
        PaintWave(raster, content, bands.wave);
    PaintLanes(raster, content, bands);
    QPainter painter(&image);
    const double end = content.view.PixelOf(content.end);
    if (end < content.view.Width())
        painter.fillRect(QRectF(std::max(end, 0.0), bands.ruler.Bottom(), content.view.Width(),
                                height - bands.ruler.Bottom()),
                         kBehindEnd);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintMarks(painter, content, bands, height);
    return image;
}

QRect FlagRect(const timeline::StripView& view, const StripBands& bands, std::int32_t time)
{
    const int x = static_cast<int>(std::floor(std::clamp(view.PixelOf(time), -1e6, 1e6)));
    const int height = std::min(kMostFlagHeight, std::max(6, bands.ruler.height * 2 / 3));
    return {x, bands.ruler.Bottom(), kFlagWidth, height};
}

namespace {

struct CursorPlace {
    int left;
    int shade;  // pixels of the tenth, 0 where it is too narrow
};

CursorPlace PlaceOf(const timeline::StripView& view, std::int32_t time, Cursor cursor)
{
    const double at = std::clamp(view.PixelOf(time), -1e6, 1e6);
    const double tenth = timeline::kGrid * view.Width() / view.Span();
    const bool shaded = cursor == Cursor::Editing && tenth >= kNarrowestShade;
    return {static_cast<int>(std::floor(at)), shaded ? static_cast<int>(tenth) : 0};
}

QRect ChipRect(int width, const StripBands& bands, int x, const QFont& font)
{
    const int wide = QFontMetrics(font).horizontalAdvance(TimeLabel(0, true)) + 10;
    return {std::clamp(x - wide / 2, 0, std::max(0, width - wide)), 0, wide, bands.ruler.height};
}

}  // namespace

QRect CursorRect(const timeline::StripView& view, int height, std::int32_t time, Cursor cursor)
{
    const CursorPlace place = PlaceOf(view, time, cursor);
    return {place.left - kCursorHalf - 1, 0, std::max(place.shade, kCursorHalf) + kCursorHalf + 4,
            height};
}

void PaintStripCursor(QPainter& painter, const timeline::StripView& view, const StripBands& bands,
                      int height, std::int32_t time, Cursor cursor)
{
    const auto [x, shade] = PlaceOf(view, time, cursor);
    const int top = bands.ruler.Bottom();
    if (shade > 0)
        painter.fillRect(x, top, shade, height - top, kShade);
    painter.fillRect(x - 1, top, 3, height - top, kCursorRim);
    painter.fillRect(x, 0, 1, height, kStripCursor);
    const int head = std::min(8, bands.ruler.height);
    const QPointF tip(x + 0.5, top);
    const QPointF triangle[] = {tip, tip + QPointF(-kCursorHalf, -head),
                                tip + QPointF(kCursorHalf, -head)};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kCursorRim, 1));
    painter.setBrush(kStripCursor);
    painter.drawPolygon(triangle, 3);
    painter.restore();
}

QRect HoverRect(const timeline::StripView& view, int height, int x, const QFont& font)
{
    const StripBands bands = BandsOf(height, true);
    return ChipRect(view.Width(), bands, x, RulerFont(font, bands)) | QRect(x, 0, 1, height);
}

void PaintStripHover(QPainter& painter, const timeline::StripView& view, const StripBands& bands,
                     int height, int x, std::int32_t time, const QFont& font)
{
    const QFont letters = RulerFont(font, bands);
    const QRect chip = ChipRect(view.Width(), bands, x, letters);
    painter.fillRect(x, chip.bottom() + 1, 1, height - chip.height(), kHoverLine);
    painter.fillRect(chip, kChip);
    painter.setFont(letters);
    painter.setPen(kStripCursor);
    painter.drawText(chip, Qt::AlignCenter, TimeLabel(time, true));
}

}  // namespace render
