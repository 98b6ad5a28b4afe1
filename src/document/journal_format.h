#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "document/choreography.h"
#include "document/patch.h"

namespace document {

/// What a file was at one moment.
struct FileStamp {
    bool exists = false;
    std::uint64_t size = 0;
    std::int64_t modified = 0;   ///< ns since 1970
    std::uint32_t checksum = 0;  ///< of its bytes; 0 where nobody asked for it

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The stamp without the checksum; of what is no file the one that does not exist.
[[nodiscard]] FileStamp StampOf(const std::filesystem::path& name);

[[nodiscard]] std::uint32_t Checksum(std::string_view bytes);

/// What a journal saves from oblivion.
struct JournalContent {
    std::filesystem::path fileName;  ///< of the control file; empty when it never had one
    FileStamp opened;                ///< that file when it was opened or last saved
    Choreography show;               ///< with all that was done since; counts as changed
    std::int32_t time = 0;           ///< ms, where something was done last
    bool pending = false;            ///< that was set on the panel, and not yet stored
};

/// The parts of a journal: first its header, then a snapshot, then changes in their order. Each
/// tells where it ends and whether it is whole.
[[nodiscard]] std::string JournalHeader(const std::filesystem::path& fileName,
                                        const FileStamp& opened);
[[nodiscard]] std::string JournalSnapshot(const Choreography& show);
[[nodiscard]] std::string JournalPatch(const Patch& patch);
/// `commands` are those that leaving `time` would store, empty when the time would go; nothing
/// when nothing is pending any more.
[[nodiscard]] std::string JournalPending(std::int32_t time,
                                         const std::optional<Commands>& commands);

/// What goes beyond these in a journal is not read: whoever writes one begins anew in time.
inline constexpr int kMostJournalChanges = 20'000;
inline constexpr std::int64_t kMostJournalWork = 500'000'000;  ///< of its patches together

/// How much it may take to read `patch` into a choreography of `slots` times.
[[nodiscard]] std::int64_t JournalWork(const Patch& patch, std::int32_t slots);

/// What `bytes` hold up to the first change that is torn, damaged or does not fit; nothing without
/// a header and a snapshot. Takes a bounded time, whatever the bytes are.
[[nodiscard]] std::optional<JournalContent> ReadJournalText(std::string_view bytes);

}  // namespace document
