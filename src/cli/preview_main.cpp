#include <cstdio>
#include <filesystem>
#include <string>

#include "cli/contact_sheet.h"
#include "cli/offscreen.h"
#include "cli/silent_player.h"
#include "editor/editor.h"

namespace {

constexpr int kUsageOrFileError = 2;

struct NoPrompts final : editor::Prompts {
    void Warn(const std::string&) override {}
    bool Ask(const std::string&, const std::string&, editor::Icon) override { return true; }
};

int Fail(const std::string& message)
{
    std::fprintf(stderr, "choreo-preview: %s\n", message.c_str());
    return kUsageOrFileError;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return Fail("expected a show and a picture: choreo-preview BASE OUT.png");
    const std::string base = argv[1];
    const std::string out = argv[2];

    cli::SilentPlayer player;
    NoPrompts prompts;
    editor::Editor editor(player, prompts);
    editor.OpenShow(base);
    if (!editor.Choreography().fileExists || editor.LastRead().error)
        return Fail(base + ": no control file of this name can be read");

    const cli::Offscreen offscreen(argc, argv);
    if (!cli::ContactSheet(editor).save(QString::fromStdString(out)))
        return Fail(out + ": cannot be written");
    return 0;
}
