#pragma once

#include "store/change_watcher.h"

#include <QMutex>
#include <QThread>
#include <QWaitCondition>

namespace porvane {

// Tells which month and day status files other desks changed on the server: each change's commit sends a
// notification on kServerChangesChannel naming them (server_files.h). It listens on a connection of its own,
// in a thread of its own, so that a slow or lost server never holds up the desk. When the server goes away it
// says so and tries again every two seconds; once it is back it listens again and says so.
class ServerWatcher final : public ChangeWatcher {
    Q_OBJECT

public:
    explicit ServerWatcher(const QString& connInfo, QObject* parent = nullptr);
    ~ServerWatcher() override;

    // Sends a notification of its own and waits (at most a second, and not at all while the listener is
    // stuck on a server that does not answer) until the server has it: whatever arrives before it back was
    // committed before the desk reads, so it is not reported.
    void seenUpToNow() override;

private:
    class Listener;
    friend class Listener;

    QThread m_thread;
    Listener* m_listener = nullptr; // lives in m_thread

    // Between the desk's thread and the listener's: the marks asked for, given up on and sent.
    QMutex m_mutex;
    QWaitCondition m_sent;
    bool m_listening = false;
    bool m_answering = true; // the listener took the last mark asked for in time, or has taken one since
    int m_asked = 0;
    int m_givenUp = 0;
    int m_sentUpTo = 0;
    // The desk's thread only: the mark sent before the desk last read.
    int m_readAfter = 0;
};

} // namespace porvane
