#include "editor/history.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace editor {
namespace {

using document::Patch;

std::vector<Patch> Reversed(const std::vector<Patch>& patches)
{
    std::vector<Patch> reversed;
    std::transform(patches.rbegin(), patches.rend(), std::back_inserter(reversed),
                   [](const Patch& patch) { return document::Reversed(patch); });
    return reversed;
}

}  // namespace

ChangeWatch::ChangeWatch(const document::Choreography& choreography, Reach reach, std::int32_t time)
    : choreography_(choreography),
      reach_(reach),
      time_(time),
      slot_(document::SlotAt(choreography, time)),
      counts_(document::CountsOf(choreography))
{
    if (reach == Reach::CurrentTime)
        list_ = document::ListAt(choreography, time);
    else if (reach == Reach::Everything || reach == Reach::Tidying)
        whole_ = choreography;
}

Patch ChangeWatch::Seen() const
{
    Patch patch;
    if (reach_ == Reach::Everything || reach_ == Reach::Tidying)
        return document::ComparePatch(whole_, choreography_);
    patch.countsBefore = counts_;
    patch.countsAfter = document::CountsOf(choreography_);
    if (reach_ == Reach::CurrentTime) {
        document::SlotChange change{time_, list_, document::ListAt(choreography_, time_)};
        if (change.before != change.after)
            patch.changes.push_back(std::move(change));
    } else if (reach_ == Reach::LaterTimes && slot_ >= 0) {
        patch.shiftFrom = time_;
        patch.shift = choreography_.lngTime[static_cast<std::size_t>(slot_)] - time_;
    }
    return patch;
}

void History::Begin(bool clean)
{
    done_.clear();
    undone_.clear();
    clean_.reset();
    if (clean)
        clean_ = 0;
}

void History::Add(HistoryStep step)
{
    if (clean_ && *clean_ > done_.size())
        clean_.reset();  // it lay among the steps that are dropped now
    undone_.clear();
    done_.push_back(std::move(step));
}

// A step that waits to be redone was made from what is no more, so it first brings that back.
void History::AddTidying(Patch patch)
{
    clean_.reset();
    if (!undone_.empty())
        undone_.back().patches.insert(undone_.back().patches.begin(), document::Reversed(patch));
    if (!done_.empty())
        done_.back().patches.push_back(std::move(patch));
}

const HistoryStep* History::UndoStep() const
{
    return done_.empty() ? nullptr : &done_.back();
}

const HistoryStep* History::RedoStep() const
{
    return undone_.empty() ? nullptr : &undone_.back();
}

std::vector<Patch> History::UndoPatches() const
{
    return done_.empty() ? std::vector<Patch>{} : Reversed(done_.back().patches);
}

std::vector<Patch> History::RedoPatches() const
{
    return undone_.empty() ? std::vector<Patch>{} : undone_.back().patches;
}

void History::StepBack()
{
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
}

void History::StepForward()
{
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
}

}  // namespace editor
