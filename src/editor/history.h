#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "document/choreography.h"
#include "document/patch.h"

namespace editor {

/// One thing that was done, and that can be taken back.
struct HistoryStep {
    std::string title;        ///< as `EditTitle`
    std::int32_t before = 0;  ///< ms, where one looks when it is undone
    std::int32_t after = 0;   ///< ms, where one looks when it is done
    /// In the order in which they were done. Saving may tidy up what an edit left.
    std::vector<document::Patch> patches;
};

/// How far a change of what is stored reaches.
enum class Reach {
    CurrentTime,
    LaterTimes,  ///< all times from the current one on move alike
    Everything,
    Tidying,     ///< everything, and nobody asked for it
    AnotherShow  ///< it is another choreography altogether
};

/// Remembers of a choreography what a change within a reach needs to be told by.
class ChangeWatch {
 public:
    /// `choreography` outlives the watch; `time` is the current one.
    ChangeWatch(const document::Choreography& choreography, Reach reach, std::int32_t time);
    /// What has changed since.
    [[nodiscard]] document::Patch Seen() const;

 private:
    const document::Choreography& choreography_;
    Reach reach_;
    std::int32_t time_;
    std::int32_t slot_;
    document::Counts counts_;
    std::optional<document::Commands> list_;
    document::Choreography whole_;
};

/// All that was done since a choreography was opened. It keeps what changed, never whole copies.
class History {
 public:
    /// Another choreography begins. `clean`: what is stored is what the disk holds.
    void Begin(bool clean);

    /// Something new was done; what had been undone can then no longer be redone.
    void Add(HistoryStep step);
    /// What is stored was tidied up without anybody asking for it: goes with the step before.
    void AddTidying(document::Patch patch);
    /// What is stored now is what the disk holds.
    void MarkClean() { clean_ = done_.size(); }
    /// The disk holds nothing that was stored here at any time.
    void MarkUnsaved() { clean_.reset(); }
    [[nodiscard]] bool Clean() const { return clean_ == done_.size(); }

    /// The step that would be undone or redone next; null when there is none.
    [[nodiscard]] const HistoryStep* UndoStep() const;
    [[nodiscard]] const HistoryStep* RedoStep() const;

    /// The patches to apply, in this order, to take the last step back, or to do it again.
    [[nodiscard]] std::vector<document::Patch> UndoPatches() const;
    [[nodiscard]] std::vector<document::Patch> RedoPatches() const;
    /// That was done; there must be such a step.
    void StepBack();
    void StepForward();

 private:
    std::vector<HistoryStep> done_;
    std::vector<HistoryStep> undone_;   // the last is redone first
    std::optional<std::size_t> clean_;  // how many steps are done when nothing is unsaved
};

}  // namespace editor
