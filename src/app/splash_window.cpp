#include "app/splash_window.h"

#include "app/app_state.h"

#include <QFont>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace porvane {

QWidget* SplashWindow::buildPanel(const AppState& state, QWidget* parent) {
    auto* panel = new QFrame(parent);
    panel->setFrameShape(QFrame::Panel);
    panel->setFrameShadow(QFrame::Raised);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(32, 24, 32, 24);
    layout->setSpacing(10);

    auto* product = new QLabel(tr("Porvane 90"), panel);
    product->setObjectName(QStringLiteral("laProduct"));
    QFont big = product->font();
    big.setPointSize(big.pointSize() * 2);
    big.setBold(true);
    product->setFont(big);

    auto* version = new QLabel(tr("Version %1").arg(QStringLiteral(PORVANE_VERSION)), panel);
    version->setObjectName(QStringLiteral("laVersion"));
    auto* site = new QLabel(state.settings.SiteName, panel);
    site->setObjectName(QStringLiteral("laSiteName"));
    auto* defaults = new QLabel(tr("Defaulf Settings Applied"), panel);
    defaults->setObjectName(QStringLiteral("laDefaults"));
    defaults->setVisible(state.SettingsCreated);

    for (QLabel* label : {product, version, site, defaults}) {
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    }
    return panel;
}

namespace {

Qt::WindowFlags splashFlags(bool aboveDesk) {
    return aboveDesk ? Qt::SplashScreen | Qt::WindowStaysOnTopHint : Qt::SplashScreen;
}

} // namespace

SplashWindow::SplashWindow(const AppState& state, QWidget* parent)
    : QWidget(parent, splashFlags(state.settings.ckShowSplash != u"0"))
    , m_aboveDesk(state.settings.ckShowSplash != u"0") {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(tr("Porvane 90"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(buildPanel(state, this));
    adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

void SplashWindow::deskLoaded(QWidget* desk, bool maximised) {
    m_desk = desk;
    m_maximised = maximised;
    if (m_aboveDesk) {
        showDesk();
        raise();
    }
}

void SplashWindow::finish() {
    hide();
    if (!m_aboveDesk)
        showDesk();
}

void SplashWindow::showDesk() {
    if (!m_desk)
        return;
    if (m_maximised)
        m_desk->showMaximized();
    else
        m_desk->show();
}

} // namespace porvane
