// Names and identifiers read from record files go into photo file names and deletions; none of them may reach
// a file outside the data folder's own month folders.
#include "store/photo_paths.h"
#include "store/record_line.h"
#include "store/record_store.h"
#include "test_desk.h"

#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList kHostile{u"../../x"_s, u"a/b"_s,      u"..\\..\\x"_s,   u".."_s, u"."_s,
                           u"x\ny"_s,    u"\x01\x1f"_s, u"/etc/passwd"_s, u"*"_s,  u"2403/../../.."_s};

} // namespace

TEST(HostileNames, photoPathsStayInsideTheirMonthFolder) {
    const QString data = u"/srv/porvane/data/"_s;
    for (const QString& regNo : kHostile + QStringList{u"240305090000"_s})
        for (const QString& name : kHostile) {
            const QString path = photoPath(data, regNo, name, name);
            const QString folder = photoMonthFolder(data, regNo);
            EXPECT_TRUE(folder.startsWith(data + u"photo/"_s)) << folder.toStdString();
            EXPECT_EQ(QDir::cleanPath(folder) + u'/', folder) << "no . or .. in " << folder.toStdString();
            EXPECT_EQ(QFileInfo(path).path() + u'/', folder) << path.toStdString();
            EXPECT_FALSE(QFileInfo(path).fileName().contains(u'\n')) << path.toStdString();
            EXPECT_FALSE(photoPattern(regNo).contains(u'/')) << photoPattern(regNo).toStdString();
        }
}

TEST(HostileNames, deletingBookingsWithHostileNamesRemovesNothingOutsideTheirPhotoFolder) {
    TestDesk desk(QDateTime(QDate(2024, 3, 5), QTime(9, 0)));
    // Files a traversal would hit: beside the data folder, in it, and in another month's photos.
    desk.folder.write(u"../x"_s, "keep");
    desk.folder.write(u"x"_s, "keep");
    desk.folder.write(u"photo/x"_s, "keep");
    desk.folder.write(u"photo/2402/240205090000_a_b.bmp"_s, "keep");
    desk.folder.write(u"Status/240305.vdf"_s, "keep");
    QByteArray month;
    for (const QString& name : kHostile)
        if (!name.contains(u'\n')) // a line break would make two lines of it
            month += handBooking("240305090000", name.toLatin1().constData(), "b") + "\r\n";
    desk.folder.write(u"Record/2403.vrf"_s, month);
    const QMap<QString, QByteArray> before = desk.folder.contents(desk.folder.appPath());

    RecordStore store = desk.recordStore();
    for (const QString& regNoText : kHostile + QStringList{u"240305090000"_s}) {
        for (const QString& name : kHostile) {
            desk.state.record.ClearRecord();
            desk.state.record[Field::RegNo] = regNoText;
            desk.state.record[Field::FirstName] = name;
            desk.state.record[Field::LastName] = name;
            const StoreResult result = store.DeleteBooking(u"2403"_s, regNoText, name, name);
            EXPECT_TRUE(result.ok()) << result.error.text.toStdString();
        }
    }
    // Only the month file changed (its bookings are gone); what a traversal would hit is all there.
    QMap<QString, QByteArray> after = desk.folder.contents(desk.folder.appPath());
    QMap<QString, QByteArray> expected = before;
    expected[u"Porvanedata/Record/2403.vrf"_s] = QByteArray();
    EXPECT_EQ(after, expected);
}
