#include "demo/demo_generator.h"
#include "temp_data_folder.h"

#include <QSet>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;
using porvane::test::handColumns;

namespace {

DemoGenerator::Options februaryLeapYear(std::uint32_t seed) {
    DemoGenerator::Options o;
    o.fromYear = 2028;
    o.fromMonth = 2;
    o.months = 2;
    o.perMonth = 400;
    o.seed = seed;
    o.categories = {u" VISITOR"_s, u" CONTRACTOR"_s};
    o.departments = {u" FINANCE"_s};
    return o;
}

QList<QByteArray> linesOf(const QByteArray& file) {
    QList<QByteArray> lines = file.split('\n');
    EXPECT_TRUE(lines.last().isEmpty()) << "file must end with a line end";
    lines.removeLast();
    return lines;
}

} // namespace

TEST(DemoGenerator, linesAreWellFormedBookingsOfTheirMonth) {
    const DemoGenerator gen(februaryLeapYear(3));
    const QList<QByteArray> lines = linesOf(gen.monthFile(0));
    ASSERT_EQ(lines.size(), 400);
    QSet<QByteArray> regNos;
    int withPass = 0;
    for (const QByteArray& raw : lines) {
        ASSERT_TRUE(raw.endsWith('\r'));
        const QByteArray bytes = raw.chopped(1);
        ASSERT_EQ(bytes.size(), 1186);
        const QByteArray regNo = bytes.left(12);
        EXPECT_TRUE(regNo.startsWith("2802")) << regNo.constData();
        EXPECT_EQ(QByteArray::number(regNo.toLongLong()), regNo) << "twelve digits";
        regNos.insert(regNo);
        const QByteArray category = handColumns(bytes, 504, 20);
        EXPECT_TRUE(category == "VISITOR" || category == "CONTRACTOR") << category.constData();
        EXPECT_EQ(handColumns(bytes, 525, 24), "FINANCE");
        EXPECT_GE(handColumns(bytes, 550, 50).size(), 3);

        int booked = 0;
        for (int day = 1; day <= 31; ++day) {
            const QByteArray slot = handColumns(bytes, 1060 + 4 * (day - 1), 4);
            if (slot.isEmpty())
                continue;
            ++booked;
            EXPECT_LE(day, 29) << "February 2028 has 29 days";
            EXPECT_LE(QDate(2028, 2, day).dayOfWeek(), 5) << "booked on a weekend";
            EXPECT_GE(slot.toInt(), 700);
            EXPECT_LE(slot.toInt(), 1745);
        }
        EXPECT_GE(booked, 1);
        if (!handColumns(bytes, 936, 10).isEmpty()) {
            ++withPass;
            const QDate from =
                QDate::fromString(QString::fromLatin1(handColumns(bytes, 936, 10)), u"dd-MM-yyyy"_s);
            const QDate to =
                QDate::fromString(QString::fromLatin1(handColumns(bytes, 947, 10)), u"dd-MM-yyyy"_s);
            ASSERT_TRUE(from.isValid() && to.isValid());
            EXPECT_LT(from, to);
            EXPECT_EQ(handColumns(bytes, 969, 19).size(), 19);
        }
    }
    EXPECT_EQ(regNos.size(), 400) << "identifiers must be unique within a month";
    EXPECT_GT(withPass, 0);
    EXPECT_LT(withPass, 400 / 10);
}
