#pragma once

#include <QString>
#include <functional>

class QPagedPaintDevice;

namespace porvane::admin {

// Draws a document on the default printer, or into a PDF file when `pdf` names one; `fullPage` lets the
// drawing reach the paper's edges, else it keeps the page layout's margins. An error text, empty when done.
QString printOrWritePdf(const QString& pdf, const QString& documentName, bool fullPage,
                        const std::function<QString(QPagedPaintDevice&)>& draw);

} // namespace porvane::admin
