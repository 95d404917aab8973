#pragma once

#include <QString>
#include <QUrl>
#include <optional>

class QKeyEvent;

namespace porvane {

// The help topics, by the number the desk keeps as its HelpContext; the page each opens is in the one table
// behind helpPageFor.
enum class HelpTopic : qint32 {
    Desk = 1,             // the main window activated
    DayList = 20,         // a day's list (cmdGetAny, cmdGetToday)
    MonthList = 21,       // cmdGetTom
    OnSiteList = 22,      // cmdDayList
    Find = 23,            // cmdMFind
    CalendarDay = 24,     // cmdListCal
    NewBooking = 25,      // cmdNEW
    BookedTimes = 26,     // cmdADD, cmdSUB, or the times grid used
    ArriveOrDepart = 27,  // cmdIN, cmdOUT
    SiteTimes = 28,       // LaON_Site or LaOFFSite double-clicked
    Camera = 50,          // the camera window
    CameraSetup = 51,     // the camera window with its set-up shown
    LocationDetails = 60, // the location and work details dialog
    PersonalDetails = 61, // the personal details dialog
    Photos = 70,          // the photo management window
    Settings = 80,        // the settings window
    SettingsFolders = 81, // the settings window's folders tab
    Pass = 100,           // the pass window
};

// Opens a help page. The desk opens it in the user's browser; tests record the address instead.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;
    virtual bool open(const QUrl& url) = 0;
};

// Hands the address to the desktop (QDesktopServices), never to a shell.
class DesktopUrlOpener final : public UrlOpener {
public:
    bool open(const QUrl& url) override;
};

// The page, under PorvaneDocs/, for a help context; contexts without a page of their own get the index.
QString helpPageFor(qint32 context);

// The page's file address under the application folder.
QUrl helpUrlFor(const QString& appPath, qint32 context);

// The help key of every window: the topic it opens now, and how pages are opened.
class Help {
public:
    // appPath: the application folder, read when a page is opened.
    explicit Help(const QString& appPath)
        : m_appPath(appPath) {}

    qint32 HelpContext = qint32(HelpTopic::Desk);
    // Opens help pages; null means the desktop's browser.
    UrlOpener* urlOpener = nullptr;

    void setTopic(HelpTopic topic) { HelpContext = qint32(topic); }

    // Opens the page of the current HelpContext. A missing page or browser is left to the browser to report.
    void ShowHelp() const;

    // A window's help key: F1 without a modifier opens help, on topic first when one is given. True when the
    // key was the help key.
    bool openOnKey(const QKeyEvent& event, std::optional<HelpTopic> topic = std::nullopt);

private:
    const QString& m_appPath;
};

} // namespace porvane
