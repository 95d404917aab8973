#pragma once

#include "settings/settings_file.h"

#include <QCoreApplication>
#include <QString>

namespace porvane {

class AppState;

// The pieces of the start-up that touch the platform or the windows, so the order can be checked in tests.
class StartUpPlatform {
public:
    virtual ~StartUpPlatform() = default;
    virtual void enterAppFolder(const QString& appPath) = 0;
    // The platform's version text; empty where there is no version test (everywhere but Windows).
    virtual QString osVersion() = 0;
    // Common controls and the visual-style manifest (Windows).
    virtual void prepareVisualStyle(const QString& appPath) = 0;
    virtual bool visualThemeActive() = 0;
    // True when this is the only running copy; the claim holds until the process ends.
    virtual bool claimSingleInstance() = 0;
    // The screen's height in pixels.
    virtual int screenHeight() = 0;
    virtual void showSplash() = 0;
    virtual void loadMainWindow() = 0;
    virtual void closeSplash() = 0;
};

// The screen test: a desk needs at least the 768 lines of a 1024 x 768 screen.
inline bool screenTallEnough(int heightPixels) {
    return heightPixels >= 768;
}

// The start-up routine: application folder, one copy only, visual style, screen size, settings (the defaults
// on a first start), splash, main window. run() returns false when the program must end.
class StartUp {
    Q_DECLARE_TR_FUNCTIONS(StartUp)

public:
    StartUp(AppState& state, StartUpPlatform& platform)
        : m_state(state)
        , m_platform(platform) {}

    bool run(const QString& appPath);

    static QString alreadyRunningText() {
        return tr("Porvane Software is ALREADY RUNNING on this Machine    ");
    }
    static QString screenTooSmallText() {
        return tr("Porvane CANNOT RUN because it needs a higher Screen Resolution");
    }
    static QString title() { return tr("Porvane Start up"); }

private:
    void loadSettings();

    AppState& m_state;
    StartUpPlatform& m_platform;
};

} // namespace porvane
