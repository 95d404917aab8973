#include "admin/print_target.h"

#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>

namespace porvane::admin {

QString printOrWritePdf(const QString& pdf, const QString& documentName, bool fullPage,
                        const std::function<QString(QPagedPaintDevice&)>& draw) {
    if (!pdf.isEmpty()) {
        QPdfWriter writer(pdf);
        writer.setResolution(600);
        writer.setTitle(documentName);
        return draw(writer);
    }
    if (QPrinterInfo::defaultPrinter().isNull())
        return QStringLiteral("No printer is installed");
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(fullPage);
    printer.setDocName(documentName);
    return draw(printer);
}

} // namespace porvane::admin
