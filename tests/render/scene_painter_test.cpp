#include "render/scene_painter.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "fountain/colors.h"
#include "pictures.h"

namespace {

using fountain::Color;
using fountain::DrawMode;
using fountain::FillStyle;
using fountain::Scene;

// One element of every family, with its geometry at the highest level.
struct Element {
    const char* name;
    bool* visible;
    Color* color;
    QRect pixels;
};

std::array<Element, 10> ElementsOf(Scene& scene, double ratio = 1)
{
    const auto of = [ratio](const char* name, auto& element) {
        return Element{name, &element.visible, &element.color, PixelsOf(element, ratio)};
    };
    return {of("ring", scene.lblRing[fountain::RingLabel(2, 1)]),
            of("inner ring", scene.lblRing[fountain::RingLabel(6, 5)]),
            of("candelabra", scene.linCandelabra[fountain::CandelabraLine(3, 4)]),
            of("sweep", scene.linSweep[fountain::SweepLine(1, 1)]),
            of("bazooka", scene.linBazooka[5]),
            of("spout", scene.linSpout),
            of("peacock", scene.linPeacock[2]),
            of("back curtain", scene.shpCurtain[1]),
            of("curtain light", scene.lblCurtainLight[0]),
            of("cross", scene.lblCross)};
}

// Everything at its highest place, but hidden.
Scene HiddenScene(WindowSize size = {1024, 768})
{
    Scene scene = FullScene(size, 5, true);
    const auto hide = [](auto& elements) {
        for (auto& element : elements)
            element.visible = false;
    };
    hide(scene.lblRing);
    hide(scene.linCandelabra);
    hide(scene.linSweep);
    hide(scene.linBazooka);
    hide(scene.linPeacock);
    hide(scene.shpCurtain);
    hide(scene.lblCurtainLight);
    scene.linSpout.visible = scene.linVoice.visible = scene.lblCross.visible = false;
    scene.lampLetters = false;
    return scene;
}

std::vector<int> ColorsOf(const Element& element)
{
    if (element.name == std::string("back curtain"))
        return {0, fountain::kCurtainGreenColor, fountain::kCurtainAmberColor,
                fountain::kCurtainBothColor};
    std::vector<int> colors(16);
    std::iota(colors.begin(), colors.end(), 0);
    return colors;
}

int DifferenceFrom(int index, QRgb pixel)
{
    const Color color = fountain::mlngColors(index);
    return Difference(pixel, qRgb(color.red, color.green, color.blue));
}

int Nearest(QRgb pixel, const std::vector<int>& colors)
{
    int nearest = 0;
    for (const int index : colors)
        if (DifferenceFrom(index, pixel) < DifferenceFrom(nearest, pixel))
            nearest = index;
    return nearest;
}

// Of the pixels that differ clearly, the share that lies in the box.
double ShareInside(const QImage& before, const QImage& after, const QRect& box)
{
    int inside = 0;
    int all = 0;
    for (int y = 0; y < after.height(); ++y)
        for (int x = 0; x < after.width(); ++x)
            if (Difference(before.pixel(x, y), after.pixel(x, y)) > 60) {
                ++all;
                inside += box.contains(x, y) ? 1 : 0;
            }
    return all == 0 ? 0 : static_cast<double>(inside) / all;
}

TEST(PaintScene, ShowsEveryElementAtItsPlace)
{
    for (const double ratio : {1.0, 1.5, 2.0}) {
        Scene scene = HiddenScene();
        const QImage before = Picture(scene, ratio);
        for (const Element& element : ElementsOf(scene, ratio)) {
            *element.visible = true;
            *element.color = Color{255, 255, 255};
            const QImage after = Picture(scene, ratio);
            const int room = static_cast<int>(14 * ratio);
            EXPECT_GT(ShareInside(before, after, element.pixels.adjusted(-room, -room, room, room)),
                      0.8)
                << element.name << " at " << ratio;
            // Its glow aside, it fills the height that drawing gave it.
            int top = after.height();
            int bottom = 0;
            for (int y = 0; y < after.height(); ++y)
                for (int x = element.pixels.left(); x <= element.pixels.right(); ++x)
                    if (Difference(before.pixel(x, y), after.pixel(x, y)) > 150) {
                        top = std::min(top, y);
                        bottom = std::max(bottom, y);
                    }
            EXPECT_LE(top, element.pixels.top() + element.pixels.height() * 0.2) << element.name;
            EXPECT_GE(bottom, element.pixels.bottom() - element.pixels.height() * 0.2)
                << element.name;
            *element.visible = false;
        }
    }
}

TEST(PaintScene, WaterHasTheColorOfTheTable)
{
    Scene scene = HiddenScene();
    const QImage before = Picture(scene);
    for (const Element& element : ElementsOf(scene)) {
        const std::vector<int> colors = ColorsOf(element);
        for (const int index : colors) {
            *element.visible = true;
            *element.color = fountain::mlngColors(index);
            const QImage after = Picture(scene);
            std::array<int, 17> pixels{};
            for (int y = element.pixels.top(); y <= element.pixels.bottom(); ++y)
                for (int x = element.pixels.left(); x <= element.pixels.right(); ++x) {
                    // Thinner water is a mixture with what lies behind it.
                    const QRgb pixel = after.pixel(x, y);
                    const int nearest = Nearest(pixel, colors);
                    const QRgb behind = before.pixel(x, y);
                    if (2 * Difference(pixel, behind) > DifferenceFrom(index, behind) &&
                        DifferenceFrom(nearest, pixel) < 40)
                        ++pixels[static_cast<std::size_t>(nearest)];
                }
            const auto most = std::ranges::max_element(pixels);
            EXPECT_EQ(most - pixels.begin(), index) << element.name;
            EXPECT_GT(*most, 20) << element.name << " in color " << index;
        }
        *element.visible = false;
    }
}

TEST(PaintScene, StaysInsideTheView)
{
    for (const WindowSize size : kSizes)
        for (const double ratio : {1.0, 1.25, 2.0}) {
            const Scene scene = FullScene(size, 6, true);
            const QRect view(QPoint(20, 20), QSize(static_cast<int>(scene.fraView.width / 12),
                                                   static_cast<int>(scene.fraView.height / 12)));
            QImage before((QSizeF(view.size() + QSize(40, 40)) * ratio).toSize(),
                          QImage::Format_ARGB32_Premultiplied);
            before.setDevicePixelRatio(ratio);
            before.fill(QColor(1, 200, 3));
            QImage after = before;
            render::SceneCache cache;
            QPainter painter(&after);
            painter.translate(view.topLeft());
            render::PaintScene(painter, scene, cache);
            painter.fillRect(QRect(-20, -20, 5, 5), QColor(1, 200, 3));  // as it was before
            painter.end();
            const QRect room(static_cast<int>(20 * ratio), static_cast<int>(20 * ratio),
                             static_cast<int>((view.width() + 1) * ratio) + 1,
                             static_cast<int>((view.height() + 1) * ratio) + 1);
            EXPECT_TRUE(room.contains(ChangedPixels(before, after))) << size << " at " << ratio;
        }
}

TEST(PaintScene, LampLettersFitTheirBoxes)
{
    for (const WindowSize size : kSizes)
        for (const double ratio : {1.0, 2.0}) {
            Scene scene = HiddenScene(size);
            const QImage before = Picture(scene, ratio);
            scene.lampLetters = true;
            int narrowest = 0;
            for (const char* text : {"", "R", "BA", "RBAW"}) {
                for (fountain::LampLetters& lamps : scene.lblLamps)
                    lamps.text = text;
                const QImage after = Picture(scene, ratio);
                const QRect box = PixelsOf(scene.lblLamps[3], ratio);
                const int beside = box.width() / 8;
                QRect letters;
                for (int y = 0; y < after.height(); ++y)
                    for (int x = box.left() - beside; x <= box.right() + beside; ++x)
                        if (qGreen(after.pixel(x, y)) > 150)
                            letters |= QRect(x, y, 1, 1);
                EXPECT_TRUE(box.adjusted(1, 1, -1, -1).contains(letters) || letters.isNull())
                    << text << " at " << size;
                if (*text == '\0') {
                    EXPECT_TRUE(letters.isNull()) << size;
                    continue;
                }
                EXPECT_GT(letters.width(), narrowest) << text << " at " << size;
                EXPECT_GE(letters.height(), std::min(box.height() * 0.3, box.width() * 0.12))
                    << text << " at " << size;
                narrowest = letters.width();
            }
        }
}

TEST(PaintScene, CandelabrasInvertInExclusiveOrMode)
{
    Scene scene = HiddenScene();
    auto& line = scene.linCandelabra[fountain::CandelabraLine(5, 1)];
    for (fountain::LabelElement& ring : scene.lblRing)
        ring.visible = true;  // so that the module's glow is there in both pictures
    const QImage before = Picture(scene);
    line.visible = true;
    line.color = Color{255, 128, 0};
    scene.candelabraDrawMode = DrawMode::Xor;
    const QImage inverted = Picture(scene);
    int pixels = 0;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (before.pixel(x, y) != inverted.pixel(x, y)) {
                EXPECT_EQ((before.pixel(x, y) ^ inverted.pixel(x, y)) & 0xFFFFFFU, 0xFF8000U);
                ++pixels;
            }
    EXPECT_GT(pixels, 60);
    scene.candelabraDrawMode = DrawMode::Copy;
    EXPECT_NE(Picture(scene), inverted);
}

TEST(PaintScene, CurtainsLetTheModulesBeSeen)
{
    Scene scene = HiddenScene();
    scene.shpCurtain[1].visible = true;
    scene.shpCurtain[1].color = fountain::mlngColors(16);
    scene.curtainFillStyle = FillStyle::Solid;
    const QImage solid = Picture(scene);
    scene.curtainFillStyle = FillStyle::VerticalLines;
    EXPECT_NE(Picture(scene), solid);

    // A red module stays redder than anything else behind the front curtain.
    for (fountain::LabelElement& ring : scene.lblRing) {
        ring.visible = true;
        ring.color = Color{255, 0, 0};
    }
    scene.shpCurtain[0].visible = true;
    scene.shpCurtain[0].color = fountain::mlngColors(0);
    const QImage veiled = Picture(scene);
    const QRect ring = PixelsOf(scene.lblRing[fountain::RingLabel(4, 3)]);
    int red = 0;
    for (int y = ring.top(); y <= ring.bottom(); ++y)
        for (int x = ring.left(); x <= ring.right(); ++x)
            red += qRed(veiled.pixel(x, y)) > 2 * qGreen(veiled.pixel(x, y)) ? 1 : 0;
    EXPECT_GT(red, ring.width() * ring.height() / 2);
}

TEST(PaintScene, DependsOnItsArgumentsAlone)
{
    const Scene small = FullScene({1024, 768}, 4, false);
    const Scene large = FullScene({1366, 768}, 4, false);
    render::SceneCache cache;
    for (const Scene& scene : {small, large, small}) {
        QImage picture = Picture(scene);
        const QImage fresh = picture;
        picture.fill(Qt::red);
        QPainter painter(&picture);
        render::PaintScene(painter, scene, cache);
        painter.end();
        EXPECT_EQ(picture, fresh) << "with what the cache keeps of another size";
    }
    EXPECT_NE(Picture(small, 1, 350), Picture(small)) << "the drops move";
    EXPECT_EQ(Picture(IdleScene(), 1, 350), Picture(IdleScene())) << "the scenery does not";
}

TEST(PaintScene, SurvivesViewsOfAnySize)
{
    const double sizes[] = {0,
                            -12000,
                            12,
                            5e6,
                            1e300,
                            std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity()};
    for (const double width : sizes)
        for (const double height : sizes) {
            Scene scene = FullScene({1024, 768}, 6, false);
            scene.fraView.width = width;
            scene.fraView.height = height;
            QImage picture(64, 64, QImage::Format_RGB32);
            picture.fill(Qt::red);
            render::SceneCache cache;
            QPainter painter(&picture);
            render::PaintScene(painter, scene, cache);
            painter.end();
            const bool fits = width == 12 && height == 12;
            EXPECT_EQ(picture.pixel(0, 0) != qRgb(255, 0, 0), fits) << width << " x " << height;
            EXPECT_EQ(picture.pixel(1, 1), qRgb(255, 0, 0));
        }
}

}  // namespace
