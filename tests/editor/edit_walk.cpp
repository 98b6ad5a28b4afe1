#include "editor/edit_walk.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include "panel/controls.h"

namespace testing_support {
namespace {

using panel::PanelState;

constexpr int kTimes = 8;

template <typename Controls>
bool AnyLit(const Controls& labels)
{
    for (const auto& label : labels)
        if (label.Lit())
            return true;
    return false;
}

template <typename Controls>
bool AnyChanged(const Controls& controls)
{
    for (const auto& control : controls)
        if (control.Changed())
            return true;
    return false;
}

/// Gathers differences in words.
struct Comparison {
    std::string text;

    void Value(const char* name, int index, int set, int back)
    {
        if (set != back)
            text += std::string(name) + '_' + std::to_string(index) + ": set " +
                    std::to_string(set) + ", came back as " + std::to_string(back) + "; ";
    }
    void Caption(const char* name, int index, const std::string& set, const std::string& back)
    {
        if (set != back)
            text += std::string(name) + '_' + std::to_string(index) + ": set \"" + set +
                    "\", came back as \"" + back + "\"; ";
    }
};

bool SingleShiftWasLoaded(const PanelState& panel)
{
    bool moved = false;
    for (const panel::ColorLabel& label : panel.lblLightMotion)
        moved = moved || label.Tag != fountain::kPanelOff;
    return moved && panel.lblTimer.Tag == fountain::kPanelOff;
}

bool WholeCopy(const PanelState& panel)
{
    return (panel.lblCopy[0].Lit() || panel.lblCopy[1].Lit()) &&
           (panel.lblCopy[2].Lit() || panel.lblCopy[3].Lit());
}

/// True when a copy of `content` (2 water, 3 lights) is set, changed or taken away.
bool CopyChanges(const PanelState& panel, int content)
{
    const panel::ColorLabel& label = panel.lblCopy[content];
    return AnyChanged(panel.lblCopy) && (label.Lit() || label.Tag != fountain::kPanelOff);
}

void CompareWater(Comparison& lost, const PanelState& set, const PanelState& back)
{
    const bool copied = CopyChanges(set, 2);
    for (int index = 0; index <= 9 && !copied; ++index)
        lost.Value("updnRings", index, set.updnRings[index].Value, back.updnRings[index].Value);
    for (int group = 0; group <= 1; ++group) {
        const int level = set.updnSweeps[group].Value;
        const int pulsate = set.updnSweepPulsate[group].Value;
        lost.Value("updnCurtain", group, set.updnCurtain[group].Value,
                   back.updnCurtain[group].Value);
        lost.Value("updnMultiValve", group, set.updnMultiValve[group].Value,
                   back.updnMultiValve[group].Value);
        if (copied)
            continue;
        lost.Value("updnSweeps", group, level, back.updnSweeps[group].Value);
        lost.Value("updnCandelabra", group, set.updnCandelabra[group].Value,
                   back.updnCandelabra[group].Value);
        if (pulsate != 0 && level != 0)
            lost.Value("updnSweepPulsate", group, pulsate, back.updnSweepPulsate[group].Value);
    }
    lost.Value("updnBazookas", 0, set.updnBazookas.Value, back.updnBazookas.Value);
    lost.Value("updnSpout", 0, set.updnSpout.Value, back.updnSpout.Value);
    lost.Value("updnPeacock", 0, set.updnPeacock.Value, back.updnPeacock.Value);
    lost.Caption("lblVoice", 0, set.lblVoice.Caption, back.lblVoice.Caption);
    for (int address = 1; address <= 8; ++address)
        if (address != 7)
            lost.Caption("lblBypass", address, set.lblBypass[address].Caption,
                         back.lblBypass[address].Caption);
}

void CompareLights(Comparison& lost, const PanelState& set, const PanelState& back)
{
    const bool copied = CopyChanges(set, 3);
    const bool moving = AnyLit(set.lblLightMotion);
    // A single shift that is set, changed to another or taken away moves lamps by itself.
    const bool shifts = (moving && !set.lblTimer.Lit()) || SingleShiftWasLoaded(set);
    const bool shifted = shifts && (AnyChanged(set.lblLightMotion) || set.lblTimer.Changed());
    for (int index = 0; index <= 46; ++index) {
        const bool changedByItself = (index < 28 && (shifted || copied)) ||
                                     (index >= 28 && index < 36 && copied) || index == 43;
        if (!changedByItself)
            lost.Value("lblLight", index, set.lblLight[index].Lit(), back.lblLight[index].Lit());
    }
    for (int index = 0; index <= 3; ++index)
        lost.Value("lblLightMotion", index, set.lblLightMotion[index].Lit(),
                   back.lblLightMotion[index].Lit());
    if (moving)
        lost.Value("lblTimer", 0, set.lblTimer.Lit(), back.lblTimer.Lit());
    const bool switchedOff = set.lblTimer.Changed() && !set.lblTimer.Lit();
    if (!switchedOff)
        lost.Caption("lblRotateTime", 0, set.lblRotateTime.Caption, back.lblRotateTime.Caption);
}

void CompareRest(Comparison& lost, const PanelState& set, const PanelState& back)
{
    lost.Value("updnSweepSpeed", 0, set.updnSweepSpeed.Value, back.updnSweepSpeed.Value);
    for (int index = 0; index <= 3; ++index)
        lost.Value("lblMotion", index, set.lblMotion[index].Lit(), back.lblMotion[index].Lit());
    if (set.updnSweepSpeed.Value != 0) {
        lost.Value("lblMotion", 5, set.lblMotion[5].Lit(), back.lblMotion[5].Lit());
        lost.Caption("lblSweepTravel", 0, set.lblSweepTravel.Caption, back.lblSweepTravel.Caption);
    }
    lost.Value("updnDisplay", 0, set.updnDisplay.Value, back.updnDisplay.Value);
    lost.Value("lblReset", 0, set.lblReset[0].Lit(), back.lblReset[0].Lit());
    const bool held = WholeCopy(set) && !set.lblReset[0].Lit();
    for (int index = 0; index <= 3; ++index)
        lost.Value("lblCopy", index, held && set.lblCopy[index].Lit(), back.lblCopy[index].Lit());
}

Step RandomEdit(Random& random)
{
    const auto spinners = panel::SpinnerControls();
    const auto labels = panel::LabelControls();
    if (random.OneIn(2)) {
        const auto& control =
            spinners[static_cast<std::size_t>(random.Below(static_cast<int>(spinners.size())))];
        const int index = control.first + random.Below(control.last - control.first + 1);
        if (random.OneIn(4))
            return {Step::Kind::Press, std::string(control.name), index, random.OneIn(2) ? 1 : -1};
        return {Step::Kind::Set, std::string(control.name), index,
                random.OneIn(3) ? 0 : random.Below(8)};
    }
    if (random.OneIn(12))
        return {Step::Kind::RotateTime, "updnRotateTime", random.Below(2),
                random.OneIn(2) ? 1 : -1};
    // Half of the labels are lamps, as on the panel.
    const auto& control =
        random.OneIn(2)
            ? labels.back()
            : labels[static_cast<std::size_t>(random.Below(static_cast<int>(labels.size())))];
    return {Step::Kind::Click, std::string(control.name),
            control.first + random.Below(control.last - control.first + 1), 0};
}

// The keys lead to the neighbouring commands, the arrows of the time a step or, in command-step
// mode, to a neighbour as well.
Step RandomMove(Random& random)
{
    if (random.OneIn(6))
        return {Step::Kind::Key, "", random.Below(4), 0};
    if (random.OneIn(6))
        return {Step::Kind::Time, "updnTime", 1 + random.Below(2), random.Below(11) - 5};
    return {Step::Kind::Move, "", 0, 500 * random.Below(kTimes)};
}

// What a command drives, so that no other command of its time may drive it too.
std::tuple<int, int> DeviceOf(document::Command command)
{
    const bool grouped = (command.address >= 1 && command.address <= 9) || command.address == 48;
    if (grouped)
        return {command.address, command.data & (command.address == 9 ? 112 : 48)};
    switch (command.address) {
        case 34:
            return {33, 0};
        case 41:
            return {26, 0};
        case 69:
            return {69, command.data & 48};
        default:
            return {command.address, 0};
    }
}

// Multi-valves set what rings and sweeps set, whites what groups set, groups what modules set.
int Rank(int address)
{
    if (address == document::kResetAddress || address == document::kCopyAddress)
        return 0;
    if (address == 48 || address == 16)
        return 1;
    if (address >= 49 && address <= 51)
        return 2;
    return address == 69 ? 4 : 3;
}

document::Commands Composed(document::Commands commands)
{
    document::SplitCommands(commands);
    std::set<std::tuple<int, int>> devices;
    std::array<int, 9> joins{};
    joins.fill(-1);
    document::Commands composed;
    for (int rank = 0; rank <= 4; ++rank)
        for (int k = 0; k < document::CommandCount(commands); ++k) {
            const document::Command command = document::CommandAt(commands, k);
            const bool bothGroups = devices.contains({51, 0}) || command.address == 51;
            const bool groups = command.address >= 49 && command.address <= 51;
            const bool other = devices.contains({49, 0}) || devices.contains({50, 0});
            if (Rank(command.address) != rank || (groups && bothGroups && other) ||
                !devices.insert(DeviceOf(command)).second ||
                (command.address == 49 && devices.contains({51, 0})) ||
                (command.address == 50 && devices.contains({51, 0})))
                continue;
            int data = command.data;
            if (command.address == 86)
                data = std::max(data, 4);  // what the spinner can set
            if (command.address >= 1 && command.address <= 8) {
                int& join = joins[command.address];
                join = join < 0 ? data & 64 : join;
                data = (data & ~64) | join;
            }
            composed += static_cast<char>(command.address);
            composed += static_cast<char>(data);
        }
    document::MergeCommands(composed);
    return composed;
}

}  // namespace

document::Choreography ComposedShow(Random& random)
{
    document::Choreography show;
    for (int k = 0; k < kTimes; ++k) {
        document::Commands commands = RandomCommands(random, random.Below(12));
        if (random.OneIn(8))
            commands.insert(0, {static_cast<char>(document::kResetAddress), '\0'});
        commands = Composed(std::move(commands));
        if (!commands.empty())
            document::InsertSlot(show, show.lngLastSlot(), 500 * k, std::move(commands));
    }
    return show;
}

std::string TextOf(const std::vector<Step>& walk)
{
    std::string text;
    for (const Step& step : walk) {
        const std::string name = step.control + '_' + std::to_string(step.index);
        switch (step.kind) {
            case Step::Kind::Move:
                text += "--at " + std::to_string(step.value);
                break;
            case Step::Kind::Key:
                text += std::array{"PageDown", "PageUp", "Home",
                                   "End"}[static_cast<std::size_t>(step.index)];
                break;
            case Step::Kind::Save:
                text += "save";
                break;
            case Step::Kind::Set:
                text += "--set " + name + '=' + std::to_string(step.value);
                break;
            case Step::Kind::Time:
            case Step::Kind::Press:
            case Step::Kind::RotateTime:
                text += "--spin " + name + '=' + std::to_string(step.value);
                break;
            case Step::Kind::Click:
            case Step::Kind::Erase:
            case Step::Kind::Reset:
                text += "--click " + name;
                break;
        }
        text += ' ';
    }
    return text;
}

std::vector<Step> RandomWalk(Random& random, int length)
{
    std::vector<Step> walk;
    for (int k = 0; k < length; ++k) {
        if (random.OneIn(4))
            walk.push_back(RandomMove(random));
        else if (random.OneIn(25))
            walk.push_back({Step::Kind::Reset, "lblReset", random.Below(3), 0});
        else if (random.OneIn(25))
            walk.push_back({Step::Kind::Erase, "lblErase", 1 + random.Below(20), 0});
        else if (random.OneIn(40))
            walk.push_back({Step::Kind::Click, "lblTime", 0, 0});
        else if (random.OneIn(40))
            walk.push_back({Step::Kind::Save, "", 0, 0});
        else
            walk.push_back(RandomEdit(random));
    }
    return walk;
}

void WalkingEditor::Do(const Step& step)
{
    switch (step.kind) {
        case Step::Kind::Move:
            editor.MoveTo(step.value);
            break;
        case Step::Kind::Key:
            DoKey(step.index);
            break;
        case Step::Kind::Time:
            if (step.value < 0)
                editor.StepTimeDown(static_cast<timeline::TimeField>(step.index), -step.value);
            else
                editor.StepTimeUp(static_cast<timeline::TimeField>(step.index), step.value);
            break;
        case Step::Kind::Save:
            if (!show.empty())
                editor.SaveTo(show);
            break;
        case Step::Kind::Set:
            editor.SetSpinner(step.control, step.index, step.value);
            break;
        case Step::Kind::Press:
            editor.PressSpinner(step.control, step.index, step.value);
            break;
        case Step::Kind::Click:
            if (step.control == "lblTime")
                editor.lblTime_RightClick();
            else
                editor.ClickLabel(step.control, step.index);
            break;
        case Step::Kind::RotateTime:
            editor.updnRotateTime_Press(step.index, step.value);
            break;
        case Step::Kind::Erase:
            editor.lblErase_Click(0);
            if (step.index == 20)
                editor.lblOperator_Click();
            else
                editor.lblErase_Click(step.index);
            break;
        case Step::Kind::Reset:
            editor.lblReset_Click(step.index);
            break;
    }
}

void WalkingEditor::DoKey(int key)
{
    constexpr timeline::StepMode kMode{1, true};
    const auto field = key < 2 ? timeline::TimeField::Tenths : timeline::TimeField::WholeRange;
    if (key == 0 || key == 2)
        editor.StepDown(field, kMode);
    else
        editor.StepUp(field, kMode);
}

std::string WalkingEditor::LeaveAndReturn(int by)
{
    const panel::PanelState set = editor.Panel();
    const std::int32_t time = editor.Timeline().CurrentTime();
    editor.MoveTo(std::max(time + by, 0));
    editor.MoveTo(time);
    return Lost(set, editor.Panel());
}

std::string Lost(const PanelState& set, const PanelState& back)
{
    Comparison lost;
    CompareWater(lost, set, back);
    CompareLights(lost, set, back);
    CompareRest(lost, set, back);
    return lost.text;
}

std::string Disorder(const document::Choreography& choreography)
{
    const std::size_t slots = static_cast<std::size_t>(choreography.lngLastSlot());
    if (choreography.lngTime[slots] != document::kEndSentinel || choreography.blnReset[slots])
        return "the sentinel is not in its place";
    for (std::size_t slot = 0; slot < slots; ++slot) {
        if (choreography.lngTime[slot] >= choreography.lngTime[slot + 1])
            return "slot " + std::to_string(slot) + " is not before the next";
        if ((choreography.blnReset[slot] != 0) !=
            document::BeginsWithReset(choreography.strCommands[slot]))
            return "the reset flag of slot " + std::to_string(slot) + " is wrong";
        if (choreography.strCommands[slot].empty())
            return "slot " + std::to_string(slot) + " is empty";
    }
    return "";
}

}  // namespace testing_support
