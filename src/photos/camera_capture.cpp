#include "photos/camera_capture.h"

#include "photos/photo_files.h"
#include "store/photo_paths.h"

#include <QBuffer>

namespace porvane {

QImage fitSnapshot(const QImage& frame) {
    if (frame.isNull())
        return {};
    // The largest 3:4 portrait in the middle of the frame.
    int w = frame.width();
    int h = frame.height();
    if (w * 4 > h * 3)
        w = h * 3 / 4;
    else
        h = w * 4 / 3;
    const QImage cropped = frame.copy((frame.width() - w) / 2, (frame.height() - h) / 2, w, h);
    return cropped.scaled(150, 200, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB888);
}

bool CameraCapture::snapshot(FrameSource& source) {
    if (m_state.settings.ReadOnlyMode())
        return false;
    const QString title = QStringLiteral("Porvane 90");
    const CurrentRecord& r = m_state.record;
    const QString path =
        photoPath(m_state.dataPath(), r[Field::RegNo], r[Field::FirstName], r[Field::LastName]);

    const bool fit = m_state.settings.ckRawCamPhoto != u"1";
    const QImage frame = source.grabFrame();
    QByteArray bytes;
    if (!frame.isNull()) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        (fit ? fitSnapshot(frame) : frame.convertToFormat(QImage::Format_RGB888)).save(&buffer, "BMP");
    }
    if (bytes.isEmpty()) {
        const QString why =
            source.errorText().isEmpty() ? tr("No picture came from the camera") : source.errorText();
        m_state.prompter.tell(title, why, Icon::Information);
        return false;
    }
    if (const FileError e = replacePhotoFile(m_state.dataPath(), m_state.prompter, path, bytes)) {
        m_state.prompter.tell(title, e.text, Icon::Information);
        return false;
    }
    if (bytes.size() > kPhotoSizeLimit)
        m_state.prompter.tell(title, tr("Video Setup Warning: Resolution settings are too high for Porvane"));
    m_state.pause.wait(0.1);
    m_state.record[Field::PhotoOnFile] = QStringLiteral("1");
    return true;
}

} // namespace porvane
