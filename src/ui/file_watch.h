#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <filesystem>

#include "document/journal_format.h"

namespace ui {

/// Looks after a file that others may change. What counts is the content: a file that was touched,
/// or written anew with the same bytes, is the same.
class FileWatch final : public QObject {
    Q_OBJECT

 public:
    enum class State { Same, Changed, Gone };

    explicit FileWatch(QObject* parent = nullptr);

    /// From now on it is about `file` (none when empty), which is known as it is now.
    void Follow(const std::filesystem::path& file);
    /// What the file is now is known, too.
    void Accept();
    [[nodiscard]] State Look();
    /// Reads the file as it is known, so that the same content is seen to be the same. Happens by
    /// itself soon after the file is known.
    void LearnContent();
    [[nodiscard]] const std::filesystem::path& File() const { return file_; }

 signals:
    /// The file is another than the one that is known, or is gone. Several changes in a short while
    /// are one.
    void Changed();

 private:
    void Watch();
    void Notice();

    std::filesystem::path file_;
    document::FileStamp known_;
    QFileSystemWatcher* watcher_ = nullptr;
    QTimer settle_;
    QTimer learn_;
};

}  // namespace ui
