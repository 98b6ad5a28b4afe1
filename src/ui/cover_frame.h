#pragma once

#include <QColor>
#include <QLabel>
#include <QWidget>
#include <span>

#include "ui/design_form.h"

namespace ui {

inline constexpr QColor kCoverEdge(64, 84, 148);
inline constexpr QColor kCoverInk(24, 24, 32);

/// A panel over a part of the window, which is out of use meanwhile: Enter acts, Escape cancels.
class CoverFrame : public QWidget {
 public:
    using QWidget::QWidget;

 protected:
    QLabel* AddLabel(const QString& name, const QColor& ink, Qt::Alignment alignment);
    /// Gives the controls, which are all there, their words; their order is the Tab order.
    void DescribeControls(std::span<const FormControl> controls);

    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    /// Button 0 acts, button 1 cancels.
    virtual void Answer(int button) = 0;
    [[nodiscard]] virtual bool CancelHasFocus() const = 0;
};

}  // namespace ui
