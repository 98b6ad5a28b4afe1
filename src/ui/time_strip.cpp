#include "ui/time_strip.h"

namespace ui {

TimeStrip::TimeStrip(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(QStringLiteral("Time strip"));
}

void TimeStrip::ShowChoreography(const document::Choreography&, std::uint64_t) {}

void TimeStrip::ShowMarks(const timeline::Marks&) {}

void TimeStrip::ShowPeaks(std::shared_ptr<const sound::Peaks>) {}

void TimeStrip::ShowPosition(std::int32_t time, std::int32_t, bool)
{
    time_ = time;
}

}  // namespace ui
