#include "cli/steps.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "cli/values.h"

namespace cli {
namespace {

constexpr int kMostPresses = 100'000;
constexpr std::string_view kRightButton = ":right";

struct KeyName {
    std::string_view name;
    Key key;
};

constexpr std::array<KeyName, 5> kKeys = {{{"PageUp", Key::PageUp},
                                           {"PageDown", Key::PageDown},
                                           {"Home", Key::Home},
                                           {"End", Key::End},
                                           {"F9", Key::F9}}};

std::string ParseTimeStep(Step& step, const std::string& value)
{
    const auto time = ParseTime(value);
    step.time = time.value.value_or(0);
    return time.error;
}

std::string ParseControl(Step& step, std::string_view name, Operation operation)
{
    const auto control = FindControl(name);
    if (!control.value)
        return control.error;
    step.kind = StepKind::Operate;
    step.control = *control.value;
    step.operation = operation;
    return WhyNot(*control.value, operation);
}

std::string ParseSet(Step& step, std::string_view value)
{
    const std::size_t equals = value.find('=');
    const auto number =
        equals == std::string_view::npos ? std::nullopt : ParseNumber(value.substr(equals + 1));
    if (!number)
        return std::string(value) + ": expected CONTROL=N, as in updnRings_4=3";
    step.amount = *number;
    return ParseControl(step, value.substr(0, equals), Operation::Set);
}

std::string ParseSpin(Step& step, std::string_view value)
{
    const std::size_t equals = value.find('=');
    const std::string_view amount =
        equals == std::string_view::npos ? std::string_view() : value.substr(equals + 1);
    const auto number = ParseNumber(amount);
    const bool hasSign = amount.starts_with('+') || amount.starts_with('-');
    if (!number || !hasSign || std::abs(*number) > kMostPresses)
        return std::string(value) + ": expected CONTROL=+N or CONTROL=-N, as in updnTime_1=+5";
    step.amount = *number;
    return ParseControl(step, value.substr(0, equals), Operation::Spin);
}

std::string ParseClick(Step& step, std::string_view value)
{
    const bool right = value.ends_with(kRightButton);
    if (right)
        value.remove_suffix(kRightButton.size());
    return ParseControl(step, value, right ? Operation::RightClick : Operation::Click);
}

std::string ParseKey(Step& step, std::string_view value)
{
    step.kind = StepKind::Key;
    for (const auto& [name, key] : kKeys) {
        if (name != value)
            continue;
        step.key = key;
        return {};
    }
    return std::string(value) + ": expected a key: PageUp, PageDown, Home, End or F9";
}

constexpr std::string_view kNoMove =
    "the time cannot be moved while something plays or the shift or file panel is open";

// Keys step from command to command.
std::string PerformKey(editor::Editor& editor, Key key)
{
    constexpr timeline::StepMode kToCommand{.multiplier = 1, .commandStep = true};
    if (!editor.Transport().updnTimeEnabled)
        return std::string(kNoMove);
    if (key == Key::F9) {
        editor.OpenShiftPanel();
        return {};
    }
    const bool ends = key == Key::Home || key == Key::End;
    const auto field = ends ? timeline::TimeField::WholeRange : timeline::TimeField::Tenths;
    if (key == Key::PageUp || key == Key::End)
        editor.StepUp(field, kToCommand);
    else
        editor.StepDown(field, kToCommand);
    return {};
}

std::string PerformPlay(Show& show, std::int32_t time)
{
    if (!show.Editor().Transport().mmEditing.play)
        return "mmEditing_play is disabled";
    show.Clock().PlayUpTo(time);
    return {};
}

std::string PerformMove(editor::Editor& editor, std::int32_t time)
{
    if (!editor.Transport().updnTimeEnabled)
        return std::string(kNoMove);
    editor.MoveTo(time);
    return {};
}

std::string Perform(Show& show, const Step& step)
{
    switch (step.kind) {
        case StepKind::At:
            return PerformMove(show.Editor(), step.time);
        case StepKind::Play:
            return PerformPlay(show, step.time);
        case StepKind::Operate:
            return Operate(show.Editor(), step.control, step.operation, step.amount);
        case StepKind::Key:
            break;
    }
    return PerformKey(show.Editor(), step.key);
}

}  // namespace

Parsed<Step> ParseStep(const std::string& option, const std::string& value)
{
    Step step;
    step.text = option + ' ' + value;
    std::string error;
    if (option == "--at" || option == "--play") {
        step.kind = option == "--at" ? StepKind::At : StepKind::Play;
        error = ParseTimeStep(step, value);
    } else if (option == "--set") {
        error = ParseSet(step, value);
    } else if (option == "--spin") {
        error = ParseSpin(step, value);
    } else if (option == "--click") {
        error = ParseClick(step, value);
    } else {
        error = ParseKey(step, value);
    }
    if (!error.empty())
        return {std::nullopt, option + ' ' + error};
    return {std::move(step), {}};
}

bool Saves(const Step& step)
{
    return step.kind == StepKind::Operate && step.operation == Operation::Click &&
           IsSave(step.control);
}

std::string PerformStep(Show& show, const Step& step)
{
    const bool unloaded = show.Editor().Unloaded();
    const std::string refusal =
        unloaded ? "the editor was closed by a step before" : Perform(show, step);
    return refusal.empty() ? refusal : step.text + ": " + refusal;
}

}  // namespace cli
