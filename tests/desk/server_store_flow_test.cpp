// The desk over a PostgreSQL server of the test's own, chosen from the settings as the program chooses it at
// start and after the settings window: bookings land on the server, a server that goes away is a message with
// the edit kept, and the desk works again once it is back, without a restart.
#include "admin_run.h"
#include "desk/store_choice.h"
#include "desk_window.h"
#include "pg_test.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace porvane;
using porvane::test::AdminRun;
using porvane::test::DeskWindow;
using porvane::test::handColumns;
using namespace Qt::Literals::StringLiterals;

namespace {

class ServerDeskFlow : public porvane::test::WithPgDatabase<DeskWindow> {
protected:
    void SetUp() override {
        WithPgDatabase::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        const AdminRun init = admin({u"db"_s, u"init"_s});
        ASSERT_EQ(init.status, 0) << init.err.toStdString();
    }

    AdminRun admin(const QStringList& args) const {
        return porvane::test::runAdmin(folder, u"2026-11-23"_s, QStringList{u"--db"_s, m_db} + args);
    }
    // The settings of a desk that keeps its bookings on the test's server.
    void setServer(Settings& s) const {
        const QMap<QString, QString> parts = porvane::test::connInfoParts(m_db);
        s.ServerHost = parts[u"host"_s];
        s.ServerPort = parts[u"port"_s];
        s.ServerDatabase = parts[u"dbname"_s];
        s.ServerUser = parts[u"user"_s];
    }
    // The lines of a month file as the server holds them, written out by porvane-admin db export.
    QList<QByteArray> serverMonthLines(const char* yymm) const {
        QTemporaryDir out;
        const AdminRun run = admin({u"db"_s, u"export"_s, out.filePath(u"data"_s)});
        EXPECT_EQ(run.status, 0) << run.err.toStdString();
        QFile file(out.filePath(u"data/Record/%1.vrf"_s.arg(QLatin1StringView(yymm))));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QList<QByteArray> lines = file.readAll().split('\n');
        lines.removeAll(QByteArray());
        for (QByteArray& l : lines)
            l.chop(l.endsWith('\r') ? 1 : 0);
        return lines;
    }
    bool folderHasMonth(const char* yymm) const {
        return QFile::exists(folder.path(u"Record/%1.vrf"_s.arg(QLatin1StringView(yymm))));
    }
    static QByteArray names(const QByteArray& line) {
        return handColumns(line, 14, 16) + ' ' + handColumns(line, 31, 18) + '|' + handColumns(line, 550, 50);
    }
};

} // namespace

TEST_F(ServerDeskFlow, aBookingLandsOnTheServer_aLostServerKeepsTheEditUntilItIsBack) {
    setServer(state.settings);
    ASSERT_TRUE(useStoreOfSettings(state));
    EXPECT_TRUE(prompter.messages().isEmpty());

    typeNewBooking(u"Dee"_s, u"Fox"_s, u"Fox Ltd"_s);
    addTime(25, u"10:00"_s);
    click("cmdSAVE");
    EXPECT_EQ(prompter.texts(), QStringList{u"New Booking made for DEE FOX in NOVEMBER 2026 Ok"_s});
    QList<QByteArray> lines = serverMonthLines("2611");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].size(), 1186);
    EXPECT_EQ(lines[0].left(12), text("RegNoTB").toLatin1());
    EXPECT_EQ(names(lines[0]), "Dee Fox|Fox Ltd");
    EXPECT_EQ(bookedTime(lines[0], 25), "1000");
    EXPECT_FALSE(folderHasMonth("2611")) << "the data folder keeps no bookings of a desk on a server";

    ASSERT_TRUE(s_cluster->stop()) << s_cluster->problem().toStdString();
    retype("CatOrganTB", u"Fox & Sons"_s);
    prompter.clear();
    click("cmdSAVE");
    ASSERT_EQ(prompter.texts().size(), 1);
    const QString told = prompter.texts()[0];
    EXPECT_TRUE(told.startsWith(u"The booking could not be saved: The server "_s)) << told.toStdString();
    EXPECT_TRUE(told.contains(u"could not be reached"_s)) << told.toStdString();
    EXPECT_TRUE(told.endsWith(u"The booking is still in the editor."_s)) << told.toStdString();
    EXPECT_EQ(text("CatOrganTB"), u"Fox & Sons");

    ASSERT_TRUE(s_cluster->start()) << s_cluster->problem().toStdString();
    prompter.clear();
    click("cmdSAVE"); // still marked changed: SAVE writes it
    EXPECT_TRUE(prompter.texts().isEmpty()) << prompter.texts().join(u'\n').toStdString();
    EXPECT_EQ(window().windowTitle(),
              u"Tarnwell Solutions Porvane 90  [ Record %1 UPDATED ]"_s.arg(text("RegNoTB")));
    lines = serverMonthLines("2611");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(names(lines[0]), "Dee Fox|Fox & Sons");
}

TEST_F(ServerDeskFlow, aServerDownAtStartIsToldAndTriedAgainAtTheNextAction) {
    setServer(state.settings);
    ASSERT_TRUE(s_cluster->stop()) << s_cluster->problem().toStdString();
    EXPECT_FALSE(useStoreOfSettings(state));
    ASSERT_EQ(prompter.texts().size(), 1);
    EXPECT_TRUE(prompter.texts()[0].contains(u"could not be reached"_s)) << prompter.texts()[0].toStdString();

    typeNewBooking(u"Eve"_s, u"Hart"_s, u"Hart plc"_s);
    ASSERT_TRUE(s_cluster->start()) << s_cluster->problem().toStdString();
    QTest::qWait(1000); // past the time a failed attempt answers for the next ones
    prompter.clear();
    click("cmdSAVE");
    EXPECT_EQ(prompter.texts(), QStringList{u"New Booking made for EVE HART in NOVEMBER 2026 Ok"_s});
    const QList<QByteArray> lines = serverMonthLines("2611");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(names(lines[0]), "Eve Hart|Hart plc");
}

// The settings window switches the desk between the data folder and the server while it runs.
TEST_F(ServerDeskFlow, theSettingsWindowSwitchesTheStoreWithoutARestart) {
    const auto saveSettings = [this](const std::function<void(QWidget * settings)>& edit) {
        test::whenModal([edit](QWidget* password) {
            test::find<QLineEdit>(password, "txtPassword")->setText(u"PPP"_s);
            test::whenModal([edit](QWidget* settings) {
                edit(settings);
                test::click(settings, "cmdSave");
            });
            test::click(password, "cmdPWOK");
        });
        click("cmdSettings");
    };
    state.settings.SettingsPassword = u"PPP"_s;
    state.settings.ckEnblNetPaths = u"1"_s;

    typeNewBooking(u"Ann"_s, u"Lee"_s, u"In the folder"_s);
    click("cmdSAVE");
    ASSERT_TRUE(folderHasMonth("2611"));

    Settings server;
    setServer(server);
    saveSettings([&server](QWidget* settings) {
        test::find<QLineEdit>(settings, "txtServerHost")->setText(server.ServerHost);
        test::find<QLineEdit>(settings, "txtServerPort")->setText(server.ServerPort);
        test::find<QLineEdit>(settings, "txtServerDatabase")->setText(server.ServerDatabase);
        test::find<QLineEdit>(settings, "txtServerUser")->setText(server.ServerUser);
    });
    EXPECT_TRUE(window().isVisible()) << "no restart";
    EXPECT_TRUE(state.settings.usesServer());
    const QList<QByteArray> inFolder = monthLines("2611");

    typeNewBooking(u"Bob"_s, u"Ray"_s, u"On the server"_s);
    click("cmdSAVE");
    QList<QByteArray> lines = serverMonthLines("2611");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(names(lines[0]), "Bob Ray|On the server");
    EXPECT_EQ(monthLines("2611"), inFolder);

    saveSettings([](QWidget* settings) { test::find<QLineEdit>(settings, "txtServerHost")->clear(); });
    EXPECT_FALSE(state.settings.usesServer());
    typeNewBooking(u"Cy"_s, u"Day"_s, u"Back in the folder"_s);
    click("cmdSAVE");
    lines = monthLines("2611");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(names(lines[1]), "Cy Day|Back in the folder");
    EXPECT_EQ(serverMonthLines("2611").size(), 1);
}
