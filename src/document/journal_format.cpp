#include "document/journal_format.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace document {
namespace {

constexpr std::string_view kMagic = "choreography journal 1\n";

enum Kind : char { kHeader = 'H', kPatch = 'P', kPending = 'W' };

constexpr auto kChecksums = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? 0xEDB88320U ^ (value >> 1) : value >> 1;
        table[byte] = value;
    }
    return table;
}();

/// Numbers stand with their low byte first.
template <typename Number>
void Put(std::string& bytes, Number number)
{
    auto rest = static_cast<std::make_unsigned_t<Number>>(number);
    for (std::size_t k = 0; k < sizeof(Number); ++k) {
        bytes += static_cast<char>(rest & 0xFF);
        if constexpr (sizeof(Number) > 1)
            rest = static_cast<std::make_unsigned_t<Number>>(rest >> 8);
    }
}

void PutList(std::string& bytes, const Commands* commands)
{
    Put(bytes, static_cast<std::uint32_t>(commands == nullptr ? 0 : commands->size() + 1));
    if (commands != nullptr)
        bytes += *commands;
}

void PutCounts(std::string& bytes, const Counts& counts)
{
    for (const auto* pair : {&counts.intTimeCount, &counts.intCommandCount})
        for (const std::int32_t count : *pair)
            Put(bytes, count);
    Put(bytes, static_cast<std::uint8_t>(counts.blnTooMany ? 1 : 0));
}

const Commands* Pointer(const std::optional<Commands>& commands)
{
    return commands ? &*commands : nullptr;
}

std::string Record(Kind kind, std::string_view content)
{
    const std::string body = std::string(1, kind).append(content);
    std::string record;
    Put(record, static_cast<std::uint32_t>(body.size()));
    Put(record, Checksum(body));
    return record + body;
}

/// Takes a record apart. Once it asked for more than there is, nothing more comes out.
class Parts {
 public:
    explicit Parts(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] bool Whole() const { return whole_; }
    [[nodiscard]] std::size_t Left() const { return bytes_.size(); }

    std::string_view Bytes(std::size_t count)
    {
        whole_ = whole_ && count <= bytes_.size();
        if (!whole_)
            return {};
        const std::string_view bytes = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return bytes;
    }
    template <typename Value>
    Value Number()
    {
        using Unsigned = std::make_unsigned_t<Value>;
        std::uint64_t value = 0;
        unsigned shift = 0;
        for (const char byte : Bytes(sizeof(Value))) {
            value |= std::uint64_t{static_cast<unsigned char>(byte)} << shift;
            shift += 8;
        }
        return static_cast<Value>(static_cast<Unsigned>(value));
    }
    std::optional<Commands> List()
    {
        const auto size = Number<std::uint32_t>();
        if (size == 0)
            return std::nullopt;
        return Commands(Bytes(size - 1));
    }
    Counts ReadCounts()
    {
        constexpr std::int32_t kMostCount = 1'000'000'000;  // editing on must not overflow
        Counts counts;
        for (auto* pair : {&counts.intTimeCount, &counts.intCommandCount})
            for (std::int32_t& count : *pair)
                count = std::clamp(Number<std::int32_t>(), -kMostCount, kMostCount);
        counts.blnTooMany = Number<std::uint8_t>() != 0;
        return counts;
    }

 private:
    std::string_view bytes_;
    bool whole_ = true;
};

std::optional<Patch> PatchOf(Parts parts)
{
    Patch patch;
    patch.shiftFrom = parts.Number<std::int32_t>();
    patch.shift = parts.Number<std::int32_t>();
    patch.countsBefore = parts.ReadCounts();
    patch.countsAfter = parts.ReadCounts();
    while (parts.Whole() && parts.Left() > 0) {
        SlotChange change;
        change.time = parts.Number<std::int32_t>();
        change.before = parts.List();
        change.after = parts.List();
        patch.changes.push_back(std::move(change));
    }
    return parts.Whole() ? std::optional(std::move(patch)) : std::nullopt;
}

/// What is pending at the end of a journal.
struct Pending {
    std::int32_t time = 0;
    std::optional<Commands> commands;
};

std::optional<Pending> PendingOf(Parts parts)
{
    Pending pending;
    pending.time = parts.Number<std::int32_t>();
    pending.commands = parts.List();
    return parts.Whole() ? std::optional(std::move(pending)) : std::nullopt;
}

class Reader {
 public:
    std::optional<JournalContent> Read(std::string_view bytes)
    {
        if (!bytes.starts_with(kMagic))
            return std::nullopt;
        Parts parts(bytes.substr(kMagic.size()));
        for (int records = 0; records < kMostJournalChanges + 2; ++records) {
            const auto size = parts.Number<std::uint32_t>();
            const auto checksum = parts.Number<std::uint32_t>();
            const std::string_view body = parts.Bytes(size);
            if (!parts.Whole() || body.empty() || Checksum(body) != checksum ||
                !Take(body.front(), Parts(body.substr(1))))
                break;
        }
        if (!snapshot_)
            return std::nullopt;
        Finish();
        return std::move(content_);
    }

 private:
    bool Take(char kind, Parts parts)
    {
        if (kind == kHeader && !header_)
            return TakeHeader(parts);
        if (kind == kPatch && header_)
            return TakePatch(PatchOf(parts));
        if (kind != kPending || !snapshot_)
            return false;
        const std::optional<Pending> pending = PendingOf(parts);
        if (!pending || pending->time < 0 || pending->time >= kFirstTimeWithoutText)
            return false;
        pending_ = *pending;
        content_.time = pending->time;
        return true;
    }

    bool TakeHeader(Parts parts)
    {
        content_.opened.exists = parts.Number<std::uint8_t>() != 0;
        content_.opened.size = parts.Number<std::uint64_t>();
        content_.opened.modified = parts.Number<std::int64_t>();
        content_.opened.checksum = parts.Number<std::uint32_t>();
        content_.fileName = std::string(parts.Bytes(parts.Left()));
        header_ = parts.Whole() && content_.fileName.native().find('\0') == std::string::npos;
        return header_;
    }

    bool TakePatch(const std::optional<Patch>& patch)
    {
        if (!patch)
            return false;
        work_ += JournalWork(*patch, content_.show.lngLastSlot());
        if (work_ > kMostJournalWork || !ApplyPatch(content_.show, *patch))
            return false;
        if (snapshot_)
            content_.time = TimeOf(*patch);
        snapshot_ = true;
        pending_ = {};  // storing it was the first thing that was done
        return true;
    }

    void Finish()
    {
        content_.show.fileName = content_.fileName;
        content_.show.fileExists = content_.opened.exists;
        content_.show.blnChanged = true;
        if (!pending_.commands)
            return;
        Patch patch;
        patch.countsAfter = CountsOf(content_.show);
        patch.changes.push_back(
            {pending_.time, ListAt(content_.show, pending_.time), pending_.commands});
        if (pending_.commands->empty())
            patch.changes.front().after.reset();
        content_.pending = ApplyPatch(content_.show, patch);
    }

    JournalContent content_;
    bool header_ = false;
    bool snapshot_ = false;
    Pending pending_;
    std::int64_t work_ = 0;
};

}  // namespace

std::uint32_t Checksum(std::string_view bytes)
{
    std::uint32_t sum = 0xFFFFFFFFU;
    for (const char byte : bytes)
        sum = kChecksums[(sum ^ static_cast<unsigned char>(byte)) & 0xFF] ^ (sum >> 8);
    return ~sum;
}

FileStamp StampOf(const std::filesystem::path& name)
{
    struct stat status = {};
    if (::stat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    constexpr std::int64_t kSecond = 1'000'000'000;
    return {true, static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * kSecond + status.st_mtim.tv_nsec, 0};
}

std::int64_t JournalWork(const Patch& patch, std::int32_t slots)
{
    constexpr std::size_t kRebuilding = 10;  // costs so much more than a change in place
    return std::int64_t{slots} *
           static_cast<std::int64_t>(std::min(patch.changes.size() + 1, kRebuilding));
}

std::string JournalHeader(const std::filesystem::path& fileName, const FileStamp& opened)
{
    std::string content;
    Put(content, static_cast<std::uint8_t>(opened.exists ? 1 : 0));
    Put(content, opened.size);
    Put(content, opened.modified);
    Put(content, opened.checksum);
    content += fileName.native();
    return std::string(kMagic) + Record(kHeader, content);
}

std::string JournalSnapshot(const Choreography& show)
{
    std::string content;
    Put(content, std::int32_t{0});
    Put(content, std::int32_t{0});
    PutCounts(content, {});
    PutCounts(content, CountsOf(show));
    for (std::size_t slot = 0; slot + 1 < show.lngTime.size(); ++slot) {
        Put(content, show.lngTime[slot]);
        PutList(content, nullptr);
        PutList(content, &show.strCommands[slot]);
    }
    return Record(kPatch, content);
}

std::string JournalPatch(const Patch& patch)
{
    std::string content;
    Put(content, patch.shiftFrom);
    Put(content, patch.shift);
    PutCounts(content, patch.countsBefore);
    PutCounts(content, patch.countsAfter);
    for (const SlotChange& change : patch.changes) {
        Put(content, change.time);
        PutList(content, Pointer(change.before));
        PutList(content, Pointer(change.after));
    }
    return Record(kPatch, content);
}

std::string JournalPending(std::int32_t time, const std::optional<Commands>& commands)
{
    std::string content;
    Put(content, time);
    PutList(content, Pointer(commands));
    return Record(kPending, content);
}

std::optional<JournalContent> ReadJournalText(std::string_view bytes)
{
    return Reader().Read(bytes);
}

}  // namespace document
