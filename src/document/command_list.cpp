#include "document/command_list.h"

#include <algorithm>
#include <utility>

namespace document {
namespace {

constexpr unsigned kGroupA = 0x10;
constexpr unsigned kGroupB = 0x20;

bool IsByte(int value)
{
    return value >= 0 && value <= 255;
}

char ToChar(unsigned value)
{
    return static_cast<char>(static_cast<unsigned char>(value & 0xFF));
}

unsigned DataAt(const Commands& commands, std::size_t at)
{
    return static_cast<unsigned char>(commands[at + 1]);
}

void AppendCommand(Commands& commands, unsigned address, unsigned data)
{
    commands += ToChar(address);
    commands += ToChar(data);
}

void AddReset(Commands& commands)
{
    if (BeginsWithReset(commands))
        return;
    if (commands.size() >= 2 && ToChar(kCopyAddress) == commands[0])
        commands.erase(0, 2);
    commands.insert(0, {ToChar(kResetAddress), ToChar(0)});
}

void AddCopy(Commands& commands, unsigned data)
{
    if (BeginsWithReset(commands))
        return;
    if (commands.size() >= 2 && ToChar(kCopyAddress) == commands[0])
        commands[1] = ToChar(DataAt(commands, 0) | data);
    else
        commands.insert(0, {ToChar(kCopyAddress), ToChar(data)});
}

void Update(Commands& commands, const CommandList& request)
{
    const auto wanted = static_cast<unsigned>(request.Data & request.Mask);
    for (std::size_t at = 0; at + 1 < commands.size(); at += 2) {
        const unsigned old = DataAt(commands, at);
        if (commands[at] != ToChar(static_cast<unsigned>(request.Address)) ||
            (old & static_cast<unsigned>(request.Mask)) != wanted)
            continue;
        commands[at + 1] = ToChar((old & ~static_cast<unsigned>(request.Replace)) |
                                  static_cast<unsigned>(request.Data));
        return;
    }
    if (request.Merge == 1)
        AppendCommand(commands, static_cast<unsigned>(request.Address),
                      static_cast<unsigned>(request.Data));
}

bool IsSplit(Command command)
{
    const bool grouped = (command.address >= 1 && command.address <= 9) || command.address == 48 ||
                         command.address == 69;
    return grouped && (command.data & kGroupA) != 0 && (command.data & kGroupB) != 0;
}

/// "000".."255"
constexpr auto kNumberTexts = [] {
    std::array<std::array<char, 3>, 256> texts{};
    for (std::size_t k = 0; k < texts.size(); ++k)
        texts[k] = {static_cast<char>('0' + k / 100), static_cast<char>('0' + k / 10 % 10),
                    static_cast<char>('0' + k % 10)};
    return texts;
}();

}  // namespace

void AddCommand(Commands& commands, const CommandList& request)
{
    if (!IsByte(request.Address))
        return;
    if (request.Merge == 0) {
        commands += ToChar(static_cast<unsigned>(request.Address));
        if (IsByte(request.Data))
            commands += ToChar(static_cast<unsigned>(request.Data));
    } else if (request.Address == kResetAddress) {
        if (request.Data == 0)
            AddReset(commands);
    } else if (request.Address == kCopyAddress) {
        if (request.Data >= 1)
            AddCopy(commands, static_cast<unsigned>(request.Data));
    } else {
        Update(commands, request);
    }
}

bool HasAddress(std::string_view commands, int address)
{
    for (int k = 0; k < CommandCount(commands); ++k)
        if (CommandAt(commands, k).address == address)
            return true;
    return false;
}

bool BeginsWithReset(std::string_view commands)
{
    return commands.size() >= 2 && CommandAt(commands, 0).address == kResetAddress;
}

void RemoveCommand(Commands& commands, int address, Which which)
{
    std::size_t kept = 0;
    std::size_t at = 0;
    for (; at + 1 < commands.size(); at += 2) {
        const bool removed = static_cast<unsigned char>(commands[at]) == address &&
                             (which == Which::All || kept == at);
        if (removed)
            continue;
        commands[kept++] = commands[at];
        commands[kept++] = commands[at + 1];
    }
    commands.erase(kept, at - kept);
}

void SplitCommands(Commands& commands)
{
    Commands split;
    split.reserve(commands.size());
    for (int k = 0; k < CommandCount(commands); ++k) {
        const Command command = CommandAt(commands, k);
        if (IsSplit(command)) {
            AppendCommand(split, command.address, command.data & ~kGroupB);
            AppendCommand(split, command.address, command.data & ~kGroupA);
        } else {
            AppendCommand(split, command.address, command.data);
        }
    }
    commands = std::move(split);
}

void MergeCommands(Commands& commands)
{
    ListMerger merger;
    merger.Add(commands);
    commands = merger.Take();
}

void ListMerger::Add(Command command)
{
    if (command.address == kResetAddress || command.address == kCopyAddress) {
        AddCommand(front_, {command.address, command.data, 0, 255, 1});
        return;
    }
    std::uint16_t& place = places_[MergeKey(command.address, command.data)];
    if (place == 0) {
        AppendCommand(body_, command.address, command.data);
        place = static_cast<std::uint16_t>(CommandCount(body_));
        return;
    }
    const std::size_t at = (place - std::size_t{1}) * 2;
    const bool lastWins = MergeKindOf(command.address) == MergeKind::LastWins;
    body_[at + 1] = ToChar(lastWins ? command.data : DataAt(body_, at) | command.data);
}

void ListMerger::Add(std::string_view commands)
{
    for (int k = 0; k < CommandCount(commands); ++k)
        Add(CommandAt(commands, k));
}

Commands ListMerger::Take()
{
    for (int k = 0; k < CommandCount(body_); ++k) {
        const Command command = CommandAt(body_, k);
        places_[MergeKey(command.address, command.data)] = 0;
    }
    Commands list = std::exchange(front_, {});
    list += body_;
    body_.clear();
    return list;
}

std::string CommandText(std::string_view commands)
{
    std::string text;
    AppendCommandText(text, commands);
    return text;
}

void AppendCommandText(std::string& text, std::string_view commands)
{
    const int count = CommandCount(commands);
    if (count == 0)
        return;
    const std::size_t start = text.size();
    text.resize(start + static_cast<std::size_t>(count) * 8);
    char* out = text.data() + start;
    for (int k = 0; k < count; ++k) {
        const Command command = CommandAt(commands, k);
        out = std::ranges::copy(kNumberTexts[command.address], out).out;
        *out++ = '-';
        out = std::ranges::copy(kNumberTexts[command.data], out).out;
        *out++ = ' ';
    }
    text.pop_back();
}

}  // namespace document
