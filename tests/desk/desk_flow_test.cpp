#include "desk/booking_editor.h"
#include "desk/booking_store.h"
#include "desk_fixture.h"

#include <QDir>
#include <QFile>

using namespace porvane;
using porvane::test::DeskFlow;

namespace {

// The month file's lines, CR LF split off.
QList<QByteArray> linesOf(const QByteArray& file) {
    QList<QByteArray> lines = file.split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& l : lines) {
        EXPECT_TRUE(l.endsWith('\r'));
        l.chop(1);
    }
    return lines;
}

QByteArray columns(const QByteArray& line, int first, int width) {
    return line.mid(first - 1, width);
}

} // namespace

TEST_F(DeskFlow, newEditRenameAndDeleteOnTheMonthFile) {
    typeNewBooking();
    times.setCurrentCell(20, 1);
    times.setCellText(20, QStringLiteral("09.30"));
    times.validateCell(20);
    editor.cmdSAVE();
    EXPECT_EQ(prompter.texts(), QStringList{QStringLiteral("New Booking made for JO LI in MARCH 2024 Ok")});

    QList<QByteArray> lines = linesOf(folder.read(QStringLiteral("Record/2403.vrf")));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].size(), 1186);
    EXPECT_EQ(columns(lines[0], 1, 13), "240314100507 ");
    EXPECT_EQ(columns(lines[0], 14, 17), "Jo               ");
    EXPECT_EQ(columns(lines[0], 550, 16), "Acme Widgets Ltd");
    EXPECT_EQ(columns(lines[0], 1060 + 4 * 19, 4), "0930");
    EXPECT_EQ(editor.box(Field::RegNo), u"240314100507");
    EXPECT_EQ(refreshes, 1);

    // An edit without a rename is written over the same line.
    prompter.clear();
    editor.setBoxText(Field::Organisation, QStringLiteral("Acme Widgets plc"));
    editor.cmdSAVE();
    EXPECT_TRUE(prompter.messages().isEmpty());
    lines = linesOf(folder.read(QStringLiteral("Record/2403.vrf")));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(columns(lines[0], 550, 16), "Acme Widgets plc");
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ Record 240314100507 UPDATED ]");

    // A rename keeps the old person's booking and adds a second one.
    clock.advanceSeconds(60);
    editor.setBoxText(Field::LastName, QStringLiteral("Lee"));
    editor.cmdSAVE();
    EXPECT_EQ(prompter.texts(), QStringList{QStringLiteral("Porvane has created a New Record for Jo Lee")});
    lines = linesOf(folder.read(QStringLiteral("Record/2403.vrf")));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(columns(lines[0], 31, 3), "Li ");
    EXPECT_EQ(columns(lines[1], 1, 12), "240314100607");
    EXPECT_EQ(columns(lines[1], 31, 3), "Lee");

    // Delete removes the open booking's line only.
    prompter.clear();
    prompter.queue(Answer::Yes);
    editor.cmdDelete();
    EXPECT_EQ(
        prompter.texts(),
        QStringList{QStringLiteral("This will DELETE this Booking for JO LEE \r\nDo you wish to Proceed? ")});
    lines = linesOf(folder.read(QStringLiteral("Record/2403.vrf")));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(columns(lines[0], 1, 12), "240314100507");
    EXPECT_EQ(state.mainTitle, u"Tarnwell Solutions Porvane 90  [ One Booking DELETED ]");
}

TEST_F(DeskFlow, openRowShowsTodaysArrivalFromTheDayStatusFile) {
    folder.write(QStringLiteral("Record/2403.vrf"),
                 porvane::test::handLine({{1, "240310090000"}, {14, "Al"}, {31, "Bond"}}) + "\r\n");
    folder.write(QStringLiteral("Status/240314.vdf"),
                 porvane::test::handLine({{1, "240310090000"}, {991, "08:45"}, {996, "  -  "}}) + "\r\n");
    editor.openRow(QStringLiteral("240310090000"));
    EXPECT_EQ(editor.box(Field::LastName), u"Bond");
    EXPECT_EQ(editor.view().LaON_Site.text, u"08:45");
    EXPECT_EQ(editor.view().LaOFFSite.text, u"  -  ");
}

TEST_F(DeskFlow, passRemovalRequestedByThePassWindowIsStored) {
    folder.write(QStringLiteral("Record/2403.vrf"), porvane::test::handLine({{1, "240310090000"},
                                                                             {14, "Al"},
                                                                             {31, "Bond"},
                                                                             {936, "14-03-2024"},
                                                                             {947, "21-03-2024"},
                                                                             {958, "1W"},
                                                                             {969, "14-03-2024 at 09:05"}}) +
                                                        "\r\n");
    editor.openRow(QStringLiteral("240310090000"));
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"21-03-2024  1 Week");
    state.RemovePassRequested = true;
    editor.recordWindowClosed();
    const QByteArray line = linesOf(folder.read(QStringLiteral("Record/2403.vrf"))).value(0);
    EXPECT_EQ(columns(line, 936, 52), QByteArray(52, ' '));
    EXPECT_FALSE(state.RemovePassRequested);
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"No Pass on-File");
}

TEST_F(DeskFlow, dataFolderRemovedOrUnreadableWhileTheDeskRuns_showsMessages_andKeepsTheBookingInTheEditor) {
    typeNewBooking();
    editor.cmdSAVE();
    ASSERT_EQ(editor.box(Field::RegNo), u"240314100507");
    const QString data = state.dataPath();
    const QString moved = folder.appPath() + QStringLiteral("moved");

    // The share goes away: the folder is gone.
    ASSERT_TRUE(QDir().rename(data, moved));
    prompter.clear();
    editor.setBoxText(Field::Organisation, QStringLiteral("Acme Widgets plc"));
    editor.cmdSAVE();
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(prompter.last().text.startsWith(QStringLiteral("The booking could not be saved")) ||
                prompter.last().text.contains(QStringLiteral("error 76")))
        << prompter.last().text.toStdString();
    EXPECT_TRUE(prompter.last().text.contains(QStringLiteral("The booking is still in the editor.")));
    EXPECT_EQ(editor.box(Field::Organisation), u"Acme Widgets plc");
    EXPECT_EQ(editor.box(Field::RegNo), u"240314100507");
    EXPECT_EQ(state.record[Field::Organisation], u"Acme Widgets plc");

    // It comes back, but the month file cannot be read (a folder stands in its place).
    ASSERT_TRUE(QDir().rename(moved, data));
    const QString monthFile = folder.path(QStringLiteral("Record/2403.vrf"));
    ASSERT_TRUE(QFile::rename(monthFile, monthFile + QStringLiteral(".away")));
    ASSERT_TRUE(QDir().mkdir(monthFile));
    prompter.clear();
    editor.cmdSAVE();
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_TRUE(prompter.last().text.contains(QStringLiteral("The booking is still in the editor.")))
        << prompter.last().text.toStdString();
    EXPECT_EQ(editor.box(Field::Organisation), u"Acme Widgets plc");

    // Once the file is back the same SAVE stores the edit.
    ASSERT_TRUE(QDir().rmdir(monthFile));
    ASSERT_TRUE(QFile::rename(monthFile + QStringLiteral(".away"), monthFile));
    prompter.clear();
    editor.cmdSAVE();
    EXPECT_TRUE(prompter.messages().isEmpty()) << prompter.texts().join(u'|').toStdString();
    EXPECT_EQ(columns(linesOf(folder.read(QStringLiteral("Record/2403.vrf"))).value(0), 550, 16),
              "Acme Widgets plc");
}
