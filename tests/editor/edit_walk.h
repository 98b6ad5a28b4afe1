#pragma once

#include <string>
#include <vector>

#include "document/random_show.h"
#include "editor/editor.h"
#include "support/hand_player.h"

namespace testing_support {

/// Answers every question with Yes and keeps the warnings.
struct YesPrompts : editor::Prompts {
    std::vector<std::string> warnings;

    void Warn(const std::string& text) override { warnings.push_back(text); }
    bool Ask(const std::string&, const std::string&) override { return true; }
};

/// One thing that a user does, in the terms of the window.
struct Step {
    enum class Kind { Move, Set, Click, RotateTime, Erase, Reset } kind;
    std::string control;
    int index = 0;
    int value = 0;
};

std::string TextOf(const std::vector<Step>& walk);

/// A walk of random edits and moves over few times, so that edits meet one another.
std::vector<Step> RandomWalk(Random& random, int length);

/// An editor without music, in which walks are done.
class WalkingEditor {
 public:
    WalkingEditor() : editor(player, prompts) {}

    void Do(const Step& step);
    /// Leaves the time and comes back. Empty when the panel shows what it showed, but for what the
    /// fountain itself cannot hold; else what differs.
    std::string LeaveAndReturn();

    support::HandPlayer player;
    YesPrompts prompts;
    editor::Editor editor;
};

/// What differs between what was set on a panel and what came back, in words; empty when all that
/// the fountain can hold came back.
std::string Lost(const panel::PanelState& set, const panel::PanelState& back);

/// Empty when the arrays of a choreography are in order; else what is wrong.
std::string Disorder(const document::Choreography& choreography);

}  // namespace testing_support
