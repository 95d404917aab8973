#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

namespace porvane::test {

// A printed word as poppler reads it off a page, in points from the page's top left corner.
struct PdfWord {
    QString text;
    QRectF box;
};

// One page of a PDF as poppler's pdftotext reads it.
struct PdfPage {
    QString text; // laid out as printed (-layout)
    QList<PdfWord> words;

    // Whether a cell's text stands whole on the page: its words in order, each next one after the last on
    // its line or at the start of a following line under the same cell; a word that the printer broke at a
    // hyphen counts in its two parts. Nothing cut off or elided. With `oneLine` the words must stand on one
    // line.
    bool holdsWhole(const QString& cell, bool oneLine = false) const;
    // The words whose text is exactly this.
    int count(const QString& word) const;
    // Words on one line that overlap: a text running into its neighbour.
    QStringList overlapping() const;
};

// The pages of a PDF file; none when poppler cannot read it.
QList<PdfPage> readPdf(const QString& file);
// What one of poppler's tools (pdfinfo, pdffonts, pdfimages) prints about a PDF.
QString pdfTool(const QString& program, const QStringList& args);

} // namespace porvane::test
