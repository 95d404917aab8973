#include "admin_run.h"
#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "desk/store_choice.h"
#include "recording_opener.h"
#include "saved_settings_fixture.h"
#include "settings/server_settings.h"
#include "settings/settings_file.h"
#include "settings/settings_password_window.h"
#include "settings/settings_window.h"
#include "store/record_store.h"
#include "temp_pg_cluster.h"
#include "widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct SettingsWindowTest : SavedSettingsFixture {
    void writePickLists(const QByteArray& bytes) const {
        desk.folder.write(u"../_PSF/PSystem/PACustom.ini"_s, bytes);
    }
};

TEST_F(SettingsWindowTest, changedFieldsAreWrittenToTheFileAndReadBack) {
    QTemporaryDir share;
    SettingsWindow window(state.AppPath, state.settings, state.prompter, state.help, reachServer);
    find<QCheckBox>(&window, "ckMakeSysRdO")->click();
    find<QCheckBox>(&window, "ckEnbl_BarOP")->click();
    find<QCheckBox>(&window, "ckAllowExtCiPW")->click();
    find<QLineEdit>(&window, "txtSiteName")->setText(u"Harbour Works Ltd"_s);
    find<QLineEdit>(&window, "txtDataPath")->setText(share.path());
    find<QLineEdit>(&window, "txtNewPW")->setText(u"Gr\u00FC\u00DFe 7"_s);
    find<QLineEdit>(&window, "txtNewPW2")->setText(u"Gr\u00FC\u00DFe 7"_s);
    desk.prompter.queue(Answer::Yes); // make Record, Status and photo in the new folder
    click(&window, "cmdSave");

    EXPECT_EQ(window.result(), QDialog::Accepted);
    const Settings s = reread();
    EXPECT_EQ(s.ckMakeSysRdO, u"1");
    EXPECT_EQ(s.ckEnbl_BarOP, u"0");
    EXPECT_EQ(s.ckAllowExtCiPW, u"1");
    EXPECT_EQ(s.SiteName, u"Harbour Works Ltd");
    EXPECT_EQ(s.DataPath, share.path());
    EXPECT_EQ(s.SettingsPassword, u"Gr\u00FC\u00DFe 7"_s);
    // Untouched settings, including the letter option and the one without a box, are written as they were.
    EXPECT_EQ(s.ckShowSplash, u"1");
    EXPECT_EQ(s.option484, u"Y");
    EXPECT_EQ(s.option165, u"0");
    EXPECT_EQ(s.SystemPath, desk.folder.appPath());
    for (const char* sub : {"Record", "Status", "photo"})
        EXPECT_TRUE(QFileInfo(share.path() + u'/' + QString::fromLatin1(sub)).isDir()) << sub;
    EXPECT_TRUE(window.restartPending()) << "a new data folder needs a restart";
    EXPECT_EQ(state.settings.SiteName, u"Harbour Works Ltd");
}

TEST_F(SettingsWindowTest, closingWithChangesAsks_cancelStaysNoDiscards) {
    const QByteArray before = settingsFile();
    SettingsWindow window(state.AppPath, state.settings, state.prompter, state.help, reachServer);
    window.show();
    find<QCheckBox>(&window, "ckDisSingleD")->click();
    desk.prompter.queue(Answer::Cancel);
    click(&window, "cmdClose");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(desk.prompter.last().text, u"The settings have changed. Save them?");
    desk.prompter.queue(Answer::No);
    click(&window, "cmdClose");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(settingsFile(), before);
    EXPECT_EQ(state.settings.ckDisSingleD, u"0");
}

TEST_F(SettingsWindowTest, helpKeyOpensTheFoldersPageOnTheFoldersTabAndTheModesPageElsewhere) {
    RecordingOpener opener;
    state.help.urlOpener = &opener;
    SettingsWindow window(state.AppPath, state.settings, state.prompter, state.help, reachServer);
    window.show();
    auto* tabs = find<QTabWidget>(&window, "tabSettings");
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        QTest::keyClick(&window, Qt::Key_F1);
    }
    QStringList pages;
    for (const QUrl& url : opener.opened)
        pages << url.fileName();
    EXPECT_EQ(pages, (QStringList{u"ModesOfOperation2.html"_s, u"ModesOfOperation2.html"_s,
                                  u"ModesOfOperation2.html"_s, u"netoperations2.html"_s,
                                  u"ModesOfOperation2.html"_s}));
}

TEST_F(SettingsWindowTest, pickListsAreEditedAfterTheChosenEntryPerTheSectionRules) {
    // LF and CR LF lines mixed; a blank line ends the category list.
    writePickLists("; site lists\r\n"
                   "[CATEGORY]\r\n"
                   "VISITOR\r\n"
                   "CONTRACTOR  \r\n"
                   "\r\n"
                   "AFTER BLANK\r\n"
                   "[DESCRIPTION]\n"
                   "CONTRACTOR\n" // the same entry in another list stays
                   "[SELECTACCESS]\n");
    SettingsWindow window(state.AppPath, state.settings, state.prompter, state.help, reachServer);
    auto* chooser = find<QComboBox>(&window, "cbEditList");
    auto* entries = find<QListWidget>(&window, "lstEntries");
    auto* newEntry = find<QLineEdit>(&window, "txtNewEntry");

    newEntry->setText(u"COURIER"_s);
    click(&window, "cmdAddEntry");
    EXPECT_EQ(desk.prompter.last().text, u"No Edit list: Select a list to edit from the drop-down box");

    chooser->setCurrentText(u"CATEGORY"_s);
    ASSERT_EQ(entries->count(), 2);
    entries->setCurrentRow(1);
    click(&window, "cmdAddEntry");
    ASSERT_EQ(entries->count(), 3);
    EXPECT_EQ(entries->item(2)->text(), u"COURIER");
    EXPECT_TRUE(newEntry->text().isEmpty());

    entries->setCurrentRow(1); // "CONTRACTOR  ": trailing blanks in the file do not hide it
    desk.prompter.queue(Answer::Yes);
    click(&window, "cmdDeleteEntry");
    EXPECT_EQ(desk.prompter.last().text, u"Delete \"CONTRACTOR\" from the CATEGORY list?");

    chooser->setCurrentText(u"SELECT ACCESS"_s);
    EXPECT_EQ(entries->count(), 0);
    newEntry->setText(u"[ROOF]"_s);
    click(&window, "cmdAddEntry");
    EXPECT_EQ(desk.prompter.last().text, u"An entry cannot begin with \"[\" or \";\".");
    newEntry->setText(u" Gate 1 "_s);
    click(&window, "cmdAddEntry");
    EXPECT_EQ(entries->count(), 1);

    EXPECT_EQ(desk.folder.read(u"../_PSF/PSystem/PACustom.ini"_s), QByteArray("; site lists\r\n"
                                                                              "[CATEGORY]\r\n"
                                                                              "VISITOR\r\n"
                                                                              "COURIER\r\n"
                                                                              "\r\n"
                                                                              "AFTER BLANK\r\n"
                                                                              "[DESCRIPTION]\r\n"
                                                                              "CONTRACTOR\r\n"
                                                                              "[SELECTACCESS]\r\n"
                                                                              "Gate 1\r\n"));
    EXPECT_TRUE(window.pickListsChanged());
    EXPECT_EQ(desk.prompter.unusedAnswers(), 0u);
}

TEST_F(SettingsWindowTest, theServerIsTestedAsTypedAndSavedForTheDeskToSwitchTo) {
    if (TempPgCluster::serverBinaries().isEmpty())
        GTEST_SKIP() << "PostgreSQL's server is not installed (apt-get install postgresql): not tested";
    TempPgCluster cluster;
    const QString db = cluster.createDatabase();
    ASSERT_FALSE(db.isEmpty()) << cluster.problem().toStdString();
    const QMap<QString, QString> parts = connInfoParts(db);

    SettingsWindow window(state.AppPath, state.settings, state.prompter, state.help, reachServer);
    window.show();
    find<QTabWidget>(&window, "tabSettings")->setCurrentIndex(3);
    find<QLineEdit>(&window, "txtServerHost")->setText(parts[u"host"_s]);
    find<QLineEdit>(&window, "txtServerPort")->setText(parts[u"port"_s]);
    find<QLineEdit>(&window, "txtServerDatabase")->setText(parts[u"dbname"_s]);
    find<QLineEdit>(&window, "txtServerUser")->setText(parts[u"user"_s]);
    // The test server trusts every local connection, but the password must still pass libpq's parsing.
    find<QLineEdit>(&window, "txtServerPassword")->setText(u"it's a \\ pass"_s);

    click(&window, "cmdTestServer");
    EXPECT_EQ(desk.prompter.last().text,
              u"The bookings server cannot be reached: the database's tables are not made yet: run "
              "porvane-admin --db CONNINFO db init"_s);
    find<QLineEdit>(&window, "txtServerDatabase")->setText(u"nosuchdb"_s);
    click(&window, "cmdTestServer");
    EXPECT_TRUE(desk.prompter.last().text.startsWith(u"The bookings server cannot be reached: "_s));
    EXPECT_TRUE(desk.prompter.last().text.contains(u"\"nosuchdb\" does not exist"_s))
        << desk.prompter.last().text.toStdString();
    find<QLineEdit>(&window, "txtServerDatabase")->setText(parts[u"dbname"_s]);

    click(&window, "cmdSave");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_TRUE(window.storeChanged());
    EXPECT_FALSE(window.restartPending());
    const Settings saved = reread();
    EXPECT_EQ(saved.ServerHost, parts[u"host"_s]);
    EXPECT_EQ(saved.ServerPassword, u"it's a \\ pass"_s);

    // The connection string the settings make is the one porvane-admin takes.
    const AdminRun init = runAdmin(desk.folder, u"2026-11-23"_s,
                                   {u"--db"_s, ServerSettings::connInfo(saved), u"db"_s, u"init"_s});
    EXPECT_EQ(init.status, 0) << init.err.toStdString();
    SettingsWindow again(state.AppPath, state.settings, state.prompter, state.help, reachServer);
    click(&again, "cmdTestServer");
    EXPECT_EQ(desk.prompter.last().text, u"The bookings server answers and holds the bookings tables.");
}

// Answers whatever modal window the desk shows, as a user would, until the script says it is done.
class ModalScript {
public:
    using Step = std::function<bool(QWidget* modal)>; // true when the script is finished
    explicit ModalScript(Step step)
        : m_step(std::move(step)) {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (QWidget* modal = QApplication::activeModalWidget(); modal && m_step(modal))
                m_timer.stop();
        });
        m_timer.start(10);
    }

private:
    Step m_step;
    QTimer m_timer;
};

struct DeskSettingsTest : SettingsWindowTest {
    RecordStore records = recordStoreOf(state);
    RecordStoreBooking store{records};
    MainWindow window{state, store};
};

TEST_F(DeskSettingsTest, theSettingsButtonOpensNothingWithoutThePassword) {
    window.show();
    int tries = 0;
    bool settingsShown = false;
    ModalScript script([&](QWidget* modal) {
        if (modal->objectName() == u"frmSettings") {
            settingsShown = true;
            static_cast<QDialog*>(modal)->reject();
            return true;
        }
        EXPECT_EQ(modal->objectName(), u"frmSettingsPW");
        find<QLineEdit>(modal, "txtPassword")->setText(u"ppp"_s);
        click(modal, "cmdPWOK");
        ++tries;
        return false; // keeps watching, so a settings window opened after all would be caught
    });
    click(&window, "cmdSettings");
    EXPECT_EQ(tries, 3);
    EXPECT_FALSE(settingsShown);
    EXPECT_EQ(desk.prompter.texts(), QStringList(3, u"The settings password is not correct."_s));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(DeskSettingsTest, aNewDataFolderSavedThroughTheDeskClosesItWithoutAsking) {
    QTemporaryDir share;
    for (const char* sub : {"Record", "Status", "photo"})
        ASSERT_TRUE(QDir(share.path()).mkdir(QString::fromLatin1(sub)));
    window.show();
    ModalScript script([&](QWidget* modal) {
        if (modal->objectName() == u"frmSettingsPW") {
            find<QLineEdit>(modal, "txtPassword")->setText(u"PPP"_s);
            click(modal, "cmdPWOK");
            return false;
        }
        find<QLineEdit>(modal, "txtDataPath")->setText(share.path());
        click(modal, "cmdSave");
        return true;
    });
    click(&window, "cmdSettings");
    EXPECT_EQ(reread().DataPath, share.path());
    EXPECT_FALSE(window.isVisible());
    // The restart notice is the only message: closing did not ask about the session.
    ASSERT_EQ(desk.prompter.messages().size(), 1);
    EXPECT_TRUE(desk.prompter.last().text.startsWith(u"The new settings take effect"));
}

} // namespace
