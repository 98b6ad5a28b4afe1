#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "document/choreography.h"
#include "fountain/fountain.h"
#include "fountain_text.h"
#include "panel/panel_state.h"
#include "support/hand_player.h"
#include "timeline/timeline.h"

namespace testing_support {

/// A time in ms and its commands: {500, "001-017 002-018"}.
using Slot = std::pair<std::int32_t, const char*>;

[[nodiscard]] inline document::Choreography Show(std::initializer_list<Slot> slots)
{
    document::Choreography show;
    for (const auto& [time, commands] : slots)
        document::InsertSlot(show, show.lngLastSlot(), time, Packed(commands));
    return show;
}

/// Everything that a timeline works on.
struct Desk {
    explicit Desk(document::Choreography choreography = {}) : show(std::move(choreography))
    {
        timeline.RewindToStart();
        player.TakeCalls();
    }

    document::Choreography show;
    fountain::Fountain fountain;
    panel::PanelState panel;
    support::HandPlayer player;
    timeline::Timeline timeline{show, fountain, panel, player};

    [[nodiscard]] std::string State() const { return StateText(fountain); }
};

}  // namespace testing_support
