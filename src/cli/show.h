#pragma once

#include <filesystem>
#include <string>

#include "cli/report.h"
#include "cli/silent_player.h"
#include "editor/editor.h"
#include "editor/virtual_clock.h"

namespace cli {

/// The file that `name` means, which the editor would open.
[[nodiscard]] Parsed<std::filesystem::path> FindControlFile(const std::string& name);

/// Messages go to standard error, questions are answered Yes.
class YesPrompts final : public editor::Prompts {
 public:
    void Warn(const std::string& text) override;
    [[nodiscard]] bool Ask(const std::string& text, const std::string& title) override;
};

/// An editor without a window, without sound, in simulated time.
class Show {
 public:
    Show() : editor_(player_, prompts_), clock_(editor_) {}
    ~Show() = default;
    Show(const Show&) = delete;
    Show& operator=(const Show&) = delete;

    /// Opens a control file; why it failed, or an empty text.
    [[nodiscard]] std::string Open(const std::string& name);

    [[nodiscard]] editor::Editor& Editor() { return editor_; }
    [[nodiscard]] editor::VirtualClock& Clock() { return clock_; }

 private:
    SilentPlayer player_;
    YesPrompts prompts_;
    editor::Editor editor_;
    editor::VirtualClock clock_;
};

/// Reads a control file without an editor.
[[nodiscard]] std::string ReadChoreography(document::Choreography& choreography,
                                           const std::string& name);

/// Saves as the editor does; why it failed, or an empty text.
[[nodiscard]] std::string SaveChoreography(document::Choreography& choreography,
                                           const std::string& name);

}  // namespace cli
