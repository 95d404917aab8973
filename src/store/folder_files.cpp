#include "store/folder_files.h"

#include "store/data_paths.h"
#include "store/line_reader.h"
#include "store/safe_file.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

QString filePath(const QString& dataPath, const LineFileName& name) {
    return name.kind == LineFileName::Kind::Month ? monthFilePath(dataPath, name.key)
                                                  : dayStatusPath(dataPath, name.key);
}

// The changes of one change(), made on the files of the folder whose lock it holds.
class FolderChanges final : public LineFileChanges {
public:
    FolderChanges(const QString& dataPath, WritePath* writePath)
        : m_dataPath(dataPath)
        , m_writePath(writePath) {}

    std::unique_ptr<LineReader> read(const LineFileName& name, const LineNarrowing&) override {
        return std::make_unique<LineReader>(filePath(m_dataPath, name));
    }
    FileError append(const LineFileName& name, QByteArrayView line) override {
        return appendLine(filePath(m_dataPath, name), line, m_writePath);
    }
    FileError rewrite(const LineFileName& name, const LineNarrowing&, const LineEdit& edit,
                      bool* changed) override {
        return rewriteLines(filePath(m_dataPath, name), edit, changed, m_writePath);
    }
    FileError replace(const LineFileName& name,
                      const std::function<FileError(const PieceWriter& write)>& produce) override {
        return replaceFileByPieces(filePath(m_dataPath, name), produce, m_writePath);
    }
    FileError removeAll(const QList<LineFileName>& names) override {
        QStringList paths;
        for (const LineFileName& name : names)
            paths.append(filePath(m_dataPath, name));
        return removeAllOrNone(paths);
    }

private:
    QString m_dataPath;
    WritePath* m_writePath;
};

} // namespace

FolderFiles::FolderFiles(std::function<QString()> dataPath, LockHolderQuestion& lockQuestion)
    : m_dataPath(std::move(dataPath))
    , m_lockQuestion(lockQuestion) {}

QString FolderFiles::path(const LineFileName& name) const {
    return filePath(m_dataPath(), name);
}

std::unique_ptr<LineReader> FolderFiles::read(const LineFileName& name, const LineNarrowing&) {
    return std::make_unique<LineReader>(path(name));
}

bool FolderFiles::exists(const LineFileName& name) {
    return QFileInfo::exists(path(name));
}

QStringList FolderFiles::keys(LineFileName::Kind kind) {
    const bool months = kind == LineFileName::Kind::Month;
    const QString folder = QDir(m_dataPath()).filePath(months ? u"Record"_s : u"Status"_s);
    if (QFileInfo(folder).isSymLink())
        return {};
    const QString suffix = months ? u".vrf"_s : u".vdf"_s;
    QStringList keys;
    for (const QString& name :
         QDir(folder).entryList({u"*"_s + suffix}, QDir::Files | QDir::NoSymLinks | QDir::CaseSensitive))
        keys.append(name.chopped(suffix.size()));
    std::sort(keys.begin(), keys.end());
    return keys;
}

FileError FolderFiles::change(const std::function<FileError(LineFileChanges& changes)>& work) {
    const QString dataPath = m_dataPath();
    DataLock lock(dataPath, lockWait);
    if (FileError error = takeDataLock(lock, m_lockQuestion))
        return error;
    FolderChanges changes(dataPath, writePath);
    return work(changes);
}

QString FolderFiles::where() const {
    return m_dataPath();
}

} // namespace porvane
