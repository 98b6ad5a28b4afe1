#pragma once

#include "ui/panel_widgets.h"

namespace ui {

/// A spin box of `updnTime`: a field of the current time. Shift, Ctrl and Alt make its steps 2, 5
/// and 10 times as long.
class TimeSpinner final : public PanelSpinBox {
    Q_OBJECT

 public:
    /// `digits` are always shown, with zeros in front.
    TimeSpinner(int highest, int digits, QStyle* style, QWidget* parent);

    /// Taken when the arrow or the key went down.
    [[nodiscard]] int Multiplier() const { return multiplier_; }

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    [[nodiscard]] QString textFromValue(int value) const override;
    // A step at the end of a field goes on in the next one.
    [[nodiscard]] StepEnabled stepEnabled() const override
    {
        return StepUpEnabled | StepDownEnabled;
    }

 private:
    int digits_;
    int multiplier_ = 1;
};

}  // namespace ui
