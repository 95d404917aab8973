#pragma once

#include "store/data_lock.h"
#include "store/line_files.h"

#include <chrono>
#include <functional>

namespace porvane {

class WritePath;

// The month and day status files in the data folder: Record/yymm.vrf and Status/yymmdd.vdf. Reads take no
// lock (a file is only ever replaced whole or appended to); every change is made under the folder's lock.
// The folder is a closed world: only regular files are read or listed, never through a symbolic link. A
// narrowing is ignored: the whole file is always read.
class FolderFiles final : public LineFiles {
public:
    // dataPath is asked at every read and change, since the settings can move the data folder while the desk
    // runs; lockQuestion is asked while another desk holds the folder's lock.
    FolderFiles(std::function<QString()> dataPath, LockHolderQuestion& lockQuestion);

    // How long a change waits for another desk's lock before asking what to do.
    std::chrono::milliseconds lockWait = DataLock::kDefaultWait;
    // Where the bytes go; tests hand in one that fails part-way. Null means the real file system.
    WritePath* writePath = nullptr;

    // The file's path in the data folder as it is now.
    QString path(const LineFileName& name) const;

    std::unique_ptr<LineReader> read(const LineFileName& name, const LineNarrowing& narrowing = {}) override;
    bool exists(const LineFileName& name) override;
    QStringList keys(LineFileName::Kind kind) override;
    FileError change(const std::function<FileError(LineFileChanges& changes)>& work) override;
    QString where() const override;

private:
    std::function<QString()> m_dataPath;
    LockHolderQuestion& m_lockQuestion;
};

} // namespace porvane
