#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

#include "document/choreography.h"
#include "document/control_text.h"

namespace document {

/// True when `name` names an existing regular file; errors count as false.
[[nodiscard]] bool FileExists(const std::filesystem::path& name);

/// `name` itself when it exists, else a file of the same folder whose name differs only in the case
/// of ASCII letters (the first in byte order), else nothing.
[[nodiscard]] std::optional<std::filesystem::path> FindFile(const std::filesystem::path& name);

/// Replaces the choreography by the file's content, normalised. A name that names no existing file
/// gives an empty, unsaved choreography. Whatever the bytes are, the result is in order.
/// `listener`, which may be null, hears of every line.
ReadReport ReadControlFile(Choreography& choreography, const std::filesystem::path& name,
                           ReadListener* listener = nullptr);

inline constexpr int kBackups = 5;

/// The backup `number` of a control file, 1 (the newest) to `kBackups`: the name's last three
/// characters give way to "001" to "005".
[[nodiscard]] std::filesystem::path BackupName(const std::filesystem::path& name, int number);

enum class SaveOutcome {
    Nothing,  ///< the name is empty
    Saved,
    OpenFailed,  ///< the file could not be created; the version before is in the .001 backup too
    WriteFailed  ///< an error after that, by what `error` says; the version before is in .001 too
};

struct SaveReport {
    SaveOutcome outcome = SaveOutcome::Nothing;
    bool pruned = false;    ///< normalising before the save changed the choreography
    std::error_code error;  ///< why it failed
};

/// Prunes, rolls the five backups (stem.001 newest to stem.005) and writes the choreography. At
/// every moment a complete version stands under the name or, where a file cannot have two names, at
/// least in .001. A symbolic link goes on standing for the file that it stands for.
/// Saved means: on the disk, flushed and checked. Only then are `blnChanged`, `fileExists` and
/// `fileName` brought up to date.
SaveReport WriteControlFile(Choreography& choreography, const std::filesystem::path& name);

}  // namespace document
