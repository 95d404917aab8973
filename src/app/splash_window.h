#pragma once

#include <QWidget>

namespace porvane {

class AppState;

// The window shown while the desk starts: product, version, the site's name, and a note when the default
// settings were applied on this start.
class SplashWindow : public QWidget {
    Q_OBJECT

public:
    explicit SplashWindow(const AppState& state, QWidget* parent = nullptr);

    // The same content as a panel, for the About window.
    static QWidget* buildPanel(const AppState& state, QWidget* parent);
};

} // namespace porvane
