#include "passes/pass_layout.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <memory>
#include <zint.h>

namespace porvane {

namespace {

// The card, landscape, in millimetres.
constexpr double kWidth = 101.6;
constexpr double kHeight = 76.2;
constexpr double kMargin = 4.0;
// About 0.33 mm per narrow bar: scanners read it from a 150 dpi print.
constexpr double kModule = 0.33;

const QColor kInk(0x10, 0x10, 0x10);
const QColor kAccent(0x12, 0x2f, 0x6b);

// Device pixels per millimetre; the painter draws unscaled so fonts keep their point sizes.
struct Mm {
    double perMm;
    double operator()(double mm) const { return mm * perMm; }
    QRectF rect(double x, double y, double w, double h) const {
        return {x * perMm, y * perMm, w * perMm, h * perMm};
    }
};

QFont passFont(double points, bool bold) {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setStyleHint(QFont::SansSerif);
    f.setPointSizeF(points);
    f.setBold(bold);
    return f;
}

// Text shrunk until it fits its box: on one line, or with `wrap` on two lines before it gets small; elided as
// a last resort.
void drawLine(QPainter& painter, const QRectF& box, const QString& text, double points, bool bold,
              const QColor& colour, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter,
              bool wrap = false) {
    if (text.isEmpty())
        return;
    QFont font = passFont(points, bold);
    painter.setPen(colour);
    auto fitsOneLine = [&](double p) {
        font.setPointSizeF(p);
        return QFontMetricsF(font, painter.device()).horizontalAdvance(text) <= box.width();
    };
    auto fitsWrapped = [&](double p) {
        font.setPointSizeF(p);
        const QRectF need =
            QFontMetricsF(font, painter.device()).boundingRect(box, int(align) | Qt::TextWordWrap, text);
        return need.width() <= box.width() && need.height() <= box.height();
    };
    const double smallest = points * 0.6;
    for (double p = points; p >= (wrap ? points * 0.75 : smallest); p -= 0.5)
        if (fitsOneLine(p)) {
            painter.setFont(font);
            painter.drawText(box, int(align), text);
            return;
        }
    if (wrap)
        for (double p = points * 0.75; p >= smallest; p -= 0.5)
            if (fitsWrapped(p)) {
                painter.setFont(font);
                painter.drawText(box, int(align) | Qt::TextWordWrap, text);
                return;
            }
    font.setPointSizeF(smallest);
    painter.setFont(font);
    painter.drawText(box, int(align),
                     QFontMetricsF(font, painter.device()).elidedText(text, Qt::ElideRight, box.width()));
}

// An image kept in proportion inside the box; a missing or unreadable file leaves a neutral box.
void drawImage(QPainter& painter, const QRectF& box, const QString& file, bool frame) {
    const QImage image(file);
    if (image.isNull()) {
        painter.fillRect(box, QColor(0xe6, 0xe6, 0xe6));
        painter.setPen(QPen(QColor(0xa0, 0xa0, 0xa0), 0));
        painter.drawRect(box);
        return;
    }
    QSizeF size = image.size();
    size.scale(box.size(), Qt::KeepAspectRatio);
    const QRectF target(box.center().x() - size.width() / 2, box.center().y() - size.height() / 2,
                        size.width(), size.height());
    painter.drawImage(target, image);
    if (frame) {
        painter.setPen(QPen(kInk, 0));
        painter.drawRect(target);
    }
}

struct SymbolDeleter {
    void operator()(zint_symbol* s) const { ZBarcode_Delete(s); }
};

} // namespace

QPageLayout PassLayout::pageLayout() {
    const QPageSize card(QSizeF(kHeight, kWidth), QPageSize::Millimeter,
                         QStringLiteral("Visitor pass 4 x 3 in"), QPageSize::ExactMatch);
    return QPageLayout(card, QPageLayout::Landscape, QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
}

QString PassLayout::print(QPagedPaintDevice& device, const PassContent& content) {
    if (!device.setPageLayout(pageLayout()))
        return QCoreApplication::translate("PassLayout", "The printer cannot take the pass size");
    QPainter painter;
    if (!painter.begin(&device))
        return QCoreApplication::translate("PassLayout", "The printer could not be started");
    draw(painter, content);
    if (!painter.end())
        return QCoreApplication::translate("PassLayout", "The pass could not be printed");
    return {};
}

bool PassLayout::drawCode39(QPainter& painter, const QString& text, const QRectF& box, double module,
                            QString* error) {
    std::unique_ptr<zint_symbol, SymbolDeleter> symbol(ZBarcode_Create());
    if (!symbol)
        return false;
    symbol->symbology = BARCODE_CODE39;
    symbol->show_hrt = 0;
    // zint adds the start and stop characters itself.
    const QByteArray data = text.toLatin1();
    int rc = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(data.constData()),
                             int(data.size()));
    if (rc < ZINT_ERROR)
        rc = ZBarcode_Buffer_Vector(symbol.get(), 0);
    if (rc >= ZINT_ERROR || !symbol->vector || symbol->width <= 0) {
        if (error)
            *error = QString::fromLatin1(symbol->errtxt);
        return false;
    }
    // Scale from the bars' own extent (symbol->width modules), whatever zint's vector unit is.
    float left = 1e9f;
    float right = -1e9f;
    for (const zint_vector_rect* r = symbol->vector->rectangles; r; r = r->next) {
        left = std::min(left, r->x);
        right = std::max(right, r->x + r->width);
    }
    if (right <= left)
        return false;
    const double scale = module * symbol->width / double(right - left);
    const double x0 = box.center().x() - module * symbol->width / 2;
    for (const zint_vector_rect* r = symbol->vector->rectangles; r; r = r->next)
        painter.fillRect(QRectF(x0 + (r->x - left) * scale, box.top(), r->width * scale, box.height()),
                         Qt::black);
    return true;
}

void PassLayout::draw(QPainter& painter, const PassContent& c) {
    const Mm mm{painter.device()->logicalDpiX() / 25.4};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter.fillRect(mm.rect(0, 0, kWidth, kHeight), Qt::white);

    // Header: logo, site name and a rule.
    double nameLeft = kMargin;
    if (!c.logoFile.isEmpty()) {
        drawImage(painter, mm.rect(kMargin, 2.5, 16, 11), c.logoFile, false);
        nameLeft = kMargin + 18;
    }
    drawLine(painter, mm.rect(nameLeft, 2, kWidth - kMargin - nameLeft, 12), c.firmName, 15, true, kAccent,
             c.logoFile.isEmpty() ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter, true);
    painter.fillRect(mm.rect(kMargin, 14.5, kWidth - 2 * kMargin, 0.8), kAccent);

    // Photo, 3:4 portrait.
    drawImage(painter, mm.rect(kMargin, 18, 27, 36), c.photoFile, true);

    // The visitor, read at arm's length: name large and bold.
    const double left = kMargin + 27 + 4;
    const double width = kWidth - kMargin - left;
    drawLine(painter, mm.rect(left, 17, width, 10.5), c.name, 17, true, kInk,
             Qt::AlignLeft | Qt::AlignVCenter, true);
    drawLine(painter, mm.rect(left, 27.5, width, 7), c.organisation, 11, false, kInk,
             Qt::AlignLeft | Qt::AlignVCenter, true);
    drawLine(painter, mm.rect(left, 34.5, width, 4.5), c.department, 10, false, kInk);
    drawLine(painter, mm.rect(left, 39, width, 4), c.regNoLine, 9, false, kInk);
    drawLine(painter, mm.rect(left, 43, width, 5.5), c.validText, 11, true, kAccent);
    if (!c.date.isEmpty())
        drawLine(painter, mm.rect(left, 48.5, width, 4), QStringLiteral("Start: ") + c.date, 8.5, false,
                 kInk);
    if (!c.time.isEmpty())
        drawLine(painter, mm.rect(left, 52.5, width, 4), QStringLiteral("Printed: ") + c.time, 8.5, false,
                 kInk);

    // Bar code, centred, with its quiet zones inside the card; switched off, the card carries none at all.
    if (c.barCode) {
        const double barTop = 57.5;
        const double barHeight = 10.5;
        const QRectF bars = mm.rect(kMargin, barTop, kWidth - 2 * kMargin, barHeight);
        if (drawCode39(painter, c.regNo, bars, mm(kModule)))
            drawLine(painter, mm.rect(kMargin, barTop + barHeight + 0.3, kWidth - 2 * kMargin, 4),
                     u'*' + c.regNo + u'*', 9, false, kInk, Qt::AlignCenter);
        else
            painter.fillRect(mm.rect(kMargin + 12, barTop, kWidth - 2 * (kMargin + 12), barHeight),
                             QColor(0xe6, 0xe6, 0xe6));
    }
    painter.restore();
}

} // namespace porvane
