#include "lists/list_printing.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QTextBoundaryFinder>

namespace porvane {

namespace {

// The page as the desk has always set it up: margins 1 cm at the sides, 2 cm at top and bottom, with title
// and footer 1 cm from the paper's edge; the grid printed at 90 % of its size on screen, smaller only when
// the list's columns would not fit across the page otherwise.
constexpr double kSideMm = 10;
constexpr double kEdgeMm = 10; // paper edge to title and footer
constexpr double kGridMm = 20; // paper edge to the grid, top and bottom
constexpr double kScale = 0.90;
constexpr double kGridPoints = 8.25; // the grid's font on screen
constexpr double kSmallestPoints = 5.5;
constexpr double kOneLineScale = 0.85; // the smallest font that keeps every cell on one line
constexpr double kPaddingMm = 0.6;
// Widths measured at one size and scaled to another get this margin against the rounding of font metrics.
constexpr double kRounding = 1.01;

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

QFont gridFont(double points, bool bold) {
    QFont f = footerFont();
    f.setPointSizeF(points);
    f.setBold(bold);
    return f;
}

QString capitalisedMonth(const QString& month) {
    return month.left(1) + month.mid(1).toLower();
}

// How wide a column's cells are on one line, and how narrow the column can be: as wide as its longest word
// when it may wrap, as its longest cell when it may not. A header always wraps.
struct ColumnNeed {
    double whole = 0;
    double least = 0;
};

void measure(ColumnNeed& need, const QFontMetricsF& metrics, const QString& text, bool wraps, bool header) {
    const double whole = metrics.horizontalAdvance(text);
    if (!header)
        need.whole = std::max(need.whole, whole);
    need.least =
        std::max(need.least, wraps && whole > need.least ? ListPrinting::widestPiece(metrics, text) : whole);
}

struct GridLayout {
    double points = kGridPoints * kScale;
    QList<double> widths;   // of the columns, padding included
    QList<bool> breakWords; // a column too narrow for its longest word, even in the smallest font
};

// The font shrinks until every cell fits on one line, when that leaves it at 85 % or more; otherwise until
// every column gets its least width, with a little to spare. What is left of the page goes first to the
// columns whose cells would wrap, in proportion to their widths on screen and never beyond their need, then
// to every column in proportion to its width on screen.
GridLayout layOut(const ListTable& table, int rows, double pageWidth, double padding, QPaintDevice& device) {
    const int n = table.columnCount();
    GridLayout out;
    // Text widths grow with the font's size, so one measurement serves every size tried.
    const QFontMetricsF head(gridFont(out.points, true), &device);
    const QFontMetricsF cells(gridFont(out.points, false), &device);
    QList<ColumnNeed> needs(n);
    for (int c = 0; c < n; ++c) {
        measure(needs[c], head, table.columns[c].header, true, true);
        for (int r = 0; r < rows; ++r)
            measure(needs[c], cells, table.text(r, c).trimmed(), table.columns[c].wraps, false);
    }
    double least = 0;
    double whole = 0;
    for (const ColumnNeed& need : needs) {
        least += need.least;
        whole += std::max(need.whole, need.least);
    }
    const double room = pageWidth - n * (padding + 2);
    // Every cell on one line when a font not much smaller allows it; else a little more room than the least,
    // so that long names wrap onto fewer lines.
    const double fits = least > 0 ? room / (least * kRounding) : 1.0;
    const double fitsWhole = whole > 0 ? room / (whole * kRounding) : 1.0;
    const double scale = fitsWhole >= kOneLineScale ? fitsWhole : fits * 0.95;
    out.points = std::max(kSmallestPoints, out.points * std::min(1.0, scale));
    const double ratio = out.points / (kGridPoints * kScale);

    out.widths.resize(n);
    out.breakWords.resize(n);
    QList<double> extra(n);
    double left = pageWidth;
    for (int c = 0; c < n; ++c) {
        out.widths[c] = needs[c].least * ratio * kRounding + padding + 2;
        extra[c] = std::max(0.0, needs[c].whole - needs[c].least) * ratio * kRounding;
        left -= out.widths[c];
    }
    if (ratio > fits) {
        // Even the smallest font leaves too little room: the columns that wrap give up what the others need
        // and break inside their words.
        double wrapping = 0;
        for (int c = 0; c < n; ++c)
            wrapping += table.columns[c].wraps ? out.widths[c] : 0;
        for (int c = 0; c < n && wrapping > 0; ++c) {
            if (!table.columns[c].wraps)
                continue;
            out.widths[c] = std::max(padding + 2, out.widths[c] * (1 + left / wrapping));
            out.breakWords[c] = true;
        }
        return out;
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
            out.widths[c] += give;
            extra[c] -= give;
            left -= give;
        }
    }
    double designed = 0;
    for (const ListColumn& c : table.columns)
        designed += c.width;
    for (int c = 0; c < n && left > 0 && designed > 0; ++c)
        out.widths[c] += left * table.columns[c].width / designed;
    return out;
}

} // namespace

QString ListPrinting::title(ListMode mode, const QString& siteName, const DateSelection& dates,
                            const QTime& now, const SearchMonths& searched) {
    const QString month = capitalisedMonth(dates.monthText());
    const QString& day = dates.dayText();
    const QString& year = dates.yearText();
    const auto monthOf = [](const QDate& date) {
        return capitalisedMonth(DateSelection::monthYearText(date));
    };
    switch (mode) {
    case ListMode::None:
        return tr("%1    Visitors List  -  %2 %3").arg(siteName, month, year);
    case ListMode::Day:
        return tr("%1    Visitors Expected:  %2 %3 %4").arg(siteName, day, month, year);
    case ListMode::Month:
        return tr("%1    Visitor List  -  %2 %3").arg(siteName, month, year);
    case ListMode::Search:
        if (searched.count() > 1)
            return tr("%1    Visitor List [ Part ]   %2 to %3")
                .arg(siteName, monthOf(searched.first), monthOf(searched.last));
        return tr("%1    Visitor List [ Part ]   %2")
            .arg(siteName, searched.valid() ? monthOf(searched.first) : month + u' ' + year);
    case ListMode::OnSite:
        return tr("%1    Visitor On-Site Status:  %2 %3 %4  as at  %5")
            .arg(siteName, day, month, year, now.toString(QStringLiteral("hh:mm")));
    }
    return {};
}

QString ListPrinting::footer(int page, int pageCount, const QDate& printed) {
    QString text = tr("Porvane 90     Page &P of &N    Printed: &D");
    return text.replace(QStringLiteral("&P"), QString::number(page))
        .replace(QStringLiteral("&N"), QString::number(pageCount))
        .replace(QStringLiteral("&D"), printed.toString(QStringLiteral("dd/MM/yyyy")));
}

double ListPrinting::widestPiece(const QFontMetricsF& metrics, const QString& text) {
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
    double widest = 0;
    qsizetype from = 0;
    while (breaks.toNextBoundary() != -1) {
        const qsizetype to = breaks.position();
        widest = std::max(widest, metrics.horizontalAdvance(text.mid(from, to - from).trimmed()));
        from = to;
    }
    return widest;
}

QList<QPair<int, int>> ListPrinting::pages(const QList<double>& rowHeights, double pageHeight) {
    QList<QPair<int, int>> out;
    double used = 0;
    for (int r = 0; r < rowHeights.size(); ++r) {
        if (out.isEmpty() || (used + rowHeights[r] > pageHeight && out.last().second > out.last().first)) {
            out.append({r, r});
            used = 0;
        }
        used += rowHeights[r];
        out.last().second = r + 1;
    }
    if (out.isEmpty())
        out.append({0, 0});
    return out;
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

    const GridLayout grid = layOut(table, rows, page.width(), 2 * padding, device);
    const QFont cellFont = gridFont(grid.points, false);
    const QFont headFont = gridFont(grid.points, true);
    QList<double> lefts{0};
    for (double w : grid.widths)
        lefts.append(lefts.last() + w);

    // A row is as tall as its tallest cell: one line, or the lines a wrapped text takes. Headers always wrap.
    const auto textFlags = [&](int c, bool header) {
        const int flags = int(table.columns[c].alignment | Qt::AlignVCenter);
        if (!header && !table.columns[c].wraps)
            return flags;
        return flags | (grid.breakWords[c] ? Qt::TextWrapAnywhere : Qt::TextWordWrap);
    };
    const auto rowHeight = [&](const QFont& font, bool header, auto&& textOf) {
        const QFontMetricsF metrics(font, &device);
        double lines = metrics.height();
        for (int c = 0; c < table.columnCount(); ++c) {
            if (!header && !table.columns[c].wraps)
                continue;
            const QString text = textOf(c);
            const double width = lefts[c + 1] - lefts[c] - 2 * padding;
            if (metrics.horizontalAdvance(text) > width)
                lines = std::max(
                    lines,
                    metrics.boundingRect(QRectF(0, 0, width, 1e9), textFlags(c, header), text).height());
        }
        return lines + metrics.height() * 0.5;
    };
    const double headHeight = rowHeight(headFont, true, [&](int c) { return table.columns[c].header; });
    QList<double> heights(rows);
    for (int r = 0; r < rows; ++r)
        heights[r] = rowHeight(cellFont, false, [&](int c) { return table.text(r, c).trimmed(); });
    const QList<QPair<int, int>> pageRows = pages(heights, gridBottom - gridTop - headHeight);

    const QColor lineColour(0xA0, 0xA0, 0xA0);
    auto drawRow = [&](double top, double height, const QColor& background, const QFont& font, bool header,
                       auto&& cell) {
        painter.fillRect(QRectF(0, top, page.width(), height), background);
        painter.setFont(font);
        for (int c = 0; c < table.columnCount(); ++c) {
            const QRectF box(lefts[c] + padding, top, lefts[c + 1] - lefts[c] - 2 * padding, height);
            const auto [text, colour] = cell(c);
            painter.setPen(colour);
            painter.drawText(box, textFlags(c, header), text);
        }
        painter.setPen(QPen(lineColour, 0));
        painter.drawLine(QPointF(0, top + height), QPointF(page.width(), top + height));
    };

    const int pageCount = int(pageRows.size());
    for (int p = 0; p < pageCount; ++p) {
        if (p > 0)
            device.newPage();
        painter.setPen(Qt::black);
        painter.setFont(titleFont());
        painter.drawText(QRectF(0, 0, page.width(), gridTop), int(Qt::AlignLeft | Qt::AlignTop), title);

        double top = gridTop;
        drawRow(top, headHeight, QColor(0xE0, 0xE0, 0xE0), headFont, true, [&](int c) {
            return std::pair{table.columns[c].header, QColor(Qt::black)};
        });
        top += headHeight;
        for (int r = pageRows[p].first; r < pageRows[p].second; ++r) {
            drawRow(top, heights[r], QColor::fromRgb(table.rowColour(r)), cellFont, false, [&](int c) {
                return std::pair{table.text(r, c).trimmed(),
                                 QColor::fromRgb(textColourRgb(table.textColour(r, c)))};
            });
            top += heights[r];
        }
        painter.setPen(QPen(lineColour, 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(0, gridTop, page.width(), top - gridTop));
        for (int c = 1; c < table.columnCount(); ++c)
            painter.drawLine(QPointF(lefts[c], gridTop), QPointF(lefts[c], top));

        painter.setPen(Qt::black);
        painter.setFont(footerFont());
        painter.drawText(QRectF(0, gridBottom, page.width(), page.height() - gridBottom),
                         int(Qt::AlignHCenter | Qt::AlignBottom), footer(p + 1, pageCount, printed));
    }
    painter.end();
    return {};
}

} // namespace porvane
