// Saving, closing, stepping in time, and what an edit means in words.
#include <algorithm>
#include <vector>

#include "editor/editor.h"
#include "fountain/describe.h"
#include "panel/commit.h"

namespace editor {
namespace {

std::vector<document::Command> CommandsOf(const document::Commands& commands)
{
    std::vector<document::Command> list;
    for (int k = 0; k < document::CommandCount(commands); ++k)
        list.push_back(document::CommandAt(commands, k));
    return list;
}

std::string Sentences(const std::vector<document::Command>& commands)
{
    std::string text;
    for (const document::Command& command : commands) {
        if (!text.empty())
            text += "; ";
        text += fountain::DescribeCommand(command.address, command.data);
    }
    return text;
}

std::vector<document::Command> Without(std::vector<document::Command> commands,
                                       const std::vector<document::Command>& others)
{
    std::erase_if(commands, [&](const document::Command& command) {
        return std::ranges::find(others, command) != others.end();
    });
    return commands;
}

}  // namespace

void Editor::StepTimeDown(timeline::TimeField field, std::int32_t multiplier)
{
    StepDown(field, {multiplier, commandStep_});
}

void Editor::StepTimeUp(timeline::TimeField field, std::int32_t multiplier)
{
    StepUp(field, {multiplier, commandStep_});
}

void Editor::mnuFile_Click()
{
    if (PanelEnabled())
        CommitPanel();
}

void Editor::Save()
{
    mnuFileAction_Click(kSaveItem);
}

document::SaveReport Editor::SaveTo(const std::filesystem::path& name)
{
    CommitPanel();
    if (guard_ != nullptr && !name.empty() && !guard_->MaySave(name))
        return {};
    document::SaveReport report;
    const bool pruned = Store(Reach::Tidying, [&] {
        report = document::WriteControlFile(choreography_, name);
        return report.pruned;
    });
    if (report.outcome == document::SaveOutcome::Saved)
        NoteSaved();
    if (report.outcome == document::SaveOutcome::Saved && guard_ != nullptr)
        guard_->Saved(name);
    if (pruned)
        timeline_.RebuildState(timeline::Direction::Back);
    if (report.outcome == document::SaveOutcome::WriteFailed)
        prompts_.Warn(name.string() + " could not be written (" + report.error.message() + "). " +
                      (document::FileExists(document::BackupName(name, 1))
                           ? "The version before is in its .001 backup; the changes"
                           : "The changes") +
                      " are still open here and can be saved again.");
    lastSave_ = report;
    fileNotice_.clear();
    if (report.outcome == document::SaveOutcome::Saved)
        AddToRecent(name);
    playback_.RefreshMenus();
    return report;
}

bool Editor::ConfirmDiscard()
{
    return !prompts_.Ask(
        "This choregraphy has not been saved. Do you really\nwant to proceed without saving the "
        "changes?",
        "", Icon::Exclamation);
}

// When the session ends while music plays nobody is asked: what is unsaved stays marked as such.
bool Editor::Form_QueryUnload(UnloadMode mode)
{
    if (mmSong_.Mode() == timeline::PlayerMode::Playing)
        return mode == UnloadMode::SessionEnds || mode == UnloadMode::TaskManager;
    mnuFile_Click();
    return !KeepsChanges();
}

std::string Editor::StoredText() const
{
    return Sentences(CommandsOf(timeline_.StoredCommands()));
}

std::optional<document::Commands> Editor::PendingCommands() const
{
    if (!panel_.blnTouched) {
        before_.reset();
        return std::nullopt;
    }
    const std::int32_t time = timeline_.CurrentTime();
    if (!before_)
        before_ = panel::FountainBefore(choreography_, time);
    panel::PanelState copy = panel_;
    const std::int32_t lightTimer = fountain_.tmrLights.Interval();
    if (!panel::HasPendingEdits(copy) && lightTimer == copy.lngLightTimerTag)
        return std::nullopt;
    document::Commands composed =
        panel::ComposeCommands(choreography_, time, copy, lightTimer, *before_);
    if (composed == timeline_.StoredCommands())
        return std::nullopt;
    return composed;
}

std::string Editor::PendingText() const
{
    const auto pending = PendingCommands();
    if (!pending)
        return "";
    const auto stored = CommandsOf(timeline_.StoredCommands());
    const auto composed = CommandsOf(*pending);
    std::string written = Sentences(Without(composed, stored));
    const std::string removed = Sentences(Without(stored, composed));
    if (removed.empty())
        return written;
    return written + (written.empty() ? "" : "; ") + "instead of: " + removed;
}

}  // namespace editor
