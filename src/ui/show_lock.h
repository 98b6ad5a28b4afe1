#pragma once

#include <QLockFile>
#include <QString>
#include <filesystem>
#include <memory>
#include <optional>

namespace ui {

/// The lock of a control file: ".show.ctl.lock" beside it, whoever comes to it by whatever link.
[[nodiscard]] std::filesystem::path LockName(const std::filesystem::path& controlFile);

/// Who else has `controlFile` open, in words: "anna on the computer stage (process 1234, since 21
/// November 2026, 18:05:09)"; empty when nobody has. The lock of a process that is no more is none.
[[nodiscard]] QString OtherHolder(const std::filesystem::path& controlFile);

/// Tells other editors that a control file is open in this one. Where the folder cannot be written
/// to, or its file system knows no locks, nobody is told.
class ShowLock {
 public:
    /// Gives back what it had and takes the lock of `controlFile`, if it is free and the file is
    /// there. True when it has it.
    bool Take(const std::filesystem::path& controlFile);
    void Release() { lock_.reset(); }
    [[nodiscard]] bool Holds(const std::filesystem::path& controlFile) const;

 private:
    std::unique_ptr<QLockFile> lock_;
};

}  // namespace ui
