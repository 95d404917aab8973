#include "admin_run.h"
#include "lists/day_list.h"
#include "lists/list_printing.h"
#include "lists_fixture.h"
#include "pdf_text.h"

#include <QPdfWriter>
#include <QTemporaryDir>
#include <numeric>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct ListPrintingTest : ListsFixture {
    // Bookings due on the 15th; every third one has each text as long as its columns hold (Registration,
    // first and last name, organisation, telephone, car registration, person visited, department, contact).
    struct Booking {
        QByteArray regNo, first, last, organisation, telephone, carReg, visiting, department;
    };
    QList<Booking> writeDay(int bookings) {
        QList<Booking> written;
        QByteArray bytes;
        for (int i = 0; i < bookings; ++i) {
            const QByteArray n = QByteArray::number(i);
            const Booking b = i % 3 == 0 ? Booking{QByteArray::number(240601000000LL + i),
                                                   "Maximilianus-Jan",
                                                   "Featherstonehaugh" + n.right(1),
                                                   "Northern Harbour Engineering and Salvage Co " + n,
                                                   "+44 1632 960" + n.rightJustified(4, '0'),
                                                   "WX71 KL" + n.rightJustified(3, '0'),
                                                   "Professor Annabel Featherstonehaugh",
                                                   "MAINTENANCE ENGINEERING"}
                                         : Booking{QByteArray::number(240601000000LL + i),
                                                   "Al",
                                                   "Bo" + n,
                                                   "Bo Ltd",
                                                   "0161 " + n,
                                                   "K" + n,
                                                   "Di",
                                                   "SALES"};
            bytes += handLine({{1, b.regNo.constData()},
                               {14, b.first.constData()},
                               {31, b.last.constData()},
                               {69, b.carReg.constData()},
                               {504, "CONTRACTOR"},
                               {525, b.department.constData()},
                               {550, b.organisation.constData()},
                               {670, b.telephone.constData()},
                               {758, b.visiting.constData()},
                               {795, b.telephone.constData()},
                               {1116, "0930"}}) +
                     "\r\n";
            written.append(b);
        }
        desk.folder.write(u"Record/2406.vrf"_s, bytes);
        return written;
    }
};

// The footer is read off every page of the printed list below.
TEST_F(ListPrintingTest, titlesByListMode) {
    select(15, "JUNE", "2024");
    const std::pair<ListMode, QString> titles[] = {
        {ListMode::None, u"Harbour Works    Visitors List  -  June 2024"_s},
        {ListMode::Day, u"Harbour Works    Visitors Expected:  15 June 2024"_s},
        {ListMode::Month, u"Harbour Works    Visitor List  -  June 2024"_s},
        {ListMode::Search, u"Harbour Works    Visitor List [ Part ]   June 2024"_s},
        {ListMode::OnSite, u"Harbour Works    Visitor On-Site Status:  15 June 2024  as at  14:05"_s}};
    for (const auto& [mode, title] : titles)
        EXPECT_EQ(ListPrinting::title(mode, u"Harbour Works"_s, dates, QTime(14, 5)), title);
    // A search names the months it read, whatever month the boxes have moved to since.
    EXPECT_EQ(ListPrinting::title(ListMode::Search, u"Harbour Works"_s, dates, QTime(14, 5),
                                  SearchMonths::between(QDate(2024, 12, 1), QDate(2024, 2, 1))),
              u"Harbour Works    Visitor List [ Part ]   February 2024 to December 2024"_s);
    EXPECT_EQ(ListPrinting::title(ListMode::Search, u"Harbour Works"_s, dates, QTime(14, 5),
                                  SearchMonths::of(QDate(2024, 3, 9))),
              u"Harbour Works    Visitor List [ Part ]   March 2024"_s);
}

// Every list prints every cell whole on A4 landscape pages that each carry the title, the header row and the
// footer: long names, organisations and people visited wrap within their row; registration numbers,
// telephone numbers and car registrations stand whole on one line; no text runs into the next column.
TEST_F(ListPrintingTest, everyListPrintsEveryCellWhole) {
    const QList<Booking> bookings = writeDay(120);
    select(15, "JUNE", "2024");
    QTemporaryDir out;
    const std::pair<const char*, std::function<GridLists::Outcome()>> printedLists[] = {
        {"Visitors Expected: 15 June 2024",
         [&] {
             return lists.selectDayRecord(dates);
         }},
        {"Visitor List - June 2024",
         [&] {
             return lists.selectMonthRecord(dates);
         }},
        {"Visitor List [ Part ] June 2024",
         [&] {
             return lists.startSearch({GridLists::monthOfBoxes(dates), u"ANY TEXT"_s, u"contractor"_s});
         }},
        {"Visitor On-Site Status: 15 June 2024 as at 09:00",
         [&] {
             return lists.showDayStatus();
         }},
    };
    for (const auto& [heading, build] : printedLists) {
        SCOPED_TRACE(heading);
        ASSERT_EQ(build(), GridLists::Outcome::Listed);
        const QString pdf = out.filePath(QString::number(int(desk.state.listMode)) + u".pdf"_s);
        {
            QPdfWriter writer(pdf);
            writer.setResolution(300);
            const QString title =
                ListPrinting::title(desk.state.listMode, u"Harbour Works"_s, dates, QTime(9, 0));
            ASSERT_EQ(
                ListPrinting::print(writer, lists.table(), desk.state.ListedCount, title, QDate(2024, 6, 15)),
                QString());
        }
        EXPECT_TRUE(
            pdfTool(u"pdfinfo"_s, {pdf}).contains(u"Page size:       842 x 595 pts (A4)"_s)); // landscape
        const QList<PdfPage> pages = readPdf(pdf);
        ASSERT_GE(pages.size(), 2);
        for (qsizetype p = 0; p < pages.size(); ++p) {
            const QString text = pages[p].text.simplified();
            EXPECT_TRUE(text.startsWith(u"Harbour Works "_s + QLatin1StringView(heading))) << p;
            EXPECT_TRUE(pages[p].holdsWhole(u"Registration"_s) && pages[p].holdsWhole(u"Car Reg"_s)) << p;
            EXPECT_TRUE(
                text.endsWith(u"Porvane 90 Page %1 of %2 Printed: 15/06/2024"_s.arg(p + 1).arg(pages.size())))
                << text.right(80).toStdString();
            EXPECT_EQ(pages[p].overlapping(), QStringList()) << p;
        }
        // Every listed row once, on one page, with every cell whole.
        for (const Booking& b : bookings) {
            const QString regNo = QString::fromLatin1(b.regNo);
            const auto page = std::find_if(pages.begin(), pages.end(),
                                           [&](const PdfPage& pg) { return pg.count(regNo) > 0; });
            ASSERT_NE(page, pages.end()) << b.regNo.constData();
            EXPECT_EQ(std::accumulate(pages.begin(), pages.end(), 0,
                                      [&](int n, const PdfPage& pg) { return n + pg.count(regNo); }),
                      1);
            for (const QByteArray& cell : {b.first, b.last, b.organisation, b.visiting, b.department})
                EXPECT_TRUE(page->holdsWhole(QString::fromLatin1(cell)))
                    << b.regNo.constData() << ": " << cell.constData();
            for (const QByteArray& cell : {b.telephone, b.carReg})
                EXPECT_TRUE(page->holdsWhole(QString::fromLatin1(cell), true))
                    << b.regNo.constData() << ": " << cell.constData();
        }
        const QString fonts = pdfTool(u"pdffonts"_s, {pdf});
        EXPECT_TRUE(fonts.contains(u"DejaVu"_s) || fonts.contains(u"Verdana"_s)) << fonts.toStdString();
        EXPECT_TRUE(fonts.contains(u"Liberation"_s) || fonts.contains(u"Arial"_s)) << fonts.toStdString();
    }
}

// porvane-admin's lists keep every row on one line and every cell in its column: control characters stored in
// a name (escape, bell, tab) are shown as "?", and CSV quotes what it must. A long list comes out whole
// across the pieces it is written in.
TEST_F(ListPrintingTest, adminListsKeepTheirColumnsWhole) {
    writeDay(400);
    QByteArray month = desk.folder.read(u"Record/2406.vrf"_s);
    month += handLine({{1, "240614000001"},
                       {14, "Bad\x1B[31m"},
                       {31, "Bell\x07\tTab"},
                       {550, "Old, \"Pass\" Ltd\t"},
                       {1116, "0930"}}) +
             "\r\n";
    desk.folder.write(u"Record/2406.vrf"_s, month);
    const auto admin = [&](const QStringList& args) {
        return runAdmin(desk.folder, u"2024-06-15"_s, QStringList{u"--now"_s, u"10:00"_s} + args);
    };
    const auto rowsOf = [&](const QStringList& args, int columns, qsizetype rows) {
        const AdminRun r = admin(args);
        EXPECT_EQ(r.status, 0) << r.err.toStdString();
        const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
        EXPECT_EQ(lines.size(), 1 + rows) << args.join(u' ').toStdString();
        for (const QString& line : lines) {
            EXPECT_EQ(line.count(u'\t'), columns - 1) << line.toStdString();
            EXPECT_FALSE(std::any_of(line.begin(), line.end(), [](QChar c) {
                return c < u' ' && c != u'\t';
            })) << line.toStdString();
        }
        return lines;
    };
    const QString bad = u"240614000001\tBad?[31m\tBell??Tab\tOld, \"Pass\" Ltd"_s;
    EXPECT_TRUE(rowsOf({u"list"_s, u"day"_s, u"2024-06-15"_s}, 17, 401).last().startsWith(bad));
    EXPECT_EQ(rowsOf({u"list"_s, u"month"_s, u"2024-06"_s}, 18, 401).size(), 402);
    EXPECT_TRUE(rowsOf({u"search"_s, u"2024-06"_s, u"NAME"_s, u"bell"_s}, 17, 1).last().startsWith(bad));
    EXPECT_TRUE(rowsOf({u"onsite"_s}, 19, 401).last().startsWith(bad));

    const AdminRun csv = admin({u"--csv"_s, u"list"_s, u"day"_s, u"2024-06-15"_s});
    EXPECT_TRUE(csv.out.endsWith(u"240614000001,Bad?[31m,Bell??Tab,\"Old, \"\"Pass\"\" Ltd\",,,,09:30,"_s
                                 u",,,,,,,,\r\n"_s))
        << csv.out.right(120).toStdString();

    const AdminRun none = admin({u"list"_s, u"day"_s, u"2024-07-01"_s});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, QString());
    EXPECT_TRUE(none.err.contains(u"No Visitor Bookings for this DATE have been found"_s))
        << none.err.toStdString();
    EXPECT_EQ(admin({u"list"_s, u"day"_s, u"15-06-2024"_s}).status, 2);
    EXPECT_EQ(admin({u"search"_s, u"2024-06"_s, u"SHOE SIZE"_s, u"x"_s}).status, 2);
}

} // namespace
