#include "passes/pass_window.h"
#include "test_desk.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

TEST(PassWindow, showsTheChoiceAndAsksBeforeRemovingAPass) {
    test::TestDesk d(QDateTime(QDate(2026, 11, 14), QTime(9, 5)));
    d.state.settings.ckDisPassPrn = u"1"_s;
    d.state.record[Field::RegNo] = u"261114090000"_s;
    d.state.record[Field::FirstName] = u"Ada"_s;
    d.state.record[Field::LastName] = u"Quist"_s;
    d.state.record[Field::PassPeriod] = u"1D"_s;
    d.state.record[Field::PassIssued] = u"13-11-2026 at 10:00"_s;
    PassWindow window(d.state, {});
    window.show();

    auto* print = window.findChild<QPushButton*>(u"cmdPrintPass"_s);
    ASSERT_NE(print, nullptr);
    EXPECT_FALSE(print->isEnabled());
    auto* valid = window.findChild<QLabel*>(u"PASSValidTB"_s);
    EXPECT_EQ(valid->text(), u"DAY PASS  14 NOV 2026");
    EXPECT_EQ(window.findChild<QLabel*>(u"PassNameTB"_s)->text(), u"Ada Quist");

    auto* period = window.findChild<QComboBox*>(u"PassPeriodCB"_s);
    period->setCurrentIndex(1);
    emit period->textActivated(period->currentText());
    EXPECT_EQ(valid->text(), u"Valid Until:  21 NOV 2026");

    d.prompter.queue(Answer::No);
    window.findChild<QPushButton*>(u"cmdRemovePass"_s)->click();
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(d.state.RemovePassRequested);
    d.prompter.queue(Answer::Yes);
    window.findChild<QPushButton*>(u"cmdRemovePass"_s)->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(d.state.RemovePassRequested);
    EXPECT_EQ(d.prompter.messages().size(), 2);
}
