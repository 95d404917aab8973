#include "admin_run.h"
#include "lists_fixture.h"
#include "pdf_text.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// porvane-admin rollcall on 15 June 2024 at 10:00 over sixty visitors on site, three still expected and
// three gone: the sheet lists the sixty by name, whole, on four A4 pages, each headed with the count and the
// time, then five numbered blank lines.
TEST_F(ListsFixture, rollCallSheetListsEveryoneOnSiteByName) {
    struct OnSite {
        QString name;
        QByteArray arrived, carReg;
    };
    QList<OnSite> onSite;
    QByteArray month;
    QByteArray status;
    const auto book = [&](int i, const QByteArray& first, const QByteArray& last, const QByteArray& marks,
                          const QByteArray& organisation = "Bo Ltd", const QByteArray& carReg = {},
                          const QByteArray& visiting = "Di") {
        const QByteArray regNo = QByteArray::number(240601000000LL + i);
        const QByteArray line = handLine({{1, regNo.constData()},
                                          {14, first.constData()},
                                          {31, last.constData()},
                                          {69, carReg.constData()},
                                          {550, organisation.constData()},
                                          {758, visiting.constData()},
                                          {991, marks.constData()},
                                          {1116, "0900"}});
        month += line + "\r\n";
        status += line + "\r\n";
    };
    // Filed in no order; "Name00, Ann" to "Name58, Ann" and the long name, which sorts first.
    for (int i = 0; i < 59; ++i) {
        const int n = i * 37 % 59;
        const QByteArray arrived = u"07:%1"_s.arg(n, 2, 10, QLatin1Char('0')).toLatin1();
        const QByteArray carReg = "AB" + QByteArray::number(n).rightJustified(2, '0') + " CDE";
        book(i, "Ann", "Name" + QByteArray::number(n).rightJustified(2, '0'), arrived + "  -  ", "Bo Ltd",
             carReg);
        onSite.append({u"Name%1, Ann"_s.arg(n, 2, 10, QLatin1Char('0')), arrived, carReg});
    }
    std::sort(onSite.begin(), onSite.end(), [](const OnSite& a, const OnSite& b) { return a.name < b.name; });
    book(59, "Maximilianus-Jan", "Featherstonehaugh", "08:15  -  ",
         "Northern Harbour Engineering and Salvage Co Ltd", "WX71 KLMNO",
         "Professor Annabel Featherstonehaugh");
    for (int i = 0; i < 3; ++i) {
        book(60 + i, "Wai", "Waiting" + QByteArray::number(i), "  -    -  ");
        book(63 + i, "Gon", "Gone" + QByteArray::number(i), "07:0009:00");
    }
    desk.folder.write(u"Record/2406.vrf"_s, month);
    desk.folder.write(u"Status/240615.vdf"_s, status);
    // Three photos on file, the long name's among them; everyone else's cell stays empty.
    QImage photo(150, 200, QImage::Format_RGB888);
    photo.fill(Qt::darkCyan);
    QDir().mkpath(desk.folder.path(u"photo/2406"_s));
    for (const QString& file : {u"240601000059_Maximilianus-Jan_Featherstonehaugh.bmp"_s,
                                u"240601000000_Ann_Name00.bmp"_s, u"240601000001_Ann_Name37.bmp"_s})
        ASSERT_TRUE(photo.save(desk.folder.path(u"photo/2406/"_s + file), "BMP"));

    QTemporaryDir out;
    const QString pdf = out.filePath(u"rollcall.pdf"_s);
    const AdminRun run =
        runAdmin(desk.folder, u"2024-06-15"_s, {u"--now"_s, u"10:00"_s, u"rollcall"_s, u"--pdf"_s, pdf});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.toStdString(), "Roll call: 60 on site at 10:00\n");
    EXPECT_TRUE(pdfTool(u"pdfinfo"_s, {pdf}).contains(u"Page size:       595 x 842 pts (A4)"_s)); // portrait
    EXPECT_EQ(pdfTool(u"pdfimages"_s, {u"-list"_s, pdf}).count(u"image"), 3);

    const QList<PdfPage> pages = readPdf(pdf);
    ASSERT_EQ(pages.size(), 4);
    QString all;
    for (qsizetype p = 0; p < pages.size(); ++p) {
        const QString text = pages[p].text.simplified();
        EXPECT_TRUE(
            text.contains(u"Roll call: 60 on site at 10:00 on Saturday 15 June 2024 No. Name Organisation "
                          u"Visiting Arrived Car reg Here"_s))
            << text.left(200).toStdString();
        EXPECT_TRUE(text.endsWith(u"Porvane 90 Page %1 of 4 Printed: 15/06/2024"_s.arg(p + 1)));
        EXPECT_EQ(pages[p].overlapping(), QStringList()) << p;
        all += text + u' ';
    }
    // The long name first and whole, with its organisation, person visited and car; then everyone else in
    // order of name, each on one line with their arrival and car.
    for (const QString& cell :
         {u"Featherstonehaugh, Maximilianus-Jan"_s, u"Northern Harbour Engineering and Salvage Co Ltd"_s,
          u"Professor Annabel Featherstonehaugh"_s})
        EXPECT_TRUE(pages[0].holdsWhole(cell)) << cell.toStdString();
    EXPECT_TRUE(pages[0].holdsWhole(u"WX71 KLMNO"_s, true));
    EXPECT_TRUE(pages[0].text.contains(u"08:15"_s));
    qsizetype at = all.indexOf(u"WX71 KLMNO"_s);
    for (const OnSite& o : onSite) {
        const qsizetype found = all.indexOf(o.name);
        EXPECT_GT(found, at) << o.name.toStdString();
        EXPECT_EQ(all.count(o.name), 1) << o.name.toStdString();
        at = found;
        const auto page = std::find_if(pages.begin(), pages.end(),
                                       [&](const PdfPage& p) { return p.text.contains(o.name); });
        ASSERT_NE(page, pages.end());
        const QString line = page->text.section(o.name, 1).section(u'\n', 0, 0).simplified();
        EXPECT_TRUE(line.endsWith(
            u"Bo Ltd Di %1 %2"_s.arg(QString::fromLatin1(o.arrived), QString::fromLatin1(o.carReg))))
            << line.toStdString();
        EXPECT_TRUE(page->holdsWhole(QString::fromLatin1(o.carReg), true)) << o.carReg.constData();
    }
    for (const QString& absent : {u"Waiting"_s, u"Gone"_s})
        EXPECT_FALSE(all.contains(absent)) << absent.toStdString();
    // After the last name, the caption and the numbered blank lines, on the last page.
    const QString last = pages[3].text.simplified();
    EXPECT_TRUE(last.contains(onSite.last().name));
    EXPECT_EQ(last.section(u"Not on this list: write in name, organisation, whom visiting and arrival"_s, 1)
                  .simplified(),
              u"61 62 63 64 65 Porvane 90 Page 4 of 4 Printed: 15/06/2024"_s);

    EXPECT_EQ(runAdmin(desk.folder, u"2024-06-15"_s, {u"rollcall"_s, u"--pdf"_s}).status, 2);
}

} // namespace
