#pragma once

#include <QWidget>

#include "editor/prompts.h"

namespace ui {

/// Message boxes over the main window, titled with its caption.
class MessagePrompts final : public editor::Prompts {
 public:
    /// Null as long as there is no window; not owned.
    void SetWindow(QWidget* window) { window_ = window; }

    void Warn(const std::string& text) override;
    [[nodiscard]] bool Ask(const std::string& text, const std::string& title,
                           editor::Icon icon) override;

 private:
    QWidget* window_ = nullptr;
};

}  // namespace ui
