#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "document/journal.h"
#include "editor/editor.h"
#include "sound/gst_player.h"
#include "sound/peaks.h"
#include "ui/frm_fountain.h"
#include "ui/message_prompts.h"
#include "ui/settings_store.h"
#include "ui/show_keeper.h"

namespace ui {

struct StartOptions {
    std::filesystem::path base;  ///< show to open; empty for none
    bool silent = false;
    bool splash = false;               ///< show the picture of the start
    std::filesystem::path settings{};  ///< in place of the user's settings; empty for those
    std::filesystem::path recovery{};  ///< for what is not saved; empty: beside those
};

struct CommandLine {
    enum class Request { Start, Help, Version, Refused };
    Request request = Request::Start;
    StartOptions options;
    std::string problem;  ///< why it was refused, one line
};

/// `arguments` without the program's name.
[[nodiscard]] CommandLine ParseCommandLine(std::span<const char* const> arguments);

/// The program with its window. A QApplication must exist.
class Application {
 public:
    explicit Application(StartOptions options);

    /// Reads the show and opens the window. The music, which can take its time, follows when the
    /// window is on the screen.
    void Start();

    [[nodiscard]] editor::Editor& GetEditor() { return editor_; }
    [[nodiscard]] document::Journal& GetJournal() { return journal_; }
    [[nodiscard]] frmFountain& Window() { return window_; }

 private:
    void ShowSplash();
    void OpenMusic();

    StartOptions options_;
    QtSettingsStore settings_;
    MessagePrompts prompts_;
    sound::GstPlayer mmSong_;
    sound::PeakReader peaks_;
    document::Journal journal_;
    editor::Editor editor_;
    frmFountain window_;
    ShowKeeper keeper_;
    QPointer<QObject> splash_;
};

/// What every QApplication of the program needs: its name and its look.
void SetUpQt();

/// Runs the program to its end; returns its exit code.
[[nodiscard]] int Run(int argc, char** argv);

}  // namespace ui
