#include "temp_pg_cluster.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QVersionNumber>
#include <pwd.h>
#include <unistd.h>

namespace porvane::test {

namespace {

const QString kUser = QStringLiteral("porvane");
const QString kPort = QStringLiteral("5432"); // names the socket file in our own folder only

struct Owner {
    bool asOtherUser = false;
    uid_t uid = 0;
    gid_t gid = 0;
};

Owner clusterOwner() {
    if (::geteuid() != 0)
        return {};
    const passwd* nobody = ::getpwnam("nobody");
    return nobody ? Owner{true, nobody->pw_uid, nobody->pw_gid} : Owner{};
}

} // namespace

QString TempPgCluster::serverBinaries() {
    // Debian keeps each major version apart; the newest installed one is taken.
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QString best;
    for (const QString& v : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (QFile::exists(versions.filePath(v + QStringLiteral("/bin/initdb"))) &&
            (best.isEmpty() || QVersionNumber::fromString(v) > QVersionNumber::fromString(best)))
            best = v;
    return best.isEmpty() ? QString() : versions.filePath(best + QStringLiteral("/bin"));
}

TempPgCluster::TempPgCluster()
    : m_bin(serverBinaries()) {
    if (m_bin.isEmpty()) {
        m_problem = QStringLiteral("PostgreSQL's server is not installed (Debian package postgresql)");
        return;
    }
    const Owner owner = clusterOwner();
    if (owner.asOtherUser &&
        ::chown(QFile::encodeName(m_dir.path()).constData(), owner.uid, owner.gid) != 0) {
        m_problem = QStringLiteral("cannot hand the cluster's folder to nobody");
        return;
    }
    const QString data = m_dir.filePath(QStringLiteral("data"));
    if (!runAsOwner(QStringLiteral("initdb"),
                    {QStringLiteral("-D"), data, QStringLiteral("-A"), QStringLiteral("trust"),
                     QStringLiteral("-U"), kUser, QStringLiteral("-E"), QStringLiteral("UTF8"),
                     QStringLiteral("--locale=C"), QStringLiteral("--no-sync")}))
        return;
    start();
}

TempPgCluster::~TempPgCluster() {
    stop();
}

bool TempPgCluster::start() {
    // No TCP, the socket in our folder, no fsync: a test server that nothing else can reach or wait for.
    m_started =
        runAsOwner(QStringLiteral("pg_ctl"),
                   {QStringLiteral("-D"), m_dir.filePath(QStringLiteral("data")), QStringLiteral("-l"),
                    m_dir.filePath(QStringLiteral("log")), QStringLiteral("-w"), QStringLiteral("-o"),
                    QStringLiteral("-k %1 -p %2 -c listen_addresses= -F").arg(m_dir.path(), kPort),
                    QStringLiteral("start")});
    return m_started;
}

bool TempPgCluster::stop() {
    if (!m_started)
        return true;
    m_started =
        !runAsOwner(QStringLiteral("pg_ctl"),
                    {QStringLiteral("-D"), m_dir.filePath(QStringLiteral("data")), QStringLiteral("-m"),
                     QStringLiteral("immediate"), QStringLiteral("-w"), QStringLiteral("stop")});
    return !m_started;
}

bool TempPgCluster::runAsOwner(const QString& program, const QStringList& args) {
    const Owner owner = clusterOwner();
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    const QString path = m_bin + u'/' + program;
    if (owner.asOtherUser)
        p.start(QStringLiteral("setpriv"), QStringList{QStringLiteral("--reuid=%1").arg(owner.uid),
                                                       QStringLiteral("--regid=%1").arg(owner.gid),
                                                       QStringLiteral("--clear-groups"), path} +
                                               args);
    else
        p.start(path, args);
    if (p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0)
        return true;
    QFile log(m_dir.filePath(QStringLiteral("log")));
    m_problem = program + QStringLiteral(" failed: ") + QString::fromLocal8Bit(p.readAll()) +
                p.errorString() +
                (log.open(QIODevice::ReadOnly)
                     ? QStringLiteral("\nserver log:\n") + QString::fromLocal8Bit(log.readAll())
                     : QString());
    return false;
}

QString TempPgCluster::createDatabase() {
    if (!m_started)
        return {};
    const QString name = QStringLiteral("test%1").arg(++m_databases);
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(m_bin + QStringLiteral("/createdb"), {QStringLiteral("-h"), m_dir.path(), QStringLiteral("-p"),
                                                  kPort, QStringLiteral("-U"), kUser, name});
    if (!p.waitForFinished(60000) || p.exitCode() != 0) {
        m_problem = QStringLiteral("createdb failed: ") + QString::fromLocal8Bit(p.readAll());
        return {};
    }
    return QStringLiteral("host=%1 port=%2 dbname=%3 user=%4").arg(m_dir.path(), kPort, name, kUser);
}

QMap<QString, QString> connInfoParts(const QString& connInfo) {
    QMap<QString, QString> parts;
    for (const QString& pair : connInfo.split(u' ', Qt::SkipEmptyParts))
        parts.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
    return parts;
}

} // namespace porvane::test
