#include "cli/panel_json.h"

#include <string_view>

namespace cli {
namespace {

using document::IndexedArray;
using Json = nlohmann::ordered_json;

// What the shift panel shows while it has never been opened.
constexpr std::string_view kNoShiftTime = "00:00.0";
constexpr std::string_view kNoShift = "no shifting";

// A colour as a number has its red in the low byte.
std::string TagText(fountain::Color color)
{
    return std::to_string(color.red + 256 * color.green + 65536 * color.blue);
}

Json Control(int index, const panel::Spinner& spinner)
{
    return {{"index", index}, {"value", spinner.Value}, {"tag", std::to_string(spinner.Tag)}};
}

Json Control(int index, const panel::CaptionLabel& label)
{
    return {{"index", index}, {"caption", label.Caption}, {"tag", label.Tag}};
}

Json Control(int index, const panel::ColorLabel& label)
{
    return {{"index", index}, {"color", ColorText(label.BackColor)}, {"tag", TagText(label.Tag)}};
}

template <typename T>
Json Controls(const T& single)
{
    return Json::array({Control(0, single)});
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

Json PanelJson(const panel::PanelState& panel, const std::string& readout)
{
#define CONTROLS(name)              \
    {                               \
#name, Controls(panel.name) \
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
            CONTROLS(lblTimer),
            CONTROLS(lblMotion),
            CONTROLS(lblLightMotion),
            CONTROLS(lblCopy),
            CONTROLS(lblReset),
            CONTROLS(lblLight),
            CONTROLS(lblErase),
            CONTROLS(lblSweepTo),
            {"lblDisplay", CaptionOnly(panel.lblDisplay.Caption)},
            {"lblTime", CaptionOnly(readout)},
            {"lblRotateTime", CaptionOnly(panel.lblRotateTime.Caption)},
            {"lblShiftTime", CaptionOnly(kNoShiftTime)},
            {"lblShiftFactor", CaptionOnly(kNoShift)}};
#undef CONTROLS
}

}  // namespace cli
