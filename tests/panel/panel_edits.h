#pragma once

#include <string>
#include <string_view>

#include "panel/controls.h"
#include "panel/load_panel.h"

namespace testing_support {

/// A panel at a time, with the fountain that it previews on.
struct Desk {
    fountain::Fountain before;  ///< just before the time
    fountain::Fountain fountain;
    panel::PanelState panel;

    /// `earlier` are the times before ("001-017 | 002-018"), `stored` the commands of this time.
    Desk(const std::string& earlier, const std::string& stored);

    /// What a user does, in order: "updnRings_4=3" sets a spinner, "updnRings_4+" and "-" press an
    /// arrow of it, "lblLight_28" clicks a label. A control that is unknown fails the test.
    void Do(std::string_view edits);

 private:
    void DoOne(std::string_view edit);
};

}  // namespace testing_support
