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

// The tests run in order and the first fault names itself in the title; "" when the address passes.
TEST(EmailCheck, firstFaultFoundNamesItselfInTheTitle) {
    const struct Case {
        const char* address;
        const char* title;
    } cases[] = {
        {"a@bc.def", ""}, // exactly eight characters
        {"jo.smith@example.co.uk", ""},
        {"  a@bc.def  ", ""}, // blanks around are not "inside"
        {"jo smith@example.com", "Porvane 90 [Bad format: spaces in address]"},
        {"a b", "Porvane 90 [Bad format: spaces in address]"}, // a blank wins over short and no "@"
        {"a@b.com", "Porvane 90 [Bad Domain Name]"},
        {"abc.de", "Porvane 90 [Bad Domain Name]"}, // short wins over a missing "@"
        {"jsmith.example.com", "Porvane 90 [Bad Format Missing @ ]"},
        {"@example.com", "Porvane 90 [Bad Format Missing @ ]"}, // an "@" first does not count
        {"@jo@example.com", ""},                                // a second one later does
        {"jo.smith@examplecom", "Porvane 90 [Bad Domain Identity]"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(warningTitle(c.address), QString::fromUtf8(c.title)) << c.address;
}
