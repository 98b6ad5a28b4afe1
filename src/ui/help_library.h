#pragma once

#include <QHelpEngine>
#include <QLockFile>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

namespace ui {

/// The manual, opened: a collection with the copy of the help file, and the index for the search.
/// It lies in the user's folder; where that cannot be written, or a second program uses it, in a
/// folder that goes when the library goes.
class HelpLibrary {
 public:
    /// Null when the manual cannot be opened at all; `problem` then says why in English.
    [[nodiscard]] static std::unique_ptr<HelpLibrary> Open(const QString& helpFile,
                                                           const QString& userFolder,
                                                           QString& problem);

    [[nodiscard]] QHelpEngine& Engine() { return *engine_; }
    [[nodiscard]] bool Lasting() const { return temporary_ == nullptr; }
    /// The page that the contents begin with, or any other.
    [[nodiscard]] static QUrl Page(const QString& name = QStringLiteral("index.html"));

 private:
    bool OpenIn(const QString& folder, const QString& helpFile, QString& problem);
    bool OpenCollection(const QString& folder, QString& problem);

    std::unique_ptr<QTemporaryDir> temporary_;
    std::unique_ptr<QLockFile> lock_;
    std::unique_ptr<QHelpEngine> engine_;  // first to go
};

/// The folder of the user in which the collection is kept.
[[nodiscard]] QString UserHelpFolder();

}  // namespace ui
