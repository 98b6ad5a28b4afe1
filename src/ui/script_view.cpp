#include "ui/script_view.h"

namespace ui {

ScriptView::ScriptView(QWidget* parent) : QWidget(parent) {}

void ScriptView::ShowChoreography(const document::Choreography& /*choreography*/,
                                  std::uint64_t /*version*/, std::int32_t /*musicLength*/)
{
}

void ScriptView::ShowTime(std::int32_t /*time*/, bool /*playing*/) {}

void ScriptView::Fit(fountain::ScaleFactors /*scale*/) {}

}  // namespace ui
