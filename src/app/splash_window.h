#pragma once

#include <QPointer>
#include <QWidget>

namespace porvane {

class AppState;

// The window shown while the desk starts: product, version, the site's name, and a note when the default
// settings were applied on this start. ckShowSplash chooses how: "1" keeps it above the desk while the desk
// opens behind it; "0" shows it on its own, and the desk appears when it goes.
class SplashWindow : public QWidget {
    Q_OBJECT

public:
    explicit SplashWindow(const AppState& state, QWidget* parent = nullptr);

    bool aboveDesk() const { return m_aboveDesk; }
    // The desk is loaded: shown now beneath the splash, or kept back until finish().
    void deskLoaded(QWidget* desk, bool maximised);
    // The start-up's wait is over: the splash goes and a desk kept back is shown.
    void finish();

    // The same content as a panel, for the About window.
    static QWidget* buildPanel(const AppState& state, QWidget* parent);

private:
    void showDesk();

    bool m_aboveDesk;
    QPointer<QWidget> m_desk;
    bool m_maximised = false;
};

} // namespace porvane
