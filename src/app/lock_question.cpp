#include "app/lock_question.h"

using namespace Qt::Literals::StringLiterals;

namespace porvane {

LockChoice PrompterLockQuestion::ask(const LockHolder& holder) {
    const QString text = QCoreApplication::translate("DataLock", "The data folder is being changed by %1.")
                             .arg(describeLockHolder(holder)) +
                         u"\r\n\r\n"_s +
                         QCoreApplication::translate(
                             "DataLock", "Yes: try again.\r\nNo: break the lock (only when that desk is "
                                         "no longer running).\r\nCancel: stop; nothing is saved.");
    switch (m_prompter.ask({u"Porvane 90"_s, text, Buttons::YesNoCancel, Icon::Exclamation})) {
    case Answer::Yes:
    case Answer::Ok:
        return LockChoice::Retry;
    case Answer::No:
        return LockChoice::Break;
    case Answer::Cancel:
        break;
    }
    return LockChoice::Cancel;
}

FileError takeDataLock(DataLock& lock, Prompter& prompter) {
    PrompterLockQuestion question(prompter);
    return takeDataLock(lock, question);
}

} // namespace porvane
