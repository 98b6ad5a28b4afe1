#include "editor/edit_walk.h"

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
        return {Step::Kind::Set, std::string(control.name),
                control.first + random.Below(control.last - control.first + 1),
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

}  // namespace

std::string TextOf(const std::vector<Step>& walk)
{
    std::string text;
    for (const Step& step : walk) {
        const std::string name = step.control + '_' + std::to_string(step.index);
        switch (step.kind) {
            case Step::Kind::Move:
                text += "--at " + std::to_string(step.value);
                break;
            case Step::Kind::Set:
                text += "--set " + name + '=' + std::to_string(step.value);
                break;
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
            walk.push_back({Step::Kind::Move, "", 0, 500 * random.Below(kTimes)});
        else if (random.OneIn(25))
            walk.push_back({Step::Kind::Reset, "lblReset", random.Below(3), 0});
        else if (random.OneIn(25))
            walk.push_back({Step::Kind::Erase, "lblErase", 1 + random.Below(19), 0});
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
        case Step::Kind::Set:
            editor.SetSpinner(step.control, step.index, step.value);
            break;
        case Step::Kind::Click:
            editor.ClickLabel(step.control, step.index);
            break;
        case Step::Kind::RotateTime:
            editor.updnRotateTime_Press(step.index, step.value);
            break;
        case Step::Kind::Erase:
            editor.lblErase_Click(0);
            editor.lblErase_Click(step.index);
            break;
        case Step::Kind::Reset:
            editor.lblReset_Click(step.index);
            break;
    }
}

std::string WalkingEditor::LeaveAndReturn()
{
    const panel::PanelState set = editor.Panel();
    const std::int32_t time = editor.Timeline().CurrentTime();
    editor.MoveTo(time + 100);
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
