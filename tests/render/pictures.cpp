#include "pictures.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPainter>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

// Text needs the application object; the tests need no screen.
class GuiEnvironment : public testing::Environment {
    void SetUp() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    }
    void TearDown() override { application_.reset(); }

    char name_[12] = "render_test";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(new GuiEnvironment);  // GoogleTest deletes it

fountain::Scene Built(WindowSize size, const fountain::FountainState& state,
                      const fountain::Drawing& drawing, const fountain::DisplayOptions& options)
{
    const fountain::SceneLayout layout =
        fountain::Fitted(fountain::DesignLayout(), fountain::FitToScreen(size.width, size.height));
    return fountain::BuildScene(state, drawing, options, layout, fountain::Measure(layout));
}

}  // namespace

fountain::Scene IdleScene(WindowSize size)
{
    return Built(size, {}, {}, {});
}

fountain::Scene FullScene(WindowSize size, int sweepPosition, bool opposed)
{
    fountain::FountainState state;
    fountain::Drawing drawing;
    for (std::int16_t& lights : state.mintModuleLights)
        lights = 15;
    for (int index = 0; index <= 9; ++index)
        drawing.ringHalves[index] = drawing.ringShown[index] = 10;
    for (int group = 0; group <= 1; ++group) {
        drawing.candelabraHalves[group] = 10;
        drawing.sweeps[group] = {10, static_cast<std::int16_t>(sweepPosition), opposed};
        state.mintCurtainLevel[group] = 5;
    }
    state.mintCurtainLights = 3;
    state.mintBazookaLevel = state.mintSpoutLevel = state.mintPeacockLevel = 5;
    state.mblnVoice = state.mblnCrossWhite = true;
    return Built(size, state, drawing, {.Legends = true, .Candelabras = true, .BackCurtain = true});
}

QImage Picture(const fountain::Scene& scene, double ratio, int phase)
{
    QImage picture(static_cast<int>(std::lround(scene.fraView.width / 12 * ratio)),
                   static_cast<int>(std::lround(scene.fraView.height / 12 * ratio)),
                   QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::red);
    render::SceneCache cache;
    QPainter painter(&picture);
    render::PaintScene(painter, scene, cache, phase);
    painter.end();
    return picture;
}

QRect PixelsOf(const fountain::Box& box, double ratio)
{
    const double unit = ratio / fountain::kUnitsPerPixel;
    return QRectF(box.left * unit, box.top * unit, box.width * unit, box.height * unit)
        .toAlignedRect();
}

QRect PixelsOf(const fountain::Segment& line, double ratio)
{
    const double unit = ratio / fountain::kUnitsPerPixel;
    return QRectF(QPointF(line.x1, line.y1) * unit, QPointF(line.x2, line.y2) * unit)
        .normalized()
        .adjusted(-4 * ratio, -4 * ratio, 4 * ratio, 4 * ratio)
        .toAlignedRect();
}

int Difference(QRgb one, QRgb other)
{
    return std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other)) +
           std::abs(qBlue(one) - qBlue(other));
}

QRect ChangedPixels(const QImage& before, const QImage& after)
{
    int left = before.width(), top = before.height(), right = -1, bottom = -1;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (before.pixel(x, y) != after.pixel(x, y)) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}
