#include "desk/email_check.h"
#include "scripted_prompter.h"

#include <gtest/gtest.h>

using namespace porvane;
using porvane::test::ScriptedPrompter;

namespace {
const QString kWarning = QStringLiteral("Attention: Please note the E-mail address entered is not valid  ");

// The title of the one warning shown for an address, or "" when none was shown.
QString warningTitle(const char* address) {
    ScriptedPrompter prompter;
    checkEmailAddress(prompter, QString::fromUtf8(address));
    if (prompter.messages().isEmpty())
        return {};
    EXPECT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().text, kWarning);
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(prompter.last().buttons, Buttons::Ok);
    return prompter.last().title;
}
} // namespace

TEST(EmailCheck, plausibleAddressesPassSilently) {
    EXPECT_EQ(warningTitle("a@bc.def"), u""); // exactly eight characters
    EXPECT_EQ(warningTitle("jo.smith@example.co.uk"), u"");
    EXPECT_EQ(warningTitle("  a@bc.def  "), u""); // blanks around are not "inside"
}

TEST(EmailCheck, eachFaultNamesItselfInTheTitle) {
    EXPECT_EQ(warningTitle("jo smith@example.com"), u"Porvane 90 [Bad format: spaces in address]");
    EXPECT_EQ(warningTitle("a@b.com"), u"Porvane 90 [Bad Domain Name]");
    EXPECT_EQ(warningTitle("jsmith.example.com"), u"Porvane 90 [Bad Format Missing @ ]");
    EXPECT_EQ(warningTitle("jo.smith@examplecom"), u"Porvane 90 [Bad Domain Identity]");
}

TEST(EmailCheck, orderOfTheTestsDecidesTheFault) {
    // A blank wins over a short text and a missing "@".
    EXPECT_EQ(warningTitle("a b"), u"Porvane 90 [Bad format: spaces in address]");
    // An "@" in the first position does not count, even with a "." after it.
    EXPECT_EQ(warningTitle("@example.com"), u"Porvane 90 [Bad Format Missing @ ]");
    // A second "@" later does count.
    EXPECT_EQ(warningTitle("@jo@example.com"), u"");
    // Short wins over a missing "@".
    EXPECT_EQ(warningTitle("abc.de"), u"Porvane 90 [Bad Domain Name]");
}
