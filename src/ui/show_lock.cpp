#include "ui/show_lock.h"

#include <QFileInfo>

#include "document/control_file.h"
#include "document/journal_format.h"
#include "ui/dead_lock.h"
#include "ui/dialog_look.h"

namespace ui {
namespace {

namespace fs = std::filesystem;

QString TextOf(const fs::path& name)
{
    return QString::fromStdString(name.string());
}

// Only the end of its process makes a lock void, never its age: a show is open for hours.
std::unique_ptr<QLockFile> LockOf(const fs::path& controlFile)
{
    const QString file = TextOf(LockName(controlFile));
    RemoveDeadLock(file);
    auto lock = std::make_unique<QLockFile>(file);
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
