#include "app/help_topics.h"

#include <QCursor>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QKeyEvent>
#include <array>
#include <utility>

namespace porvane {

namespace {

// The one table of help pages; a topic not listed opens the index.
constexpr std::array<std::pair<HelpTopic, const char*>, 17> kHelpPages{{
    {HelpTopic::DayList, "daylist.html"},
    {HelpTopic::MonthList, "monthlist.html"},
    {HelpTopic::OnSiteList, "iostatuslist.html"},
    {HelpTopic::Find, "findingrecords.html"},
    {HelpTopic::CalendarDay, "daylist2.html"},
    {HelpTopic::NewBooking, "makebooking.html"},
    {HelpTopic::BookedTimes, "makebooking2.html"},
    {HelpTopic::ArriveOrDepart, "iostatuslist2.html"},
    {HelpTopic::SiteTimes, "iostatuslist3.html"},
    {HelpTopic::Camera, "snapshot.html"},
    {HelpTopic::CameraSetup, "snapshot2.html"},
    {HelpTopic::LocationDetails, "makebooking3.html"},
    {HelpTopic::PersonalDetails, "makebooking3.html"},
    {HelpTopic::Photos, "managingpics2.html"},
    {HelpTopic::Settings, "ModesOfOperation2.html"},
    {HelpTopic::SettingsFolders, "netoperations2.html"},
    {HelpTopic::Pass, "issuingapass.html"},
}};

} // namespace

bool DesktopUrlOpener::open(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

QString helpPageFor(qint32 context) {
    for (const auto& [topic, page] : kHelpPages) {
        if (qint32(topic) == context)
            return QString::fromLatin1(page);
    }
    return QStringLiteral("index.html");
}

QUrl helpUrlFor(const QString& appPath, qint32 context) {
    return QUrl::fromLocalFile(appPath + QStringLiteral("PorvaneDocs/") + helpPageFor(context));
}

void Help::ShowHelp() const {
    // The hourglass shows while the browser is being asked; it can take a moment to start.
    const bool cursor = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    if (cursor)
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    const QUrl url = helpUrlFor(m_appPath, HelpContext);
    if (urlOpener) {
        urlOpener->open(url);
    } else {
        DesktopUrlOpener desktop;
        desktop.open(url);
    }
    if (cursor)
        QGuiApplication::restoreOverrideCursor();
}

bool Help::openOnKey(const QKeyEvent& event, std::optional<HelpTopic> topic) {
    if (event.key() != Qt::Key_F1 || event.modifiers() != Qt::NoModifier)
        return false;
    if (topic)
        setTopic(*topic);
    ShowHelp();
    return true;
}

} // namespace porvane
