#pragma once

#include "app/app_state.h"
#include "photos/frame_source.h"

#include <QCoreApplication>
#include <QImage>

namespace porvane {

// Centre-crops a camera frame to a 3:4 portrait and scales it so that its 24-bit bitmap stays within the
// photo size limit (150 x 200 pixels, 90454 bytes).
QImage fitSnapshot(const QImage& frame);

// The camera window's snapshot: takes a frame and writes it as the current booking's photo (replacing an
// older one of the same name).
class CameraCapture {
    Q_DECLARE_TR_FUNCTIONS(CameraCapture)

public:
    explicit CameraCapture(AppState& state)
        : m_state(state) {}

    // True when the photo was written; failures are shown through the prompter. A read-only desk writes
    // nothing.
    bool snapshot(FrameSource& source);

private:
    AppState& m_state;
};

} // namespace porvane
