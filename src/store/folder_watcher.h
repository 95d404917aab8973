#pragma once

#include "store/change_watcher.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QTimer>
#include <array>

namespace porvane {

// Tells which month and day status files of a data folder changed. Files are replaced by renaming a new one
// over them, so the Record and Status folders are watched rather than the files (a watch on a file would stay
// with the old one), and each file is known by its inode, size and times. A folder on a network share only
// tells of changes made on this machine, so the folders' own times are looked at twice a second as well.
class FolderWatcher final : public ChangeWatcher {
    Q_OBJECT

public:
    explicit FolderWatcher(const QString& dataPath, QObject* parent = nullptr);

    void seenUpToNow() override;

private:
    struct Stamp {
        qint64 inode = -1;
        qint64 size = -1;
        qint64 modifiedNs = -1;
        qint64 changedNs = -1;
        bool operator==(const Stamp&) const = default;
    };
    struct Folder {
        QString path;
        QString nameFilter; // "*.vrf"
        int keyLength = 0;  // "yymm", "yymmdd"
        Stamp stamp;        // the folder's own, when it was last looked at
        QHash<QString, Stamp> files;
    };

    static Stamp stampOf(const QString& path);
    // Looks again at each folder whose time moved since the last look, or moved so lately that a share
    // counting whole seconds may not show the next change; the keys of the files made, replaced or removed.
    QStringList look();
    void lookAndReport();

    QFileSystemWatcher m_watcher;
    QTimer m_poll;
    std::array<Folder, 2> m_folders;
};

} // namespace porvane
