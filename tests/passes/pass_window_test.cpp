#include "passes/pass_window.h"
#include "test_desk.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace porvane;

TEST(PassWindow, showsTheChoiceAndAsksBeforeRemovingAPass) {
    test::TestDesk d(QDateTime(QDate(2026, 11, 14), QTime(9, 5)));
    d.state.settings.ckDisPassPrn = QStringLiteral("1");
    d.state.record[Field::RegNo] = QStringLiteral("261114090000");
    d.state.record[Field::FirstName] = QStringLiteral("Ada");
    d.state.record[Field::LastName] = QStringLiteral("Quist");
    d.state.record[Field::PassPeriod] = QStringLiteral("1D");
    d.state.record[Field::PassIssued] = QStringLiteral("13-11-2026 at 10:00");
    PassWindow window(d.state, {});
    window.show();

    auto* print = window.findChild<QPushButton*>(QStringLiteral("cmdPrintPass"));
    ASSERT_NE(print, nullptr);
    EXPECT_FALSE(print->isEnabled());
    auto* valid = window.findChild<QLabel*>(QStringLiteral("PASSValidTB"));
    EXPECT_EQ(valid->text(), u"DAY PASS  14 NOV 2026");
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("PassNameTB"))->text(), u"Ada Quist");

    auto* period = window.findChild<QComboBox*>(QStringLiteral("PassPeriodCB"));
    period->setCurrentIndex(1);
    emit period->textActivated(period->currentText());
    EXPECT_EQ(valid->text(), u"Valid Until:  21 NOV 2026");

    d.prompter.queue(Answer::No);
    window.findChild<QPushButton*>(QStringLiteral("cmdRemovePass"))->click();
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(d.state.RemovePassRequested);
    d.prompter.queue(Answer::Yes);
    window.findChild<QPushButton*>(QStringLiteral("cmdRemovePass"))->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(d.state.RemovePassRequested);
    EXPECT_EQ(d.prompter.messages().size(), 2);
}
