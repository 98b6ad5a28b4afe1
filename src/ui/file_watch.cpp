#include "ui/file_watch.h"

#include <QFileInfo>

#include "document/file_io.h"

namespace ui {
namespace {

constexpr int kSettles = 400;   // ms; programs that write a file do it in several steps
constexpr int kLearns = 1'000;  // ms; opening a show comes first

QString TextOf(const std::filesystem::path& name)
{
    return QString::fromStdString(name.string());
}

bool SameFile(document::FileStamp one, const document::FileStamp& other)
{
    one.checksum = other.checksum;
    return one == other;
}

}  // namespace

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    settle_.setSingleShot(true);
    settle_.setInterval(kSettles);
    learn_.setSingleShot(true);
    learn_.setInterval(kLearns);
    connect(&learn_, &QTimer::timeout, this, &FileWatch::LearnContent);
    connect(&settle_, &QTimer::timeout, this, [this] {
        Watch();
        if (Look() != State::Same)
            emit Changed();
    });
}

void FileWatch::Follow(const std::filesystem::path& file)
{
    file_ = file;
    known_ = {};
    settle_.stop();
    Watch();
    Accept();
}

// A file that is gone is still known by its content: it may come back.
void FileWatch::Accept()
{
    const document::FileStamp now = document::StampOf(file_);
    if (now.exists)
        known_ = now;
    else
        known_.exists = false;
    learn_.stop();
    if (now.exists)
        learn_.start();
}

void FileWatch::LearnContent()
{
    if (known_.checksum != 0 || !SameFile(document::StampOf(file_), known_))
        return;
    const std::uint32_t checksum = document::Checksum(document::ReadWholeFile(file_).Text());
    if (SameFile(document::StampOf(file_), known_))
        known_.checksum = checksum;
}

FileWatch::State FileWatch::Look()
{
    document::FileStamp now = document::StampOf(file_);
    if (SameFile(now, known_) || (!now.exists && !known_.exists))
        return State::Same;
    if (!now.exists)
        return State::Gone;
    const bool comparable = known_.checksum != 0 && now.size == known_.size;
    if (!comparable || document::Checksum(document::ReadWholeFile(file_).Text()) != known_.checksum)
        return State::Changed;
    now.checksum = known_.checksum;
    known_ = now;
    return State::Same;
}

// Who replaces a file puts another one under its name, which only the folder tells. Where there is
// nothing to be told by, the file is looked at when the window is gone back to. The file itself is
// watched anew each time: what was watched may go on under another name, as a backup does.
void FileWatch::Watch()
{
    if (watcher_ == nullptr) {
        if (file_.empty())
            return;
        watcher_ = new QFileSystemWatcher(this);
        connect(watcher_, &QFileSystemWatcher::fileChanged, this, &FileWatch::Notice);
        connect(watcher_, &QFileSystemWatcher::directoryChanged, this, &FileWatch::Notice);
    }
    const QString file = TextOf(file_);
    const QString folder = QFileInfo(file).absolutePath();
    QStringList gone = watcher_->files() + watcher_->directories();
    gone.removeAll(folder);
    if (!gone.isEmpty())
        watcher_->removePaths(gone);
    if (file_.empty())
        return;
    if (!watcher_->directories().contains(folder))
        watcher_->addPath(folder);
    if (document::StampOf(file_).exists)
        watcher_->addPath(file);
}

void FileWatch::Notice()
{
    if (!SameFile(document::StampOf(file_), known_))
        settle_.start();
    else
        Watch();
}

}  // namespace ui
