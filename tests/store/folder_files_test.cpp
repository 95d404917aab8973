#include "store/data_check.h"
#include "store/line_reader.h"
#include "store/record_line.h"
#include "test_desk.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct FolderFilesTest : ::testing::Test {
    TestDesk desk{QDateTime(QDate(2024, 3, 5), QTime(9, 0))};
    FolderFiles& files = desk.state.dataFolder;

    QList<QByteArray> lines(const LineFileName& name) {
        QList<QByteArray> out;
        const std::unique_ptr<LineReader> reader = files.read(name);
        QByteArrayView line;
        while (reader->next(line))
            out.append(line.toByteArray());
        return out;
    }
};

// The folder is a closed world: only the regular files of each kind count, in key order; a link, a folder
// of that name, a desk's temporary file, another suffix or a linked folder are none of its files.
TEST_F(FolderFilesTest, keys_listOnlyRegularFilesOfTheirKind_inOrder_neverThroughALink) {
    for (const QString& name : {u"Record/2403.vrf"_s, u"Record/2312.vrf"_s, u"Record/2403.vrf.porvane-tmp"_s,
                                u"Record/2404.VRF"_s, u"Record/notes.txt"_s, u"Status/240305.vdf"_s})
        desk.folder.write(name, "x\r\n");
    QDir().mkpath(desk.folder.path(u"Record/2405.vrf"_s));
    ASSERT_TRUE(QFile::link(desk.folder.path(u"Record/2403.vrf"_s), desk.folder.path(u"Record/2406.vrf"_s)));
    EXPECT_EQ(files.keys(LineFileName::Kind::Month), QStringList({u"2312"_s, u"2403"_s}));
    EXPECT_EQ(files.keys(LineFileName::Kind::DayStatus), QStringList({u"240305"_s}));
    EXPECT_TRUE(files.exists(LineFileName::month(QDate(2024, 3, 1))));
    EXPECT_FALSE(files.exists(LineFileName::dayStatus(QDate(2024, 3, 6))));

    const QString elsewhere = desk.folder.appPath() + u"elsewhere"_s;
    ASSERT_TRUE(QDir(desk.folder.path(u"Status"_s)).rename(desk.folder.path(u"Status"_s), elsewhere));
    ASSERT_TRUE(QFile::link(elsewhere, desk.folder.path(u"Status"_s)));
    EXPECT_TRUE(files.keys(LineFileName::Kind::DayStatus).isEmpty());
    EXPECT_EQ(lines(LineFileName::dayStatus(QDate(2024, 3, 5))), QList<QByteArray>());
    EXPECT_NE(files.read(LineFileName::dayStatus(QDate(2024, 3, 5)))->error().number, FileError::None);
}

// Inside one change each read sees what the change wrote so far; the files are the data folder's, and the
// lock is held only while the work runs.
TEST_F(FolderFilesTest, change_readsItsOwnWrites_andMapsEachStepOntoTheFolderFiles) {
    const LineFileName march = LineFileName::month(u"2403"_s);
    const LineFileName april = LineFileName::month(u"2404"_s);
    const LineFileName day = LineFileName::dayStatus(QDate(2024, 3, 5));
    desk.folder.write(u"Record/2404.vrf"_s, "april\r\n");
    const FileError error = files.change([&](LineFileChanges& changes) -> FileError {
        EXPECT_TRUE(desk.folder.exists(u"porvane.lock"_s));
        EXPECT_EQ(changes.read(march)->error().number, FileError::FileNotFound);
        if (FileError e = changes.append(march, "one"))
            return e;
        if (FileError e = changes.append(march, "two"))
            return e;
        bool changed = false;
        const LineEdit dropOne = [](QByteArrayView line, QByteArray&) {
            return line == "one";
        };
        if (FileError e = changes.rewrite(march, {}, dropOne, &changed))
            return e;
        EXPECT_TRUE(changed);
        QList<QByteArray> seen;
        const std::unique_ptr<LineReader> reader = changes.read(march);
        QByteArrayView line;
        while (reader->next(line))
            seen.append(line.toByteArray());
        EXPECT_EQ(seen, QList<QByteArray>({"two"}));
        if (FileError e = changes.replace(day, [](const PieceWriter& write) { return write("in\r\n"); }))
            return e;
        return changes.removeAll({april});
    });
    ASSERT_FALSE(error) << error.text.toStdString();
    EXPECT_FALSE(desk.folder.exists(u"porvane.lock"_s));
    EXPECT_EQ(desk.folder.read(u"Record/2403.vrf"_s), "two\r\n");
    EXPECT_EQ(desk.folder.read(u"Status/240305.vdf"_s), "in\r\n");
    EXPECT_FALSE(desk.folder.exists(u"Record/2404.vrf"_s));
    EXPECT_EQ(files.path(march), desk.folder.path(u"Record/2403.vrf"_s));

    // A change that fails part-way returns its error; a file it never reached is untouched.
    const FileError missing = files.change([&](LineFileChanges& changes) {
        return changes.rewrite(april, {}, [](QByteArrayView, QByteArray&) { return true; });
    });
    EXPECT_EQ(missing.number, FileError::FileNotFound);
    EXPECT_EQ(lines(march), QList<QByteArray>({"two"}));
}

// The line checks of porvane-admin verify read a store's files through the seam exactly as they read the
// folder's: the same faults, at the same places.
TEST_F(FolderFilesTest, lineChecksThroughTheStore_findWhatTheFolderCheckFinds) {
    const QByteArray sound = handBooking("240305090000", "Ada", "Quist", {{991, "09:05"}, {996, "  -  "}});
    desk.folder.write(u"Record/2403.vrf"_s, sound + "\r\n" + sound.left(600) + "\n" +
                                                handBooking("240405090000", "Apr", "Il") + "\r\n" +
                                                sound.left(300));
    desk.folder.write(u"Status/240305.vdf"_s, sound + "\r\n" + handLine({{1, "241305000000"}}) + "\r\n");
    desk.folder.write(u"Record/notes.vrf"_s, "not a month\r\n");
    int folderFiles = 0;
    int storeFiles = 0;
    const QList<DataDamage> inFolder = checkDataFolder(desk.folder.dataPath(), &folderFiles);
    const QList<DataDamage> inStore = checkLineFiles(files, &storeFiles);
    ASSERT_EQ(inFolder.size(), 6);
    ASSERT_EQ(inStore.size(), inFolder.size());
    for (qsizetype i = 0; i < inFolder.size(); ++i) {
        EXPECT_EQ(inStore[i].file, inFolder[i].file) << i;
        EXPECT_EQ(inStore[i].line, inFolder[i].line) << i;
        EXPECT_EQ(inStore[i].what, inFolder[i].what) << i;
    }
    EXPECT_EQ(storeFiles, 2);
    EXPECT_EQ(folderFiles, 2);
}

} // namespace
