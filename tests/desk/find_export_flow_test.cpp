#include "csv_read_back.h"
#include "desk_window.h"

#include <QDateEdit>
#include <QHeaderView>

using namespace porvane;
using porvane::test::DeskWindow;
using porvane::test::handLine;
using porvane::test::readCsvWithPython;
using namespace Qt::Literals::StringLiterals;

namespace {

// Jo, whose stored last name holds what the name box refuses, was due on 14 September; Ann Lee is due today
// (Monday 23 November).
const QByteArray kJo = handLine({{1, "260901080000"},
                                 {14, "Jo"},
                                 {31, "Smith, \"Jo\""},
                                 {525, "SALES"},
                                 {550, "Smith & Co"},
                                 {1060 + 4 * 13, "1000"}});
const QByteArray kAnn =
    handLine({{1, "261101080000"}, {14, "Ann"}, {31, "Lee"}, {550, "Lee & Co"}, {1060 + 4 * 22, "0930"}});

class FindAndExport : public DeskWindow {
protected:
    void SetUp() override {
        folder.write(u"Record/2609.vrf"_s, kJo + "\r\n");
        folder.write(u"Record/2611.vrf"_s, kAnn + "\r\n");
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    // Arrow keys on a month picker, as many as steps (down when negative).
    void stepMonths(const char* name, int steps) {
        auto* box = find<QDateEdit>(name);
        box->setFocus();
        for (int i = 0; i < std::abs(steps); ++i)
            QTest::keyClick(box, steps < 0 ? Qt::Key_Down : Qt::Key_Up);
    }
    QStringList headers() {
        QStringList out;
        for (int c = 0; c < grid()->model()->columnCount(); ++c)
            out << grid()->model()->headerData(c, Qt::Horizontal).toString();
        return out;
    }
    // The grid's listed rows as shown, each cell without its padding.
    QList<QStringList> shownRows() {
        QList<QStringList> rows;
        for (int r = 0; r < grid()->model()->rowCount() && !cell(r, 0).trimmed().isEmpty(); ++r) {
            QStringList row;
            for (int c = 0; c < grid()->model()->columnCount(); ++c)
                row << cell(r, c).trimmed();
            rows << row;
        }
        return rows;
    }
    // Export by its shortcut, the file chosen, and the file read back as a spreadsheet program reads it.
    QList<QStringList> exportAs(const QString& name) {
        const QString path = folder.appPath() + name;
        prompter.queueFileName(path);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_X, Qt::AltModifier);
        QTest::qWait(150);
        EXPECT_TRUE(QFileInfo::exists(path)) << name.toStdString();
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.read(3) == "\xEF\xBB\xBF") << "a spreadsheet takes the file as UTF-8";
        const test::CsvReadBack back = readCsvWithPython(path);
        EXPECT_TRUE(back.error.isEmpty()) << back.error.toStdString();
        return back.rows;
    }
};

} // namespace

// José O'Neill is booked at the desk; the search over September to December finds him and Jo, each with their
// month; opening Jo's row brings the desk to September; the list keeps its months through a save; the export
// gives back every field as the grid shows it, in the grid's order.
TEST_F(FindAndExport, aSearchOverSeveralMonthsOpensEachBookingInItsMonthAndExportsAsShown) {
    click("cmdExport");
    EXPECT_EQ(prompter.texts(), QStringList{u"There is no list to export."_s});
    EXPECT_TRUE(prompter.fileQuestions().isEmpty());

    typeNewBooking(u"José"_s, u"O'Neill"_s, u"Smith, \"Jo\" & Co"_s);
    addTime(23, u"11:00"_s);
    click("cmdSAVE");
    const QString jose = text("RegNoTB");
    ASSERT_EQ(jose.left(4), u"2611");

    EXPECT_EQ(find<QDateEdit>("dtpFindFrom")->date(), QDate(2026, 11, 1)) << "this month, unless widened";
    stepMonths("dtpFindFrom", -2);
    stepMonths("dtpFindTo", 1);
    EXPECT_EQ(find<QDateEdit>("dtpFindFrom")->date(), QDate(2026, 9, 1));
    EXPECT_EQ(find<QDateEdit>("dtpFindTo")->date(), QDate(2026, 12, 1));
    pick("CBListBy", u"NAME"_s);
    type("MainFindTB", u"jo"_s);
    prompter.clear();
    QTest::keyClick(find<QLineEdit>("MainFindTB"), Qt::Key_Return);
    EXPECT_EQ(prompter.texts(), QStringList());
    const QList<QStringList> found = shownRows();
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(headers().mid(0, 5), (QStringList{u"Registration"_s, u"Month"_s, u"First Name"_s,
                                                u"Last Name"_s, u"Organisation"_s}));
    EXPECT_EQ(found[0].mid(0, 5),
              (QStringList{u"260901080000"_s, u"2026-09"_s, u"Jo"_s, u"Smith, \"Jo\""_s, u"Smith & Co"_s}));
    EXPECT_EQ(found[1].mid(0, 5),
              (QStringList{jose, u"2026-11"_s, u"José"_s, u"O'Neill"_s, u"Smith, \"Jo\" & Co"_s}));

    clickRow(0);
    EXPECT_EQ(text("RegNoTB"), u"260901080000");
    EXPECT_EQ(combo("CBGetMonth") + u' ' + combo("CBGetYear"), u"SEPTEMBER 2026");
    EXPECT_EQ(label("laBookMonth"), u"SEPTEMBER 2026");
    EXPECT_FALSE(find<QLabel>("laBookMonth")->styleSheet().contains(u"#c00000")) << "boxes and booking agree";
    EXPECT_EQ(timeCell(14), u"10:00") << "the times grid shows September";
    retype("CatOrganTB", u"Smith & Sons"_s);
    click("cmdSAVE");
    EXPECT_EQ(test::handColumns(monthLines("2609")[0], 550, 50), "Smith & Sons");
    EXPECT_EQ(monthLines("2611").size(), 2) << "nothing written to the month the search started in";
    EXPECT_EQ(shownRows().size(), 2) << "the list is searched again over the same months";
    EXPECT_EQ(cell(0, 4).trimmed(), u"Smith & Sons");
    EXPECT_EQ(highlightedRow(), 0);

    prompter.clear();
    const QList<QStringList> exported = exportAs(u"found.csv"_s);
    ASSERT_EQ(prompter.fileQuestions().size(), 1);
    EXPECT_TRUE(prompter.fileQuestions()[0].offeredPath.endsWith(u"/Search 2026-11-23 0930.csv"_s))
        << prompter.fileQuestions()[0].offeredPath.toStdString();
    EXPECT_EQ(prompter.texts(), QStringList{u"The list was saved as "_s + folder.appPath() + u"found.csv"_s});
    ASSERT_EQ(exported.size(), 3);
    EXPECT_EQ(exported[0], headers());
    EXPECT_EQ(exported.mid(1), shownRows());
    EXPECT_EQ(exported[2].mid(2, 3), (QStringList{u"José"_s, u"O'Neill"_s, u"Smith, \"Jo\" & Co"_s}));

    // Sorted by last name, the export follows the order shown.
    QHeaderView* heading = grid()->horizontalHeader();
    QTest::mouseClick(heading->viewport(), Qt::LeftButton, {},
                      QPoint(heading->sectionViewportPosition(3) + 10, heading->height() / 2));
    ASSERT_EQ(cell(0, 3), u"O'Neill");
    EXPECT_EQ(exportAs(u"sorted.csv"_s).mid(1), shownRows());

    // Cancel writes nothing and says nothing; a folder that is not there is reported and nothing is left.
    prompter.clear();
    prompter.queueFileName(std::nullopt);
    click("cmdExport");
    EXPECT_EQ(prompter.texts(), QStringList());
    const QString nowhere = folder.appPath() + u"no such folder/list.csv"_s;
    prompter.queueFileName(nowhere);
    click("cmdExport");
    ASSERT_EQ(prompter.texts().size(), 1);
    EXPECT_TRUE(prompter.texts()[0].startsWith(u"The list was not saved as "_s + nowhere + u": "_s))
        << prompter.texts()[0].toStdString();
    EXPECT_FALSE(QFileInfo::exists(nowhere));
}

// The months run from the first to the last: moving one past the other takes the other along, the arrows
// cross the turn of the year, and a search of one month lists no month column.
TEST_F(FindAndExport, theMonthPickersKeepTheirOrderAndCrossTheYear) {
    stepMonths("dtpFindTo", 2);
    EXPECT_EQ(find<QDateEdit>("dtpFindTo")->date(), QDate(2027, 1, 1));
    stepMonths("dtpFindFrom", 3);
    EXPECT_EQ(find<QDateEdit>("dtpFindFrom")->date(), QDate(2027, 2, 1));
    EXPECT_EQ(find<QDateEdit>("dtpFindTo")->date(), QDate(2027, 2, 1)) << "the last month follows the first";
    stepMonths("dtpFindTo", -5);
    EXPECT_EQ(find<QDateEdit>("dtpFindFrom")->date(), QDate(2026, 9, 1))
        << "the first month follows the last";

    pick("CBListBy", u"NAME"_s);
    type("MainFindTB", u"smith"_s);
    click("cmdMFind");
    ASSERT_EQ(shownRows().size(), 1);
    EXPECT_EQ(shownRows()[0].mid(0, 3), (QStringList{u"260901080000"_s, u"Jo"_s, u"Smith, \"Jo\""_s}));
    EXPECT_EQ(headers().size(), 17);
}
