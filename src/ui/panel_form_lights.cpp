#include "ui/panel_form_lights.h"

#include <array>
#include <string>

#include "fountain/command_map.h"
#include "panel/panel_state.h"

namespace ui {
namespace {

constexpr double kGroupLamps = 806;
constexpr double kPeacockLamps = 881;
constexpr double kSideLamps = 942;
constexpr double kEffects = 708;
constexpr double kEffectNames = 90;

constexpr std::array<const char*, 2> kGroups{"Group A", "Group B"};
constexpr std::array<const char*, 2> kGroupLetters{"A", "B"};
constexpr std::array<const char*, 4> kLamps{"red", "blue", "amber", "white"};
constexpr std::array<const char*, 4> kLampLetters{"R", "B", "A", "W"};

void AddLamp(PanelRows& rows, int index, const char* caption, const QRectF& place,
             const QString& light, int address)
{
    rows.Button(PanelKind::Lamp, "lblLight", index, caption, place, light,
                Writes(QStringLiteral("Switch %1 on and off").arg(light), address));
}

struct LampColumn {
    int first;  // index of its red lamp
    int lamps;
    double x;
    double width;
    int address;
};

void AddLampColumn(PanelRows& rows, const LampColumn& column, const char* heading,
                   const QString& light)
{
    rows.Heading(heading, OnLine(1, column.x, column.width));
    for (int lamp = 0; lamp < column.lamps; ++lamp) {
        const auto i = static_cast<std::size_t>(lamp);
        AddLamp(rows, column.first + lamp, kLampLetters[i],
                OnLine(2 + lamp, column.x, column.width),
                QStringLiteral("%1, %2").arg(light, QLatin1String(kLamps[i])), column.address);
    }
}

void AddModuleLamps(PanelRows& rows)
{
    constexpr double kPitch = 26.25;
    rows.Title("Lights of the modules", OnLine(0, kLightsLeft, 7 * kPitch));
    for (int module = 1; module <= 7; ++module)
        AddLampColumn(rows,
                      {4 * (module - 1), 4, kLightsLeft + kPitch * (module - 1), kPitch - 2,
                       fountain::kFirstModuleAddress + module - 1},
                      std::to_string(module).c_str(), QStringLiteral("Module %1").arg(module));
}

void AddGroupLamps(PanelRows& rows)
{
    constexpr double kPitch = 34;
    PanelControl& title = rows.Target(19, "Group Lights", OnLine(0, kGroupLamps, 2 * kPitch + 4),
                                      "commands 049 to 051");
    title.bold = true;
    title.font = 11;
    for (int group = 0; group <= 1; ++group) {
        const auto i = static_cast<std::size_t>(group);
        AddLampColumn(rows,
                      {panel::kGroupALabels + 4 * group, 4, kGroupLamps + kPitch * group,
                       kPitch - 2, fountain::kGroupALightsAddress + group},
                      kGroupLetters[i], QString::fromLatin1(kGroups[i]));
    }
}

void AddPeacockLamps(PanelRows& rows)
{
    constexpr double kPitch = 27.5;
    rows.Title("Peacock", OnLine(0, kPeacockLamps, 2 * kPitch));
    for (int group = 0; group <= 1; ++group) {
        const auto i = static_cast<std::size_t>(group);
        AddLampColumn(rows,
                      {panel::kPeacockALabels + 4 * group, 3, kPeacockLamps + kPitch * group,
                       kPitch - 2, fountain::kPeacockALightsAddress + group},
                      kGroupLetters[i],
                      QStringLiteral("Peacock %1").arg(QLatin1String(kGroups[i])));
    }
}

void AddSideLamps(PanelRows& rows)
{
    constexpr double kWidth = kLightsRight - kSideLamps;
    constexpr double kHalf = (kWidth - 2) / 2;
    rows.Title("Curtain", OnLine(0, kSideLamps, kWidth));
    AddLamp(rows, panel::kCurtainGreenLabel, "G", OnLine(1, kSideLamps, kHalf),
            QStringLiteral("Back curtain, green"), fountain::kCurtainLightsAddress);
    AddLamp(rows, panel::kCurtainAmberLabel, "A", OnLine(1, kSideLamps + kHalf + 2, kHalf),
            QStringLiteral("Back curtain, amber"), fountain::kCurtainLightsAddress);
    rows.Title("White", OnLine(2, kSideLamps, kWidth));
    AddLamp(rows, panel::kBazookaLabel, "Bazookas", OnLine(3, kSideLamps, kWidth),
            QStringLiteral("Bazookas, white"), fountain::kWhiteLightsAddress);
    AddLamp(rows, panel::kAllWhiteLabel, "Modules", OnLine(4, kSideLamps, kWidth),
            QStringLiteral("All modules, white"), fountain::kWhiteLightsAddress);
    AddLamp(rows, panel::kCrossLabel, "Cross", OnLine(5, kSideLamps, kWidth),
            QStringLiteral("Cross, white"), fountain::kWhiteLightsAddress);
}

void AddMovement(PanelRows& rows)
{
    static constexpr std::array<const char*, 4> kMovements{
        "to the right", "to the left", "to the left, with wrapping", "to the right, with wrapping"};
    rows.Target(16, "Lighting Effects", OnLine(6, kLightsLeft, kEffectNames),
                "commands 085 and 086");
    for (int i = 0; i <= 3; ++i) {
        const auto where = QLatin1String(kMovements[static_cast<std::size_t>(i)]);
        rows.Button(PanelKind::Toggle, "lblLightMotion", i, "", OnLine(6, kEffects + 30 * i, 28),
                    QStringLiteral("Move the lights %1").arg(where),
                    Writes(QStringLiteral("Move the lights of the modules %1: once, or again and "
                                          "again with the timer")
                               .arg(where),
                           fountain::kLightMovementAddress));
    }
    rows.Button(PanelKind::Toggle, "lblTimer", -1, "Timer", OnLine(6, kEffects + 122, 46),
                QStringLiteral("Light timer"),
                QStringLiteral("Repeat the movement of the lights on the timer; writes commands "
                               "085 and 086"));
    rows.Value("lblRotateTime", -1, "9.9", OnLine(6, kEffects + 171, 24),
               QStringLiteral("Rotation time"),
               QStringLiteral("Seconds from one movement of the lights to the next"));
    rows.Heading("s", OnLine(6, kEffects + 196, 10));
    static constexpr std::array<const char*, 2> kSteps{"1 s", "0.1 s"};
    for (int i = 0; i <= 1; ++i) {
        const char* const step = kSteps[static_cast<std::size_t>(i)];
        const QString by = QString::fromLatin1(step);
        rows.Button(
            PanelKind::RotateTime, "updnRotateTime", i, step,
            OnLine(6, kEffects + 208 + 49 * i, 47), QStringLiteral("Rotation time, by %1").arg(by),
            Writes(QStringLiteral("Change the rotation time by %1, 0.4 to 9.9 s").arg(by), 86));
    }
}

void AddCopy(PanelRows& rows)
{
    static constexpr std::array<const char*, 4> kCaptions{"A to B", "B to A", "Water", "Lights"};
    static constexpr std::array<const char*, 4> kNames{"Copy from Group A to Group B",
                                                       "Copy from Group B to Group A",
                                                       "Copy the water", "Copy the lights"};
    rows.Target(17, "Copy Effects", OnLine(7, kLightsLeft, kEffectNames), "command 080");
    for (int i = 0; i <= 3; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const QString name = QString::fromLatin1(kNames[k]);
        rows.Button(
            PanelKind::Toggle, "lblCopy", i, kCaptions[k], OnLine(7, kEffects + 76.5 * i, 74.5),
            name,
            Writes(QStringLiteral("%1: choose where to and what; both ways exchange the groups")
                       .arg(name),
                   80));
    }
}

void AddEraseAndReset(PanelRows& rows)
{
    rows.Button(PanelKind::EraseMode, "lblErase", 0, "Erase", OnLine(8, kLightsLeft, kEffectNames),
                QStringLiteral("Erase mode"),
                QStringLiteral("The names of the devices light up, and a click on one removes "
                               "what is stored for it at this time"));
    static constexpr std::array<const char*, 3> kCaptions{"Reset All", "Undo Changes", "Clear"};
    static constexpr std::array<const char*, 3> kTips{
        "Reset the fountain at this time, in place of its commands; writes command 099",
        "Forget what has been changed here and not been written yet",
        "Remove every command of this time"};
    for (int i = 0; i <= 2; ++i) {
        const auto k = static_cast<std::size_t>(i);
        rows.Button(PanelKind::Reset, "lblReset", i, kCaptions[k],
                    OnLine(8, kEffects + 102 * i, 100), QString::fromLatin1(kCaptions[k]),
                    QString::fromLatin1(kTips[k]));
    }
}

}  // namespace

void AddLightControls(PanelRows& rows)
{
    AddModuleLamps(rows);
    AddGroupLamps(rows);
    AddPeacockLamps(rows);
    AddSideLamps(rows);
    AddMovement(rows);
    AddCopy(rows);
    AddEraseAndReset(rows);
}

}  // namespace ui
