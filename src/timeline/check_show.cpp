#include "timeline/check_show.h"

#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "document/time_text.h"
#include "fountain/command_map.h"
#include "fountain/fountain.h"

namespace timeline {
namespace {

using document::Choreography;
using fountain::Device;

constexpr std::int32_t kLongestStretch = 120'000;  // ms without a reset

struct Deaf final : fountain::FountainListener {
    void OnOperatorDisplay(std::uint8_t) override {}
    void OnResetDevices() override {}
};

/// Something that a show starts and should end.
struct Lasting {
    bool (*runs)(const fountain::Fountain& fountain);
    std::string_view message;
};

template <int Address>
bool Joined(const fountain::Fountain& fountain)
{
    return fountain.State().mblnJoined[Address];
}

bool SweepsMove(const fountain::Fountain& fountain)
{
    return fountain.State().mintSweepSpeed > 0;
}

bool SweepsPulsate(const fountain::Fountain& fountain)
{
    return fountain.tmrPulsate.Enabled();
}

bool LightsMove(const fountain::Fountain& fountain)
{
    return fountain.State().mblnLightsMoving && fountain.State().mblnLightsTimed;
}

// clang-format off
constexpr std::array<Lasting, 10> kLasting{{
    {Joined<1>, "joins the groups of Ring 1 for good; end the joining (001-000) or reset"},
    {Joined<2>, "joins the groups of Ring 2 for good; end the joining (002-000) or reset"},
    {Joined<3>, "joins the groups of Ring 3 for good; end the joining (003-000) or reset"},
    {Joined<4>, "joins the groups of Ring 4 for good; end the joining (004-000) or reset"},
    {Joined<5>, "joins the groups of Ring 5 for good; end the joining (005-000) or reset"},
    {Joined<6>, "joins the groups of the Sweeps for good; end the joining (006-000) or reset"},
    {Joined<8>, "joins the groups of the Candelabras for good; end the joining (008-000) or reset"},
    {SweepsMove, "starts a Sweep motion that still runs at the end; stop it (033-000) or reset"},
    {SweepsPulsate, "starts a Sweep pulsation that still runs at the end; stop it (069-000) or reset"},
    {LightsMove, "starts a light movement that still runs at the end; stop it (085-000) or reset"},
}};
// clang-format on

void FindWhatLasts(const Choreography& choreography, std::vector<ShowFault>& faults)
{
    fountain::Fountain fountain;
    Deaf deaf;
    std::array<std::int32_t, kLasting.size()> since;
    since.fill(-1);
    for (std::int32_t slot = 0; slot < choreography.lngLastSlot(); ++slot) {
        fountain.ApplyCommands(choreography.strCommands[static_cast<std::size_t>(slot)], deaf);
        for (std::size_t i = 0; i < kLasting.size(); ++i) {
            if (!kLasting[i].runs(fountain))
                since[i] = -1;
            else if (since[i] < 0)
                since[i] = slot;
        }
    }
    for (std::size_t i = 0; i < kLasting.size(); ++i)
        if (since[i] >= 0)
            faults.push_back({since[i], std::string(kLasting[i].message)});
}

// What one time raises at the curtains' address.
struct Raised {
    bool front = false;
    bool back = false;
    bool peacock = false;
};

Raised RaisedBy(std::string_view commands)
{
    Raised raised;
    for (int k = 0; k < document::CommandCount(commands); ++k) {
        const document::Command command = document::CommandAt(commands, k);
        const int level = command.data & fountain::kLevelBits;
        if (fountain::RuleFor(command.address).device != Device::CurtainsPeacock || level == 0 ||
            level > fountain::kHighestLevel)
            continue;
        raised.front |= (command.data & fountain::kGroupABit) != 0;
        if ((command.data & fountain::kGroupBBit) != 0)
            ((command.data & fountain::kPeacockBit) != 0 ? raised.peacock : raised.back) = true;
    }
    return raised;
}

void FindFights(const Choreography& choreography, std::vector<ShowFault>& faults)
{
    for (std::int32_t slot = 0; slot < choreography.lngLastSlot(); ++slot) {
        const Raised raised = RaisedBy(choreography.strCommands[static_cast<std::size_t>(slot)]);
        if (!raised.peacock)
            continue;
        for (const auto& [fights, name] : {std::pair{raised.back, "Back"}, {raised.front, "Front"}})
            if (fights)
                faults.push_back({slot, std::string("raises the Peacock and the ") + name +
                                            " Curtain together, and one takes the other down; "
                                            "leave one of them out"});
    }
}

// A show begins from nothing, so its start counts as a reset.
void FindLongStretches(const Choreography& choreography, std::vector<ShowFault>& faults)
{
    std::int32_t lastReset = 0;
    bool told = false;
    for (std::int32_t slot = 0; slot < choreography.lngLastSlot(); ++slot) {
        const auto at = static_cast<std::size_t>(slot);
        const std::int32_t time = choreography.lngTime[at];
        if (!told && time - lastReset > kLongestStretch) {
            told = true;
            faults.push_back({slot, "comes more than two minutes after the last reset (" +
                                        document::TimeText(lastReset) +
                                        "), and moving back is slow there; add a reset (099-000) "
                                        "in between"});
        }
        if (choreography.blnReset[at] != 0) {
            lastReset = time;
            told = false;
        }
    }
}

void FindTimesBehindMusic(const Choreography& choreography, std::int32_t musicLength,
                          std::vector<ShowFault>& faults)
{
    const std::int32_t last = document::SlotAtOrBefore(choreography, musicLength);
    for (std::int32_t slot = last + 1; slot < choreography.lngLastSlot(); ++slot)
        faults.push_back({slot, "lies behind the end of the music (" +
                                    document::TimeText(musicLength) + "); move or remove it"});
}

}  // namespace

std::vector<ShowFault> FindShowFaults(const Choreography& choreography, std::int32_t musicLength)
{
    std::vector<ShowFault> faults;
    FindFights(choreography, faults);
    FindWhatLasts(choreography, faults);
    FindLongStretches(choreography, faults);
    if (musicLength > 0)
        FindTimesBehindMusic(choreography, musicLength, faults);
    return faults;
}

}  // namespace timeline
