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

TEST_F(PickListsTest, addingAnEntry_goesAfterTheChosenOneInItsSectionOnly) {
    write("[CATEGORY]\r\nVISITOR\r\nCONTRACTOR\r\n\r\n[DESCRIPTION]\r\nVISITOR\r\n");
    ASSERT_FALSE(addPickListEntry(ini(), u"CATEGORY"_s, u" VISITOR"_s, u"  COURIER "_s));
    EXPECT_EQ(read(), "[CATEGORY]\r\nVISITOR\r\nCOURIER\r\nCONTRACTOR\r\n\r\n[DESCRIPTION]\r\nVISITOR\r\n");
    EXPECT_EQ(LoadMainPickLists(ini()).first, (QStringList{u" VISITOR"_s, u" COURIER"_s, u" CONTRACTOR"_s}));
    EXPECT_EQ(folderEntries(folder.appPath() + u"_PSF/PSystem"_s), (QStringList{u"PACustom.ini"_s}));
}

TEST_F(PickListsTest, addingToAnEmptySection_putsTheEntryDirectlyAfterTheHeader) {
    write("[CATEGORY]\nVISITOR\n[SELECTACCESS]\n\n[DEPARTME]\nSTORES\n");
    ASSERT_FALSE(addPickListEntry(ini(), u"SELECT ACCESS"_s, QString(), u"Gate 1"_s));
    EXPECT_EQ(read(), "[CATEGORY]\r\nVISITOR\r\n[SELECTACCESS]\r\nGate 1\r\n\r\n[DEPARTME]\r\nSTORES\r\n");
    EXPECT_EQ(LoadDetailPickLists(ini()).second, (QStringList{u" Gate 1"_s}));
}

TEST_F(PickListsTest, deletingAnEntry_removesItsLinesInItsSectionOnly) {
    write("[DEPARTMENT]\r\nSTORES\r\nENGINEERING  \r\nSTORES\r\n[DESCRIPT]\r\nSTORES\r\n");
    ASSERT_FALSE(deletePickListEntry(ini(), u"DEPARTMENT"_s, u" STORES"_s));
    EXPECT_EQ(read(), "[DEPARTMENT]\r\nENGINEERING  \r\n[DESCRIPT]\r\nSTORES\r\n");
    ASSERT_FALSE(deletePickListEntry(ini(), u"DEPARTMENT"_s, u" ENGINEERING"_s));
    EXPECT_EQ(read(), "[DEPARTMENT]\r\n[DESCRIPT]\r\nSTORES\r\n");
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
