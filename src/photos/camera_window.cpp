#include "photos/camera_window.h"

#include "app/help_topics.h"

#include <QCamera>
#include <QCameraDevice>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVideoFrame>
#include <QVideoSink>
#include <QVideoWidget>

namespace porvane {

namespace {

const QString kTitle = QStringLiteral("Porvane 90");

// The newest frame the preview has shown.
class PreviewFrames final : public FrameSource {
public:
    explicit PreviewFrames(QVideoSink* sink) {
        QObject::connect(sink, &QVideoSink::videoFrameChanged, sink,
                         [this](const QVideoFrame& f) { m_frame = f; });
    }
    QImage grabFrame() override { return m_frame.isValid() ? m_frame.toImage() : QImage(); }
    QString errorText() const override {
        return QCoreApplication::translate("CameraWindow", "The camera has not delivered a picture yet");
    }

private:
    QVideoFrame m_frame;
};

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

CameraWindow::CameraWindow(AppState& state, QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_capture(state)
    , m_session(std::make_unique<QMediaCaptureSession>()) {
    setObjectName(QStringLiteral("frmCapTest"));
    setWindowTitle(tr("Camera"));
    setModal(true);
    m_state.help.setTopic(HelpTopic::Camera);

    m_preview = named(new QVideoWidget(this), "ezVidCap1");
    m_preview->setMinimumSize(320, 240);
    m_preview->setAspectRatioMode(Qt::KeepAspectRatio);
    m_session->setVideoOutput(m_preview);
    m_frames = std::make_unique<PreviewFrames>(m_preview->videoSink());

    m_driver = named(new QComboBox(this), "cbDriver");
    auto* snapButton = named(new QPushButton(tr("SNAP"), this), "cmdSaveDIB");
    auto* captureButton = named(new QPushButton(tr("Capture"), this), "cmdCapture");
    auto* setupButton = named(new QPushButton(tr("Video cfg"), this), "cmdEnterSetup");
    auto* closeButton = named(new QPushButton(tr("Close"), this), "cmdClose");
    setupButton->setVisible(m_state.settings.ckEnbl_VidConfig == u"1");
    snapButton->setEnabled(!m_state.settings.ReadOnlyMode());
    auto* status = named(new QWidget(this), "picStatus");
    m_statusCode = named(new QLabel(tr("Status Panel"), status), "lblStatusCode");
    m_statusString = named(new QLabel(status), "lblStatusString");
    auto* statusLayout = new QVBoxLayout(status);
    statusLayout->addWidget(m_statusCode);
    statusLayout->addWidget(m_statusString);

    // The set-up panel.
    m_setup = new QWidget(this);
    auto* preview = named(new QCheckBox(tr("Preview video"), m_setup), "chkPreview");
    preview->setChecked(true);
    auto* fit = named(new QCheckBox(tr("Fit photos to the pass (150 x 200)"), m_setup), "chkFitPhoto");
    fit->setChecked(m_state.settings.ckRawCamPhoto != u"1");
    auto* done = named(new QPushButton(tr("Done"), m_setup), "cmdCFGDone");
    auto* setupLayout = new QVBoxLayout(m_setup);
    setupLayout->addWidget(preview);
    setupLayout->addWidget(fit);
    setupLayout->addStretch();
    setupLayout->addWidget(done);
    m_setup->hide();

    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {snapButton, captureButton, setupButton, closeButton})
        buttons->addWidget(b);
    auto* left = new QVBoxLayout;
    left->addWidget(m_driver);
    left->addWidget(m_preview, 1);
    left->addLayout(buttons);
    left->addWidget(status);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addWidget(m_setup);

    const QList<QCameraDevice> cameras = QMediaDevices::videoInputs();
    if (cameras.isEmpty()) {
        m_driver->addItem(QStringLiteral("<none>"));
        captureButton->setEnabled(false);
        m_state.prompter.tell(kTitle, tr("Problem: Porvane Can't detect a Working Camera"));
    } else {
        for (const QCameraDevice& c : cameras)
            m_driver->addItem(c.description());
        const int current = int(cameras.indexOf(QMediaDevices::defaultVideoInput()));
        m_driver->setCurrentIndex(std::max(0, current));
        chooseCamera(m_driver->currentIndex());
        connect(m_driver, &QComboBox::activated, this, &CameraWindow::chooseCamera);
    }

    connect(snapButton, &QPushButton::clicked, this, &CameraWindow::snap);
    connect(captureButton, &QPushButton::clicked, this, [this] {
        m_state.prompter.tell(kTitle, tr("This is for testing purposes and is not currently enabled"),
                              Icon::Information);
    });
    connect(setupButton, &QPushButton::clicked, this, [this] { setSetupShown(true); });
    connect(done, &QPushButton::clicked, this, [this] { setSetupShown(false); });
    connect(preview, &QCheckBox::toggled, m_preview, &QWidget::setVisible);
    connect(fit, &QCheckBox::toggled, this, [this](bool on) {
        m_state.settings.ckRawCamPhoto = on ? QStringLiteral("0") : QStringLiteral("1");
    });
    connect(closeButton, &QPushButton::clicked, this, &QDialog::reject);
}

CameraWindow::~CameraWindow() = default;

// Help on the camera, or on its set-up while that is shown.
void CameraWindow::keyPressEvent(QKeyEvent* event) {
    if (!m_state.help.openOnKey(*event))
        QDialog::keyPressEvent(event);
}

void CameraWindow::setSetupShown(bool shown) {
    m_setup->setVisible(shown);
    m_state.help.setTopic(shown ? HelpTopic::CameraSetup : HelpTopic::Camera);
}

void CameraWindow::chooseCamera(int index) {
    const QList<QCameraDevice> cameras = QMediaDevices::videoInputs();
    if (index < 0 || index >= cameras.size())
        return;
    auto camera = std::make_unique<QCamera>(cameras.at(index));
    connect(camera.get(), &QCamera::errorOccurred, this, [this](QCamera::Error code, const QString& text) {
        if (code == QCamera::NoError)
            return;
        m_statusCode->setText(tr("StatusCode: %1").arg(int(code)));
        m_statusString->setText(tr("Error %1").arg(text));
    });
    m_session->setCamera(camera.get());
    camera->start();
    if (camera->error() != QCamera::NoError) {
        // Keep the camera that worked.
        m_session->setCamera(m_camera.get());
        m_driver->setCurrentIndex(m_cameraIndex);
        m_statusString->setText(tr("Could not connect!"));
        return;
    }
    m_camera = std::move(camera);
    m_cameraIndex = index;
    m_statusString->setText(m_camera->cameraDevice().description());
}

void CameraWindow::snap() {
    if (m_capture.snapshot(*m_frames))
        accept();
}

} // namespace porvane
