#include "ui/panel_control.h"

#include <utility>

namespace ui {
namespace {

constexpr double kHeight = 20.5;
constexpr int kHeadingFont = 11;

}  // namespace

QString PanelControl::ObjectName() const
{
    const QString base = QString::fromStdString(name);
    return index < 0 ? base : QStringLiteral("%1_%2").arg(base).arg(index);
}

QRectF OnLine(double line, double x, double width)
{
    return {x, kPanelTop + kPanelPitch * line, width, kHeight};
}

QString Writes(const QString& what, int address)
{
    return QStringLiteral("%1; writes command %2").arg(what).arg(address, 3, 10, QLatin1Char('0'));
}

void PanelRows::Add(PanelControl row)
{
    if (row.sample.isEmpty())
        row.sample = row.caption;
    rows_.push_back(std::move(row));
}

void PanelRows::Heading(const char* text, const QRectF& place)
{
    Add({.place = place, .caption = QString::fromLatin1(text), .font = kHeadingFont});
}

void PanelRows::Title(const char* text, const QRectF& place)
{
    Add({.place = place, .caption = QString::fromLatin1(text), .bold = true});
}

void PanelRows::Value(const char* name, int index, const char* sample, const QRectF& place,
                      const QString& accessibleName, const QString& toolTip)
{
    Add({.kind = PanelKind::Value,
         .name = name,
         .index = index,
         .place = place,
         .sample = QString::fromLatin1(sample),
         .accessibleName = accessibleName,
         .toolTip = toolTip});
}

PanelControl& PanelRows::Target(int index, const char* caption, const QRectF& place,
                                const char* commands)
{
    const QString text = QString::fromLatin1(caption);
    Add({.kind = PanelKind::Target,
         .name = index < 0 ? "lblOperator" : "lblErase",
         .index = index,
         .place = place.adjusted(-kTargetMargin, 0, 0, 0),
         .caption = text,
         .accessibleName = QStringLiteral("Erase %1").arg(text),
         .toolTip = QStringLiteral("%1: after a click on Erase, a click here removes %2 from this "
                                   "time")
                        .arg(text, QLatin1String(commands))});
    return rows_.back();
}

void PanelRows::Level(const char* name, int index, const char* sample, const QRectF& place,
                      const QString& accessibleName, const QString& toolTip)
{
    Add({.kind = PanelKind::Level,
         .name = name,
         .index = index,
         .place = place,
         .sample = QString::fromLatin1(sample),
         .accessibleName = accessibleName,
         .toolTip = toolTip});
}

void PanelRows::Button(PanelKind kind, const char* name, int index, const char* caption,
                       const QRectF& place, const QString& accessibleName, const QString& toolTip)
{
    Add({.kind = kind,
         .name = name,
         .index = index,
         .place = place,
         .caption = QString::fromLatin1(caption),
         .accessibleName = accessibleName,
         .toolTip = toolTip});
}

}  // namespace ui
