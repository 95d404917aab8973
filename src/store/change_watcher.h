#pragma once

#include <QObject>
#include <QStringList>

namespace porvane {

// Tells a desk which month and day status files ("yymm", "yymmdd") other desks changed, so that the list it
// shows can follow them: the data folder's watcher or the server's.
class ChangeWatcher : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // The desk is about to read the files: whatever changed up to now, by this desk or another, is in what
    // it reads and is not reported again. Never waits long.
    virtual void seenUpToNow() = 0;

signals:
    // Files changed since the last report; none named: any file may have changed.
    void filesChanged(const QStringList& keys);
    // The watcher cannot see the store any more (the server went away); nothing is reported until it is back.
    void lost(const QString& why);
    // It sees the store again; filesChanged follows, naming none, since anything may have changed meanwhile.
    void back();
};

} // namespace porvane
