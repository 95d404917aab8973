#include "test_stores.h"

#include "server/server_connection.h"
#include "server/server_files.h"
#include "server/server_schema.h"
#include "store/line_reader.h"
#include "temp_pg_cluster.h"

#include <cerrno>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace porvane::test {

std::string storeKindName(const ::testing::TestParamInfo<StoreKind>& info) {
    return info.param == StoreKind::Server ? "Server" : "DataFolder";
}

std::unique_ptr<LineFiles> makeServerStore(QString& why) {
    // One cluster for the test program, made when the first test asks, stopped when the program ends.
    static const std::unique_ptr<TempPgCluster> cluster =
        TempPgCluster::serverBinaries().isEmpty() ? nullptr : std::make_unique<TempPgCluster>();
    if (!cluster) {
        why = u"PostgreSQL's server is not installed (apt-get install postgresql): not tested"_s;
        return nullptr;
    }
    const QString db = cluster->createDatabase();
    if (db.isEmpty()) {
        why = cluster->problem();
        return nullptr;
    }
    {
        ServerConnection server(db);
        if (const ServerError error = server.error() ? server.error() : initSchema(server)) {
            why = error.text;
            return nullptr;
        }
    }
    return openServerFiles(db, why);
}

LineFileName lineFileNameOf(const QString& relative) {
    const QString key = relative.section(u'/', 1).section(u'.', 0, 0);
    return relative.startsWith(u"Status/") ? LineFileName{LineFileName::Kind::DayStatus, key}
                                           : LineFileName::month(key);
}

void putStoredFile(LineFiles& files, const QString& relative, const QByteArray& bytes) {
    const FileError error = files.change([&](LineFileChanges& changes) {
        return changes.replace(lineFileNameOf(relative),
                               [&](const PieceWriter& write) { return write(bytes); });
    });
    ASSERT_FALSE(error) << error.text.toStdString();
}

QByteArray storedFile(LineFiles& files, const QString& relative) {
    const std::unique_ptr<LineReader> reader = files.read(lineFileNameOf(relative));
    QByteArray bytes;
    char buffer[64 * 1024];
    for (qint64 at = 0; reader->handle() >= 0;) {
        const ssize_t n = ::pread(reader->handle(), buffer, sizeof buffer, at);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        bytes.append(buffer, n);
        at += n;
    }
    return bytes;
}

QMap<QString, QByteArray> storedFiles(LineFiles& files) {
    QMap<QString, QByteArray> all;
    for (const QString& key : files.keys(LineFileName::Kind::Month))
        all.insert(u"Record/"_s + key + u".vrf"_s, storedFile(files, u"Record/"_s + key + u".vrf"_s));
    for (const QString& key : files.keys(LineFileName::Kind::DayStatus))
        all.insert(u"Status/"_s + key + u".vdf"_s, storedFile(files, u"Status/"_s + key + u".vdf"_s));
    return all;
}

} // namespace porvane::test
