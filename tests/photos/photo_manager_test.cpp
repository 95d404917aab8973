#include "child_process.h"
#include "photos/photo_files.h"
#include "photos/photo_manager.h"
#include "test_desk.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;
using porvane::test::handBooking;
using porvane::test::slot;

namespace {

struct PhotoDesk : test::TestDesk {
    PhotoManager photos{state};

    PhotoDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(10, 0))) {
        // Two bookings of November, one with a time booked on the 14th.
        folder.write(
            u"Record/2611.vrf"_s,
            handBooking("261103090000", "Ada", "Quist", {{550, "Quist Surveys"}}) + "\r\n" +
                handBooking("261105101010", "Bert", "Rowe",
                            {{550, "Rowe & Sons"}, {969, "14-11-2026 at 08:00"}, {slot(14), "0930"}}) +
                "\r\n" + handBooking("261106111111", "Cy", "Nophoto", {{550, "Elsewhere"}}) + "\r\n");
        photo("photo/2611/261103090000_Ada_Quist.bmp", 5000);
        photo("photo/2611/261105101010_Bert_Rowe.bmp", 6000);
    }
    void photo(const char* relative, int bytes) const {
        folder.write(QString::fromLatin1(relative), QByteArray(bytes, 'x'));
    }
    void current(const char* regNo, const char* first, const char* last, const char* org) {
        state.record[Field::RegNo] = QString::fromLatin1(regNo);
        state.record[Field::FirstName] = QString::fromLatin1(first);
        state.record[Field::LastName] = QString::fromLatin1(last);
        state.record[Field::Organisation] = QString::fromLatin1(org);
    }
    QStringList photoFiles(const char* month) const {
        return QDir(folder.path(u"photo/"_s + QString::fromLatin1(month))).entryList(QDir::Files);
    }
};

} // namespace

TEST(PhotoList, listsBookingsWhosePhotoExistsByMonthDayOrText) {
    PhotoDesk d;
    const QList<PhotoRow> month = d.photos.list({u"2611"_s, u"2612"_s});
    ASSERT_EQ(month.size(), 2);
    EXPECT_EQ(month[0].regNo, u"261103090000");
    EXPECT_EQ(month[0].name, u"Ada Quist");
    EXPECT_EQ(month[1].organisation, u"Rowe & Sons");
    EXPECT_EQ(month[1].passIssued, u"14-11-2026 at 08:00");
    EXPECT_EQ(month[0].age, u"< 1 Hour"); // written moments ago, seen at a clock set earlier
    EXPECT_EQ(PhotoManager::countLine(month.size()), u"2 Photos Found");

    const QList<PhotoRow> day = d.photos.list({u"2611"_s}, 14);
    ASSERT_EQ(day.size(), 1);
    EXPECT_EQ(day[0].regNo, u"261105101010");
    EXPECT_EQ(PhotoManager::countLine(day.size()), u"One Photo Found");
    EXPECT_EQ(PhotoManager::countLine(d.photos.list({u"2611"_s}, 15).size()), u"No Photos Found");

    const QList<PhotoRow> found = d.photos.find({u"2611"_s}, u"quist"_s);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].firstName, u"Ada");
    EXPECT_EQ(d.photos.find({u"2611"_s}, u"sons"_s).size(), 1);
}

// A photo its user may not write has no file time (as the old desk, which opened it for writing to read it).
TEST(PhotoList, aPhotoThatCannotBeWrittenHasTheZeroFileTime) {
    PhotoDesk d;
    const QString path = d.folder.path(u"photo/2611/261103090000_Ada_Quist.bmp"_s);
    EXPECT_TRUE(photoFileTime(path).moment.isValid());
    ASSERT_TRUE(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadOther));
    d.folder.openToOtherUsers();
    EXPECT_TRUE(test::inChildProcess(
        [&] {
            const PhotoFileTime t = photoFileTime(path);
            return t.date == u"01/01/1601" && !t.moment.isValid();
        },
        true));
}

TEST(PhotoAge, boundaries) {
    const QDateTime now(QDate(2026, 11, 14), QTime(10, 0));
    auto ageAt = [&](const QDateTime& taken) {
        return photoAge(taken, now);
    };
    EXPECT_EQ(ageAt(now.addSecs(-30 * 60)), u"< 1 Hour");
    EXPECT_EQ(ageAt(now.addSecs(-3600)), u"1 Hour");
    EXPECT_EQ(ageAt(now.addSecs(-23 * 3600 - 59 * 60)), u"23 Hours");
    EXPECT_EQ(ageAt(now.addDays(-1)), u"1 Day");
    EXPECT_EQ(ageAt(now.addDays(-20)), u"20 Days");
    EXPECT_EQ(ageAt(now.addMonths(-1)), u"1 Month");
    EXPECT_EQ(ageAt(now.addMonths(-1).addSecs(60)), u"30 Days"); // one month less a minute
    EXPECT_EQ(ageAt(now.addMonths(-12)), u"12 Months");
    EXPECT_EQ(ageAt(now.addMonths(-13)), u"> 1 Year");
    EXPECT_EQ(ageAt(now.addMonths(-24)), u"> 1 Year");
    EXPECT_EQ(ageAt(now.addMonths(-25)), u"> 2 Years");
}

TEST(PhotoShow, aPhotoOverTheLimitIsRefused) {
    PhotoDesk d;
    d.photo("photo/2611/261103090000_Ada_Quist.bmp", 100000);
    d.photo("photo/2611/261105101010_Bert_Rowe.bmp", 100001);
    const QList<PhotoRow> rows = d.photos.list({u"2611"_s});
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(d.photos.show(rows[0]), rows[0].path);
    EXPECT_TRUE(d.prompter.messages().isEmpty());
    EXPECT_EQ(d.photos.show(rows[1]), d.folder.appPath() + u"_PSF/IRender/currentfile.bmp"_s);
    ASSERT_EQ(d.prompter.messages().size(), 1);
    EXPECT_EQ(d.prompter.last().text, u"Video Setup Error: Resolution settings are too high for Porvane");
    EXPECT_EQ(d.prompter.last().title, u"Porvane 90");
}

TEST(PhotoAttach, copiesIntoANewMonthFolderAndNeverMoves) {
    PhotoDesk d;
    d.current("261201080000", "Ada", "Quist", "Quist Surveys");
    const PhotoRow ada = d.photos.list({u"2611"_s}).at(0);
    d.prompter.queue(Answer::Yes);
    ASSERT_TRUE(d.photos.attach(ada));
    ASSERT_EQ(d.prompter.messages().size(), 1); // same name: only the confirmation
    EXPECT_EQ(
        d.prompter.last().text,
        u"This will attach the following photo to the Current File: \r\n\r\nThe Photo for: \r\n"
        u"Ada Quist  [ 261103090000 ] - (Quist Surveys)\r\n\r\nWill attach to, and be used for:\r\n"
        u"Ada Quist  [ 261201080000 ] - (Quist Surveys)\r\n\r\n"
        u"Please note: Attaching a photo in this way will not detach it from the original file, a new copy "
        u"photo will be created so that each file will have its own (identical) photo.  Do you wish to "
        u"proceed?");
    EXPECT_EQ(d.prompter.last().buttons, Buttons::YesNoCancel);
    EXPECT_EQ(d.folder.read(u"photo/2612/261201080000_Ada_Quist.bmp"_s), QByteArray(5000, 'x'));
    EXPECT_TRUE(d.folder.exists(u"photo/2611/261103090000_Ada_Quist.bmp"_s));
    EXPECT_EQ(d.state.record[Field::PhotoOnFile], u"1");
}

TEST(PhotoAttach, aDifferentNameIsAskedAboutAndEitherNoStops) {
    for (Answer first : {Answer::No, Answer::Yes}) {
        PhotoDesk d;
        d.current("261107120000", "Ann", "Other", "Else Ltd");
        const PhotoRow bert = d.photos.list({u"2611"_s}).at(1);
        d.prompter.queue(first);
        if (first == Answer::Yes)
            d.prompter.queue(Answer::Cancel);
        EXPECT_FALSE(d.photos.attach(bert));
        EXPECT_EQ(d.prompter.messages().at(0).text, u"This will attach a photo to an individual with a "
                                                    u"different name!  \r\nDo you still wish to proceed?");
        EXPECT_EQ(d.prompter.messages().size(), first == Answer::Yes ? 2 : 1);
        EXPECT_EQ(d.photoFiles("2611").size(), 2);
    }
}

TEST(PhotoAttach, anUnreadablePhotoIsReported) {
    PhotoDesk d;
    d.current("261103090000", "Ada", "Quist", "Quist Surveys");
    PhotoRow gone = d.photos.list({u"2611"_s}).at(0);
    QFile::remove(gone.path);
    d.prompter.queue(Answer::Yes);
    EXPECT_FALSE(d.photos.attach(gone));
    EXPECT_EQ(d.prompter.last().text, u"Can't attach photo: The file may be locked by another application");
}

TEST(PhotoDelete, byPatternRemovesAPhotoOrphanedByARename) {
    PhotoDesk d;
    // Taken before Ada was renamed: the name no longer matches the booking's photo path.
    d.photo("photo/2611/261103090000_Adah_Quist.bmp", 4000);
    d.current("261103090000", "Ada", "Quist", "Quist Surveys");
    d.state.record[Field::PhotoOnFile] = u"1"_s;
    const PhotoRow ada = d.photos.list({u"2611"_s}).at(0);

    d.prompter.queue(Answer::Cancel);
    EXPECT_TRUE(d.photos.deleteOne(ada).isEmpty());
    EXPECT_EQ(d.photoFiles("2611").size(), 3);

    d.prompter.queue(Answer::Ok);
    EXPECT_EQ(d.photos.deleteOne(ada), u"Photo Deleted");
    EXPECT_EQ(d.prompter.last().text, u"This will permanently delete the photo for Ada Quist");
    EXPECT_EQ(d.photoFiles("2611"), QStringList{u"261105101010_Bert_Rowe.bmp"_s});
    EXPECT_EQ(d.state.record[Field::PhotoOnFile], u"0");
}

TEST(PhotoDelete, allListedReportsWhatRemains) {
    PhotoDesk d;
    const QList<PhotoRow> rows = d.photos.list({u"2611"_s});
    d.prompter.queue(Answer::Ok);
    EXPECT_EQ(d.photos.deleteListed(rows), u"Photos Deleted");
    EXPECT_EQ(d.prompter.last().text, u"This will permanently delete ALL PHOTOS currently listed");
    EXPECT_TRUE(d.photoFiles("2611").isEmpty());

    // A folder that refuses its user deletions leaves every photo in place.
    PhotoDesk locked;
    const QList<PhotoRow> all = locked.photos.list({u"2611"_s});
    ASSERT_TRUE(QFile::setPermissions(locked.folder.path(u"photo/2611"_s),
                                      QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                          QFileDevice::ReadOther | QFileDevice::ExeOther));
    locked.folder.openToOtherUsers();
    EXPECT_TRUE(test::inChildProcess(
        [&] {
            locked.prompter.queue(Answer::Ok);
            return locked.photos.deleteListed(all) ==
                   u"2 items could not be deleted, these may be locked or already removed";
        },
        true));
    EXPECT_EQ(locked.photoFiles("2611").size(), 2);
}
