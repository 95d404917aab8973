#include "app/about_window.h"

#include "app/splash_window.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace porvane {

AboutWindow::AboutWindow(const AppState& state, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(tr("About Porvane 90"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SplashWindow::buildPanel(state, this));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
}

} // namespace porvane
