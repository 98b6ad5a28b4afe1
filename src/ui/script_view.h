#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "document/choreography.h"
#include "fountain/scene_layout.h"

class QLabel;
class QLineEdit;
class QToolButton;

namespace ui {

class ScriptModel;
class ScriptRows;

/// The script beside the view: all times with their commands in English and with what is wrong with
/// them, and a box that filters them.
class ScriptView final : public QWidget {
    Q_OBJECT

 public:
    explicit ScriptView(QWidget* parent);

    /// Shows what the choreography holds now; looked at anew only when `version` or `musicLength`
    /// (ms, 0 when it is not known) differ. Nothing of it is kept by reference.
    void ShowChoreography(const document::Choreography& choreography, std::uint64_t version,
                          std::int32_t musicLength);
    /// Marks the current time (ms). The list follows it, but not while the filter box is in use,
    /// nor while the show plays and the user looks elsewhere.
    void ShowTime(std::int32_t time, bool playing);
    /// The letters grow with the window.
    void Fit(fountain::ScaleFactors scale);
    /// Puts the cursor into the filter box.
    void EditFilter();

 signals:
    /// A time of the choreography (ms) was chosen by a click or the Enter key.
    void TimeChosen(std::int32_t time);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    void BuildFilter();
    void BuildRows();
    void BuildCounts();
    [[nodiscard]] QToolButton* AddButton(const char* name, const char* caption,
                                         const char* toolTip);

    void ApplyFilter();
    void RememberPlace();
    void RestorePlace();
    void CheckShow();
    void MarkTime();
    void RevealMark(bool turnPage);
    void ShowCounts();
    void ShowFollowing();
    void LeaveFilter();
    void RowChosen(int row);

    ScriptModel* model_ = nullptr;
    ScriptRows* lstScript_ = nullptr;
    QLineEdit* txtFilter_ = nullptr;
    QLabel* lblTimes_ = nullptr;
    QToolButton* cmdProblems_ = nullptr;
    QToolButton* cmdFollow_ = nullptr;
    QTimer checkLater_;

    std::optional<std::uint64_t> version_;
    std::int32_t musicLength_ = 0;
    std::int32_t time_ = 0;
    bool playing_ = false;
    bool following_ = true;

    /// Times instead of rows, while the rows are made anew.
    struct Place {
        std::int32_t selected = -1;
        std::int32_t top = -1;
        int topLine = 0;
    };
    Place place_;
};

}  // namespace ui
