#pragma once

#include <string>

namespace editor {

enum class Icon { Exclamation, Question };

/// The questions and messages that the editor puts to the user.
class Prompts {
 public:
    virtual ~Prompts() = default;
    /// A message with an exclamation mark and an OK button.
    virtual void Warn(const std::string& text) = 0;
    /// A question with Yes and No, No the default; true for Yes. An empty title is the caption of
    /// the window.
    [[nodiscard]] virtual bool Ask(const std::string& text, const std::string& title,
                                   Icon icon) = 0;
};

}  // namespace editor
