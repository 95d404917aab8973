#include "passes/pass_issue.h"
#include "test_desk.h"

#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

namespace {

struct PassDesk : test::TestDesk {
    PassIssue pass{state};

    PassDesk()
        : TestDesk(QDateTime(QDate(2026, 11, 14), QTime(9, 5, 41))) {
        state.settings.SiteName = u"Harbour Works"_s;
        state.record[Field::RegNo] = u"261114090000"_s;
        state.record[Field::FirstName] = u"Ada"_s;
        state.record[Field::LastName] = u"Quist"_s;
        state.record[Field::Organisation] = u"Quist Surveys"_s;
        state.record[Field::Department] = u"ENGINEERING"_s;
    }
    void setToday(int y, int m, int d) { clock.set(QDateTime(QDate(y, m, d), QTime(9, 5))); }
};

} // namespace

TEST(PassIssue, aRecordClaimingAMissingPhotoIsCorrectedOnOpening) {
    PassDesk d;
    d.state.record[Field::PhotoOnFile] = u"1"_s;
    d.state.record[Field::PassIssued] = u"01-11-2026 at 10:00"_s;
    d.state.settings.ckDisPassPrn = u"1"_s;
    d.state.settings.ckEnbl_PrnLogo = u"1"_s;
    d.pass.open();
    EXPECT_EQ(d.state.record[Field::PhotoOnFile], u"0");
    EXPECT_FALSE(d.pass.working().PassPhotoShown);
    EXPECT_TRUE(d.pass.view().removeEnabled);
    EXPECT_FALSE(d.pass.view().printEnabled);
    EXPECT_TRUE(d.pass.view().LogoImage.endsWith(u"_PSF/IRender/OurPassLogo.bmp"));
}

TEST(PassIssue, endDatesFollowTheCalendar) {
    struct Case {
        QDate today;
        const char* number;
        const char* period;
        const char* end;
        const char* code;
        const char* valid;
    };
    const Case cases[] = {
        {QDate(2026, 11, 14), "ONE", "Week", "21-11-2026", "1W", "Valid Until:  21 NOV 2026"},
        {QDate(2026, 1, 31), "ONE", "Month", "28-02-2026", "1M", "Valid Until:  28 FEB 2026"},
        {QDate(2026, 11, 14), "THREE", "Day", "17-11-2026", "3D", "Valid Until:  17 NOV 2026"},
        {QDate(2026, 11, 14), "ONE", "Day", "15-11-2026", "1D", "DAY PASS  14 NOV 2026"},
        {QDate(2026, 12, 28), "SIX", "Week", "08-02-2027", "6W", "Valid Until:  08 FEB 2027"},
        {QDate(2028, 1, 31), "ONE", "Month", "29-02-2028", "1M", "Valid Until:  29 FEB 2028"},
    };
    for (const Case& c : cases) {
        PassDesk d;
        d.setToday(c.today.year(), c.today.month(), c.today.day());
        d.pass.open();
        d.pass.choose(QString::fromLatin1(c.number), QString::fromLatin1(c.period));
        EXPECT_EQ(d.pass.working().PassEndDate, QString::fromLatin1(c.end)) << c.number << ' ' << c.period;
        EXPECT_EQ(d.pass.working().PassPeriodCode, QString::fromLatin1(c.code));
        EXPECT_EQ(d.pass.view().PASSValidTB, QString::fromLatin1(c.valid));
        EXPECT_TRUE(d.prompter.messages().isEmpty());
    }
}

TEST(PassIssue, anUnknownPeriodChangesNothing) {
    PassDesk d;
    d.pass.open();
    d.pass.choose(u"FOUR"_s, u"Month"_s);
    d.pass.choose(u"TWO"_s, u"Fortnight"_s);
    EXPECT_EQ(d.prompter.last().text, u"ATTENTION: No VALID Date selected - Try selecting again");
    EXPECT_EQ(d.pass.working().PassCount, 4);
    EXPECT_EQ(d.pass.working().PassPeriodCode, u"4M");
    EXPECT_EQ(d.pass.working().PassEndDate, u"14-03-2027");
}
