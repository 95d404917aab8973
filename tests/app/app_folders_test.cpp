#include "admin_run.h"
#include "app/app_paths.h"
#include "app/app_state.h"
#include "app/help_topics.h"
#include "app/single_instance.h"
#include "recording_opener.h"
#include "scripted_prompter.h"
#include "temp_data_folder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;

namespace {

TEST(AppPath, homeComesFromCommandLineThenEnvironmentThenProgram) {
    const QStringList none{QStringLiteral("porvane")};
    EXPECT_EQ(resolveAppPath(none, QString(), QStringLiteral("/opt/porvane")), u"/opt/porvane/");
    EXPECT_EQ(resolveAppPath(none, QStringLiteral("/srv/desk1"), QStringLiteral("/opt/porvane")),
              u"/srv/desk1/");
    const QStringList home{QStringLiteral("porvane"), QStringLiteral("--home"),
                           QStringLiteral("/srv/desk2/")};
    EXPECT_EQ(resolveAppPath(home, QStringLiteral("/srv/desk1"), QStringLiteral("/opt/porvane")),
              u"/srv/desk2/");
    const QStringList joined{QStringLiteral("porvane"), QStringLiteral("--home=/srv/desk3")};
    EXPECT_EQ(resolveAppPath(joined, QString(), QStringLiteral("/opt/porvane")), u"/srv/desk3/");
    // An installed, read-only program works in the user's own home unless told otherwise.
    EXPECT_EQ(resolveAppPath(none, QString(), QStringLiteral("/usr/lib/porvane90"), false,
                             QStringLiteral("/home/ann/.local/share/porvane90")),
              u"/home/ann/.local/share/porvane90/");
    EXPECT_EQ(resolveAppPath(none, QStringLiteral("/srv/desk1"), QStringLiteral("/usr/lib/porvane90"), false,
                             QStringLiteral("/home/ann/.local/share/porvane90")),
              u"/srv/desk1/");
    // A root folder keeps its single slash; a relative home is made absolute.
    EXPECT_EQ(resolveAppPath(none, QStringLiteral("/"), QString()), u"/");
    const QString relative = resolveAppPath(none, QStringLiteral("desk4"), QString());
    EXPECT_EQ(relative, QDir::current().absoluteFilePath(QStringLiteral("desk4")) + u'/');
}

// A new home gets what the program ships, never the settings a run beside the program wrote (they name that
// installation's data folder), and keeps its own edits.
TEST(AppPath, newHomeGetsMissingResourcesButKeepsItsOwnEdits_andNeverAnotherInstallationsSettings) {
    QTemporaryDir program;
    QTemporaryDir home;
    QDir(program.path()).mkpath(QStringLiteral("_PSF/PSystem"));
    QDir(program.path()).mkpath(QStringLiteral("PorvaneDocs"));
    const auto put = [](const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    };
    put(program.filePath(QStringLiteral("_PSF/PSystem/PACustom.ini")), "[CATEGORY]\r\nVISITOR\r\n");
    put(program.filePath(QStringLiteral("PorvaneDocs/index.html")), "<html></html>");
    put(program.filePath(QStringLiteral("_PSF/IRender/OurPassLogo.bmp")), "BM");
    put(program.filePath(QStringLiteral("_PSF/PSystem/twsabusr.dat")), "another installation's settings");
    put(program.filePath(QStringLiteral("_PSF/PSystem/twsabusr.dat.damaged")), "and their damaged copy");
    put(home.filePath(QStringLiteral("_PSF/PSystem/PACustom.ini")), "[CATEGORY]\r\nSITE OWN\r\n");

    EXPECT_TRUE(seedHomeFolder(home.path() + u'/', program.path()));
    EXPECT_EQ(QDir(home.filePath(QStringLiteral("_PSF/PSystem"))).entryList(QDir::Files),
              QStringList{QStringLiteral("PACustom.ini")});
    EXPECT_TRUE(QFileInfo::exists(home.filePath(QStringLiteral("_PSF/IRender/OurPassLogo.bmp"))));
    QFile kept(home.filePath(QStringLiteral("_PSF/PSystem/PACustom.ini")));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "[CATEGORY]\r\nSITE OWN\r\n");
    EXPECT_TRUE(QFileInfo::exists(home.filePath(QStringLiteral("PorvaneDocs/index.html"))));
}

TEST(SingleInstance, lockOfAnotherRunningProgramRefusesAndDeadOneIsTakenOver) {
    QTemporaryDir dir;
    const QString lock = dir.filePath(QStringLiteral("porvane.lock"));
    // A second desk in its own process holds the lock while this one asks.
    QProcess other;
    other.start(QStringLiteral("/bin/sleep"), {QStringLiteral("30")});
    ASSERT_TRUE(other.waitForStarted());
    const auto writeLock = [&](qint64 pid, const QString& app) {
        QFile f(lock);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(QStringLiteral("%1\n%2\n%3\n").arg(pid).arg(app, QSysInfo::machineHostName()).toUtf8());
    };
    writeLock(other.processId(), QStringLiteral("sleep"));
    EXPECT_FALSE(SingleInstance(lock).acquire());

    other.kill();
    other.waitForFinished();
    EXPECT_TRUE(SingleInstance(lock).acquire()) << "the lock of a desk that died is taken over";
}

TEST(Help, showHelpOpensTheCurrentContextsFileEvenWhenMissing) {
    ScriptedPrompter prompter;
    FixedClock clock{QDateTime(QDate(2026, 3, 2), QTime(9, 0))};
    InstantPause pause;
    AppState state{prompter, clock, pause};
    RecordingOpener opener;
    state.help.urlOpener = &opener;
    state.AppPath = QStringLiteral("/opt/porvane 90/");
    state.help.HelpContext = 27;
    state.help.ShowHelp();
    state.help.HelpContext = 4711; // no such page, nothing checks
    state.help.ShowHelp();
    ASSERT_EQ(opener.opened.size(), 2);
    EXPECT_EQ(opener.opened.at(0),
              QUrl(QStringLiteral("file:///opt/porvane%2090/PorvaneDocs/iostatuslist2.html")));
    EXPECT_EQ(opener.opened.at(1).toLocalFile(), u"/opt/porvane 90/PorvaneDocs/index.html");
    EXPECT_TRUE(prompter.messages().isEmpty());
}

// Every help context the desk can hold opens an installed page that is a real page: a title, the shared
// style sheet, a way back to the index; and the index reaches every page.
TEST(Help, everyContextOpensAnInstalledPageThatTheIndexLinks) {
    const QString docs = QStringLiteral(PORVANE_STAGE_DIR) + QStringLiteral("/PorvaneDocs/");
    QFile indexFile(docs + QStringLiteral("index.html"));
    ASSERT_TRUE(indexFile.open(QIODevice::ReadOnly));
    const QString index = QString::fromUtf8(indexFile.readAll());

    QSet<QString> pages;
    for (qint32 context = -1; context <= 200; ++context) {
        const QUrl url = helpUrlFor(QStringLiteral(PORVANE_STAGE_DIR "/"), context);
        const QString file = url.toLocalFile();
        ASSERT_TRUE(QFileInfo::exists(file)) << context << " " << file.toStdString();
        pages.insert(QFileInfo(file).fileName());
    }
    EXPECT_EQ(pages.size(), 17) << "sixteen topic pages and the index";
    EXPECT_TRUE(QFileInfo::exists(docs + QStringLiteral("porvane-help.css")));

    const QRegularExpression heading(QStringLiteral("<h1>[^<]{3,}</h1>"));
    for (const QString& page : pages) {
        QFile f(docs + page);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << page.toStdString();
        const QString html = QString::fromUtf8(f.readAll());
        EXPECT_TRUE(html.contains(heading)) << page.toStdString();
        EXPECT_TRUE(html.contains(QStringLiteral("href=\"porvane-help.css\""))) << page.toStdString();
        EXPECT_GT(html.size(), 700) << page.toStdString() << " has hardly any help in it";
        if (page != u"index.html") {
            EXPECT_TRUE(index.contains(QStringLiteral("href=\"%1\"").arg(page))) << page.toStdString();
            EXPECT_TRUE(html.contains(QStringLiteral("href=\"index.html\""))) << page.toStdString();
        }
        // Links between pages lead to pages that are there.
        static const QRegularExpression link(QStringLiteral("href=\"([^\"#:]+)\""));
        for (auto m = link.globalMatch(html); m.hasNext();) {
            const QString target = m.next().captured(1);
            EXPECT_TRUE(QFileInfo::exists(docs + target))
                << page.toStdString() << " -> " << target.toStdString();
        }
    }
}

// A wrong command line prints the usage to stderr and exits 2; --help, before a command or among its
// arguments, prints the usage (of that command) to stdout and exits 0, also for pass, which porvane-pass
// runs.
TEST(Admin, wrongCommandLinesExit2WithTheUsage_helpExits0) {
    const TempDataFolder folder;
    for (const auto& [today, args] :
         {std::pair{QStringLiteral("2026-03-02"), QStringList{}},
          std::pair{QStringLiteral("soon"), QStringList{}},
          std::pair{QStringLiteral("2026-03-02"), QStringList{QStringLiteral("no-such")}},
          std::pair{QStringLiteral("2026-03-02"),
                    QStringList{QStringLiteral("--bogus"), QStringLiteral("verify")}},
          std::pair{QStringLiteral("2026-03-02"),
                    QStringList{QStringLiteral("demo"), QStringLiteral("--from")}}}) {
        const AdminRun r = runAdmin(folder, today, args);
        EXPECT_EQ(r.status, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(r.err.contains(u"usage: porvane-admin"));
        EXPECT_TRUE(r.out.isEmpty());
    }
    for (const auto& [args, shown] :
         {std::pair{QStringList{QStringLiteral("--help")}, QStringLiteral("\n  verify\n")},
          std::pair{QStringList{QStringLiteral("purge"), QStringLiteral("-h")},
                    QStringLiteral(" purge year YYYY | month YYYY-MM [KIND TEXT]")},
          std::pair{
              QStringList{QStringLiteral("pass"), QStringLiteral("261114093012"), QStringLiteral("--help")},
              QStringLiteral(" pass REGNO [--count N]")}}) {
        const AdminRun r = runAdmin(folder, QStringLiteral("2026-03-02"), args);
        EXPECT_EQ(r.status, 0) << args.join(u' ').toStdString();
        EXPECT_TRUE(r.out.startsWith(u"usage: porvane-admin [--home DIR]")) << r.out.toStdString();
        EXPECT_TRUE(r.out.contains(shown)) << r.out.toStdString();
        EXPECT_TRUE(r.err.isEmpty()) << r.err.toStdString();
    }
}

} // namespace
