#pragma once

#include <filesystem>
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
    bool Ask(const std::string&, const std::string&, editor::Icon) override { return true; }
};

/// One thing that a user does, in the terms of the window.
struct Step {
    enum class Kind { Move, Key, Time, Set, Press, Click, RotateTime, Erase, Reset, Save } kind;
    std::string control;
    int index = 0;
    int value = 0;

    /// True for a step that may lead to another time.
    [[nodiscard]] bool Leaves() const { return kind <= Kind::Time; }
};

std::string TextOf(const std::vector<Step>& walk);

/// A walk of random edits and moves over few times, so that edits meet one another.
std::vector<Step> RandomWalk(Random& random, int length);

/// A show over the times of the walks, in no list of which a device of a group is commanded twice.
document::Choreography ComposedShow(Random& random);

/// An editor without music, in which walks are done.
class WalkingEditor {
 public:
    WalkingEditor() : editor(player, prompts) {}

    void Do(const Step& step);
    /// Leaves the time by 100 ms and comes back, or the other way round. Empty when the panel shows
    /// what it showed, but for what the fountain itself cannot hold; else what differs.
    std::string LeaveAndReturn(int by = 100);

    std::filesystem::path show;  ///< what a walk saves; nothing when empty
    support::HandPlayer player;
    YesPrompts prompts;
    editor::Editor editor;

 private:
    void DoKey(int key);
};

/// What differs between what was set on a panel and what came back, in words; empty when all that
/// the fountain can hold came back.
std::string Lost(const panel::PanelState& set, const panel::PanelState& back);

/// Empty when the arrays of a choreography are in order; else what is wrong.
std::string Disorder(const document::Choreography& choreography);

}  // namespace testing_support
