// The door for changes of what is stored, and the way back through them.
#include "editor/editor.h"
#include "editor/history_title.h"

namespace editor {
namespace {

// Where the first difference of the patches lies, before and after them.
HistoryStep StepOf(document::Patch patch, std::string_view title)
{
    HistoryStep step;
    step.title = title.empty() ? EditTitle(patch) : std::string(title);
    step.after = document::TimeOf(patch);
    step.before = step.after - patch.shift;
    step.patches.push_back(std::move(patch));
    return step;
}

}  // namespace

bool Editor::Store(Reach reach, const std::function<bool()>& change, std::string_view title)
{
    const bool outermost = !storing_;
    std::optional<ChangeWatch> watch;
    if (outermost)
        watch.emplace(choreography_, reach, timeline_.CurrentTime());
    storing_ = true;
    const bool changed = change();
    storing_ = !outermost;
    if (changed)
        ++version_;
    if (outermost)
        Remember(reach, *watch, title);
    return changed;
}

void Editor::Remember(Reach reach, const ChangeWatch& watch, std::string_view title)
{
    if (reach == Reach::AnotherShow) {
        history_.Begin(!choreography_.blnChanged);
        if (journal_ != nullptr)
            journal_->Begin(choreography_);
        return;
    }
    document::Patch patch = watch.Seen();
    if (!patch.Empty()) {
        if (journal_ != nullptr)
            journal_->Record(choreography_, {patch});
        if (reach == Reach::Tidying)
            history_.AddTidying(std::move(patch));
        else
            history_.Add(StepOf(std::move(patch), title));
    }
    if (!choreography_.blnChanged)
        NoteSaved();
}

void Editor::SetJournal(document::Journal& journal)
{
    journal_ = &journal;
    journal_->Begin(choreography_);
}

void Editor::NotePending()
{
    if (journal_ != nullptr && !storing_ && PanelEnabled())
        journal_->RecordPending(choreography_, timeline_.CurrentTime(), PendingCommands());
}

void Editor::NoteSaved()
{
    history_.MarkClean();
    if (journal_ != nullptr)
        journal_->Begin(choreography_);
}

bool Editor::MayTravel() const
{
    return MayMove() && PanelEnabled();
}

std::optional<document::Patch> Editor::PendingPatch() const
{
    const auto pending = PanelEnabled() ? PendingCommands() : std::nullopt;
    if (!pending)
        return std::nullopt;
    const std::int32_t time = timeline_.CurrentTime();
    document::SlotChange change{time, document::ListAt(choreography_, time), std::nullopt};
    if (!pending->empty())
        change.after = *pending;
    document::Patch patch;
    patch.changes.push_back(std::move(change));
    return patch;
}

bool Editor::Travel(const std::vector<document::Patch>& patches, std::int32_t time,
                    void (History::*step)())
{
    if (!document::ApplyPatches(choreography_, patches))
        return false;
    (history_.*step)();
    choreography_.blnChanged = !history_.Clean();
    if (journal_ != nullptr && choreography_.blnChanged)
        journal_->Record(choreography_, patches);
    else if (journal_ != nullptr)
        journal_->Drop();
    ++version_;
    before_.reset();
    timeline_.GoToTime(time);
    timeline_.RebuildState(timeline::Direction::Back);
    playback_.RefreshMenus();
    return true;
}

bool Editor::Replace(const document::Choreography& show, std::string_view title)
{
    if (!MayTravel())
        return false;
    CommitPanel();
    const document::Patch patch = document::ComparePatch(choreography_, show);
    const auto replace = [&] {
        choreography_.blnChanged = true;
        return document::ApplyPatch(choreography_, patch);
    };
    if (patch.Empty() || !Store(Reach::Everything, replace, title))
        return false;
    before_.reset();
    timeline_.RebuildState(timeline::Direction::Back);
    playback_.RefreshMenus();
    return true;
}

bool Editor::Reload()
{
    const std::filesystem::path name = choreography_.fileName;
    if (!MayTravel() || !document::FileExists(name))
        return false;
    CommitPanel();
    const std::int32_t time = timeline_.CurrentTime();
    Read(Reach::Everything, name, "Reload");
    if (!choreography_.blnChanged)
        NoteSaved();
    timeline_.GoToTime(time);
    WarnOfRead();
    return true;
}

void Editor::KeepMine()
{
    choreography_.blnChanged = true;
    history_.MarkUnsaved();
    if (journal_ != nullptr)
        journal_->Record(choreography_, {});
    NotePending();
    playback_.RefreshMenus();
}

bool Editor::Undo()
{
    if (!MayTravel())
        return false;
    CommitPanel();
    const HistoryStep* step = history_.UndoStep();
    return step != nullptr && Travel(history_.UndoPatches(), step->before, &History::StepBack);
}

bool Editor::Redo()
{
    if (!MayTravel())
        return false;
    CommitPanel();
    const HistoryStep* step = history_.RedoStep();
    return step != nullptr && Travel(history_.RedoPatches(), step->after, &History::StepForward);
}

bool Editor::CanUndo() const
{
    return MayTravel() && (history_.UndoStep() != nullptr || PendingCommands().has_value());
}

bool Editor::CanRedo() const
{
    return MayTravel() && history_.RedoStep() != nullptr && !PendingCommands().has_value();
}

std::string Editor::UndoText() const
{
    const auto pending = PendingPatch();
    if (pending)
        return "Undo " + EditTitle(*pending);
    const HistoryStep* step = history_.UndoStep();
    return step == nullptr ? "Undo" : "Undo " + step->title;
}

std::string Editor::RedoText() const
{
    const HistoryStep* step = CanRedo() ? history_.RedoStep() : nullptr;
    return step == nullptr ? "Redo" : "Redo " + step->title;
}

}  // namespace editor
