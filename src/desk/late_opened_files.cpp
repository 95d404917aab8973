#include "desk/late_opened_files.h"

#include "store/line_reader.h"

namespace porvane {

LateOpenedFiles::LateOpenedFiles(Opener open, QString where)
    : m_open(std::move(open))
    , m_where(std::move(where)) {}

FileError LateOpenedFiles::open() {
    if (m_files)
        return {};
    if (m_failed && m_failedAt.elapsed() < kRetryAfterMs)
        return m_failed;
    QString why;
    m_files = m_open(why);
    if (m_files)
        return m_failed = {};
    m_failed = {FileError::ServerUnreachable, why};
    m_failedAt.start();
    return m_failed;
}

std::unique_ptr<LineReader> LateOpenedFiles::read(const LineFileName& name, const LineNarrowing& narrowing) {
    if (const FileError error = open())
        return std::make_unique<LineReader>(error);
    return m_files->read(name, narrowing);
}

bool LateOpenedFiles::exists(const LineFileName& name) {
    return !open() && m_files->exists(name);
}

QStringList LateOpenedFiles::keys(LineFileName::Kind kind) {
    return open() ? QStringList() : m_files->keys(kind);
}

FileError LateOpenedFiles::change(const std::function<FileError(LineFileChanges& changes)>& work) {
    if (const FileError error = open())
        return error;
    return m_files->change(work);
}

} // namespace porvane
