#include "ui/panel_form.h"

#include <array>

#include "fountain/command_map.h"
#include "ui/panel_form_lights.h"

namespace ui {
namespace {

constexpr double kWater = 16;
constexpr std::array<double, 2> kWaterLevels{104, 153};
constexpr double kJoin = 202;
constexpr double kJoinWidth = 28;
constexpr double kLevelWidth = 46;
constexpr double kSingles = 244;
constexpr double kSingleLevels = 342;
constexpr double kSweeps = 426;
constexpr double kSweepWidth = 176;
constexpr double kSweepLevels = kSweeps + 50;
constexpr const char* kLevelSample = "8";
constexpr std::array<const char*, 2> kGroups{"Group A", "Group B"};

QString LevelTip(const QString& device, const char* range, int address)
{
    return Writes(QStringLiteral("Level of %1, %2").arg(device, QLatin1String(range)), address);
}

void AddWaterHeadings(PanelRows& rows)
{
    rows.Title("Water", OnLine(0, kWater, 84));
    for (std::size_t group = 0; group < kGroups.size(); ++group)
        rows.Heading(kGroups[group], OnLine(0, kWaterLevels[group], kLevelWidth));
    rows.Heading("Join", OnLine(0, kJoin, kJoinWidth));
}

struct WaterDevice {
    const char* caption;
    const char* name;
    int first;  // index of its spinner for Group A
    int erase;
    int address;
    const char* commands;
    const char* range;
    bool joins;
};

// clang-format off
constexpr const char* kLevels = "0 to 5";
constexpr WaterDevice kWaterDevices[] = {
    {"Ring 1",      "updnRings",      0,  1,  1, "command 001", kLevels, true},
    {"Ring 2",      "updnRings",      2,  2,  2, "command 002", kLevels, true},
    {"Ring 3",      "updnRings",      4,  3,  3, "command 003", kLevels, true},
    {"Ring 4",      "updnRings",      6,  4,  4, "command 004", kLevels, true},
    {"Ring 5",      "updnRings",      8,  5,  5, "command 005", kLevels, true},
    {"Sweeps",      "updnSweeps",     0,  6,  6, "command 006", kLevels, true},
    {"Candelabras", "updnCandelabra", 0,  8,  8, "command 008", kLevels, true},
    {"Multi-Valve", "updnMultiValve", 0, 18, 48, "command 048",
     "for all its rings and sweeps: 0 to 5, 6 is the wedding cake", false},
};
// clang-format on

void AddWater(PanelRows& rows)
{
    AddWaterHeadings(rows);
    int line = 1;
    for (const WaterDevice& device : kWaterDevices) {
        const QString caption = QString::fromLatin1(device.caption);
        rows.Target(device.erase, device.caption, OnLine(line, kWater, 84), device.commands);
        for (int group = 0; group <= 1; ++group) {
            const auto g = static_cast<std::size_t>(group);
            const QString what = QStringLiteral("%1 on %2").arg(caption, QLatin1String(kGroups[g]));
            rows.Level(device.name, device.first + group, kLevelSample,
                       OnLine(line, kWaterLevels[g], kLevelWidth),
                       QStringLiteral("Level of %1").arg(what),
                       LevelTip(what, device.range, device.address));
        }
        if (device.joins)
            rows.Button(
                PanelKind::Toggle, "lblBypass", device.address, "X",
                OnLine(line, kJoin, kJoinWidth), QStringLiteral("Join %1").arg(caption),
                Writes(QStringLiteral("Join the groups of %1").arg(caption), device.address));
        ++line;
    }
}

struct SingleDevice {
    const char* caption;
    const char* name;
    int index;
    int erase;
    int address;
    const char* commands;
};

// clang-format off
constexpr const char* kBazookasSpout = "command 007, which bazookas and spout share,";
constexpr const char* kCurtainsPeacock = "command 009, which the curtains and the peacock share,";
constexpr SingleDevice kSingleDevices[] = {
    {"Bazookas",      "updnBazookas", -1,  7, 7, kBazookasSpout},
    {"Spout",         "updnSpout",    -1, 12, 7, kBazookasSpout},
    {"Peacock",       "updnPeacock",  -1, 11, 9, kCurtainsPeacock},
    {"Front Curtain", "updnCurtain",   0,  9, 9, kCurtainsPeacock},
    {"Back Curtain",  "updnCurtain",   1, 10, 9, kCurtainsPeacock},
};
// clang-format on

void AddSingleDevices(PanelRows& rows)
{
    constexpr double kNames = 96;
    rows.Title("Single devices", OnLine(0, kSingles, kNames));
    int line = 1;
    for (const SingleDevice& device : kSingleDevices) {
        const QString caption = QString::fromLatin1(device.caption);
        rows.Target(device.erase, device.caption, OnLine(line, kSingles, kNames), device.commands);
        rows.Level(
            device.name, device.index, kLevelSample, OnLine(line, kSingleLevels, kLevelWidth),
            QStringLiteral("Level of %1").arg(caption), LevelTip(caption, kLevels, device.address));
        ++line;
    }
    rows.Target(13, "Voice Stream and Light",
                OnLine(line, kSingles, kNames).adjusted(0, 0, 0, kPanelPitch), "command 054");
    rows.Button(PanelKind::Toggle, "lblVoice", -1, "X",
                OnLine(line + 0.5, kSingleLevels, kLevelWidth),
                QStringLiteral("Voice stream and light"),
                Writes(QStringLiteral("Switch the voice stream and its light on and off"),
                       fountain::kVoiceAddress));

    rows.Target(-1, "Operator Display", OnLine(8, kSingles, kNames), "command 000");
    rows.Level("updnDisplay", -1, "255", OnLine(8, kSingleLevels, kLevelWidth),
               QStringLiteral("Number on the operator's display"),
               Writes(QStringLiteral("The number on the operator's display, 0 to 255"),
                      fountain::kOperatorDisplayAddress));
    rows.Value("lblDisplay", -1, "DD", OnLine(8, kSingleLevels + kLevelWidth + 3, 22),
               QStringLiteral("Operator's display"),
               QStringLiteral("What the operator reads: the number in hexadecimal digits"));
}

QString MotionTip(const char* what)
{
    return QStringLiteral("%1; writes command 033, or 034 for opposed sweeps")
        .arg(QLatin1String(what));
}

void AddMotionLabels(PanelRows& rows)
{
    struct Motion {
        const char* caption;
        double line;
        double x;
        double width;
    };
    static constexpr std::array<Motion, 6> kMotions{{{"stop", 2, 0, 38},
                                                     {"slow", 2, 40, 38},
                                                     {"medium", 2, 80, 54},
                                                     {"fast", 2, 136, 40},
                                                     {"synchronized", 3, 0, 87},
                                                     {"opposed", 3, 89, 87}}};
    for (int i = 0; i <= 5; ++i) {
        const Motion& motion = kMotions[static_cast<std::size_t>(i)];
        rows.Button(PanelKind::Toggle, "lblMotion", i, motion.caption,
                    OnLine(motion.line, kSweeps + motion.x, motion.width),
                    QStringLiteral("Sweep motion: %1").arg(QLatin1String(motion.caption)),
                    MotionTip(i <= 3 ? "Speed of the sweeps"
                                     : "Whether the sweeps of the two sides swing alike"));
    }
}

void AddTravel(PanelRows& rows)
{
    static constexpr std::array<const char*, 3> kEnds{"left end", "middle", "right end"};
    rows.Heading("Travel", OnLine(4, kSweeps, 48));
    rows.Button(PanelKind::Toggle, "lblSweepTravel", -1, "short",
                OnLine(4, kSweepLevels, kLevelWidth), QStringLiteral("Sweep travel"),
                MotionTip("How far the sweeps swing, short or long"));
    for (int i = 0; i <= 2; ++i) {
        const QString name =
            QStringLiteral("Sweeps, %1").arg(QLatin1String(kEnds[static_cast<std::size_t>(i)]));
        rows.Value("lblSweepTo", i, "+30", OnLine(4, kSweepLevels + kLevelWidth + 4 + 26 * i, 24),
                   name, QStringLiteral("%1 of the swing, in degrees").arg(name));
    }
}

void AddSweepMotion(PanelRows& rows)
{
    rows.Target(15, "Sweep Motion", OnLine(0, kSweeps, kSweepWidth), "commands 033 and 034").bold =
        true;
    rows.Heading("Speed", OnLine(1, kSweeps, 48));
    rows.Level("updnSweepSpeed", -1, kLevelSample, OnLine(1, kSweepLevels, kLevelWidth),
               QStringLiteral("Sweep speed"),
               MotionTip("Speed of the sweeps: 0 stop, 1 slow, 2 medium, 3 fast"));
    AddMotionLabels(rows);
    AddTravel(rows);
    rows.Target(14, "Pulsate", OnLine(6, kSweeps, kSweepWidth), "command 069").bold = true;
    for (int group = 0; group <= 1; ++group) {
        const char* const name = kGroups[static_cast<std::size_t>(group)];
        const QString what =
            QStringLiteral("Pulsation of the sweeps on %1").arg(QLatin1String(name));
        rows.Heading(name, OnLine(7 + group, kSweeps, 48));
        rows.Level("updnSweepPulsate", group, "no command",
                   OnLine(7 + group, kSweepLevels, kSweepWidth - 50), what,
                   Writes(what, fountain::kSweepPulsationAddress));
    }
}

}  // namespace

const std::vector<PanelControl>& PanelForm()
{
    static const PanelRows kForm = [] {
        PanelRows rows;
        AddWater(rows);
        AddSingleDevices(rows);
        AddSweepMotion(rows);
        AddLightControls(rows);
        return rows;
    }();
    return kForm.Rows();
}

const std::vector<QRectF>& PanelSeparators()
{
    constexpr double kHigh = 9 * kPanelPitch - 4;
    const auto below = [](double line, double x, double right) {
        return QRectF(x, kPanelTop + kPanelPitch * line - 1.5, right - x, 1);
    };
    static const std::vector<QRectF> kSeparators{
        {236, kPanelTop, 1, kHigh},          {419, kPanelTop, 1, kHigh},
        {608, kPanelTop, 1, kHigh},          below(5.6, kSweeps, kSweeps + kSweepWidth),
        below(6, kLightsLeft, kLightsRight), below(8, kLightsLeft, kLightsRight),
    };
    return kSeparators;
}

}  // namespace ui
