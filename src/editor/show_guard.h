#pragma once

#include <filesystem>

namespace editor {

/// Stands between the editor and the control files, which others may use too.
class ShowGuard {
 public:
    virtual ~ShowGuard() = default;
    /// False when the user rather leaves the file to whoever has it open.
    [[nodiscard]] virtual bool MayOpen(const std::filesystem::path& file) = 0;
    /// The file, which may be missing, is the one that is open from now on, and is about to be
    /// read. An empty name: none is.
    virtual void Reading(const std::filesystem::path& file) = 0;
    /// False when the user does not want to write over what others did.
    [[nodiscard]] virtual bool MaySave(const std::filesystem::path& file) = 0;
    /// The file is the one that is open, and holds what is stored.
    virtual void Saved(const std::filesystem::path& file) = 0;
};

}  // namespace editor
