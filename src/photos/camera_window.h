#pragma once

#include "photos/camera_capture.h"

#include <QDialog>
#include <memory>

class QCamera;
class QCheckBox;
class QComboBox;
class QLabel;
class QMediaCaptureSession;
class QPushButton;
class QVideoWidget;
class QWidget;

namespace porvane {

// frmCapTest: a live camera preview and the SNAP button that stores the visitor's photo. The snapshot itself
// is CameraCapture's; this window only supplies the camera's latest frame.
class CameraWindow final : public QDialog {
    Q_OBJECT

public:
    explicit CameraWindow(AppState& state, QWidget* parent = nullptr);
    ~CameraWindow() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void chooseCamera(int index);
    void snap();
    void setSetupShown(bool shown);

    AppState& m_state;
    CameraCapture m_capture;
    std::unique_ptr<QMediaCaptureSession> m_session;
    std::unique_ptr<QCamera> m_camera;
    std::unique_ptr<FrameSource> m_frames;
    int m_cameraIndex = -1;
    QVideoWidget* m_preview;
    QComboBox* m_driver;
    QLabel* m_statusCode;
    QLabel* m_statusString;
    QWidget* m_setup;
};

} // namespace porvane
