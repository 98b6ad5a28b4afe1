#include "ui/show_lock.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include "document/control_file.h"
#include "document/journal_format.h"
#include "ui/dialog_look.h"

namespace ui {
namespace {

namespace fs = std::filesystem;

constexpr int kLockIsWritten = 2;  // seconds

QString TextOf(const fs::path& name)
{
    return QString::fromStdString(name.string());
}

// Only the end of its process makes a lock void, never its age: a show is open for hours. But one
// that was made and never signed, because its process died, would be nobody's for ever.
std::unique_ptr<QLockFile> LockOf(const fs::path& controlFile)
{
    const QFileInfo file(TextOf(LockName(controlFile)));
    if (file.exists() && file.size() == 0 &&
        file.lastModified().secsTo(QDateTime::currentDateTime()) >= kLockIsWritten)
        QFile::remove(file.filePath());
    auto lock = std::make_unique<QLockFile>(file.filePath());
    lock->setStaleLockTime(0);
    return lock;
}

}  // namespace

fs::path LockName(const fs::path& controlFile)
{
    std::error_code error;
    fs::path file = fs::weakly_canonical(controlFile, error);
    if (error)
        file = controlFile;
    return file.parent_path() / ("." + file.filename().string() + ".lock");
}

QString OtherHolder(const fs::path& controlFile)
{
    const auto lock = LockOf(controlFile);
    if (lock->tryLock(0) || lock->error() != QLockFile::LockFailedError)
        return {};
    qint64 process = 0;
    QString host;
    QString program;
    const bool signedBy = lock->getLockInfo(&process, &host, &program);
    const QString name = lock->fileName();
    QString who = QFileInfo(name).owner();
    if (who.isEmpty())
        who = QStringLiteral("somebody");
    if (!signedBy)
        return who;
    return QStringLiteral("%1 on the computer %2 (process %3, since %4)")
        .arg(who, host.isEmpty() ? QStringLiteral("?") : host)
        .arg(process)
        .arg(MomentText(document::StampOf(name.toStdString()).modified));
}

bool ShowLock::Take(const fs::path& controlFile)
{
    if (Holds(controlFile))
        return true;
    Release();
    if (controlFile.empty() || !document::FileExists(controlFile))
        return false;
    lock_ = LockOf(controlFile);
    if (!lock_->tryLock(0))
        lock_.reset();
    return lock_ != nullptr;
}

bool ShowLock::Holds(const fs::path& controlFile) const
{
    return lock_ != nullptr && !controlFile.empty() &&
           lock_->fileName() == TextOf(LockName(controlFile));
}

}  // namespace ui
