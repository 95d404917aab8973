#include "server/server_watcher.h"

#include "server/server_connection.h"
#include "server/server_files.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QTimer>
#include <QVariant>
#include <memory>

namespace porvane {

namespace {
constexpr int kRetryMs = 2000;
constexpr int kMarkWaitMs = 1000;
} // namespace

// The connection and its timers, in the watcher's thread.
class ServerWatcher::Listener final : public QObject {
public:
    Listener(ServerWatcher& watcher, const QString& connInfo)
        : m_watcher(watcher)
        , m_connInfo(connInfo) {}

    // In the listener's thread, once it runs.
    void start() {
        m_check = new QTimer(this);
        m_check->setInterval(kRetryMs);
        connect(m_check, &QTimer::timeout, this, [this] { m_server ? checkServer() : listen(); });
        m_check->start();
        listen();
    }

    void mark(int asked) {
        {
            const QMutexLocker lock(&m_watcher.m_mutex);
            m_watcher.m_answering = true;
            if (asked <= m_watcher.m_givenUp || !m_server)
                return;
        }
        // Sent from this connection, it comes back to it marked as its own.
        if (!run(QStringLiteral("NOTIFY %1").arg(QLatin1StringView(kServerChangesChannel))))
            return;
        ++m_marksSent;
        const QMutexLocker lock(&m_watcher.m_mutex);
        m_watcher.m_sentUpTo = std::max(m_watcher.m_sentUpTo, asked);
        m_watcher.m_sent.wakeAll();
    }

private:
    void listen() {
        auto server = std::make_unique<ServerConnection>(m_connInfo);
        QString why = server->error().text;
        if (why.isEmpty()) {
            QSqlDriver* driver = server->database().driver();
            connect(driver, &QSqlDriver::notification, this,
                    [this](const QString&, QSqlDriver::NotificationSource source, const QVariant& payload) {
                        arrived(source == QSqlDriver::SelfSource, payload.toString());
                    });
            if (!driver->subscribeToNotification(QLatin1StringView(kServerChangesChannel)))
                why = ServerError::from(driver->lastError()).text;
        }
        if (!why.isEmpty()) {
            if (!m_lost) // said once, not at every try
                lose(why);
            return;
        }
        m_server = std::move(server);
        m_marksSent = m_marksBack = 0;
        {
            const QMutexLocker lock(&m_watcher.m_mutex);
            m_watcher.m_listening = true;
        }
        if (m_lost) {
            m_lost = false;
            tell([](ServerWatcher& w) { emit w.back(); });
            report({});
        }
    }

    // A dropped connection does not always say so by itself, so the server is asked something now and then.
    void checkServer() { run(QStringLiteral("SELECT 1")); }

    // Runs a statement; false, the server lost, when it fails. A connection the driver found dropped is
    // closed and fails without an error of its own.
    bool run(const QString& sql) {
        QSqlQuery query(m_server->database());
        if (query.exec(sql))
            return true;
        const ServerError error = ServerError::from(query.lastError());
        lose(error ? error.text
                   : QCoreApplication::translate("ServerWatcher", "the connection to the server was lost"));
        return false;
    }

    void lose(const QString& why) {
        {
            const QMutexLocker lock(&m_watcher.m_mutex);
            m_watcher.m_listening = false;
            m_watcher.m_sent.wakeAll();
        }
        m_server.reset();
        m_lost = true;
        tell([why](ServerWatcher& w) { emit w.lost(why); });
    }

    void arrived(bool ownMark, const QString& payload) {
        if (ownMark) {
            ++m_marksBack;
            return;
        }
        // Committed before a mark still on its way, so before the desk read the files.
        if (m_marksBack < m_marksSent)
            return;
        // Another desk's mark names no file.
        const ChangedFiles changed = changedFilesOf(payload);
        if (changed.all) {
            report({});
        } else if (!changed.names.isEmpty()) {
            QStringList keys;
            for (const LineFileName& name : changed.names)
                keys << name.key;
            report(keys);
        }
    }

    // A report still on its way to the desk's thread when the desk read again after a mark sent later is
    // dropped there: what it names had arrived, so was committed, before that read.
    void report(const QStringList& keys) {
        int sentBefore = 0;
        {
            const QMutexLocker lock(&m_watcher.m_mutex);
            sentBefore = m_watcher.m_sentUpTo;
        }
        tell([keys, sentBefore](ServerWatcher& w) {
            if (sentBefore >= w.m_readAfter)
                emit w.filesChanged(keys);
        });
    }

    // Signals are emitted in the desk's thread.
    template <typename F> void tell(F&& emitIt) {
        QMetaObject::invokeMethod(
            &m_watcher, [w = &m_watcher, emitIt = std::forward<F>(emitIt)] { emitIt(*w); },
            Qt::QueuedConnection);
    }

    ServerWatcher& m_watcher;
    const QString m_connInfo;
    std::unique_ptr<ServerConnection> m_server;
    QTimer* m_check = nullptr;
    bool m_lost = false;
    int m_marksSent = 0;
    int m_marksBack = 0;
};

ServerWatcher::ServerWatcher(const QString& connInfo, QObject* parent)
    : ChangeWatcher(parent)
    , m_listener(new Listener(*this, connInfo)) {
    m_listener->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_listener, [l = m_listener] { l->start(); });
    connect(&m_thread, &QThread::finished, m_listener, &QObject::deleteLater);
    m_thread.setObjectName(QStringLiteral("server watcher"));
    m_thread.start();
}

ServerWatcher::~ServerWatcher() {
    m_thread.quit();
    m_thread.wait();
}

void ServerWatcher::seenUpToNow() {
    QMutexLocker lock(&m_mutex);
    if (!m_listening)
        return;
    const int asked = ++m_asked;
    QMetaObject::invokeMethod(
        m_listener, [l = m_listener, asked] { l->mark(asked); }, Qt::QueuedConnection);
    // A mark sent after the desk has read could hide a change made in between, so one not sent in time is
    // given up; while the listener has not answered since, the desk does not wait for it at all.
    if (!m_answering) {
        m_givenUp = asked;
        return;
    }
    const QDeadlineTimer deadline(kMarkWaitMs);
    while (m_sentUpTo < asked && m_listening)
        if (!m_sent.wait(&m_mutex, deadline)) {
            m_givenUp = asked;
            m_answering = false;
            return;
        }
    if (m_sentUpTo >= asked)
        m_readAfter = asked;
}

} // namespace porvane
