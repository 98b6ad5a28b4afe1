#include "document/control_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

#include "document/prune.h"
#include "document/time_text.h"

namespace document {
namespace {

constexpr std::size_t kTimeWidth = 7;
constexpr std::size_t kCommandWidth = 8;  // with the blank behind it
constexpr std::size_t kShortestTimeLine = 14;
constexpr std::int32_t kNone = -1;

/// A run of the packed commands that the reader collects.
struct Piece {
    std::size_t first = 0;  // command, counted over the whole file
    std::size_t count = 0;
};

/// A line that is to be merged into a slot that an earlier line made.
struct LaterLine {
    Piece piece;
    std::int32_t next = kNone;
};

struct SlotLines {
    std::int32_t time = 0;
    Piece piece;  // the line that made the slot, merged
    std::int32_t firstLater = kNone;
    std::int32_t lastLater = kNone;
};

/// Slots in order of time to which new ones come at either end only, each at constant cost.
class SlotRow {
 public:
    [[nodiscard]] std::int32_t Size() const
    {
        return static_cast<std::int32_t>(front_.size() + back_.size());
    }
    [[nodiscard]] SlotLines& operator[](std::int32_t index)
    {
        const auto at = static_cast<std::size_t>(index);
        return at < front_.size() ? front_[front_.size() - 1 - at] : back_[at - front_.size()];
    }
    void PushFront(const SlotLines& slot) { front_.push_back(slot); }
    void PushBack(const SlotLines& slot) { back_.push_back(slot); }

    /// The last slot at or before `time`, or -1.
    [[nodiscard]] std::int32_t AtOrBefore(std::int32_t time)
    {
        std::int32_t low = -1;
        std::int32_t high = Size();
        while (high - low > 1) {
            const std::int32_t middle = low + (high - low) / 2;
            ((*this)[middle].time <= time ? low : high) = middle;
        }
        return low;
    }

 private:
    std::vector<SlotLines> front_;  // in reverse
    std::vector<SlotLines> back_;
};

unsigned Digit(char c)
{
    return static_cast<unsigned char>(c) - unsigned{'0'};
}

/// Three digits as they nearly always stand; everything else is left to `FieldValue`.
bool ReadThreeDigits(const char* at, unsigned& value)
{
    const unsigned hundreds = Digit(at[0]);
    const unsigned tens = Digit(at[1]);
    const unsigned ones = Digit(at[2]);
    value = hundreds * 100 + tens * 10 + ones;
    return hundreds <= 9 && tens <= 9 && ones <= 9;
}

unsigned NumberAt(std::string_view line, std::size_t at)
{
    unsigned value = 0;
    if (at + 3 <= line.size() && ReadThreeDigits(line.data() + at, value))
        return value;
    return at < line.size() ? static_cast<unsigned>(FieldValue(line.substr(at, 3))) : 0;
}

std::int32_t TimeOf(std::string_view line)
{
    return FieldValue(line.substr(0, 2)) * 60'000 + SecondsFieldValue(line.substr(3, 4));
}

bool IsVersionLine(std::string_view line)
{
    return line.size() >= 4 && (line[0] == 'c' || line[0] == 'C') &&
           (line[1] == 't' || line[1] == 'T') && line[2] == '0' && line[3] == '-';
}

/// Addresses whose commands older versions wrote differently, or that keep a fixed place.
constexpr auto kSpecial = [] {
    std::array<bool, 256> special{};
    for (const std::size_t address : std::initializer_list<std::size_t>{33, 34, 52, 80, 85, 99})
        special[address] = true;
    return special;
}();

/// The command as this version writes it. `version` is that of the file.
Command Converted(Command command, std::int32_t version)
{
    if (command.address == 33 || command.address == 34) {
        if (command.data == 17 || command.data == 18)
            command.data = static_cast<std::uint8_t>(command.data + 16);
        else if (command.data == 113 || command.data == 114)
            command.data = static_cast<std::uint8_t>(command.data - 16);
    } else if (command.address == 52) {
        command.address = 51;
    } else if (command.address == 85 && version < 380 && (command.data & 12) != 0) {
        command.data = static_cast<std::uint8_t>((command.data & 252) * 4 + (command.data & 3));
    }
    return command;
}

class Reader {
 public:
    Reader(Choreography& choreography, std::size_t textSize, ReadListener* listener);

    ReadReport Read(std::string_view text);

 private:
    void ReadLine(std::string_view line);
    void ReadTimeLine(std::string_view line);
    void Tell(std::string_view text, LineFate fate, std::int32_t time = 0,
              std::string_view commands = {}, std::int32_t mergedInto = 0);
    Piece ReadCommands(std::string_view line);
    Command Special(Command command, bool first);
    [[nodiscard]] LineFate AddSlot(std::int32_t time, Piece read);
    void AddToSlot(SlotLines& slot, std::int32_t time, Piece read);
    void Count(std::size_t listCount, std::size_t lineCount);
    bool Merge(Piece& piece);
    [[nodiscard]] Commands ListOf(const SlotLines& slot);
    void Finish();

    [[nodiscard]] std::string_view Text(Piece piece) const
    {
        return {pairs_.get() + piece.first * 2, piece.count * 2};
    }

    Choreography& choreography_;
    ReadListener* listener_;
    std::int32_t textLine_ = 0;  // number of the line, all kinds counted
    ReadReport report_;
    std::unique_ptr<char[]> pairs_;  // packed commands of all lines
    std::size_t pairCount_ = 0;
    SlotRow slots_;
    std::vector<LaterLine> later_;
    ListMerger merger_;

    // Merging leaves a line as it is when no two commands share a key: the line's number is
    // noted at the key of each of its commands.
    std::array<std::uint32_t, kMergeKeys> lineOfKey_{};
    std::uint32_t lineNumber_ = 0;
    bool normal_ = true;
};

// A line holds at most one command for every eight of its bytes, even where the last is cut.
Reader::Reader(Choreography& choreography, std::size_t textSize, ReadListener* listener)
    : choreography_(choreography),
      listener_(listener),
      pairs_(std::make_unique_for_overwrite<char[]>(textSize / 4 + 2))
{
}

ReadReport Reader::Read(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (end == std::string_view::npos) {
            ReadLine(line);
            break;
        }
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        ReadLine(line);
        text.remove_prefix(end + 1);
    }
    Finish();
    return report_;
}

void Reader::ReadLine(std::string_view line)
{
    ++textLine_;
    if (line.size() >= kShortestTimeLine)
        return ReadTimeLine(line);
    const bool version = IsVersionLine(line);
    if (version)
        report_.version = FieldValue(line.substr(4, 3));
    Tell(line, version ? LineFate::Version : LineFate::Ignored);
}

void Reader::Tell(std::string_view text, LineFate fate, std::int32_t time,
                  std::string_view commands, std::int32_t mergedInto)
{
    if (listener_ != nullptr)
        listener_->OnLine({textLine_, text, fate, time, commands, mergedInto});
}

void Reader::ReadTimeLine(std::string_view line)
{
    const std::int32_t time = TimeOf(line);
    if (time >= kFirstTimeWithoutText) {
        choreography_.blnChanged = true;
        return Tell(line, LineFate::LeftOutLate, time);
    }
    const Piece read = ReadCommands(line);
    // Merging works in place, so a listener's text is kept aside.
    const Commands commands = listener_ != nullptr ? Commands(Text(read)) : Commands();
    const std::int32_t size = slots_.Size();
    const bool inOrder = size == 0 || time > slots_[size - 1].time;
    const std::int32_t slot = inOrder ? kNone : slots_.AtOrBefore(time);
    if (slot == kNone)
        return Tell(line, AddSlot(time, read), time, commands);
    Tell(line, LineFate::Merged, time, commands, slots_[slot].time);
    AddToSlot(slots_[slot], time, read);
}

Piece Reader::ReadCommands(std::string_view line)
{
    const std::size_t first = pairCount_;
    ++lineNumber_;
    normal_ = true;
    char* out = pairs_.get() + first * 2;
    for (std::size_t at = kTimeWidth; at < line.size(); at += kCommandWidth) {
        const unsigned address = NumberAt(line, at);
        if (address > 255)
            continue;
        Command command{static_cast<std::uint8_t>(address),
                        static_cast<std::uint8_t>(NumberAt(line, at + 4))};
        if (kSpecial[command.address])
            command = Special(command, pairCount_ == first);
        std::uint32_t& lineOfKey = lineOfKey_[MergeKey(command.address, command.data)];
        normal_ &= lineOfKey != lineNumber_;
        lineOfKey = lineNumber_;
        *out++ = static_cast<char>(command.address);
        *out++ = static_cast<char>(command.data);
        ++pairCount_;
    }
    return {first, pairCount_ - first};
}

Command Reader::Special(Command command, bool first)
{
    const Command converted = Converted(command, report_.version);
    if (converted != command)
        choreography_.blnChanged = true;
    if (converted.address == kResetAddress)
        normal_ &= first && converted.data == 0;
    if (converted.address == kCopyAddress)
        normal_ &= first && converted.data != 0;
    return converted;
}

LineFate Reader::AddSlot(std::int32_t time, Piece read)
{
    if (read.count == 0)
        return LineFate::Empty;
    Piece merged = read;
    const bool changed = !normal_ && Merge(merged);
    if (merged.count > 0 && slots_.Size() == kMostSlots) {
        ++report_.timesLeftOut;
        return LineFate::LeftOutFull;
    }
    Count(read.count, read.count);
    choreography_.blnChanged |= changed;
    if (merged.count == 0)
        return LineFate::Stored;
    const bool atEnd = slots_.Size() == 0 || time > slots_[0].time;
    atEnd ? slots_.PushBack({time, merged}) : slots_.PushFront({time, merged});
    return LineFate::Stored;
}

void Reader::AddToSlot(SlotLines& slot, std::int32_t time, Piece read)
{
    slot.time = time;  // a slot that the line's time only follows moves there
    const auto later = static_cast<std::int32_t>(later_.size());
    if (slot.firstLater == kNone)
        slot.firstLater = later;
    else
        later_[static_cast<std::size_t>(slot.lastLater)].next = later;
    slot.lastLater = later;
    later_.push_back({read});
}

void Reader::Count(std::size_t listCount, std::size_t lineCount)
{
    choreography_.blnTooMany |= listCount > kMostCommands;
    choreography_.intCommandCount[0] += static_cast<std::int32_t>(lineCount);
    ++choreography_.intTimeCount[0];
}

// Splitting first, as normalisation does, would make no difference: the halves of a split command
// have the same key and meet again.
bool Reader::Merge(Piece& piece)
{
    merger_.Add(Text(piece));
    const Commands merged = merger_.Take();
    const bool changed = merged != Text(piece);
    std::ranges::copy(merged, pairs_.get() + piece.first * 2);
    piece.count = merged.size() / 2;
    return changed;
}

Commands Reader::ListOf(const SlotLines& slot)
{
    if (slot.firstLater == kNone)
        return Commands(Text(slot.piece));
    merger_.Add(Text(slot.piece));
    std::int32_t next = slot.firstLater;
    while (next != kNone) {
        const LaterLine& line = later_[static_cast<std::size_t>(next)];
        const std::string_view commands = Text(line.piece);
        const std::size_t listCount = static_cast<std::size_t>(merger_.Count()) + line.piece.count;
        Count(listCount, line.piece.count);
        merger_.Add(commands);
        choreography_.blnChanged |= static_cast<std::size_t>(merger_.Count()) < listCount ||
                                    HasAddress(commands, kResetAddress) ||
                                    HasAddress(commands, kCopyAddress);
        next = line.next;
    }
    return merger_.Take();
}

void Reader::Finish()
{
    const std::int32_t size = slots_.Size();
    Choreography& c = choreography_;
    c.lngTime.reserve(static_cast<std::size_t>(size) + 1);
    c.strCommands.reserve(static_cast<std::size_t>(size) + 1);
    c.blnReset.reserve(static_cast<std::size_t>(size) + 1);
    c.lngTime.clear();
    c.strCommands.clear();
    c.blnReset.clear();
    for (std::int32_t k = 0; k < size; ++k) {
        c.lngTime.push_back(slots_[k].time);
        c.strCommands.push_back(ListOf(slots_[k]));
        c.blnReset.push_back(BeginsWithReset(c.strCommands.back()) ? 1 : 0);
    }
    c.lngTime.push_back(kEndSentinel);
    c.strCommands.emplace_back();
    c.blnReset.push_back(0);
}

}  // namespace

ReadReport ReadControlText(Choreography& choreography, std::string_view text,
                           ReadListener* listener)
{
    choreography = {};
    const ReadReport report = Reader(choreography, text.size(), listener).Read(text);
    choreography.blnChanged |= PruneChoreography(choreography).changed;
    choreography.intTimeCount[1] = choreography.lngLastSlot();
    for (const Commands& commands : choreography.strCommands)
        choreography.intCommandCount[1] += CommandCount(commands);
    return report;
}

std::string ControlText(const Choreography& choreography)
{
    std::string text = "ct0-" + std::to_string(kFileVersion) + "\r\n";
    std::size_t size = text.size();
    for (const Commands& commands : choreography.strCommands)
        size += kTimeWidth + commands.size() * (kCommandWidth / 2) + 2;
    text.reserve(size);
    const auto slots = static_cast<std::size_t>(choreography.lngLastSlot());
    for (std::size_t slot = 0; slot < slots; ++slot) {
        AppendTimeText(text, choreography.lngTime[slot]);
        AppendCommandText(text, choreography.strCommands[slot]);
        text += "\r\n";
    }
    return text;
}

}  // namespace document
