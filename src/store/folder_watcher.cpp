#include "store/folder_watcher.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <sys/stat.h>

namespace porvane {

namespace {

// A folder whose time is closer to now than this is looked at again, since the next change may not move it.
constexpr qint64 kCoarseTimeNs = 2'000'000'000;
constexpr int kPollMs = 500;

bool allDigits(const QString& text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

FolderWatcher::FolderWatcher(const QString& dataPath, QObject* parent)
    : ChangeWatcher(parent) {
    const QString data = dataPath.endsWith(u'/') ? dataPath : dataPath + u'/';
    m_folders[0] = {data + QStringLiteral("Record"), QStringLiteral("*.vrf"), 4, {}, {}};
    m_folders[1] = {data + QStringLiteral("Status"), QStringLiteral("*.vdf"), 6, {}, {}};
    look();
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FolderWatcher::lookAndReport);
    connect(&m_poll, &QTimer::timeout, this, &FolderWatcher::lookAndReport);
    m_poll.start(kPollMs);
}

FolderWatcher::Stamp FolderWatcher::stampOf(const QString& path) {
    struct stat s {};
    if (::stat(QFile::encodeName(path).constData(), &s) != 0)
        return {};
    const auto ns = [](const timespec& t) {
        return qint64(t.tv_sec) * 1'000'000'000 + t.tv_nsec;
    };
    return {qint64(s.st_ino), qint64(s.st_size), ns(s.st_mtim), ns(s.st_ctim)};
}

void FolderWatcher::seenUpToNow() {
    look();
}

void FolderWatcher::lookAndReport() {
    if (const QStringList keys = look(); !keys.isEmpty())
        emit filesChanged(keys);
}

QStringList FolderWatcher::look() {
    const qint64 nowNs = QDateTime::currentMSecsSinceEpoch() * 1'000'000;
    QStringList changed;
    for (Folder& folder : m_folders) {
        const Stamp stamp = stampOf(folder.path);
        const bool recent = stamp.modifiedNs >= 0 && nowNs - stamp.modifiedNs < kCoarseTimeNs;
        if (stamp == folder.stamp && !recent)
            continue;
        // A folder made after the desk started is watched from now on.
        if (stamp.inode >= 0 && !m_watcher.directories().contains(folder.path))
            m_watcher.addPath(folder.path);
        folder.stamp = stamp;
        QHash<QString, Stamp> files;
        const QDir dir(folder.path);
        for (const QString& name : dir.entryList({folder.nameFilter}, QDir::Files)) {
            const QString key = name.left(name.size() - 4);
            if (key.size() != folder.keyLength || !allDigits(key))
                continue;
            const Stamp file = stampOf(dir.filePath(name));
            if (file.inode < 0)
                continue; // gone since the folder was listed
            files.insert(key, file);
            if (folder.files.value(key) != file)
                changed << key;
        }
        for (auto it = folder.files.cbegin(); it != folder.files.cend(); ++it)
            if (!files.contains(it.key()))
                changed << it.key();
        folder.files = std::move(files);
    }
    return changed;
}

} // namespace porvane
