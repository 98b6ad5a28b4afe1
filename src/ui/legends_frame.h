#pragma once

#include <QFrame>
#include <QLabel>
#include <array>

#include "fountain/scene_layout.h"

namespace ui {

/// `fraLegends`: what the colours of the water mean, and the three notes.
class LegendsFrame final : public QFrame {
    Q_OBJECT

 public:
    explicit LegendsFrame(QWidget* parent);

    /// Arranges the labels in the frame's size of now, in the largest font that the scales allow
    /// and that leaves every text whole.
    void Fit(fountain::ScaleFactors scale);

 private:
    void BuildRows();
    void BuildNotes();
    [[nodiscard]] bool Arrange(const QFont& font, fountain::ScaleFactors scale);

    std::array<QLabel*, 17> lblLegend_{};
    std::array<QLabel*, 17> lblLegendKey_{};
    std::array<QLabel*, 3> lblNotes_{};
};

}  // namespace ui
