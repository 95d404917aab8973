#pragma once

#include "store/line_files.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>

namespace porvane {

// A store that may be out of reach when the desk starts or switches to it (the bookings server): it is
// opened at the first read or change, and while it cannot be, tried again at the next, so a desk whose server
// was down works once it is back, without a restart. Until then every read and change fails saying why;
// nothing is kept or queued meanwhile. Once open, the store itself looks after its connection.
class LateOpenedFiles final : public LineFiles {
public:
    // Opens the store, or gives null with why it could not.
    using Opener = std::function<std::unique_ptr<LineFiles>(QString& why)>;

    LateOpenedFiles(Opener open, QString where);

    // Opens the store unless it is open; the error says why it cannot be reached.
    FileError open();

    std::unique_ptr<LineReader> read(const LineFileName& name, const LineNarrowing& narrowing = {}) override;
    bool exists(const LineFileName& name) override;
    QStringList keys(LineFileName::Kind kind) override;
    FileError change(const std::function<FileError(LineFileChanges& changes)>& work) override;
    QString where() const override { return m_files ? m_files->where() : m_where; }

private:
    // How long a failed attempt answers for the next ones: the reads of one list come within moments of each
    // other, and should not each wait out the server's time-out.
    static constexpr qint64 kRetryAfterMs = 1000;

    Opener m_open;
    QString m_where;
    std::unique_ptr<LineFiles> m_files;
    FileError m_failed;
    QElapsedTimer m_failedAt;
};

} // namespace porvane
