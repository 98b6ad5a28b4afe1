#include "ui/view_widget.h"

#include <QPainter>

namespace ui {
namespace {

constexpr QColor kNight(10, 14, 38);

}  // namespace

ViewWidget::ViewWidget(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    Fit();
}

void ViewWidget::Fit()
{
    const fountain::SceneLayout& design = fountain::DesignLayout();
    const fountain::ScaleFactors scale{width() * fountain::kUnitsPerPixel / design.fraView.width,
                                       height() * fountain::kUnitsPerPixel / design.fraView.height};
    layout_ = fountain::Fitted(design, scale);
    measures_ = fountain::Measure(layout_);
}

void ViewWidget::SetScene(const fountain::Scene& scene, int phase)
{
    if (scene == scene_ && phase == phase_)
        return;
    scene_ = scene;
    phase_ = phase;
    update();
}

void ViewWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // On screens with a fractional scale the picture may end within the last pixel.
    painter.fillRect(QRect(width() - 1, 0, 1, height()), kNight);
    painter.fillRect(QRect(0, height() - 1, width(), 1), kNight);
    render::PaintScene(painter, scene_, cache_, phase_);
    painter.end();
    emit Painted();
}

}  // namespace ui
