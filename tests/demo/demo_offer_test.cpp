#include "demo/demo_offer.h"
#include "test_desk.h"

#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;
using namespace porvane::test;

TEST(DemoOffer, asksFirst_fillsOnlyAnEmptyMonth_andSaysWhatItMade) {
    TestDesk desk{QDateTime(QDate(2026, 11, 23), QTime(9, 30))};
    const QDate march(2027, 3, 1);
    const QString file = u"Record/2703.vrf"_s;

    desk.prompter.queue(Answer::Cancel);
    EXPECT_FALSE(DemoOffer::run(desk.state, march));
    EXPECT_EQ(desk.prompter.last().text,
              u"Add 60 invented demonstration bookings to MARCH 2027?\nThey are saved like real bookings and "
              u"can be deleted with bulk deletion.");
    EXPECT_FALSE(desk.folder.exists(file));

    desk.prompter.queue(Answer::Ok);
    EXPECT_TRUE(DemoOffer::run(desk.state, march));
    EXPECT_EQ(desk.prompter.last().text, u"60 demonstration bookings were added to MARCH 2027.");
    const QByteArray written = desk.folder.read(file);
    EXPECT_EQ(written.count("\r\n"), 60);
    EXPECT_TRUE(written.startsWith("2703"));

    // A month with bookings is never topped up: invented identifiers could match real ones.
    EXPECT_FALSE(DemoOffer::run(desk.state, march));
    EXPECT_TRUE(desk.prompter.last().text.startsWith(u"MARCH 2027 already holds bookings."));
    EXPECT_EQ(desk.folder.read(file), written);

    EXPECT_FALSE(DemoOffer::run(desk.state, QDate()));
    EXPECT_EQ(desk.prompter.last().text, u"Choose a valid month in the date boxes first.");

    desk.state.settings.ckMakeSysRdO = u"1"_s;
    EXPECT_FALSE(DemoOffer::run(desk.state, QDate(2027, 4, 1)));
    EXPECT_FALSE(desk.folder.exists(u"Record/2704.vrf"_s));
    EXPECT_EQ(desk.prompter.unusedAnswers(), 0u);
}
