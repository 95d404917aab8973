#include "desk/email_check.h"

#include <QCoreApplication>

namespace porvane {

QString emailFault(const QString& address) {
    const QString trimmed = address.trimmed();
    if (trimmed.contains(u' '))
        return QCoreApplication::translate("EmailCheck", "Porvane 90 [Bad format: spaces in address]");
    if (trimmed.size() < 8)
        return QCoreApplication::translate("EmailCheck", "Porvane 90 [Bad Domain Name]");
    // An "@" in the very first position names no mailbox, so the search starts at the second character.
    const qsizetype at = address.indexOf(u'@', 1);
    if (at < 0)
        return QCoreApplication::translate("EmailCheck", "Porvane 90 [Bad Format Missing @ ]");
    if (address.indexOf(u'.', at) < 0)
        return QCoreApplication::translate("EmailCheck", "Porvane 90 [Bad Domain Identity]");
    return {};
}

void checkEmailAddress(Prompter& prompter, const QString& address) {
    const QString fault = emailFault(address);
    if (fault.isEmpty())
        return;
    prompter.tell(fault,
                  QCoreApplication::translate(
                      "EmailCheck", "Attention: Please note the E-mail address entered is not valid  "),
                  Icon::Exclamation);
}

} // namespace porvane
