#pragma once

#include "app/prompter.h"

#include <QCoreApplication>
#include <QString>
#include <functional>

class QPagedPaintDevice;
class QWidget;

namespace porvane {

// How the desk prints: with a printer installed, lists go through the print preview and passes straight to
// the default printer; with none, the desk offers to save the document as a PDF file in the user's
// documents folder instead, and says where it went.
class PrintDialog {
    Q_DECLARE_TR_FUNCTIONS(PrintDialog)

public:
    struct Document {
        QString jobName;      // the print job: "Visitor pass 261114090000"
        QString pdfName;      // the file it is saved as without a printer: "Pass 261114090000.pdf"
        QString what;         // in the question and the notice: "the pass"
        bool preview = false; // through the print preview; else straight to the default printer, full page
        // Draws the document on the device, setting its page; an error text, empty when drawn.
        std::function<QString(QPagedPaintDevice&)> draw;
    };

    // Empty when printed or saved, else why not ("No printer is installed" when the offer was declined).
    static QString print(Prompter& prompter, QWidget* parent, const Document& document);
    // Where a document is saved without a printer: in the user's documents folder.
    static QString pdfPath(const QString& pdfName);
};

} // namespace porvane
