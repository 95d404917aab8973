#include "store/pick_lists.h"
#include "store_fixture.h"

#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

class PickListsTest : public ::testing::Test {
protected:
    QString ini() const { return folder.appPath() + u"_PSF/PSystem/PACustom.ini"_s; }
    void write(const QByteArray& bytes) const { folder.write(u"../_PSF/PSystem/PACustom.ini"_s, bytes); }
    QByteArray read() const { return folder.read(u"../_PSF/PSystem/PACustom.ini"_s); }

    TempDataFolder folder;
};

TEST_F(PickListsTest, sectionsEndAtBlankOrCommentLines_unknownHeadersDoNot_headersAreExact) {
    write("; pick lists\r\n"
          "[CATEGORY]\r\n"
          "VISITOR\r\n"
          "CONTRACTOR\r\n"
          "[PARKING]\r\n"
          "DELIVERY\r\n"
          "\r\n"
          "IGNORED AFTER BLANK\r\n"
          "[DEPARTMENT]\n" // ten characters are enough, LF-only is fine
          "ENGINEERING\n"
          " indented ends the section\n"
          "STORES\n"
          "[Category]\n"
          "LOWER CASE HEADER\n"
          "[DESCRIPTION]\n"
          "Painting\n"
          ";comment\n"
          "[SELECTAC]\n"
          "Zone A\n"
          "Zone A\n"
          "Zone \x80");
    const PickLists main = LoadMainPickLists(ini());
    EXPECT_EQ(main.first, (QStringList{u" VISITOR"_s, u" CONTRACTOR"_s, u" DELIVERY"_s}));
    EXPECT_EQ(main.second, (QStringList{u" ENGINEERING"_s}));
    const PickLists detail = LoadDetailPickLists(ini());
    EXPECT_EQ(detail.first, (QStringList{u" Painting"_s}));
    EXPECT_EQ(detail.second, (QStringList{u" Zone A"_s, u" Zone A"_s, u" Zone \u20AC"_s}));
}

TEST_F(PickListsTest, aMissingFileReadsAsEmptyLists_andEditingItReportsPathOrFileNotFound) {
    const PickLists none = LoadMainPickLists(ini());
    EXPECT_TRUE(none.first.isEmpty() && none.second.isEmpty());
    EXPECT_EQ(addPickListEntry(ini(), u"CATEGORY"_s, u" VISITOR"_s, u"X"_s).number, 76);
    folder.write(u"../_PSF/PSystem/twsabusr.dat"_s, "x");
    EXPECT_EQ(deletePickListEntry(ini(), u"CATEGORY"_s, u" VISITOR"_s).number, 53);
    EXPECT_FALSE(QFileInfo::exists(ini()));
}

} // namespace
