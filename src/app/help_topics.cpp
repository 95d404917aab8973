#include "app/help_topics.h"

#include "app/app_state.h"

#include <QCursor>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QKeyEvent>

namespace porvane {

bool DesktopUrlOpener::open(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

QString helpPageFor(qint32 context) {
    switch (context) {
    case 20:
        return QStringLiteral("daylist.html");
    case 21:
        return QStringLiteral("monthlist.html");
    case 22:
        return QStringLiteral("iostatuslist.html");
    case 23:
        return QStringLiteral("findingrecords.html");
    case 24:
        return QStringLiteral("daylist2.html");
    case 25:
        return QStringLiteral("makebooking.html");
    case 26:
        return QStringLiteral("makebooking2.html");
    case 27:
        return QStringLiteral("iostatuslist2.html");
    case 28:
        return QStringLiteral("iostatuslist3.html");
    case 50:
        return QStringLiteral("snapshot.html");
    case 51:
        return QStringLiteral("snapshot2.html");
    case 60:
    case 61:
        return QStringLiteral("makebooking3.html");
    case 70:
        return QStringLiteral("managingpics2.html");
    case 80:
        return QStringLiteral("ModesOfOperation2.html");
    case 81:
        return QStringLiteral("netoperations2.html");
    case 100:
        return QStringLiteral("issuingapass.html");
    default:
        return QStringLiteral("index.html");
    }
}

QUrl helpUrlFor(const QString& appPath, qint32 context) {
    return QUrl::fromLocalFile(appPath + QStringLiteral("PorvaneDocs/") + helpPageFor(context));
}

void ShowHelp(AppState& state) {
    // The hourglass shows while the browser is being asked; it can take a moment to start.
    const bool cursor = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    if (cursor)
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    const QUrl url = helpUrlFor(state.AppPath, state.HelpContext);
    if (state.urlOpener) {
        state.urlOpener->open(url);
    } else {
        DesktopUrlOpener desktop;
        desktop.open(url);
    }
    if (cursor)
        QGuiApplication::restoreOverrideCursor();
}

bool openHelpOnKey(AppState& state, const QKeyEvent& event, qint32 topic) {
    if (event.key() != Qt::Key_F1 || event.modifiers() != Qt::NoModifier)
        return false;
    if (topic > 0)
        state.HelpContext = topic;
    ShowHelp(state);
    return true;
}

} // namespace porvane
