#include "desk_fixture.h"

#include <QFile>

using namespace porvane;
using porvane::test::handLine;

namespace {

const char* kBond = "240310090000";
const char* kOther = "240312110000";

// A status line as the on-site list writes it: the booking's line with its arrival and departure columns.
QByteArray statusLine(const char* regNo, const char* first, const char* last, const char* arrival = "  -  ",
                      const char* departure = "  -  ") {
    return handLine({{1, regNo}, {14, first}, {31, last}, {991, arrival}, {996, departure}}) + "\r\n";
}

QByteArray columns(const QByteArray& file, int line, int first, int width) {
    return file.mid(qsizetype(line) * 1188 + first - 1, width);
}

} // namespace

// IN and OUT on the booking open in the editor, with today's status file and the month file on disk. The
// clock reads Thursday 14 March 2024, 10:05:07.
class ArrivalDeparture : public porvane::test::DeskFlow {
protected:
    // The month file holds the booking; today's status file holds it and one other visitor.
    void book(const char* first, const char* last) {
        folder.write(
            QStringLiteral("Record/2403.vrf"),
            handLine({{1, kBond}, {14, first}, {31, last}, {525, "ENGINEERING"}, {550, "Bond plc"}}) +
                "\r\n");
        folder.write(kToday, statusLine(kOther, "Cy", "Day", "08:00") + statusLine(kBond, first, last));
        editor.openRow(QString::fromLatin1(kBond));
        ASSERT_EQ(editor.box(Field::RegNo), QString::fromLatin1(kBond));
        prompter.clear();
        refreshes = 0;
    }
    QByteArray today() const { return folder.read(kToday); }
    void at(int hour, int minute) { clock.set(QDateTime(QDate(2024, 3, 14), QTime(hour, minute, 30))); }

    const QString kToday = QStringLiteral("Status/240314.vdf");
};

TEST_F(ArrivalDeparture, inOutAndInAgainMarkTodaysFileAndLabels) {
    book("Al", "Bond");
    const QByteArray monthFile = folder.read(QStringLiteral("Record/2403.vrf"));
    // The calendar shows another day: the marks still go into the computer's today.
    dates.setDate(QDate(2024, 3, 20));

    editor.cmdIN();
    EXPECT_TRUE(prompter.messages().isEmpty());
    const BookingEditor::View& v = editor.view();
    EXPECT_EQ(v.LaON_Site.text, u"10:05");
    EXPECT_EQ(v.LaOFFSite.text, u"  -  ");
    EXPECT_EQ(v.focus, BookingEditor::Focus::MainFind);
    EXPECT_EQ(state.HelpContext, 27);
    EXPECT_EQ(refreshes, 1);
    QByteArray file = today();
    EXPECT_EQ(columns(file, 1, 991, 10), "10:05  -  ");
    EXPECT_EQ(columns(file, 0, 991, 10), "08:00  -  ") << "the other visitor keeps their mark";
    EXPECT_FALSE(folder.exists(QStringLiteral("Status/240320.vdf")));

    at(12, 40);
    editor.cmdOUT();
    EXPECT_EQ(v.LaON_Site.text, u"10:05") << "the arrival stays, greyed";
    EXPECT_EQ(v.LaON_Site.background, editor_colour::kWindow);
    EXPECT_EQ(v.LaOFFSite.text, u"12:40");
    EXPECT_EQ(columns(today(), 1, 991, 10), "10:0512:40");
    EXPECT_EQ(refreshes, 2);

    // Marking in again starts a new visit and clears the departure.
    at(13, 2);
    editor.cmdIN();
    EXPECT_EQ(v.LaON_Site.text, u"13:02");
    EXPECT_EQ(v.LaON_Site.foreground, editor_colour::kRed) << "no longer greyed";
    EXPECT_EQ(v.LaOFFSite.text, u"  -  ");
    file = today();
    EXPECT_EQ(columns(file, 1, 991, 10), "13:02  -  ");
    EXPECT_EQ(file.size(), 2 * 1188) << "no line changes its length";

    EXPECT_EQ(folder.read(QStringLiteral("Record/2403.vrf")), monthFile) << "the month file is never written";
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_FALSE(state.record.TestRecordChanged()) << "a mark is not an edit of the booking";

    // Opening the booking again shows the stored marks.
    editor.openRow(QString::fromLatin1(kBond));
    EXPECT_EQ(editor.view().LaON_Site.text, u"13:02");
}

TEST_F(ArrivalDeparture, withoutASavedBookingBothButtonsSaySoAndTouchNothing) {
    folder.write(kToday, statusLine(kOther, "Cy", "Day"));
    editor.cmdIN();
    editor.cmdOUT();
    editor.cmdNEW();
    editor.setBoxText(Field::FirstName, QStringLiteral("Ann"));
    editor.setBoxText(Field::LastName, QStringLiteral("Smith"));
    editor.cmdIN();
    ASSERT_EQ(prompter.messages().size(), 3);
    const QString arrived = QStringLiteral("Can't mark as ARRIVED: No booking has been created or saved!");
    EXPECT_EQ(prompter.texts(), (QStringList{arrived,
                                             QStringLiteral("Can't mark as DEPARTED: No booking has been "
                                                            "created or saved!"),
                                             arrived}));
    EXPECT_EQ(prompter.last().title, u"Porvane 90");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(today(), statusLine(kOther, "Cy", "Day"));
    EXPECT_EQ(editor.view().LaON_Site.text, u"  -  ");
    EXPECT_EQ(refreshes, 0);
}

TEST_F(ArrivalDeparture, shortNamesStopSilently_outNeedsOneLetterMoreThanIn) {
    // A and Lee: in, but not out.
    book("A", "Lee");
    editor.cmdIN();
    EXPECT_EQ(columns(today(), 1, 991, 10), "10:05  -  ");
    at(11, 0);
    editor.cmdOUT();
    EXPECT_EQ(columns(today(), 1, 991, 10), "10:05  -  ");
    EXPECT_EQ(editor.view().LaOFFSite.text, u"  -  ");
    EXPECT_EQ(refreshes, 1);

    // A and Li: neither.
    book("A", "Li");
    editor.cmdIN();
    EXPECT_EQ(columns(today(), 1, 991, 10), "  -    -  ");
    EXPECT_EQ(editor.view().LaON_Site.text, u"  -  ");

    // Al and Bo: a two-letter first name satisfies both.
    book("Al", "Bo");
    editor.cmdIN();
    at(11, 30);
    editor.cmdOUT();
    EXPECT_EQ(columns(today(), 1, 991, 10), "11:0011:30");
    EXPECT_TRUE(prompter.messages().isEmpty());
}

TEST_F(ArrivalDeparture, outBeforeInDoesNothing) {
    book("Al", "Bond");
    const QByteArray before = today();
    editor.cmdOUT();
    EXPECT_EQ(today(), before);
    EXPECT_EQ(editor.view().LaOFFSite.text, u"  -  ");
    EXPECT_EQ(editor.view().focus, BookingEditor::Focus::None);
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_EQ(refreshes, 0);
}

TEST_F(ArrivalDeparture, aFailedWriteIsShownAndTheLabelsKeepWhatTheFileHolds) {
    book("Al", "Bond");
    editor.cmdIN();
    QFile::remove(folder.path(kToday));

    at(12, 0);
    editor.cmdOUT();
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(
        prompter.last().text.startsWith(u"The departure could not be written to today's status file: "))
        << prompter.last().text.toStdString();
    EXPECT_TRUE(prompter.last().text.endsWith(u"(error 53)."));
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(editor.view().LaOFFSite.text, u"  -  ") << "no departure was stored";
    EXPECT_EQ(editor.view().LaON_Site.text, u"  -  ");
    EXPECT_FALSE(folder.exists(kToday));
}
