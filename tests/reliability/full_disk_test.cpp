// A data folder on a small tmpfs that really fills up: the store's writes fail cleanly and work again once
// there is room. Needs the right to mount; skipped where that is not allowed.
#include "../store/store_fixture.h"
#include "store/data_lock.h"
#include "store/record_line.h"
#include "store/record_store.h"

#include <QCryptographicHash>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPages = 32;

class FullDisk : public ::testing::Test {
protected:
    void SetUp() override {
        page = int(::sysconf(_SC_PAGESIZE));
        const QByteArray options = "size=" + QByteArray::number(kPages * page);
        mountPoint = desk.folder.dataPath();
        if (::mount("porvane-test", QFile::encodeName(mountPoint).constData(), "tmpfs", MS_NOSUID | MS_NODEV,
                    options.constData()) != 0)
            GTEST_SKIP() << "a small tmpfs cannot be mounted here (" << std::strerror(errno)
                         << "); run as root to test a really full disk";
        mounted = true;
        for (const char* folder : {"Record", "Status", "photo"})
            QDir(mountPoint).mkdir(QString::fromLatin1(folder));
    }
    void TearDown() override {
        if (mounted)
            ::umount2(QFile::encodeName(mountPoint).constData(), MNT_DETACH);
    }
    QByteArray monthHash() const {
        return QCryptographicHash::hash(desk.folder.read(u"Record/2403.vrf"_s), QCryptographicHash::Sha256);
    }

    TestDesk desk{QDateTime(QDate(2024, 3, 5), QTime(9, 0))};
    QString mountPoint;
    bool mounted = false;
    int page = 4096;
};

} // namespace

TEST_F(FullDisk, saveAndUpdateFailWithDiskFull_leaveTheMonthAndNoTemporaryFile_andWorkOnceThereIsRoom) {
    // A month of ten pages, and a filler that leaves room for the lock file but not for one byte more.
    QByteArray month;
    for (int i = 0; i < 34; ++i)
        month += handBooking(
                     (u"2403%1"_s.arg(i % 28 + 1, 2, 10, QChar(u'0')) + u"090000"_s).toLatin1().constData(),
                     "Full", QByteArray::number(i).constData()) +
                 "\r\n";
    ASSERT_EQ((month.size() + page - 1) / page, 10);
    desk.folder.write(u"Record/2403.vrf"_s, month);
    desk.folder.write(u"filler"_s, QByteArray(qsizetype(kPages - 10 - 1) * page, 'f'));
    const QByteArray hash = monthHash();

    RecordStore store = desk.recordStore();
    desk.state.dataFolder.lockWait = std::chrono::milliseconds(2000);
    decodeRecordLine(RecordLine(month), desk.state.record);
    desk.state.record.MarkRecordSaved();
    desk.state.record[Field::CarReg] = u"typed"_s;
    const QString monthPath = desk.folder.path(u"Record/2403.vrf"_s);

    StoreResult result = store.UpdateRecord(desk.state.record, u"2403"_s, u"240301090000"_s);
    EXPECT_EQ(result.error.number, 61);
    EXPECT_EQ(result.error.text, u"Disk full: "_s + monthPath);
    EXPECT_EQ(monthHash(), hash);

    desk.state.record[Field::Department] = u"STORES"_s;
    desk.state.record[Field::Organisation] = u"Full Disk Ltd"_s;
    result = store.SaveNewRecord(desk.state.record, u"2403"_s);
    EXPECT_EQ(result.error.number, 61);
    EXPECT_EQ(result.error.text, u"Disk full: "_s + monthPath);
    EXPECT_EQ(monthHash(), hash) << "the part of the line that fitted was taken back";
    EXPECT_EQ(desk.state.record[Field::CarReg], u"typed") << "the booking stays as typed";
    EXPECT_EQ(folderEntries(desk.folder.path(u"Record"_s)), QStringList{u"2403.vrf"_s})
        << "no temporary file";
    EXPECT_FALSE(QFileInfo::exists(DataLock::lockPath(desk.state.dataPath())));

    ASSERT_TRUE(QFile::remove(desk.folder.path(u"filler"_s)));
    result = store.UpdateRecord(desk.state.record, u"2403"_s, u"240301090000"_s);
    ASSERT_TRUE(result.ok()) << result.error.text.toStdString();
    result = store.SaveNewRecord(desk.state.record, u"2403"_s);
    ASSERT_TRUE(result.ok()) << result.error.text.toStdString();
    const QByteArray after = desk.folder.read(u"Record/2403.vrf"_s);
    EXPECT_EQ(after.size(), month.size() + 1188);
    EXPECT_EQ(handColumns(after, 69, 10), "typed");
}

// With no room even for the lock, the refusal names the full disk, not a permission the desk has.
TEST_F(FullDisk, aLockThatCannotBeWritten_namesTheFullDisk) {
    desk.folder.write(u"filler"_s, QByteArray(qsizetype(kPages) * page, 'f'));
    DataLock lock(desk.state.dataPath(), std::chrono::milliseconds(100));
    EXPECT_EQ(lock.acquire(), DataLock::State::Failed);
    EXPECT_EQ(lock.error().number, 61);
    EXPECT_EQ(lock.error().text, u"Disk full: "_s + DataLock::lockPath(desk.state.dataPath()));
}
