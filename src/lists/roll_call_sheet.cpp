#include "lists/roll_call_sheet.h"

#include "lists/list_printing.h"
#include "lists/on_site_list.h"
#include "lists/on_site_rows.h"
#include "store/photo_paths.h"

#include <QCollator>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <array>

namespace porvane {

namespace {

// Millimetres. The page holds about twenty visitors: a photo small enough for that, names in 11 point bold
// and the rest in 10 point, which a marshal reads on a clipboard at arm's length.
constexpr double kSideMm = 12;
constexpr double kEdgeMm = 10;
constexpr double kHeadingMm = 14;
constexpr double kFooterMm = 6;
constexpr double kPhotoWidthMm = 8.25;
constexpr double kPhotoHeightMm = 11;
constexpr double kPaddingMm = 1;
constexpr double kBlankLineMm = 10;
constexpr double kTickMm = 6;

enum Column { Number, Photo, Name, Organisation, Visiting, Arrived, CarReg, Tick, kColumnCount };

QFont sheetFont(double points, bool bold = false) {
    QFont f;
    f.setFamilies(
        {QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans")});
    f.setStyleHint(QFont::SansSerif);
    f.setPointSizeF(points);
    f.setBold(bold);
    return f;
}

// Line-break flags for a text in a box of the given width: at blanks and hyphens, or anywhere when one word
// is wider than the box.
int wrapFlags(const QFontMetricsF& metrics, const QString& text, double width) {
    return ListPrinting::widestPiece(metrics, text) > width ? Qt::TextWrapAnywhere : Qt::TextWordWrap;
}

// A photo kept in proportion inside the box, scaled down to the size it prints at; none on file leaves the
// box empty.
void drawPhoto(QPainter& painter, const QRectF& box, const QString& file) {
    QImage image;
    if (file.isEmpty() || !image.load(file))
        return;
    const QSize fitted = image.size().scaled(box.size().toSize(), Qt::KeepAspectRatio);
    if (fitted.width() < image.width())
        image = image.scaled(fitted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    const QRectF target(box.center().x() - fitted.width() / 2.0, box.center().y() - fitted.height() / 2.0,
                        fitted.width(), fitted.height());
    painter.drawImage(target, image);
}

} // namespace

QList<RollCallEntry> RollCallSheet::entries(const ListTable& onSiteList, const QString& dataPath) {
    struct Listed {
        QString last;
        QString first;
        RollCallEntry entry;
    };
    QList<Listed> listed;
    for (int row = 0; row < onSiteList.listedCount(); ++row) {
        if (OnSiteRows::rowVisit(onSiteList, row) != OnSiteRows::Visit::OnSite)
            continue;
        Listed l;
        l.first = onSiteList.text(row, kOnSiteFirstName).trimmed();
        l.last = onSiteList.text(row, kOnSiteLastName).trimmed();
        RollCallEntry& e = l.entry;
        e.name = l.last.isEmpty() || l.first.isEmpty() ? l.last + l.first
                                                       : l.last + QStringLiteral(", ") + l.first;
        e.organisation = onSiteList.text(row, kOnSiteOrganisation).trimmed();
        e.visiting = onSiteList.text(row, kOnSiteReportsTo).trimmed();
        e.arrived = onSiteList.text(row, kOnSiteArrived).trimmed();
        e.carReg = onSiteList.text(row, kOnSiteCarReg).trimmed();
        const QString photo =
            photoPath(dataPath, onSiteList.text(row, kOnSiteRegNo).trimmed(), l.first, l.last);
        if (QFileInfo(photo).isFile())
            e.photoFile = photo;
        listed.append(std::move(l));
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(listed.begin(), listed.end(), [&](const Listed& a, const Listed& b) {
        if (const int c = collator.compare(a.last, b.last))
            return c < 0;
        if (const int c = collator.compare(a.first, b.first))
            return c < 0;
        return a.entry.arrived < b.entry.arrived;
    });
    QList<RollCallEntry> out;
    out.reserve(listed.size());
    for (Listed& l : listed)
        out.append(std::move(l.entry));
    return out;
}

QString RollCallSheet::heading(const QString& siteName, qsizetype count, const QDateTime& made) {
    return tr("%1    Roll call:  %2 on site  at %3 on %4")
        .arg(siteName, QString::number(count), made.toString(QStringLiteral("hh:mm")),
             made.toString(QStringLiteral("dddd d MMMM yyyy")));
}

QString RollCallSheet::print(QPagedPaintDevice& device, const QList<RollCallEntry>& entries,
                             const QString& siteName, const QDateTime& made) {
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(kSideMm, kEdgeMm, kSideMm, kEdgeMm), QPageLayout::Millimeter));
    QPainter painter;
    if (!painter.begin(&device))
        return tr("The printer could not be started");

    const double mm = device.logicalDpiY() / 25.4;
    const QRectF page(0, 0, device.width(), device.height()); // inside the margins
    const double padding = kPaddingMm * mm;
    const QFont headingFont = sheetFont(12, true);
    const QFont headFont = sheetFont(9, true);
    const QFont nameFont = sheetFont(11, true);
    const QFont textFont = sheetFont(10);
    const QFont footerFont = sheetFont(8);
    const QFontMetricsF head(headFont, &device);
    const QFontMetricsF name(nameFont, &device);
    const QFontMetricsF text(textFont, &device);

    const std::array<QString, kColumnCount> headers{tr("No."),          QString(),      tr("Name"),
                                                    tr("Organisation"), tr("Visiting"), tr("Arrived"),
                                                    tr("Car reg"),      tr("Here")};
    const qsizetype lines = entries.size() + kBlankLines;
    // The columns that never wrap are as wide as their widest text; the rest of the width goes to name,
    // organisation and the person visited.
    std::array<double, kColumnCount> widths{};
    widths[Number] =
        std::max(head.horizontalAdvance(headers[Number]), text.horizontalAdvance(QString::number(lines)));
    widths[Photo] = kPhotoWidthMm * mm;
    widths[Arrived] =
        std::max(head.horizontalAdvance(headers[Arrived]), text.horizontalAdvance(QStringLiteral("00:00")));
    widths[CarReg] = head.horizontalAdvance(headers[CarReg]);
    for (const RollCallEntry& e : entries)
        widths[CarReg] = std::max(widths[CarReg], text.horizontalAdvance(e.carReg));
    widths[Tick] = std::max(head.horizontalAdvance(headers[Tick]), kTickMm * mm);
    double fixed = 0;
    for (double& w : widths) {
        w += w > 0 ? 2 * padding : 0;
        fixed += w;
    }
    const double shared = std::max(0.0, page.width() - fixed);
    widths[Name] = shared * 0.38;
    widths[Organisation] = shared * 0.34;
    widths[Visiting] = shared * 0.28;
    std::array<double, kColumnCount + 1> lefts{};
    for (int c = 0; c < kColumnCount; ++c)
        lefts[std::size_t(c + 1)] = lefts[std::size_t(c)] + widths[std::size_t(c)];
    const auto cellBox = [&](int c, double top, double height) {
        return QRectF(lefts[std::size_t(c)] + padding, top, widths[std::size_t(c)] - 2 * padding, height);
    };

    // A visitor's row is as tall as the photo, or as the most lines a wrapped text takes.
    const auto wrappedHeight = [&](const QFontMetricsF& metrics, int c, const QString& s) {
        const double width = widths[std::size_t(c)] - 2 * padding;
        return metrics.boundingRect(QRectF(0, 0, width, 1e9), wrapFlags(metrics, s, width), s).height();
    };
    const double headHeight = head.height() * 1.6;
    QList<double> heights;
    for (const RollCallEntry& e : entries)
        heights.append(std::max({kPhotoHeightMm * mm, wrappedHeight(name, Name, e.name),
                                 wrappedHeight(text, Organisation, e.organisation),
                                 wrappedHeight(text, Visiting, e.visiting)}) +
                       2 * padding);
    // The blank lines and their caption stay together, after the last visitor.
    const QString blankCaption =
        tr("Not on this list: write in name, organisation, whom visiting and arrival");
    const double captionHeight = text.height() * 1.6;
    heights.append(captionHeight + kBlankLines * kBlankLineMm * mm);

    const double gridTop = kHeadingMm * mm;
    const double gridBottom = page.height() - kFooterMm * mm;
    const QList<QPair<int, int>> pageRows = ListPrinting::pages(heights, gridBottom - gridTop - headHeight);
    const int pageCount = int(pageRows.size());
    const QString title = heading(siteName, entries.size(), made);
    const QColor lineColour(0x90, 0x90, 0x90);
    const QColor ink(0x10, 0x10, 0x10);

    const auto drawTick = [&](double top, double height) {
        const double side = kTickMm * mm;
        const QRectF cell = cellBox(Tick, top, height);
        painter.setPen(QPen(ink, 0.3 * mm));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(cell.center().x() - side / 2, cell.center().y() - side / 2, side, side));
    };
    const auto drawNumber = [&](double top, double height, qsizetype number) {
        painter.setFont(textFont);
        painter.setPen(ink);
        painter.drawText(cellBox(Number, top, height), int(Qt::AlignRight | Qt::AlignVCenter),
                         QString::number(number));
    };
    const auto drawRules = [&](double top, double bottom) {
        painter.setPen(QPen(lineColour, 0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(0, top, page.width(), bottom - top));
        for (int c = 1; c < kColumnCount; ++c)
            painter.drawLine(QPointF(lefts[std::size_t(c)], top), QPointF(lefts[std::size_t(c)], bottom));
    };

    for (int p = 0; p < pageCount; ++p) {
        if (p > 0)
            device.newPage();
        painter.setPen(ink);
        painter.setFont(headingFont);
        painter.drawText(QRectF(0, 0, page.width(), gridTop - mm),
                         int(Qt::AlignLeft | Qt::AlignTop) | Qt::TextWordWrap, title);

        double top = gridTop;
        painter.fillRect(QRectF(0, top, page.width(), headHeight), QColor(0xE0, 0xE0, 0xE0));
        painter.setFont(headFont);
        for (int c = 0; c < kColumnCount; ++c)
            painter.drawText(cellBox(c, top, headHeight),
                             int((c == Number    ? Qt::AlignRight
                                  : c >= Arrived ? Qt::AlignHCenter
                                                 : Qt::AlignLeft) |
                                 Qt::AlignVCenter),
                             headers[std::size_t(c)]);
        top += headHeight;

        for (int r = pageRows[p].first; r < pageRows[p].second; ++r) {
            const double height = heights[r];
            if (r == entries.size()) {
                // The caption, then the numbered blank lines, ruled like the rows above.
                drawRules(gridTop, top);
                painter.setFont(textFont);
                painter.setPen(ink);
                painter.drawText(QRectF(0, top, page.width(), captionHeight),
                                 int(Qt::AlignLeft | Qt::AlignBottom), blankCaption);
                top += captionHeight;
                for (int b = 0; b < kBlankLines; ++b) {
                    drawNumber(top, kBlankLineMm * mm, entries.size() + b + 1);
                    drawTick(top, kBlankLineMm * mm);
                    top += kBlankLineMm * mm;
                }
                drawRules(top - kBlankLines * kBlankLineMm * mm, top);
                painter.setPen(QPen(lineColour, 0));
                for (int b = 1; b < kBlankLines; ++b) {
                    const double y = top - b * kBlankLineMm * mm;
                    painter.drawLine(QPointF(0, y), QPointF(page.width(), y));
                }
                continue;
            }
            const RollCallEntry& e = entries[r];
            if (r % 2)
                painter.fillRect(QRectF(0, top, page.width(), height), QColor(0xF2, 0xF2, 0xF2));
            drawNumber(top, height, r + 1);
            drawPhoto(painter, cellBox(Photo, top + padding, height - 2 * padding), e.photoFile);
            const auto put = [&](int c, const QFont& font, const QFontMetricsF& metrics, const QString& s,
                                 Qt::Alignment align) {
                const QRectF box = cellBox(c, top, height);
                painter.setFont(font);
                painter.setPen(ink);
                painter.drawText(box, int(align | Qt::AlignVCenter) | wrapFlags(metrics, s, box.width()), s);
            };
            put(Name, nameFont, name, e.name, Qt::AlignLeft);
            put(Organisation, textFont, text, e.organisation, Qt::AlignLeft);
            put(Visiting, textFont, text, e.visiting, Qt::AlignLeft);
            put(Arrived, textFont, text, e.arrived, Qt::AlignHCenter);
            put(CarReg, textFont, text, e.carReg, Qt::AlignHCenter);
            drawTick(top, height);
            top += height;
            painter.setPen(QPen(lineColour, 0));
            painter.drawLine(QPointF(0, top), QPointF(page.width(), top));
        }
        if (pageRows[p].second <= entries.size())
            drawRules(gridTop, top);

        painter.setPen(ink);
        painter.setFont(footerFont);
        painter.drawText(QRectF(0, gridBottom, page.width(), page.height() - gridBottom),
                         int(Qt::AlignHCenter | Qt::AlignBottom),
                         ListPrinting::footer(p + 1, pageCount, made.date()));
    }
    painter.end();
    return {};
}

} // namespace porvane
