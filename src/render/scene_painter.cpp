#include "render/scene_painter.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "render/lamp_letters.h"
#include "render/streams.h"

namespace render {
namespace {

using fountain::Box;
using fountain::Color;
using fountain::LabelElement;
using fountain::LineElement;
using fountain::Segment;

constexpr int kLongestSide = 16384;        ///< device pixels; a larger view stays unpainted
constexpr double kDesignViewHeight = 372;  ///< design pixels
constexpr Color kBlack{0, 0, 0};

QColor Opaque(Color color)
{
    return QColor(color.red, color.green, color.blue);
}

/// Jets on each half of a ring, 1 the outermost.
constexpr document::IndexedArray<int, 1, 5> kJetsOfHalf{{12, 10, 8, 6, 3}};

class ViewPainter {
 public:
    ViewPainter(QPainter& painter, const fountain::Scene& scene, WaterSprites& water, double unit,
                int phase)
        : painter_(painter), scene_(scene), water_(water), unit_(unit), phase_(phase)
    {
    }

    void Cross() const
    {
        const LabelElement& cross = scene_.lblCross;
        const QRectF box = Rect(cross);
        if (cross.visible)
            Halo(box.center(), cross.color);
        const QColor color = cross.visible ? Opaque(cross.color) : QColor(20, 26, 48);
        const double beam = std::max(1.0, std::round(box.width() * 0.15));
        painter_.fillRect(QRectF(box.center().x() - beam / 2, box.top(), beam, box.height()),
                          color);
        painter_.fillRect(QRectF(box.left() + box.width() * 0.12, box.top() + box.height() * 0.27,
                                 box.width() * 0.76, beam),
                          color);
    }

    void Curtain(int curtain) const
    {
        const LabelElement& shape = scene_.shpCurtain[curtain];
        if (!shape.visible || shape.height <= 0)
            return;
        VeilStyle style = VeilStyle::Sheer;
        if (curtain == 1)
            style = scene_.curtainFillStyle == fountain::FillStyle::Solid ? VeilStyle::Solid
                                                                          : VeilStyle::Lines;
        Tint& tint = water_.Of(shape.color);
        const QRectF box = Rect(shape);
        const int top = qRound(box.top());
        const int height = qRound(box.bottom()) - top;
        const int strips =
            std::max(2, qRound(box.width() / water_.Scale().x / WaterMasks::kVeilWidth));
        for (int strip = 0; strip < strips; ++strip) {
            const auto edge = [&](int i) { return qRound(box.left() + box.width() * i / strips); };
            const VeilPart part = strip == 0            ? VeilPart::Left
                                  : strip == strips - 1 ? VeilPart::Right
                                                        : VeilPart::Middle;
            const QImage& veil = tint.Veil(style, part);
            painter_.drawImage(QPoint(edge(strip), top), veil,
                               QRect(0, 0, edge(strip + 1) - edge(strip), height));
        }
    }

    void CurtainLights() const
    {
        for (const LabelElement& light : scene_.lblCurtainLight) {
            if (!light.visible)
                continue;
            const QRectF box = Rect(light);
            if (light.color != kBlack)
                Halo(box.center(), light.color);
            painter_.setPen(QPen(QColor(70, 78, 104), box.height() / 9));
            painter_.setBrush(Opaque(light.color));
            const double inset = box.height() / 12;
            painter_.drawEllipse(box.adjusted(inset, inset, -inset, -inset));
        }
    }

    void Peacock() const
    {
        for (int index = 0; index <= 12; ++index) {
            const LineElement& line = scene_.linPeacock[index];
            if (!line.visible)
                continue;
            Tint& tint = water_.Of(line.color);
            const Curve curve = Straight(Start(line), End(line));
            Mist(tint, curve, 0.42, 0.96, {});
            Feather(tint, curve, index);
            PaintStream(painter_, tint, curve, {2, 3.4, 0.25, 6}, At(100, index));
        }
    }

    void Bazookas() const
    {
        for (int index = 9; index >= 0; --index) {
            const LineElement& line = scene_.linBazooka[index];
            if (!line.visible)
                continue;
            const bool head = index >= 8 || !scene_.linBazooka[index + 2].visible;
            Tint& tint = water_.Of(line.color);
            const Curve curve = BazookaCurve(index);
            Mist(tint, curve, 0, 1, QPointF(0, 6 * water_.Scale().y));
            PaintStream(painter_, tint, curve,
                        {3, 3.2, head ? 0.4 : 0.0, head && index < 8 ? 6 : 0}, At(200, index));
        }
    }

    void Pool(int module) const
    {
        const double tallest = TallestRing(module);
        const LineElement& sweep = scene_.linSweep[fountain::SweepLine(module, 0)];
        const LineElement& jet = scene_.linCandelabra[fountain::CandelabraLine(module, 0)];
        const bool spout = module == 4 && scene_.linSpout.visible;
        if (tallest == 0 && !sweep.visible && !jet.visible && !spout)
            return;
        const LabelElement& outer = scene_.lblRing[fountain::RingLabel(module, 1)];
        Tint& tint = water_.Of(outer.color);
        const QPointF middle = Point(outer.left + outer.width / 2, outer.Bottom());
        const QImage& aura = tint.Aura();
        painter_.drawImage(QPointF(std::round(middle.x() - aura.width() / 2.0),
                                   std::round(middle.y() - 0.4 * tallest - aura.height() / 2.0)),
                           aura);
        const QImage& pool = tint.Pool();
        painter_.drawImage(QPointF(std::round(middle.x() - pool.width() / 2.0),
                                   std::round(middle.y() - 24 * water_.Scale().y)),
                           pool);
    }

    // The far half of every ring, from the outside inward, then the near halves outward.
    void Rings(int module) const
    {
        for (int ring = 1; ring <= 5; ++ring)
            HalfRing(module, ring, Depth::Back);
        if (module == 4)
            Spout();
        for (int ring = 5; ring >= 1; --ring)
            HalfRing(module, ring, Depth::Front);
    }

    void Candelabras(int module) const
    {
        for (int jet = 0; jet <= 5; ++jet) {
            const int index = fountain::CandelabraLine(module, jet);
            const LineElement& line = scene_.linCandelabra[index];
            if (!line.visible)
                continue;
            const Curve curve = Bent(Start(line), End(line));
            if (scene_.candelabraDrawMode == fountain::DrawMode::Xor)
                PaintInvertedStream(painter_, Opaque(line.color), curve, At(300, index));
            else
                PaintStream(painter_, water_.Of(line.color), curve, {2, 1, 0.3, 5}, At(300, index));
        }
    }

    void Sweeps(int module) const
    {
        for (int side = 0; side <= 1; ++side) {
            const int index = fountain::SweepLine(module, side);
            const LineElement& line = scene_.linSweep[index];
            if (line.visible)
                PaintStream(painter_, water_.Of(line.color), Straight(Start(line), SweepEnd(line)),
                            {2.4, 3, 0.16, 7}, At(400, index));
        }
    }

    // Two strands that wind round each other, so that nobody takes it for the spout.
    void Voice() const
    {
        const LineElement& line = scene_.linVoice;
        if (!line.visible)
            return;
        Tint& tint = water_.Of(line.color);
        const QPointF bottom = End(line);
        const QPointF way = Start(line) - bottom;
        const double wide = 7 * water_.Scale().x;
        constexpr double kTurn = 2 * std::numbers::pi;
        constexpr int kPieces = 24;
        for (int strand = 0; strand < 2; ++strand) {
            const auto at = [&](double t) {
                const double angle = kTurn * (1.75 * t - phase_ / 1400.0 + strand / 2.0);
                return bottom + way * t + QPointF(wide * (0.4 + 0.6 * t) * std::sin(angle), 0);
            };
            for (int piece = 0; piece < kPieces; ++piece)
                PaintStream(
                    painter_, tint,
                    Straight(at(piece / double{kPieces}), at((piece + 1) / double{kPieces})),
                    {2.6, 2.6, 0, piece + 1 == kPieces ? 6 : 0}, At(500, strand));
        }
    }

    void Base() const
    {
        if (!scene_.linBase.visible)
            return;
        const QRectF line(Start(scene_.linBase), End(scene_.linBase));
        painter_.fillRect(line.adjusted(0, 0, 0, 1.4 * water_.Scale().y),
                          Opaque(scene_.linBase.color));
    }

 private:
    [[nodiscard]] QPointF Point(double x, double y) const { return {x * unit_, y * unit_}; }
    [[nodiscard]] QPointF Start(const Segment& line) const { return Point(line.x1, line.y1); }
    [[nodiscard]] QPointF End(const Segment& line) const { return Point(line.x2, line.y2); }
    // A sweep leans by an angle, whatever the proportions of the view: in a narrow one it would
    // leave the view.
    [[nodiscard]] QPointF SweepEnd(const Segment& line) const
    {
        const double narrowed = std::min(1.0, water_.Scale().x / water_.Scale().y);
        return Point(line.x1 + (line.x2 - line.x1) * narrowed, line.y2);
    }
    [[nodiscard]] QRectF Rect(const Box& box) const
    {
        return {Point(box.left, box.top), QSizeF(box.width * unit_, box.height * unit_)};
    }

    [[nodiscard]] Moment At(int family, int index) const
    {
        return {water_.Scale(), static_cast<std::uint32_t>(family + index), phase_};
    }

    void Halo(QPointF middle, Color color) const
    {
        const QImage& halo = water_.Of(color).Halo();
        painter_.drawImage(QPointF(std::round(middle.x() - halo.width() / 2.0),
                                   std::round(middle.y() - halo.height() / 2.0)),
                           halo);
    }

    void Mist(Tint& tint, const Curve& curve, double from, double to, QPointF aside) const
    {
        const QImage& mist = tint.Mist();
        const double spacing = 0.55 * WaterMasks::kMistRadius * water_.Scale().Smaller();
        const int count =
            std::clamp(static_cast<int>(curve.Length() * (to - from) / spacing), 1, 200);
        for (int i = 0; i < count; ++i) {
            const QPointF at = curve.At(from + (to - from) * (i + 0.5) / count) + aside;
            painter_.drawImage(QPointF(std::round(at.x() - mist.width() / 2.0),
                                       std::round(at.y() - mist.height() / 2.0)),
                               mist);
        }
    }

    // Strands that leave the shaft on both sides make a line of the fan a plume.
    void Feather(Tint& tint, const Curve& shaft, int index) const
    {
        const QPointF way = shaft.end - shaft.start;
        const QPointF across = QPointF(-way.y(), way.x()) * 0.062;
        for (const double side : {-1.0, 1.0})
            PaintStream(painter_, tint,
                        {shaft.start + way * 0.36, shaft.start + way * 0.6 + across * side,
                         shaft.start + way * 0.84 + across * side, shaft.start + way * 0.985},
                        {0.6, 1.8, 0.9, 2}, At(side < 0 ? 120 : 140, index));
    }

    [[nodiscard]] double TallestRing(int module) const
    {
        double tallest = 0;
        for (int ring = 1; ring <= 5; ++ring) {
            const LabelElement& label = scene_.lblRing[fountain::RingLabel(module, ring)];
            tallest = std::max(tallest, label.visible ? label.height * unit_ : 0);
        }
        return tallest;
    }

    void Plume(Tint& tint, Depth depth, double x, double base, double height, int number) const
    {
        const auto jet = static_cast<std::uint32_t>(number);
        const double breath =
            0.05 * Scatter(jet, 1) + 0.025 * (1 + std::sin(phase_ / 90.0 + 6.3 * Scatter(jet, 2)));
        const QImage& plume = tint.Plume(depth, number % WaterMasks::kPlumes);
        const int bottom = qRound(base);
        const int length = std::clamp(qRound(height * (1 - breath)), 0, plume.height());
        painter_.drawImage(QPoint(qRound(x) - plume.width() / 2, bottom - length), plume,
                           QRect(0, 0, plume.width(), length));
    }

    void HalfRing(int module, int ring, Depth depth) const
    {
        const LabelElement& label = scene_.lblRing[fountain::RingLabel(module, ring)];
        if (!label.visible)
            return;
        Tint& tint = water_.Of(label.color);
        const QRectF box = Rect(label);
        const double wide = std::max(0.0, box.width() / 2 - 5 * water_.Scale().x);
        const double deep = box.width() * 0.05 * water_.Scale().y / water_.Scale().x;
        // The far half is mostly hidden.
        const int jets =
            depth == Depth::Front ? kJetsOfHalf[ring] : (kJetsOfHalf[ring] * 2 + 2) / 3;
        for (int jet = 0; jet < jets; ++jet) {
            const double angle = std::numbers::pi * (jet + 0.5) / jets;
            const double nearer = depth == Depth::Front ? std::sin(angle) : -std::sin(angle);
            Plume(tint, depth, box.center().x() - std::cos(angle) * wide,
                  box.bottom() - deep + nearer * deep, box.height() - 2 * deep,
                  module * 640 + ring * 64 + jet + (depth == Depth::Front ? 0 : 32));
        }
    }

    void Spout() const
    {
        const LineElement& line = scene_.linSpout;
        if (!line.visible)
            return;
        Tint& tint = water_.Of(line.color);
        const QPointF bottom = End(line);
        const double height = bottom.y() - Start(line).y();
        constexpr std::array<double, 7> kOffsets{-7, 7, -4.5, 4.5, -2, 2, 0};
        for (std::size_t i = 0; i < kOffsets.size(); ++i)
            Plume(tint, Depth::Front, bottom.x() + kOffsets[i] * water_.Scale().x, bottom.y(),
                  height * (1 - std::abs(kOffsets[i]) * 0.028), 7000 + static_cast<int>(i));
    }

    // The five lines of a side are chords of one smooth arch, whether or not they are visible.
    [[nodiscard]] Curve BazookaCurve(int index) const
    {
        const auto& lines = scene_.linBazooka;
        const QPointF start = Start(lines[index]);
        const QPointF end = End(lines[index]);
        const QPointF way = end - start;
        QPointF out = index >= 2 ? (end - Start(lines[index - 2])) / 2 : way;
        QPointF in = index <= 7 ? (End(lines[index + 2]) - start) / 2 : 2 * way - out;
        if (index < 2)
            out = 2 * way - in;
        return {start, start + out / 3, end - in / 3, end};
    }

    QPainter& painter_;
    const fountain::Scene& scene_;
    WaterSprites& water_;
    double unit_;
    int phase_;
};

void PaintElements(const ViewPainter& view)
{
    view.Cross();
    view.Curtain(1);
    view.CurtainLights();
    view.Peacock();
    view.Bazookas();
    for (int module = 1; module <= 7; ++module)
        view.Pool(module);
    for (int module = 1; module <= 7; ++module) {
        view.Rings(module);
        view.Candelabras(module);
        view.Sweeps(module);
    }
    view.Voice();
    view.Curtain(0);
    view.Base();
}

}  // namespace

void PaintScene(QPainter& painter, const fountain::Scene& scene, SceneCache& cache, int phase)
{
    // Everything is painted pixel by pixel of the device: a picture that the painter had to scale
    // would take many times as long.
    const double ratio = painter.device() != nullptr ? painter.device()->devicePixelRatioF() : 1;
    const double unit = ratio / fountain::kUnitsPerPixel;
    const double width = scene.fraView.width * unit;
    const double height = scene.fraView.height * unit;
    if (!(width >= 1 && height >= 1 && width <= kLongestSide && height <= kLongestSide))
        return;
    const PixelScale scale{width / fountain::kDesignWidth, height / kDesignViewHeight};
    cache.water.SetScale(scale);

    const double x = ratio / scale.x;
    const double y = ratio / scale.y;
    const Box& box = scene.lblCross;
    const Box cross{box.left * x, box.top * y, box.width * x, box.height * y};
    const QRect all(0, 0, qRound(width), qRound(height));
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    painter.setClipRect(all, Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawImage(QPoint(0, 0), cache.scenery.Picture(all.width(), all.height(), scale, cross));
    PaintElements(ViewPainter(painter, scene, cache.water, unit, phase));
    PaintLampLetters(painter, scene, unit);
    painter.restore();
}

}  // namespace render
