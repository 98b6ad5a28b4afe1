#pragma once

#include <QLabel>
#include <QPushButton>
#include <array>

#include "editor/editor.h"
#include "fountain/scene_layout.h"
#include "ui/cover_frame.h"
#include "ui/time_spinner.h"

namespace ui {

/// `fraShift`: moves the commands of the current time, and all behind them, to another time.
class ShiftFrame final : public CoverFrame {
    Q_OBJECT

 public:
    /// `editor` outlives the frame.
    ShiftFrame(editor::Editor& editor, QWidget* parent);

    /// Takes its place in the window.
    void Fit(fountain::ScaleFactors scale);
    /// Shows the editor's shift panel as it is now: opens, follows, closes.
    void Refresh();

 signals:
    void Operated();

 protected:
    void Answer(int button) override { cmdShift_Click(button); }
    [[nodiscard]] bool CancelHasFocus() const override { return cmdShift_[1]->hasFocus(); }

 private:
    void BuildTexts();
    void BuildControls();
    void TypeTime(int field, int value);
    void cmdShift_Click(int index);

    editor::Editor& editor_;
    QLabel* lblShiftHelp_ = nullptr;
    QLabel* lblShiftTime_ = nullptr;
    QLabel* lblShiftFactor_ = nullptr;
    std::array<QLabel*, 3> lblShiftField_{};
    std::array<TimeSpinner*, 3> updnShiftTime_{};
    std::array<QPushButton*, 2> cmdShift_{};
};

}  // namespace ui
