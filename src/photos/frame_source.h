#pragma once

#include <QImage>
#include <QString>

namespace porvane {

// Where a snapshot's picture comes from: the camera window's live camera, or frames handed in by tests.
class FrameSource {
public:
    virtual ~FrameSource() = default;
    // The current frame; a null image when there is none, with errorText() saying why.
    virtual QImage grabFrame() = 0;
    virtual QString errorText() const = 0;
};

// A source that hands out one fixed frame (or none).
class StillFrameSource final : public FrameSource {
public:
    explicit StillFrameSource(QImage frame, QString error = {})
        : m_frame(std::move(frame))
        , m_error(std::move(error)) {}
    QImage grabFrame() override { return m_frame; }
    QString errorText() const override { return m_error; }

private:
    QImage m_frame;
    QString m_error;
};

} // namespace porvane
