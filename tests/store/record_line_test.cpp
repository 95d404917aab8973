#include "store/record_line.h"
#include "temp_data_folder.h"

#include <gtest/gtest.h>

using namespace porvane;
using porvane::test::handBooking;
using porvane::test::slot;
using namespace Qt::Literals::StringLiterals;

// Every column an update writes comes back byte for byte, Windows-1252 characters and line breaks included.
TEST(RecordLine, readsFieldsAtTheirColumns_andWritesBackByteForByteWhatItRead) {
    const QByteArray bytes = handBooking("261123090000", "Zo\xEB", "Caf\xE9-Owen",
                                         {{293, "line one<$c>line two<$c>three"},
                                          {504, "CONTRACTOR"},
                                          {525, "ENGINEERING"},
                                          {550, "North Works \x80 Co"},
                                          {936, "23-11-2026"},
                                          {947, "24-11-2026"},
                                          {958, "1D"},
                                          {969, "23-11-2026 at 09:05"},
                                          {989, "1"},
                                          {slot(1), "0800"},
                                          {slot(31), "1745"}});
    CurrentRecord record;
    decodeRecordLine(RecordLine(bytes), record);
    EXPECT_EQ(record[Field::RegNo], u"261123090000");
    EXPECT_EQ(record[Field::FirstName], u"Zo\u00EB");
    EXPECT_EQ(record[Field::LastName], u"Caf\u00E9-Owen");
    EXPECT_EQ(record[Field::IllnessDetails], u"line one\r\nline two\r\nthree");
    EXPECT_EQ(record[Field::Category], u"CONTRACTOR");
    EXPECT_EQ(record[Field::Organisation], u"North Works \u20AC Co");
    EXPECT_EQ(record.bookedTimes()[0], u"0800");
    EXPECT_TRUE(record.bookedTimes()[1].isEmpty());
    EXPECT_EQ(encodeRecordLine(record), bytes);

    QByteArray onSite = bytes;
    onSite.replace(990, 10, "09:15  -  ");
    decodeRecordLine(RecordLine(onSite), record);
    EXPECT_EQ(record[Field::TimeOnSite], u"09:15");
    EXPECT_EQ(record[Field::TimeOffSite], u"  -  ");
}

// Long values are cut, odd characters replaced, and times kept as their first two and last two characters:
// nothing shifts a column or splits the line.
TEST(RecordLine, oddAndLongValuesNeverShiftColumnsOrSplitTheLine) {
    CurrentRecord record;
    record[Field::RegNo] = u"240314100507"_s;
    record[Field::FirstName] = u"Jo\U0001F600e"_s; // one character outside the basic plane
    record[Field::LastName] = u"Smith\nJones"_s;   // a stray line break from a paste
    record[Field::IllnessDetails] = u"a\r\nb\nc"_s;
    record[Field::Organisation] = QString(60, u'x');
    record[Field::TimeOnSite] = u"10:00"_s;
    record.bookedTimes()[0] = u"09:30"_s;
    record.bookedTimes()[1] = u"9:30"_s;
    record.bookedTimes()[2] = u"930"_s;
    record.bookedTimes()[3] = u"9"_s;
    const QByteArray line = encodeRecordLine(record);
    ASSERT_EQ(line.size(), 1186);
    EXPECT_EQ(line.mid(13, 5), "Jo?e ");
    EXPECT_EQ(line.mid(30, 12), "Smith Jones ");
    EXPECT_EQ(line.mid(292, 9), "a<$c>b c ");
    EXPECT_EQ(line.mid(549, 51), QByteArray(50, 'x') + ' ');
    EXPECT_EQ(line.mid(990, 10), QByteArray(10, ' ')) << "arrival and departure are never written";
    EXPECT_EQ(line.mid(1059, 16), "09309:30933099  ");
    EXPECT_FALSE(line.contains('\n') || line.contains('\r'));
}
