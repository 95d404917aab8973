#include "admin_run.h"
#include "lists/day_list.h"
#include "lists/list_printing.h"
#include "lists/list_text.h"
#include "lists_fixture.h"

#include <QBuffer>
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

QString textOf(const ListTable& table, bool csv) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(writeListTableText(table, csv, buffer));
    return QString::fromUtf8(buffer.data());
}

// Cells keep their Windows-1252 characters, lose their blanks, and are quoted in CSV only where they must be;
// a long list comes out whole across the pieces it is written in.
TEST(ListText, writesTrimmedUtf8CellsAndQuotesCsvFields) {
    ListTable table;
    table.columns = {{u" Name "_s, 100, Qt::AlignLeft}, {u"Note"_s, 100, Qt::AlignLeft}};
    table.beginRow();
    table.addCell("  Ren\xE9"
                  "e \x80 ");
    table.addCell("\tsaid \"hi\", then left\r");
    for (int r = 0; r < 20000; ++r) {
        table.beginRow();
        table.addCell(QByteArray::number(r));
        table.addCell("   plain   ");
    }

    const QString tabs = textOf(table, false);
    const QStringList lines = tabs.split(u'\n');
    ASSERT_EQ(lines.size(), 1 + 1 + 20000 + 1) << "header, rows, and the empty text after the last line end";
    EXPECT_EQ(lines[0], u"Name\tNote"_s);
    EXPECT_EQ(lines[1], u"Ren\u00E9e \u20AC\tsaid \"hi\", then left"_s);
    EXPECT_EQ(lines[2], u"0\tplain"_s);
    EXPECT_EQ(lines[20001], u"19999\tplain"_s);

    const QString csv = textOf(table, true);
    EXPECT_TRUE(
        csv.startsWith(u"Name,Note\r\nRen\u00E9e \u20AC,\"said \"\"hi\"\", then left\"\r\n0,plain\r\n"_s))
        << csv.left(80).toStdString();
    EXPECT_TRUE(csv.endsWith(u"19999,plain\r\n"_s));

    QBuffer readOnly;
    readOnly.open(QIODevice::ReadOnly);
    EXPECT_FALSE(writeListTableText(table, false, readOnly)) << "a device that takes no bytes is reported";
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

// porvane-admin prints the same rows as the desk's grid for the same files.
TEST_F(ListPrintingTest, adminListsTheDesksRows) {
    writeDay(3);
    writeLines(u"Record/2403.vrf"_s, {handLine({{1, "240301000003"},
                                                {14, "March"},
                                                {550, "Old, \"Pass\" Ltd"},
                                                {936, "01-03-2024"},
                                                {947, "20-06-2024"}})});
    const auto admin = [&](const QStringList& args) {
        return runAdmin(desk.folder, u"2024-06-15"_s, QStringList{u"--now"_s, u"10:00"_s} + args);
    };
    const auto expectSame = [&](const QStringList& args, bool csv) {
        const AdminRun r = admin((csv ? QStringList{u"--csv"_s} : QStringList()) + args);
        EXPECT_EQ(r.status, 0) << r.err.toStdString();
        EXPECT_EQ(r.out, textOf(lists.table(), csv)) << args.join(u' ').toStdString();
        return r.out;
    };
    select(15, "JUNE", "2024");
    lists.selectDayRecord(dates);
    expectSame({u"list"_s, u"day"_s, u"2024-06-15"_s}, false);
    lists.selectMonthRecord(dates);
    expectSame({u"list"_s, u"month"_s, u"2024-06"_s}, true);
    lists.startSearch(dates, u"NAME"_s, u"visitor1"_s);
    EXPECT_EQ(lists.table().listedCount(), 1);
    expectSame({u"search"_s, u"2024-06"_s, u"NAME"_s, u"visitor1"_s}, false);
    // The admin rebuilds today's status file first, as the desk does.
    lists.showDayStatus();
    ASSERT_TRUE(QFile::remove(desk.folder.path(u"Status/240615.vdf"_s)));
    EXPECT_TRUE(expectSame({u"onsite"_s}, true).contains(u"\"Old, \"\"Pass\"\" Ltd\""_s));

    const AdminRun none = admin({u"list"_s, u"day"_s, u"2024-07-01"_s});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, QString());
    EXPECT_TRUE(none.err.contains(u"No Visitor Bookings for this DATE have been found"_s))
        << none.err.toStdString();
    EXPECT_EQ(admin({u"list"_s, u"day"_s, u"15-06-2024"_s}).status, 2);
    EXPECT_EQ(admin({u"search"_s, u"2024-06"_s, u"SHOE SIZE"_s, u"x"_s}).status, 2);
}

} // namespace
