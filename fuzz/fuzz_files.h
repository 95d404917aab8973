#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

namespace porvane::fuzz {

// The readers under test take a path, so each input is written to a file in a folder of this run's own.
inline QString writeInput(const QString& relative, const std::uint8_t* data, std::size_t size) {
    static QTemporaryDir dir;
    const QString path = dir.filePath(relative);
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("fuzz: cannot write %s", qPrintable(path));
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    return path;
}

inline QString folderOf(const QString& path, int levels) {
    return path.section(u'/', 0, -1 - levels) + u'/';
}

} // namespace porvane::fuzz
