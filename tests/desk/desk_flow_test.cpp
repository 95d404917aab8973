#include "desk_fixture.h"

#include <QDir>
#include <QFile>

using namespace porvane;
using porvane::test::DeskFlow;

TEST_F(DeskFlow, passLabelFollowsTheDateAndARemovalRequestedByThePassWindowIsStored) {
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
    EXPECT_EQ(editor.view().PassPrntdLa.background, editor_colour::kGreen);
    clock.set(QDateTime(QDate(2024, 3, 22), QTime(8, 0)));
    editor.showRecord();
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"Pass NOT Valid");
    EXPECT_EQ(editor.view().PassPrntdLa.background, editor_colour::kFilled);

    state.RemovePassRequested = true;
    editor.recordWindowClosed();
    EXPECT_EQ(monthLines("2403").value(0).mid(935, 52), QByteArray(52, ' '));
    EXPECT_FALSE(state.RemovePassRequested);
    EXPECT_EQ(editor.view().PassPrntdLa.text, u"No Pass on-File");
}

TEST_F(DeskFlow, dataFolderRemovedOrUnreadableWhileTheDeskRuns_showsMessages_andKeepsTheBookingInTheEditor) {
    editor.cmdNEW();
    typeBooking();
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
    EXPECT_EQ(stored(monthLines("2403").value(0), Field::Organisation), "Acme Widgets plc");
}
