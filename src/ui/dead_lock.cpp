#include "ui/dead_lock.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace ui {

void RemoveDeadLock(const QString& lockFile)
{
    constexpr int kIsSigned = 2;  // seconds
    const QFileInfo lock(lockFile);
    if (lock.exists() && lock.size() == 0 &&
        lock.lastModified().secsTo(QDateTime::currentDateTime()) >= kIsSigned)
        QFile::remove(lockFile);
}

}  // namespace ui
