#pragma once

#include <QWidget>

#include "fountain/scene.h"
#include "fountain/scene_layout.h"
#include "render/scene_painter.h"

namespace ui {

/// `fraView`: the picture of the fountain, fitted to whatever size the widget has.
class ViewWidget final : public QWidget {
    Q_OBJECT

 public:
    explicit ViewWidget(QWidget* parent);

    /// Fits the layout to the size of now; the next scene must be built in it.
    void Fit();
    [[nodiscard]] const fountain::SceneLayout& FittedLayout() const { return layout_; }
    [[nodiscard]] const fountain::Measures& FittedMeasures() const { return measures_; }

    /// Repaints when the picture is another one than before.
    void SetScene(const fountain::Scene& scene, int phase);
    [[nodiscard]] int Phase() const { return phase_; }

 signals:
    void Painted();

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    fountain::SceneLayout layout_;
    fountain::Measures measures_;
    fountain::Scene scene_;
    int phase_ = 0;  // ms; how far the drops have moved within the water
    render::SceneCache cache_;
};

}  // namespace ui
