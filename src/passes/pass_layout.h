#pragma once

#include <QPageLayout>
#include <QString>

class QPainter;
class QPagedPaintDevice;
class QRectF;

namespace porvane {

// What a printed pass shows, each text as it is printed.
struct PassContent {
    QString firmName; // the site's own name, upper-cased
    QString name;
    QString organisation;
    QString department;
    QString regNo;
    QString regNoLine; // "No. " + RegNo
    QString validText;
    QString date;
    QString time;
    QString photoFile;
    QString logoFile;     // empty: no logo
    bool barCode = false; // the Code 39 bars of RegNo with "*" + RegNo + "*" under them
};

// Draws a visitor pass: a 4 x 3 inch landscape card, the size of the common badge-holder insert.
class PassLayout {
public:
    static QPageLayout pageLayout();
    // Sets the device's page to the pass card and draws one pass; an error text, empty on success.
    static QString print(QPagedPaintDevice& device, const PassContent& content);
    // Draws the pass with its top left corner at the painter's origin, unscaled device units.
    static void draw(QPainter& painter, const PassContent& content);
    // Draws text as Code 39 bars (module = narrow bar width, device units) centred across box; false when the
    // text cannot be encoded.
    static bool drawCode39(QPainter& painter, const QString& text, const QRectF& box, double module,
                           QString* error = nullptr);
};

} // namespace porvane
