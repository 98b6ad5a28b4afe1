#include "fountain_text.h"

#include <algorithm>

namespace testing_support {
namespace {

using fountain::FountainState;

class Text {
 public:
    void Add(const std::string& word)
    {
        if (!text_.empty())
            text_ += ' ';
        text_ += word;
    }
    void AddIf(bool condition, const std::string& word)
    {
        if (condition)
            Add(word);
    }
    void Number(const std::string& name, int value, int reset = 0)
    {
        AddIf(value != reset, name + ' ' + std::to_string(value));
    }
    void Pair(const std::string& name, int a, int b)
    {
        AddIf(a != 0 || b != 0, name + ' ' + std::to_string(a) + '/' + std::to_string(b));
    }
    template <typename T>
    void Pair(const std::string& name, const fountain::PerGroup<T>& pair)
    {
        Pair(name, pair[0], pair[1]);
    }
    void Timer(const std::string& name, const fountain::Timer& timer)
    {
        AddIf(timer.Enabled(), name + ' ' + std::to_string(timer.Interval()));
    }
    [[nodiscard]] const std::string& Get() const { return text_; }

 private:
    std::string text_;
};

void AddWater(Text& text, const FountainState& state)
{
    for (int ring = 1; ring <= 5; ++ring)
        text.Pair("ring" + std::to_string(ring), state.mintRingLevel[2 * ring - 2],
                  state.mintRingLevel[2 * ring - 1]);
    text.Pair("sweeps", state.mintSweepLevel);
    text.Pair("candelabras", state.mintCandelabraLevel);
    text.Pair("valve", state.mintMultiValveLevel);
    for (int address = 1; address <= 8; ++address)
        text.AddIf(state.mblnJoined[address], "join " + std::to_string(address));
    text.Pair("curtains", state.mintCurtainLevel);
    text.Number("bazookas", state.mintBazookaLevel);
    text.Number("spout", state.mintSpoutLevel);
    text.Number("peacock", state.mintPeacockLevel);
    text.AddIf(state.mblnVoice, "voice");
}

void AddLights(Text& text, const FountainState& state)
{
    std::string modules;
    for (const std::int16_t value : state.mintModuleLights)
        modules += "0123456789ABCDEF"[value & 15];
    text.AddIf(modules != "0000000", "modules " + modules);
    text.Pair("groups", state.mintGroupLights);
    text.Pair("peacock-lights", state.mintPeacockLights);
    text.Number("curtain-lights", state.mintCurtainLights);
    text.AddIf(state.mblnCrossWhite, "cross");
    text.AddIf(state.mblnBazookaWhite, "bazooka-white");
    text.AddIf(state.mblnLightsMoving, "moving");
    text.AddIf(!state.mblnLightsRight, "left");
    text.AddIf(state.mblnLightsWrap, "wrap");
    text.AddIf(state.mblnLightsTimed, "timed");
    text.Number("period", state.mintLightTimer, 400);
}

void AddMotion(Text& text, const FountainState& state)
{
    text.Number("speed", state.mintSweepSpeed);
    text.AddIf(state.mblnSweepsOpposed, "opposed");
    text.Number("at", state.mintSweepPosition, 3);
    text.AddIf(state.mintSweepDirection != 1, "back");
    text.AddIf(state.mintSweepLow != 2 || state.mintSweepHigh != 4,
               std::to_string(state.mintSweepLow) + ".." + std::to_string(state.mintSweepHigh));
    text.Pair("step", state.mintPulseStep);
    text.Pair("down", state.mblnPulseDown);
}

}  // namespace

document::Commands Packed(std::string_view text)
{
    document::Commands commands;
    for (std::size_t at = 0; at + 7 <= text.size(); at += 8) {
        const std::string pair(text.substr(at, 7));
        commands += static_cast<char>(std::stoi(pair.substr(0, 3)));
        commands += static_cast<char>(std::stoi(pair.substr(4)));
    }
    return commands;
}

fountain::Fountain After(std::string_view times)
{
    fountain::Fountain fountain;
    Listener listener;
    fountain.ResetDevices(listener);
    constexpr std::string_view kNext = " | ";
    while (!times.empty()) {
        const std::size_t end = std::min(times.find(kNext), times.size());
        fountain.ApplyCommands(Packed(times.substr(0, end)), listener);
        times.remove_prefix(std::min(end + kNext.size(), times.size()));
    }
    return fountain;
}

std::string StateText(const fountain::Fountain& fountain)
{
    Text text;
    AddWater(text, fountain.State());
    AddLights(text, fountain.State());
    AddMotion(text, fountain.State());
    text.Timer("tmrSweeps", fountain.tmrSweeps);
    text.Timer("tmrPulsate", fountain.tmrPulsate);
    text.Timer("tmrLights", fountain.tmrLights);
    return text.Get();
}

}  // namespace testing_support
