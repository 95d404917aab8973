#pragma once

#include <QFile>
#include <QProcess>
#include <QString>

namespace porvane::test {

// What a bar code reader finds on the first page of a PDF, rendered at 300 dpi into <pdf>.png. The picture
// is also copied to the file PORVANE_KEEP_PASS names, for a look by eye.
inline QString scannedBarCode(const QString& pdf) {
    const auto run = [](const QString& program, const QStringList& args) {
        QProcess p;
        p.start(program, args);
        return p.waitForFinished(60000) ? QString::fromUtf8(p.readAllStandardOutput()).trimmed()
                                        : QStringLiteral("<timeout>");
    };
    run(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("300"), QStringLiteral("-png"),
                                     QStringLiteral("-singlefile"), pdf, pdf});
    const QString png = pdf + QStringLiteral(".png");
    if (const QString keep = qEnvironmentVariable("PORVANE_KEEP_PASS"); !keep.isEmpty()) {
        QFile::remove(keep);
        QFile::copy(png, keep);
    }
    return run(QStringLiteral("zbarimg"), {QStringLiteral("-q"), png});
}

} // namespace porvane::test
