#include "app/app_paths.h"
#include "app/app_state.h"
#include "app/message_box_dialog.h"
#include "app/splash_window.h"
#include "app/system_start_up.h"
#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "desk/store_choice.h"
#include "store/record_store.h"

#include <QApplication>
#include <memory>

using namespace porvane;

namespace {

// The start-up's windows: the splash, then the main window, which lives until the program ends.
class DeskStartUp final : public SystemStartUp {
public:
    DeskStartUp(AppState& state, BookingStore& store)
        : m_state(state)
        , m_store(store) {}

    void showSplash() override {
        m_splash = std::make_unique<SplashWindow>(m_state);
        m_splash->show();
        QCoreApplication::processEvents();
    }
    void loadMainWindow() override {
        useStoreOfSettings(m_state);
        m_main = std::make_unique<MainWindow>(m_state, m_store);
        m_main->watch(watcherOfSettings(m_state));
        m_splash->deskLoaded(m_main.get(), m_state.settings.ckStartFull == u"1");
    }
    void closeSplash() override {
        m_splash->finish();
        m_splash.reset();
    }

private:
    AppState& m_state;
    BookingStore& m_store;
    std::unique_ptr<SplashWindow> m_splash;
    std::unique_ptr<MainWindow> m_main;
};

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Porvane 90"));
    QApplication::setApplicationVersion(QStringLiteral(PORVANE_VERSION));

    // A home other than the installation gets the installed pick lists, pass images and help pages once.
    const QString appPath = AppPathForThisProgram();
    seedHomeFolder(appPath, QCoreApplication::applicationDirPath());

    MessageBoxPrompter prompter;
    SystemClock clock;
    EventLoopPause pause;
    AppState state(prompter, clock, pause);
    RecordStore records = recordStoreOf(state);
    RecordStoreBooking store(records);
    DeskStartUp platform(state, store);
    if (!StartUp(state, platform).run(appPath))
        return 1;
    return app.exec();
}
