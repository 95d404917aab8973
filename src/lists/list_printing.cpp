#include "lists/list_printing.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>

namespace porvane {

namespace {

// The page as the desk has always set it up: margins 1 cm at the sides, 2 cm at top and bottom, with title
// and footer 1 cm from the paper's edge; the grid printed at 90 % of its size on screen.
constexpr double kSideMm = 10;
constexpr double kEdgeMm = 10; // paper edge to title and footer
constexpr double kGridMm = 20; // paper edge to the grid, top and bottom
constexpr double kScale = 0.90;
constexpr double kGridPoints = 8.25; // the grid's font on screen
constexpr double kPaddingMm = 0.8;

QFont titleFont() {
    QFont f;
    f.setFamilies({QStringLiteral("Verdana"), QStringLiteral("DejaVu Sans")});
    f.setStyleHint(QFont::SansSerif);
    f.setPointSizeF(10);
    f.setBold(false);
    return f;
}

QFont footerFont() {
    QFont f;
    f.setFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans")});
    f.setStyleHint(QFont::SansSerif);
    f.setPointSizeF(8);
    return f;
}

QFont gridFont(bool bold) {
    QFont f = footerFont();
    f.setPointSizeF(kGridPoints * kScale);
    f.setBold(bold);
    return f;
}

QString capitalisedMonth(const QString& month) {
    return month.left(1) + month.mid(1).toLower();
}

// Every column gets room for its header. The rest of the width goes to the columns whose cells need more, in
// proportion to their widths on screen and never beyond their need; cells that still do not fit are cut
// short. Width left over after that is shared in proportion to the widths on screen.
QList<double> columnWidths(const ListTable& table, int rows, double pageWidth, const QFont& headFont,
                           const QFont& cellFont, double padding, QPaintDevice& device) {
    const int n = table.columnCount();
    const QFontMetricsF head(headFont, &device);
    const QFontMetricsF cells(cellFont, &device);
    QList<double> widths(n);
    QList<double> extra(n);
    double left = pageWidth;
    for (int c = 0; c < n; ++c) {
        widths[c] = std::ceil(head.horizontalAdvance(table.columns[c].header)) + padding + 2;
        double w = 0;
        for (int r = 0; r < rows; ++r)
            w = std::max(w, std::ceil(cells.horizontalAdvance(table.text(r, c).trimmed())) + padding + 2);
        extra[c] = std::max(0.0, w - widths[c]);
        left -= widths[c];
    }
    for (bool wanting = true; wanting && left > 0.5;) {
        double over = 0;
        for (int c = 0; c < n; ++c)
            if (extra[c] > 0)
                over += std::max(1, table.columns[c].width);
        wanting = over > 0;
        const double available = left;
        for (int c = 0; c < n && wanting; ++c) {
            if (extra[c] <= 0)
                continue;
            const double give = std::min(extra[c], available * std::max(1, table.columns[c].width) / over);
            widths[c] += give;
            extra[c] -= give;
            left -= give;
        }
    }
    double designed = 0;
    for (const ListColumn& c : table.columns)
        designed += c.width;
    for (int c = 0; c < n && left > 0 && designed > 0; ++c)
        widths[c] += left * table.columns[c].width / designed;
    return widths;
}

} // namespace

QString ListPrinting::title(ListMode mode, const QString& siteName, const DateSelection& dates,
                            const QTime& now) {
    const QString month = capitalisedMonth(dates.monthText());
    const QString& day = dates.dayText();
    const QString& year = dates.yearText();
    switch (mode) {
    case ListMode::None:
        return siteName + tr("    Visitors List  -  ") + month + u' ' + year;
    case ListMode::Day:
        return siteName + tr("    Visitors Expected:  ") + day + u' ' + month + u' ' + year;
    case ListMode::Month:
        return siteName + tr("    Visitor List  -  ") + month + u' ' + year;
    case ListMode::Search:
        return siteName + tr("    Visitor List [ Part ]   ") + month + u' ' + year;
    case ListMode::OnSite:
        return siteName + tr("    Visitor On-Site Status:  ") + day + u' ' + month + u' ' + year +
               tr("  as at  ") + now.toString(QStringLiteral("hh:mm"));
    }
    return {};
}

QString ListPrinting::footer(int page, int pageCount, const QDate& printed) {
    QString text = tr("Porvane 90     Page &P of &N    Printed: &D");
    return text.replace(QStringLiteral("&P"), QString::number(page))
        .replace(QStringLiteral("&N"), QString::number(pageCount))
        .replace(QStringLiteral("&D"), printed.toString(QStringLiteral("dd/MM/yyyy")));
}

QString ListPrinting::print(QPagedPaintDevice& device, const ListTable& table, int rows, const QString& title,
                            const QDate& printed) {
    rows = std::clamp(rows, 0, table.listedCount());
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                     QMarginsF(kSideMm, kEdgeMm, kSideMm, kEdgeMm), QPageLayout::Millimeter));
    QPainter painter;
    if (!painter.begin(&device))
        return tr("The printer could not be started");

    const double dotsPerMm = device.logicalDpiY() / 25.4;
    const QRectF page(0, 0, device.width(), device.height()); // inside the margins
    const double gridTop = (kGridMm - kEdgeMm) * dotsPerMm;
    const double gridBottom = page.height() - (kGridMm - kEdgeMm) * dotsPerMm;
    const double padding = kPaddingMm * dotsPerMm;

    const QFont cellFont = gridFont(false);
    const QFont headFont = gridFont(true);
    const double rowHeight = QFontMetricsF(cellFont, &device).height() * 1.5;
    const int rowsPerPage = std::max(1, int((gridBottom - gridTop) / rowHeight) - 1);
    const int pageCount = std::max(1, (rows + rowsPerPage - 1) / rowsPerPage);

    const QList<double> widths =
        columnWidths(table, rows, page.width(), headFont, cellFont, 2 * padding, device);
    QList<double> lefts{0};
    for (double w : widths)
        lefts.append(lefts.last() + w);

    const QColor lineColour(0xA0, 0xA0, 0xA0);
    auto drawRow = [&](double top, const QColor& background, const QFont& font, auto&& cell) {
        painter.fillRect(QRectF(0, top, page.width(), rowHeight), background);
        painter.setFont(font);
        const QFontMetricsF metrics(font, &device);
        for (int c = 0; c < table.columnCount(); ++c) {
            const QRectF box(lefts[c] + padding, top, lefts[c + 1] - lefts[c] - 2 * padding, rowHeight);
            const auto [text, colour] = cell(c);
            painter.setPen(colour);
            painter.drawText(box, int(table.columns[c].alignment | Qt::AlignVCenter),
                             metrics.elidedText(text, Qt::ElideRight, box.width()));
        }
        painter.setPen(QPen(lineColour, 0));
        painter.drawLine(QPointF(0, top + rowHeight), QPointF(page.width(), top + rowHeight));
    };

    for (int p = 0; p < pageCount; ++p) {
        if (p > 0)
            device.newPage();
        painter.setPen(Qt::black);
        painter.setFont(titleFont());
        painter.drawText(QRectF(0, 0, page.width(), gridTop), int(Qt::AlignLeft | Qt::AlignTop), title);

        double top = gridTop;
        drawRow(top, QColor(0xE0, 0xE0, 0xE0), headFont, [&](int c) {
            return std::pair{table.columns[c].header, QColor(Qt::black)};
        });
        const int first = p * rowsPerPage;
        const int last = std::min(rows, first + rowsPerPage);
        for (int r = first; r < last; ++r) {
            top += rowHeight;
            drawRow(top, QColor::fromRgb(table.rowColour(r)), cellFont, [&](int c) {
                return std::pair{table.text(r, c).trimmed(),
                                 QColor::fromRgb(textColourRgb(table.textColour(r, c)))};
            });
        }
        painter.setPen(QPen(lineColour, 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(0, gridTop, page.width(), top + rowHeight - gridTop));
        for (int c = 1; c < table.columnCount(); ++c)
            painter.drawLine(QPointF(lefts[c], gridTop), QPointF(lefts[c], top + rowHeight));

        painter.setPen(Qt::black);
        painter.setFont(footerFont());
        painter.drawText(QRectF(0, gridBottom, page.width(), page.height() - gridBottom),
                         int(Qt::AlignHCenter | Qt::AlignBottom), footer(p + 1, pageCount, printed));
    }
    painter.end();
    return {};
}

} // namespace porvane
