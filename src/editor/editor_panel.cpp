// What the panel does: its controls, the commit, erasing and the resets.
#include <array>

#include "editor/editor.h"
#include "fountain/command_map.h"
#include "panel/commit.h"
#include "panel/controls.h"

namespace editor {
namespace {

using timeline::Direction;

struct AddressRange {
    int first;
    int last;
};

constexpr AddressRange Only(int address)
{
    return {address, address};
}

/// What the erase labels 1..19 remove. Devices that share an address are erased together.
// clang-format off
constexpr std::array<AddressRange, 20> kEraseRanges{{
    {-1, -1},                                     // 0 is the mode itself
    Only(1), Only(2), Only(3), Only(4), Only(5),  // rings
    Only(fountain::kSweepsAddress),
    Only(fountain::kBazookasSpoutAddress),  // bazookas
    Only(fountain::kCandelabrasAddress),
    Only(fountain::kCurtainsPeacockAddress),  // front curtain
    Only(fountain::kCurtainsPeacockAddress),  // back curtain
    Only(fountain::kCurtainsPeacockAddress),  // peacock
    Only(fountain::kBazookasSpoutAddress),  // spout
    Only(fountain::kVoiceAddress),
    Only(fountain::kSweepPulsationAddress),
    {fountain::kSynchronizedMotionAddress, fountain::kOpposedMotionAddress},
    {fountain::kLightMovementAddress, fountain::kLightTimerAddress},
    Only(document::kCopyAddress),
    Only(fountain::kMultiValveAddress),
    {fountain::kGroupALightsAddress, fountain::kBothLightsAddress},
}};
// clang-format on

template <typename Control>
bool Has(const Control* control, int index)
{
    return control != nullptr && index >= control->first && index <= control->last;
}

constexpr std::array<const char*, 3> kResetTitles{"Reset All", "Undo Changes",
                                                  "Clear (Remove Choreography)"};

}  // namespace

bool Editor::PanelEnabled() const
{
    return Transport().fraControlsEnabled && !playback_.SnippetPlays();
}

bool Editor::SetSpinner(std::string_view name, int index, int value)
{
    const panel::SpinnerControl* control = panel::FindSpinner(name);
    if (!Has(control, index) || !PanelEnabled())
        return false;
    panel::SetSpinner({panel_, fountain_}, *control, index, value);
    NotePending();
    return true;
}

bool Editor::PressSpinner(std::string_view name, int index, int direction)
{
    const panel::SpinnerControl* control = panel::FindSpinner(name);
    if (!Has(control, index) || !PanelEnabled())
        return false;
    panel::PressSpinner({panel_, fountain_}, *control, index, direction);
    NotePending();
    return true;
}

bool Editor::ClickLabel(std::string_view name, int index)
{
    const panel::LabelControl* control = panel::FindLabel(name);
    if (!Has(control, index) || !PanelEnabled())
        return false;
    panel::ClickLabel({panel_, fountain_}, *control, index);
    NotePending();
    return true;
}

void Editor::updnRotateTime_Press(int index, int direction)
{
    if (!PanelEnabled())
        return;
    panel::PressRotateTime({panel_, fountain_}, index, direction);
    NotePending();
}

// While the panel is disabled nothing is edited: what differs from what was loaded then is what
// the show itself did while it played.
void Editor::CommitPanel()
{
    if (!Transport().fraControlsEnabled)
        return;
    before_.reset();
    panel::Commit commit = panel::Commit::Nothing;
    Store(Reach::CurrentTime, [&] {
        commit = panel::CommitPanel(choreography_, timeline_.CurrentTime(), panel_, fountain_);
        return commit == panel::Commit::Stored;
    });
    if (commit == panel::Commit::Nothing)
        return;
    if (commit == panel::Commit::Full)
        prompts_.Warn("A choreography holds at most 54,000 times: this one was not added.");
    timeline_.RebuildState(Direction::Back);
    playback_.RefreshMenus();
    NotePending();  // nothing is any more
}

bool Editor::DeleteTime()
{
    return Store(Reach::CurrentTime,
                 [this] { return panel::DeleteTime(choreography_, timeline_.CurrentTime()); });
}

void Editor::ToggleEraseMode()
{
    eraseMode_ = !eraseMode_;
    panel_.lblErase[0].BackColor = eraseMode_ ? panel::kEraseOn : panel::kEraseOff;
}

void Editor::lblErase_Click(int index)
{
    if (!PanelEnabled() || index < 0 || index >= static_cast<int>(kEraseRanges.size()))
        return;
    if (index == 0) {
        ToggleEraseMode();
        return;
    }
    if (!eraseMode_)
        return;
    const AddressRange& range = kEraseRanges[static_cast<std::size_t>(index)];
    EraseAddresses(range.first, range.last);
}

void Editor::lblOperator_Click()
{
    if (PanelEnabled() && eraseMode_)
        EraseAddresses(fountain::kOperatorDisplayAddress, fountain::kOperatorDisplayAddress);
}

void Editor::EraseAddresses(int first, int last)
{
    CommitPanel();
    const auto erase = [&] {
        return panel::EraseAddresses(choreography_, timeline_.CurrentTime(), first, last);
    };
    if (Store(Reach::CurrentTime, erase)) {
        timeline_.RebuildState(Direction::Back);
        playback_.RefreshMenus();
    }
    ToggleEraseMode();
}

void Editor::lblReset_Click(int index)
{
    if (!PanelEnabled() || index < 0 || index >= static_cast<int>(kResetTitles.size()) ||
        !prompts_.Ask("Are you sure?", kResetTitles[static_cast<std::size_t>(index)],
                      Icon::Question))
        return;
    if (index == 0)
        ToggleReset();
    else if (index == 2)
        DeleteTime();
    if (index != 0)
        timeline_.RebuildState(Direction::Back);
    playback_.RefreshMenus();
    NotePending();
}

void Editor::ToggleReset()
{
    panel::ColorLabel& label = panel_.lblReset[0];
    if (label.Lit()) {
        label.BackColor = fountain::kPanelOff;
        CommitPanel();
        return;
    }
    // Every command of the time goes, those that are pending on the panel included.
    Store(Reach::CurrentTime, [&] {
        const bool deleted = DeleteTime();
        timeline_.RebuildState(Direction::Back);
        label.BackColor = fountain::kPanelOn;
        CommitPanel();
        return deleted;
    });
}

}  // namespace editor
