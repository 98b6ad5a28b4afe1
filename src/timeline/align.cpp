#include "timeline/align.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <queue>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace timeline {
namespace {

using document::Choreography;

constexpr std::size_t kMostShifts = 32;       // that are looked at closely
constexpr std::size_t kMostPairsOfList = 64;  // of equal lists that vote one by one

std::size_t At(std::int32_t slot)
{
    return static_cast<std::size_t>(slot);
}

/// Neighbouring slots that all stand `shift` ms later in the other choreography.
struct Run {
    std::int32_t first = 0;
    std::int32_t last = 0;
    std::int32_t shift = 0;

    [[nodiscard]] std::int32_t Length() const { return last - first + 1; }
};

/// Long runs come first; of two alike the one that moves least.
struct ComesLater {
    bool operator()(const Run& a, const Run& b) const
    {
        return std::tuple(a.Length(), -std::abs(a.shift), -a.shift, -a.first) <
               std::tuple(b.Length(), -std::abs(b.shift), -b.shift, -b.first);
    }
};

class Aligner {
 public:
    Aligner(const Choreography& before, const Choreography& after);

    std::vector<std::int32_t> Align();

 private:
    struct Places {
        std::vector<std::int32_t> before;
        std::vector<std::int32_t> after;
    };

    [[nodiscard]] std::vector<std::int32_t> LikelyShifts() const;
    void CollectRuns(std::int32_t shift);
    void TakeRuns();
    void Take(Run run);
    void PairNeighbours();
    [[nodiscard]] std::int32_t Target(std::int32_t slot, std::int32_t shift) const;
    [[nodiscard]] bool Free(std::int32_t slot, std::int32_t target) const;
    [[nodiscard]] bool Unique(std::int32_t slot) const;
    [[nodiscard]] std::int32_t ShiftOf(std::int32_t slot) const;
    bool PairAt(std::int32_t slot, std::int32_t shift);

    const Choreography& before_;
    const Choreography& after_;
    std::unordered_map<std::string_view, Places> places_;  // by list of commands
    std::priority_queue<Run, std::vector<Run>, ComesLater> runs_;
    std::vector<std::int32_t> targets_;
    std::vector<bool> taken_;
};

Aligner::Aligner(const Choreography& before, const Choreography& after)
    : before_(before),
      after_(after),
      targets_(At(before.lngLastSlot()), kNoSlot),
      taken_(At(after.lngLastSlot()), false)
{
    for (std::int32_t slot = 0; slot < before.lngLastSlot(); ++slot)
        places_[before.strCommands[At(slot)]].before.push_back(slot);
    for (std::int32_t slot = 0; slot < after.lngLastSlot(); ++slot)
        places_[after.strCommands[At(slot)]].after.push_back(slot);
}

std::vector<std::int32_t> Aligner::Align()
{
    for (const std::int32_t shift : LikelyShifts())
        CollectRuns(shift);
    TakeRuns();
    PairNeighbours();
    return targets_;
}

// Equal lists vote for the shift between them. Lists that stand in many places vote in order from
// both ends only, so that the work stays in proportion to the choreographies.
std::vector<std::int32_t> Aligner::LikelyShifts() const
{
    std::unordered_map<std::int32_t, std::int32_t> votes;
    const auto vote = [&](std::int32_t from, std::int32_t to) {
        ++votes[after_.lngTime[At(to)] - before_.lngTime[At(from)]];
    };
    for (const auto& [list, places] : places_) {
        const auto& [from, to] = places;
        if (from.size() * to.size() <= kMostPairsOfList) {
            for (const std::int32_t a : from)
                for (const std::int32_t b : to)
                    vote(a, b);
            continue;
        }
        const std::size_t both = std::min(from.size(), to.size());
        for (std::size_t k = 0; k < both; ++k) {
            vote(from[k], to[k]);
            vote(from[from.size() - 1 - k], to[to.size() - 1 - k]);
        }
    }
    votes.erase(0);
    std::vector<std::tuple<std::int32_t, std::int32_t, std::int32_t>> ranked;
    ranked.reserve(votes.size());
    for (const auto& [shift, count] : votes)
        ranked.emplace_back(-count, std::abs(shift), shift);
    const std::size_t most = std::min(kMostShifts, ranked.size());
    std::ranges::partial_sort(ranked, ranked.begin() + static_cast<std::ptrdiff_t>(most));
    std::vector<std::int32_t> shifts{0};
    for (std::size_t k = 0; k < most; ++k)
        shifts.push_back(std::get<2>(ranked[k]));
    return shifts;
}

std::int32_t Aligner::Target(std::int32_t slot, std::int32_t shift) const
{
    return document::SlotAt(after_, before_.lngTime[At(slot)] + shift);
}

bool Aligner::Free(std::int32_t slot, std::int32_t target) const
{
    return target != kNoSlot && targets_[At(slot)] == kNoSlot && !taken_[At(target)];
}

// A list that stands in one place on either side.
bool Aligner::Unique(std::int32_t slot) const
{
    const Places& places = places_.at(before_.strCommands[At(slot)]);
    return places.before.size() == 1 && places.after.size() == 1;
}

void Aligner::CollectRuns(std::int32_t shift)
{
    Run run{0, -1, shift};
    for (std::int32_t slot = 0; slot < before_.lngLastSlot(); ++slot) {
        const std::int32_t target = Target(slot, shift);
        if (target != kNoSlot && before_.strCommands[At(slot)] == after_.strCommands[At(target)]) {
            run.last = slot;
            continue;
        }
        if (run.last >= run.first)
            runs_.push(run);
        run.first = slot + 1;
    }
    if (run.last >= run.first)
        runs_.push(run);
}

// A run of which some slots have gone to a longer one comes back as what is left of it.
void Aligner::TakeRuns()
{
    while (!runs_.empty()) {
        const Run run = runs_.top();
        runs_.pop();
        std::vector<Run> left;
        bool goesOn = false;
        for (std::int32_t slot = run.first; slot <= run.last; ++slot) {
            const bool free = Free(slot, Target(slot, run.shift));
            if (free && goesOn)
                left.back().last = slot;
            else if (free)
                left.push_back({slot, slot, run.shift});
            goesOn = free;
        }
        if (left.size() == 1 && left.front().Length() == run.Length())
            Take(run);
        else
            for (const Run& part : left)
                runs_.push(part);
    }
}

// That a single time has moved is believed only where it can be no other.
void Aligner::Take(Run run)
{
    if (run.shift != 0 && run.Length() == 1 && !Unique(run.first))
        return;
    for (std::int32_t slot = run.first; slot <= run.last; ++slot) {
        const std::int32_t target = Target(slot, run.shift);
        targets_[At(slot)] = target;
        taken_[At(target)] = true;
    }
}

std::int32_t Aligner::ShiftOf(std::int32_t slot) const
{
    if (slot < 0 || slot >= before_.lngLastSlot() || targets_[At(slot)] == kNoSlot)
        return 0;
    return after_.lngTime[At(targets_[At(slot)])] - before_.lngTime[At(slot)];
}

bool Aligner::PairAt(std::int32_t slot, std::int32_t shift)
{
    const std::int32_t target = Target(slot, shift);
    if (!Free(slot, target))
        return false;
    targets_[At(slot)] = target;
    taken_[At(target)] = true;
    return true;
}

// A slot whose commands changed moved as its neighbours did, or not at all.
void Aligner::PairNeighbours()
{
    for (std::int32_t slot = 0; slot < before_.lngLastSlot(); ++slot) {
        if (targets_[At(slot)] != kNoSlot)
            continue;
        const std::int32_t behind = ShiftOf(slot - 1);
        const std::int32_t ahead = ShiftOf(slot + 1);
        if (behind == ahead && PairAt(slot, behind))
            continue;
        for (const std::int32_t shift : {0, behind, ahead})
            if (PairAt(slot, shift))
                break;
    }
}

}  // namespace

std::vector<std::int32_t> AlignSlots(const Choreography& before, const Choreography& after)
{
    return Aligner(before, after).Align();
}

}  // namespace timeline
