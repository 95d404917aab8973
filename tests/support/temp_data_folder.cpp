#include "temp_data_folder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace porvane::test {

TempDataFolder::TempDataFolder() {
    QDir(m_dir.path()).mkpath(QStringLiteral("Porvanedata/Record"));
    QDir(m_dir.path()).mkpath(QStringLiteral("Porvanedata/Status"));
    QDir(m_dir.path()).mkpath(QStringLiteral("Porvanedata/photo"));
}

void TempDataFolder::write(const QString& relative, const QByteArray& bytes) const {
    const QString full = path(relative);
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile f(full);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write test file");
    f.write(bytes);
}

QByteArray TempDataFolder::read(const QString& relative) const {
    QFile f(path(relative));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool TempDataFolder::exists(const QString& relative) const {
    return QFileInfo::exists(path(relative));
}

QMap<QString, QByteArray> TempDataFolder::contents(const QString& folder) const {
    const QDir root(folder.isEmpty() ? dataPath() : folder);
    QMap<QString, QByteArray> found;
    QDirIterator it(root.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile f(it.next());
        const bool isFile = it.fileInfo().isFile() && f.open(QIODevice::ReadOnly);
        found.insert(root.relativeFilePath(f.fileName()), isFile ? f.readAll() : QByteArray("<folder>"));
    }
    return found;
}

void TempDataFolder::openToOtherUsers() const {
    QFile::setPermissions(m_dir.path(), QFile::permissions(m_dir.path()) | QFileDevice::ReadOther |
                                            QFileDevice::ExeOther | QFileDevice::ReadGroup |
                                            QFileDevice::ExeGroup);
}

namespace {

void place(QByteArray& line, int column, const QByteArray& text) {
    if (line.size() < column - 1 + text.size())
        line.resize(column - 1 + text.size(), ' ');
    line.replace(column - 1, text.size(), text);
}

} // namespace

QByteArray handLine(HandColumns columns, int length) {
    QByteArray line(length, ' ');
    for (const auto& [column, text] : columns)
        place(line, column, text);
    line.truncate(length);
    return line;
}

QByteArray handBooking(const char* regNo, const char* first, const char* last, HandColumns more, int length) {
    QByteArray line = handLine({{1, regNo}, {14, first}, {31, last}}, std::max(length, 48));
    for (const auto& [column, text] : more)
        place(line, column, text);
    line.truncate(length);
    return line;
}

QByteArray crLf(std::initializer_list<QByteArray> lines) {
    QByteArray out;
    for (const QByteArray& l : lines)
        out += l + "\r\n";
    return out;
}

QByteArray handColumns(const QByteArray& line, int column, int width) {
    QByteArray text = line.mid(column - 1, width);
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

QStringList dataFiles(const QString& dataPath) {
    QStringList files;
    for (const QString& sub : {QStringLiteral("Record"), QStringLiteral("Status")})
        for (const QString& name : QDir(dataPath + sub).entryList(QDir::Files, QDir::Name))
            files << sub + u'/' + name;
    return files;
}

} // namespace porvane::test
