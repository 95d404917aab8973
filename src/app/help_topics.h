#pragma once

#include <QString>
#include <QUrl>

class QKeyEvent;

namespace porvane {

class AppState;

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

// Opens the page of the current HelpContext through state.urlOpener (the desktop's when none is set).
// A missing page or browser is left to the browser to report.
void ShowHelp(AppState& state);

// A window's help key: F1 opens help, on the window's own topic when it has one (topic above 0), else on the
// current HelpContext. True when the key was the help key.
bool openHelpOnKey(AppState& state, const QKeyEvent& event, qint32 topic = 0);

} // namespace porvane
