#include "admin_run.h"

#include "temp_data_folder.h"

#include <QProcess>

namespace porvane::test {

AdminRun runAdmin(const TempDataFolder& folder, const QString& today, const QStringList& args,
                  const QByteArray& input) {
    QProcess p;
    p.start(QStringLiteral(PORVANE_STAGE_DIR "/porvane-admin"),
            QStringList{QStringLiteral("--home"), QStringLiteral(PORVANE_STAGE_DIR), QStringLiteral("--data"),
                        folder.dataPath(), QStringLiteral("--today"), today} +
                args);
    p.write(input);
    p.closeWriteChannel();
    if (!p.waitForFinished(60000))
        return {};
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

} // namespace porvane::test
