#pragma once

#include <QWidget>
#include <cstdint>

#include "document/choreography.h"
#include "fountain/scene_layout.h"

namespace ui {

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
    /// Marks the current time (ms), and follows it.
    void ShowTime(std::int32_t time, bool playing);
    /// The letters grow with the window.
    void Fit(fountain::ScaleFactors scale);

 signals:
    /// A time of the choreography (ms) was chosen by a click or the Enter key.
    void TimeChosen(std::int32_t time);
};

}  // namespace ui
