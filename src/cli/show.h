#pragma once

#include <filesystem>
#include <string>
#include <system_error>

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
    [[nodiscard]] bool Ask(const std::string& text, const std::string& title,
                           editor::Icon icon) override;
};

/// A folder for files that nobody is to see, gone with the object.
class ScratchFolder {
 public:
    ScratchFolder() = default;
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Copies `file` into it.
    [[nodiscard]] std::error_code Add(const std::filesystem::path& file);
    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
    std::filesystem::path path_;
};

/// What the steps of a call may do to the file.
enum class Saving { Never, IntoScratch };

/// An editor without a window, without sound, in simulated time.
class Show {
 public:
    Show() : editor_(player_, prompts_), clock_(editor_) {}
    ~Show() = default;
    Show(const Show&) = delete;
    Show& operator=(const Show&) = delete;

    /// Opens a control file; why it failed, or an empty text. Where a step is going to save, it is
    /// a copy that is opened and saved.
    [[nodiscard]] std::string Open(const std::string& name, Saving saving);
    /// The control file that was asked for, under the name that it has.
    [[nodiscard]] const std::filesystem::path& File() const { return file_; }

    [[nodiscard]] editor::Editor& Editor() { return editor_; }
    [[nodiscard]] editor::VirtualClock& Clock() { return clock_; }

 private:
    ScratchFolder scratch_;
    std::filesystem::path file_;
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
