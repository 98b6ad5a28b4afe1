#include "cli/panel_json.h"

#include <cstddef>
#include <string_view>

#include "document/time_text.h"

namespace cli {
namespace {

using document::IndexedArray;
using Json = nlohmann::ordered_json;

// Captions that never change. Those of the light movement are arrows, which no text can show.
// clang-format off
constexpr std::string_view kTimer = "Timer";
constexpr std::string_view kMotion[] = {"stop", "slow", "medium", "fast",
                                        "synchronized", "opposed"};
constexpr std::string_view kLightMotion[] = {"", "", "", ""};
constexpr std::string_view kCopy[] = {"A to B", "B to A", "Water", "Lights"};
constexpr std::string_view kReset[] = {"Reset All", "Undo Changes", "Clear"};
constexpr std::string_view kLight[] = {
    "R", "B", "A", "W",  "R", "B", "A", "W",  "R", "B", "A", "W",  "R", "B", "A", "W",
    "R", "B", "A", "W",  "R", "B", "A", "W",  "R", "B", "A", "W",  // the seven modules
    "R", "B", "A", "W",  "R", "B", "A", "W",                       // Group A, Group B
    "R", "B", "A", "Bazookas",  "R", "B", "A", "Modules",          // the peacock's groups
    "G", "A", "Cross"};
constexpr std::string_view kErase[] = {
    "Erase", "Ring 1", "Ring 2", "Ring 3", "Ring 4", "Ring 5", "Sweeps", "Bazookas", "Candelabras",
    "Front Curtain", "Back Curtain", "Peacock", "Spout", "Voice Stream and Light", "Pulsate",
    "Sweep Motion", "Lighting Effects", "Copy Effects", "Multi-Valve", "Group Lights"};
// clang-format on

// A colour as a number has its red in the low byte.
std::string TagText(fountain::Color color)
{
    return std::to_string(color.red + 256 * color.green + 65536 * color.blue);
}

Json Control(int index, const panel::Spinner& spinner)
{
    return {{"index", index}, {"value", spinner.Value}, {"tag", std::to_string(spinner.Tag)}};
}

// Its caption alone tells its value: it is never lit.
Json Control(int index, const panel::CaptionLabel& label)
{
    return {{"index", index},
            {"caption", label.Caption},
            {"color", ColorText(fountain::kPanelOff)},
            {"tag", label.Tag}};
}

Json Control(int index, const panel::ColorLabel& label, std::string_view caption)
{
    return {{"index", index},
            {"caption", caption},
            {"color", ColorText(label.BackColor)},
            {"tag", TagText(label.Tag)}};
}

template <typename T>
Json Controls(const T& single)
{
    return Json::array({Control(0, single)});
}

template <int Last, std::size_t Size>
Json Controls(const IndexedArray<panel::ColorLabel, 0, Last>& labels,
              const std::string_view (&captions)[Size])
{
    static_assert(Size == Last + 1);
    Json json = Json::array();
    for (int index = 0; index <= Last; ++index)
        json.push_back(Control(index, labels[index], captions[index]));
    return json;
}

template <typename T, int First, int Last>
Json Controls(const IndexedArray<T, First, Last>& controls)
{
    Json json = Json::array();
    for (int index = First; index <= Last; ++index)
        json.push_back(Control(index, controls[index]));
    return json;
}

Json CaptionOnly(std::string_view caption)
{
    Json json = Json::array();
    json.push_back({{"index", 0}, {"caption", caption}});
    return json;
}

}  // namespace

std::string ColorText(fountain::Color color)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "#";
    for (const std::uint8_t part : {color.red, color.green, color.blue}) {
        text += kDigits[part / 16];
        text += kDigits[part % 16];
    }
    return text;
}

Json PanelJson(const editor::Editor& editor)
{
    const panel::PanelState& panel = editor.Panel();
    const timeline::ShiftPanel& shift = editor.ShiftPanel();
#define CONTROLS(name)              \
    {                               \
#name, Controls(panel.name) \
    }
#define LABELS(name, captions)                \
    {                                         \
#name, Controls(panel.name, captions) \
    }
    return {CONTROLS(updnRings),
            CONTROLS(updnSweeps),
            CONTROLS(updnCandelabra),
            CONTROLS(updnCurtain),
            CONTROLS(updnMultiValve),
            CONTROLS(updnSweepPulsate),
            CONTROLS(updnBazookas),
            CONTROLS(updnSpout),
            CONTROLS(updnPeacock),
            CONTROLS(updnSweepSpeed),
            CONTROLS(updnDisplay),
            CONTROLS(lblBypass),
            CONTROLS(lblVoice),
            CONTROLS(lblSweepTravel),
            {"lblTimer", Json::array({Control(0, panel.lblTimer, kTimer)})},
            LABELS(lblMotion, kMotion),
            LABELS(lblLightMotion, kLightMotion),
            LABELS(lblCopy, kCopy),
            LABELS(lblReset, kReset),
            LABELS(lblLight, kLight),
            LABELS(lblErase, kErase),
            CONTROLS(lblSweepTo),
            {"lblDisplay", CaptionOnly(panel.lblDisplay.Caption)},
            {"lblTime", CaptionOnly(editor.Timeline().lblTime())},
            {"lblRotateTime", CaptionOnly(panel.lblRotateTime.Caption)},
            {"lblShiftTime", CaptionOnly(document::ReadoutText(shift.newTime))},
            {"lblShiftFactor", CaptionOnly(timeline::ShiftText(shift.Amount()))}};
#undef CONTROLS
#undef LABELS
}

}  // namespace cli
