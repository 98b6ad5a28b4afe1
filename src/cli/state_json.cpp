#include "cli/state_json.h"

#include <cmath>
#include <string>
#include <string_view>

#include "cli/panel_json.h"
#include "document/choreography.h"
#include "fountain/scene.h"
#include "timeline/transport.h"

namespace cli {
namespace {

using document::IndexedArray;
using Json = nlohmann::ordered_json;

// Whole numbers are written without a point.
Json Number(double value)
{
    constexpr double kMostWhole = 9e15;
    if (std::nearbyint(value) == value && std::abs(value) < kMostWhole)
        return static_cast<std::int64_t>(value);
    return value;
}

template <typename T, int First, int Last>
Json Values(const IndexedArray<T, First, Last>& array)
{
    Json json = Json::array();
    for (const T& value : array)
        json.push_back(value);
    return json;
}

Json State(const fountain::FountainState& s)
{
#define FIELD(name)   \
    {                 \
#name, s.name \
    }
#define ARRAY(name)           \
    {                         \
#name, Values(s.name) \
    }
    return {ARRAY(mintModuleLights),   ARRAY(mintGroupLights),     ARRAY(mintPeacockLights),
            FIELD(mintCurtainLights),  FIELD(mblnCrossWhite),      FIELD(mblnBazookaWhite),
            FIELD(mblnVoice),          ARRAY(mblnJoined),          ARRAY(mintRingLevel),
            ARRAY(mintSweepLevel),     ARRAY(mintCandelabraLevel), ARRAY(mintMultiValveLevel),
            ARRAY(mintCurtainLevel),   FIELD(mintBazookaLevel),    FIELD(mintSpoutLevel),
            FIELD(mintPeacockLevel),   FIELD(mblnLightsMoving),    FIELD(mblnLightsRight),
            FIELD(mblnLightsWrap),     FIELD(mblnLightsTimed),     FIELD(mintLightTimer),
            FIELD(mintSweepSpeed),     FIELD(mblnSweepsOpposed),   FIELD(mintSweepPosition),
            FIELD(mintSweepDirection), FIELD(mintSweepLow),        FIELD(mintSweepHigh),
            ARRAY(mintPulseStep),      ARRAY(mintPulseBase),       ARRAY(mblnPulseDown)};
#undef FIELD
#undef ARRAY
}

Json Timer(const fountain::Timer& timer)
{
    return {{"enabled", timer.Enabled()}, {"interval", timer.Interval()}};
}

Json Timers(const fountain::Fountain& fountain)
{
    return {{"tmrSweeps", Timer(fountain.tmrSweeps)},
            {"tmrPulsate", Timer(fountain.tmrPulsate)},
            {"tmrLights", Timer(fountain.tmrLights)}};
}

Json Document(const document::Choreography& choreography)
{
    return {{"changed", choreography.blnChanged},
            {"timeCount", choreography.intTimeCount},
            {"commandCount", choreography.intCommandCount},
            {"lastSlot", choreography.lngLastSlot()}};
}

Json Modes(const editor::Editor& editor)
{
    return {{"commandStep", editor.CommandStepMode()},
            {"erase", editor.EraseMode()},
            {"shift", editor.ShiftPanel().visible},
            {"playing", editor.Playback().Playing()}};
}

Json Menu(const timeline::Transport& transport, timeline::Menu menu, int items)
{
    Json json = Json::array();
    for (int item = 0; item < items; ++item)
        json.push_back(transport.ItemEnabled(menu, item));
    return json;
}

Json Menus(const timeline::Transport& transport)
{
    return {{"mnuFileAction", Menu(transport, timeline::kFileMenu, 10)},
            {"mnuDisplayAction", Menu(transport, timeline::kDisplayMenu, 6)},
            {"mnuHelpAction", Menu(transport, timeline::kHelpMenu, 4)}};
}

template <int First, int Last>
Json Vectors(const IndexedArray<fountain::Vector, First, Last>& vectors)
{
    Json json = Json::array();
    for (const fountain::Vector& vector : vectors)
        json.push_back({vector.x, vector.y});
    return json;
}

Json MeasuresJson(const fountain::Measures& measures)
{
    return {{"ringUnit", Values(measures.ringUnit)},
            {"candelabraVector", Vectors(measures.candelabraVector)},
            {"peacockVector", Vectors(measures.peacockVector)},
            {"spoutLength", measures.spoutLength},
            {"sweepLength", measures.sweepLength},
            {"curtainUnit", measures.curtainUnit}};
}

Json Element(int index, const fountain::LabelElement& label)
{
    return {{"index", index},
            {"visible", label.visible},
            {"color", ColorText(label.color)},
            {"left", Number(label.left)},
            {"top", Number(label.top)},
            {"width", Number(label.width)},
            {"height", Number(label.height)}};
}

Json Element(int index, const fountain::LineElement& line)
{
    return {{"index", index},        {"visible", line.visible}, {"color", ColorText(line.color)},
            {"x1", Number(line.x1)}, {"y1", Number(line.y1)},   {"x2", Number(line.x2)},
            {"y2", Number(line.y2)}};
}

template <typename T>
Json Elements(const T& single)
{
    return Json::array({Element(0, single)});
}

template <typename T, int First, int Last>
Json Elements(const IndexedArray<T, First, Last>& elements)
{
    Json json = Json::array();
    for (int index = First; index <= Last; ++index)
        json.push_back(Element(index, elements[index]));
    return json;
}

Json SceneJson(const fountain::Scene& scene)
{
    return {{"lblRing", Elements(scene.lblRing)},
            {"linCandelabra", Elements(scene.linCandelabra)},
            {"linSweep", Elements(scene.linSweep)},
            {"linBazooka", Elements(scene.linBazooka)},
            {"linSpout", Elements(scene.linSpout)},
            {"linPeacock", Elements(scene.linPeacock)},
            {"linVoice", Elements(scene.linVoice)},
            {"shpCurtain", Elements(scene.shpCurtain)},
            {"lblCross", Elements(scene.lblCross)},
            {"lblCurtainLight", Elements(scene.lblCurtainLight)}};
}

Json SlotNow(const editor::Editor& editor)
{
    const std::int32_t slot =
        document::SlotAt(editor.Choreography(), editor.Timeline().CurrentTime());
    return slot < 0 ? Json(nullptr) : Json(slot);
}

}  // namespace

Json StateJson(const editor::Editor& editor)
{
    const fountain::SceneLayout& layout = fountain::DesignLayout();
    const fountain::Measures measures = fountain::Measure(layout);
    const timeline::Timeline& timeline = editor.Timeline();
    return {{"time", timeline.CurrentTime()},
            {"readout", timeline.lblTime()},
            {"slot", SlotNow(editor)},
            {"cursor", timeline.Position().mlngNextSlot},
            {"codes", timeline.lblABCodes()},
            {"state", State(editor.Fountain().State())},
            {"timers", Timers(editor.Fountain())},
            {"document", Document(editor.Choreography())},
            {"modes", Modes(editor)},
            {"menus", Menus(editor.Transport())},
            {"measures", MeasuresJson(measures)},
            {"scene", SceneJson(editor.BuildScene(layout, measures))},
            {"panel", PanelJson(editor)}};
}

}  // namespace cli
