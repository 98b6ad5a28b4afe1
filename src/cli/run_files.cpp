// The subcommands from file to file or to text: convert, diff, and the steps of state and edit.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/run.h"
#include "cli/show.h"
#include "cli/state_json.h"
#include "timeline/diff.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;

/// Commits what is pending on the panel, whatever was left playing.
void CommitPanel(editor::Editor& editor)
{
    editor.mmEditing_ClearClick();
    editor.MoveTo(editor.Timeline().CurrentTime());
}

Saving SavingIn(const std::vector<Step>& steps)
{
    return std::ranges::any_of(steps, Saves) ? Saving::IntoScratch : Saving::Never;
}

}  // namespace

int RunConvert(const std::string& in, const std::string& out)
{
    document::Choreography choreography;
    if (const std::string error = ReadChoreography(choreography, in); !error.empty())
        return Fail(error);
    if (const std::string error = SaveChoreography(choreography, out); !error.empty())
        return Fail(error);
    return kSuccess;
}

int RunState(const std::string& file, const std::vector<Step>& steps)
{
    Show show;
    if (const std::string error = show.Open(file, SavingIn(steps)); !error.empty())
        return Fail(error);
    Json all = Json::array();
    for (const Step& step : steps) {
        if (const std::string refusal = PerformStep(show, step); !refusal.empty())
            return Fail(refusal);
        all.push_back(StateJson(show.Editor()));
    }
    Print(all.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
    return Finished(kSuccess);
}

int RunEdit(const std::string& file, const std::vector<Step>& steps, const std::string& out)
{
    Show show;
    if (const std::string error = show.Open(file, SavingIn(steps)); !error.empty())
        return Fail(error);
    const document::Choreography before = show.Editor().Choreography();
    for (const Step& step : steps)
        if (const std::string refusal = PerformStep(show, step); !refusal.empty())
            return Fail(refusal);
    CommitPanel(show.Editor());
    document::Choreography after = show.Editor().Choreography();
    const std::string name = out.empty() ? show.File().string() : out;
    if (const std::string error = SaveChoreography(after, name); !error.empty())
        return Fail(error);
    Print(name + ": " + timeline::DiffSummary(timeline::Diff(before, after)) + '\n');
    return Finished(kSuccess);
}

int RunDiff(const std::string& before, const std::string& after)
{
    document::Choreography was;
    document::Choreography is;
    if (const std::string error = ReadChoreography(was, before); !error.empty())
        return Fail(error);
    if (const std::string error = ReadChoreography(is, after); !error.empty())
        return Fail(error);
    const std::vector<timeline::Change> changes = timeline::Diff(was, is);
    for (const timeline::Change& change : changes)
        Print(timeline::ChangeText(change));
    return Finished(changes.empty() ? kSuccess : kFoundSomething);
}

}  // namespace cli
