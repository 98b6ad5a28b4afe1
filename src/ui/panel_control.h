#pragma once

#include <QRectF>
#include <QString>
#include <string>
#include <vector>

namespace ui {

/// What a control of the panel is on the screen.
enum class PanelKind {
    Heading,     ///< a word that leads the eye, no control
    Value,       ///< shows a caption of the panel
    Level,       ///< a spin box
    Toggle,      ///< a label that a click changes: lit or not, or with another caption
    Lamp,        ///< a toggle that is lit in the color of its light
    Target,      ///< the name of a device; a button in erase mode
    EraseMode,   ///< `lblErase` 0
    Reset,       ///< `lblReset`
    RotateTime,  ///< arrows of `updnRotateTime`
};

/// A control of the panel and its place on the design screen, 1024 x 768 logical pixels.
struct PanelControl {
    PanelKind kind = PanelKind::Heading;
    std::string name{};  ///< the control, or the array of controls that it belongs to
    int index = -1;      ///< in its array; -1 for a control that is alone
    QRectF place{};
    QString caption{};  ///< what stands on it when the panel does not say it
    QString sample{};   ///< the longest text that it must show whole
    QString accessibleName{};
    QString toolTip{};  ///< what it does and which command it writes; empty for headings
    int font = 12;      ///< pixels
    bool bold = false;

    [[nodiscard]] QString ObjectName() const;
};

/// Everything stands on nine lines, and in the columns of its group.
inline constexpr double kPanelTop = 492;
inline constexpr double kPanelPitch = 22.5;
/// What a target has at the left of its text, so that it stands out when it is a button.
inline constexpr double kTargetMargin = 3;

/// A place on a line of the panel, all in design pixels.
[[nodiscard]] QRectF OnLine(double line, double x, double width);

/// "what; writes command 007"
[[nodiscard]] QString Writes(const QString& what, int address);

/// Puts the form together, control by control in Tab order.
class PanelRows {
 public:
    void Heading(const char* text, const QRectF& place);
    /// The heading of a group of controls.
    void Title(const char* text, const QRectF& place);
    void Value(const char* name, int index, const char* sample, const QRectF& place,
               const QString& accessibleName, const QString& toolTip);
    /// The name of a device, which is also what erases it: `lblErase` by index, `lblOperator` for
    /// -1. Its text begins at `place`.
    PanelControl& Target(int index, const char* caption, const QRectF& place, const char* commands);
    void Level(const char* name, int index, const char* sample, const QRectF& place,
               const QString& accessibleName, const QString& toolTip);
    void Button(PanelKind kind, const char* name, int index, const char* caption,
                const QRectF& place, const QString& accessibleName, const QString& toolTip);

    [[nodiscard]] const std::vector<PanelControl>& Rows() const { return rows_; }

 private:
    void Add(PanelControl row);

    std::vector<PanelControl> rows_;
};

}  // namespace ui
