#include "ui/help_library.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace ui {
namespace {

constexpr const char* kNamespace = "velmora.choreographer";
constexpr const char* kCollection = "manual.qhc";
constexpr const char* kCopy = "TANDRI.HLP";
constexpr const char* kStamp = "stamp";

/// Tells one version of the help file from another.
QByteArray StampOf(const QString& helpFile)
{
    const QFileInfo file(helpFile);
    return QStringLiteral("%1\n%2\n%3\n")
        .arg(helpFile)
        .arg(file.size())
        .arg(file.lastModified().toMSecsSinceEpoch())
        .toUtf8();
}

bool IsUpToDate(const QDir& folder, const QByteArray& stamp)
{
    QFile file(folder.filePath(QLatin1String(kStamp)));
    return file.open(QIODevice::ReadOnly) && file.readAll() == stamp;
}

/// Takes away what a library made, and nothing else that lies there.
void Clear(QDir folder)
{
    for (const char* name : {kStamp, kCopy, kCollection})
        folder.remove(QLatin1String(name));
    QDir(folder.filePath(QStringLiteral(".manual"))).removeRecursively();
}

bool CopyHelpFile(const QDir& folder, const QString& helpFile, QString& problem)
{
    Clear(folder);
    QFile source(helpFile);
    const QString copy = folder.filePath(QLatin1String(kCopy));
    if (!source.copy(copy)) {
        problem = source.errorString();
        return false;
    }
    return QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
}

bool WriteStamp(const QDir& folder, const QByteArray& stamp)
{
    QFile file(folder.filePath(QLatin1String(kStamp)));
    return file.open(QIODevice::WriteOnly) && file.write(stamp) == stamp.size() && file.flush();
}

}  // namespace

std::unique_ptr<HelpLibrary> HelpLibrary::Open(const QString& helpFile, const QString& userFolder,
                                               QString& problem)
{
    auto library = std::make_unique<HelpLibrary>();
    if (!userFolder.isEmpty() && QDir().mkpath(userFolder)) {
        library->lock_ = std::make_unique<QLockFile>(userFolder + QStringLiteral("/lock"));
        if (library->lock_->tryLock() && library->OpenIn(userFolder, helpFile, problem))
            return library;
        library->lock_.reset();
    }
    library->temporary_ = std::make_unique<QTemporaryDir>();
    if (!library->temporary_->isValid()) {
        problem = library->temporary_->errorString();
        return nullptr;
    }
    return library->OpenIn(library->temporary_->path(), helpFile, problem) ? std::move(library)
                                                                           : nullptr;
}

bool HelpLibrary::OpenIn(const QString& folder, const QString& helpFile, QString& problem)
{
    const QDir place(folder);
    const QByteArray stamp = StampOf(helpFile);
    if (IsUpToDate(place, stamp) && OpenCollection(folder, problem))
        return true;
    // There is none, it is of another version, or it was damaged.
    return CopyHelpFile(place, helpFile, problem) && OpenCollection(folder, problem) &&
           WriteStamp(place, stamp);
}

bool HelpLibrary::OpenCollection(const QString& folder, QString& problem)
{
    const QDir place(folder);
    engine_ = std::make_unique<QHelpEngine>(place.filePath(QLatin1String(kCollection)));
    engine_->setReadOnly(false);
    engine_->setUsesFilterEngine(true);
    const QString name = QString::fromLatin1(kNamespace);
    if (engine_->setupData() &&
        (engine_->registeredDocumentations().contains(name) ||
         engine_->registerDocumentation(place.filePath(QLatin1String(kCopy)))) &&
        !engine_->fileData(Page()).isEmpty())
        return true;
    problem = engine_->error();
    engine_.reset();
    return false;
}

QUrl HelpLibrary::Page(const QString& name)
{
    return QUrl(QStringLiteral("qthelp://%1/manual/%2").arg(QLatin1String(kNamespace), name));
}

QString UserHelpFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return data.isEmpty() ? QString() : data + QStringLiteral("/help");
}

}  // namespace ui
