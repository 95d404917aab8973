#pragma once

#include <QDialog>

namespace porvane {

class AppState;

// Product, version and the site's name, as on the splash window.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(const AppState& state, QWidget* parent = nullptr);
};

} // namespace porvane
