#include "app/print_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

namespace porvane {

namespace {

QString saveAsPdf(Prompter& prompter, const PrintDialog::Document& document) {
    const QString file = PrintDialog::pdfPath(document.pdfName);
    const QString shown = QDir::toNativeSeparators(file);
    if (prompter.ask({QStringLiteral("Porvane 90"),
                      PrintDialog::tr("No printer is installed.") + QStringLiteral("\r\n") +
                          PrintDialog::tr("Save %1 as a PDF file instead, as %2?").arg(document.what, shown),
                      Buttons::YesNo, Icon::Question}) != Answer::Yes)
        return PrintDialog::tr("No printer is installed");
    QDir().mkpath(QFileInfo(file).absolutePath());
    QPdfWriter writer(file);
    writer.setResolution(300);
    writer.setTitle(document.jobName);
    const QString error = document.draw(writer);
    if (error.isEmpty())
        prompter.tell(QStringLiteral("Porvane 90"),
                      PrintDialog::tr("%1 was saved as %2")
                          .arg(document.what.left(1).toUpper() + document.what.mid(1), shown),
                      Icon::Information);
    return error;
}

} // namespace

QString PrintDialog::pdfPath(const QString& pdfName) {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(pdfName);
}

QString PrintDialog::print(Prompter& prompter, QWidget* parent, const Document& document) {
    if (QPrinterInfo::defaultPrinter().isNull())
        return saveAsPdf(prompter, document);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(document.jobName);
    if (!document.preview) {
        printer.setFullPage(true);
        return document.draw(printer);
    }
    QPrintPreviewDialog preview(&printer, parent);
    preview.setWindowTitle(tr("Print preview"));
    preview.resize(1000, 700);
    QString failure;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&](QPrinter* p) { failure = document.draw(*p); });
    preview.exec();
    return failure;
}

} // namespace porvane
