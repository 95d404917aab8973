#include "store/record_line.h"
#include "temp_data_folder.h"

#include <gtest/gtest.h>

using namespace porvane;
using porvane::test::handLine;

TEST(RecordLine, readsFieldsAtTheirColumnsFromAHandLaidLine) {
    const QByteArray bytes = handLine({{1, "240314100507"},
                                       {14, "John"},
                                       {31, "Smith"},
                                       {293, "line one<$c>line two<$c>three"},
                                       {504, "CONTRACTOR"},
                                       {550, "Acme Widgets Ltd"},
                                       {991, "09:15"},
                                       {996, "  -  "},
                                       {1060 + 4 * 2, "0930"}});
    CurrentRecord record;
    decodeRecordLine(RecordLine(bytes), record);
    EXPECT_EQ(record[Field::RegNo], u"240314100507");
    EXPECT_EQ(record[Field::FirstName], u"John");
    EXPECT_EQ(record[Field::LastName], u"Smith");
    EXPECT_EQ(record[Field::IllnessDetails], u"line one\r\nline two\r\nthree");
    EXPECT_EQ(record[Field::Category], u"CONTRACTOR");
    EXPECT_EQ(record[Field::Organisation], u"Acme Widgets Ltd");
    EXPECT_EQ(record[Field::TimeOnSite], u"09:15");
    EXPECT_EQ(record[Field::TimeOffSite], u"  -  ");
    EXPECT_EQ(record.bookedTimes()[2], u"0930");
    EXPECT_TRUE(record.bookedTimes()[3].isEmpty());
}

TEST(RecordLine, writesByteForByteWhatItRead) {
    const QByteArray bytes = handLine({{1, "261123090000"},
                                       {14, "Zo\xEB"},
                                       {31, "Caf\xE9-Owen"},
                                       {525, "ENGINEERING"},
                                       {550, "North Works \x80 Co"},
                                       {936, "23-11-2026"},
                                       {947, "24-11-2026"},
                                       {958, "1D"},
                                       {969, "23-11-2026 at 09:05"},
                                       {989, "1"},
                                       {1060, "0800"},
                                       {1060 + 4 * 30, "1745"}});
    CurrentRecord record;
    decodeRecordLine(RecordLine(bytes), record);
    EXPECT_EQ(record[Field::FirstName], QString::fromUtf8("Zo\u00EB"));
    EXPECT_EQ(record[Field::Organisation], QString::fromUtf8("North Works \u20AC Co"));
    EXPECT_EQ(encodeRecordLine(record), bytes);
}

TEST(RecordLine, shortLineReadsAsBlanksInItsMissingColumns) {
    const QByteArray bytes = handLine({{1, "240301120000"}, {14, "Ann"}, {31, "Lee"}}, 40);
    CurrentRecord record;
    record[Field::Organisation] = QStringLiteral("left over");
    decodeRecordLine(RecordLine(bytes), record);
    EXPECT_EQ(record[Field::LastName], u"Lee");
    EXPECT_TRUE(record[Field::Organisation].isEmpty());
    EXPECT_EQ(record[Field::TimeOnSite], u"  -  ");
    EXPECT_TRUE(RecordLine(bytes).bookedSlot(1).isEmpty());
}

TEST(RecordLine, cutsLongValuesAndStoresTimesAsFirstTwoAndLastTwoCharacters) {
    CurrentRecord record;
    record[Field::RegNo] = QStringLiteral("240314100507");
    record[Field::Organisation] = QString(60, u'x');
    record[Field::TimeOnSite] = QStringLiteral("10:00");
    record.bookedTimes()[0] = QStringLiteral("09:30");
    record.bookedTimes()[1] = QStringLiteral("9:30");
    const QByteArray line = encodeRecordLine(record);
    ASSERT_EQ(line.size(), 1186);
    EXPECT_EQ(line.mid(549, 51), QByteArray(50, 'x') + ' ');
    EXPECT_EQ(line.mid(1059, 8), QByteArray("09309:30"));
    EXPECT_EQ(line.mid(990, 10), QByteArray(10, ' ')) << "arrival and departure are never written";
}

TEST(RecordLine, oddValuesNeverShiftColumnsOrSplitTheLine) {
    CurrentRecord record;
    record[Field::RegNo] = QStringLiteral("240314100507");
    record[Field::FirstName] = QString::fromUtf8("Jo\U0001F600e"); // one character outside the basic plane
    record[Field::LastName] = QStringLiteral("Smith\nJones");      // a stray line break from a paste
    record[Field::IllnessDetails] = QStringLiteral("a\r\nb\nc");
    record.bookedTimes()[0] = QStringLiteral("930"); // always the first two and last two characters
    record.bookedTimes()[1] = QStringLiteral("9");
    const QByteArray line = encodeRecordLine(record);
    ASSERT_EQ(line.size(), 1186);
    EXPECT_EQ(line.mid(13, 5), QByteArray("Jo?e "));
    EXPECT_EQ(line.mid(30, 12), QByteArray("Smith Jones "));
    EXPECT_EQ(line.mid(292, 9), QByteArray("a<$c>b c "));
    EXPECT_EQ(line.mid(1059, 8), QByteArray("933099  "));
    EXPECT_FALSE(line.contains('\n'));
    EXPECT_FALSE(line.contains('\r'));
}
