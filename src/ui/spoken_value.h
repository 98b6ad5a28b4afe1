#pragma once

#include <QString>

namespace ui {

/// What a widget of our own tells screen readers, which take it for a slider.
class SpokenValue {
 public:
    virtual ~SpokenValue() = default;

    [[nodiscard]] virtual QString ValueText() const = 0;
    [[nodiscard]] virtual double Value() const = 0;
    [[nodiscard]] virtual double LeastValue() const = 0;
    [[nodiscard]] virtual double MostValue() const = 0;
    [[nodiscard]] virtual double ValueStep() const = 0;
    /// The screen reader's user wants this value.
    virtual void AskForValue(double value) = 0;
};

/// Makes screen readers see every `SpokenValue`. More calls do nothing.
void InstallSpokenValues();

}  // namespace ui
