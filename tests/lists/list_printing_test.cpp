#include "admin_run.h"
#include "lists/day_list.h"
#include "lists/list_printing.h"
#include "lists_fixture.h"

#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// What a poppler tool prints about a PDF.
QString pdfTool(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

struct ListPrintingTest : ListsFixture {
    void writeDay(int bookings) {
        QByteArray bytes;
        for (int i = 0; i < bookings; ++i) {
            const QByteArray regNo = QByteArray::number(240601000000LL + i);
            const QByteArray last = "Visitor" + QByteArray::number(i);
            bytes += handLine({{1, regNo.constData()},
                               {14, "First"},
                               {31, last.constData()},
                               {504, "CONTRACTOR"},
                               {550, "Organisation Name That Is Rather Long Ltd"},
                               {1116, "0930"}}) +
                     "\r\n";
        }
        desk.folder.write(u"Record/2406.vrf"_s, bytes);
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
}

TEST_F(ListPrintingTest, severalPagesOfA4LandscapeWithTitleFooterAndOnlyTheListedRows) {
    writeDay(120);
    select(15, "JUNE", "2024");
    ASSERT_EQ(lists.selectDayRecord(dates), GridLists::Outcome::Listed);
    QTemporaryDir out;
    const QString pdf = out.filePath(u"day.pdf"_s);
    {
        QPdfWriter writer(pdf);
        writer.setResolution(300);
        const QString title =
            ListPrinting::title(desk.state.listMode, u"Harbour Works"_s, dates, QTime(9, 0));
        ASSERT_EQ(
            ListPrinting::print(writer, lists.table(), desk.state.ListedCount, title, QDate(2024, 6, 15)),
            QString());
    }
    const QString info = pdfTool(u"pdfinfo"_s, {pdf});
    ASSERT_TRUE(info.contains(u"Pages:"_s)) << info.toStdString();
    const int pages = info.section(u"Pages:"_s, 1).trimmed().section(u'\n', 0, 0).toInt();
    EXPECT_GE(pages, 2);
    EXPECT_TRUE(info.contains(u"Page size:       842 x 595 pts (A4)"_s)) << info.toStdString(); // landscape

    const QString text = pdfTool(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    const QStringList perPage = text.split(u'\f', Qt::SkipEmptyParts);
    ASSERT_EQ(perPage.size(), pages);
    for (int p = 0; p < pages; ++p) {
        EXPECT_TRUE(perPage[p].simplified().startsWith(u"Harbour Works Visitors Expected: 15 June 2024"_s))
            << p;
        EXPECT_TRUE(perPage[p].contains(u"Registration"_s)) << p; // header row on every page
        const QString footer = u"Porvane 90     Page %1 of %2    Printed: 15/06/2024"_s.arg(p + 1).arg(pages);
        EXPECT_TRUE(perPage[p].simplified().contains(footer.simplified())) << footer.toStdString();
    }
    // Every listed row once, and no more rows than were listed.
    EXPECT_EQ(text.count(u"240601000"_s), 120);
    EXPECT_TRUE(text.contains(u"Visitor119"_s));
    const QString fonts = pdfTool(u"pdffonts"_s, {pdf});
    EXPECT_TRUE(fonts.contains(u"DejaVu"_s) || fonts.contains(u"Verdana"_s)) << fonts.toStdString();
    EXPECT_TRUE(fonts.contains(u"Liberation"_s) || fonts.contains(u"Arial"_s)) << fonts.toStdString();
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
