#pragma once

#include "app/prompter.h"
#include "store/data_lock.h"

namespace porvane {

// Asks the operator what to do about a data folder that another desk holds: Yes retries, No breaks the
// lock, Cancel gives up.
class PrompterLockQuestion final : public LockHolderQuestion {
public:
    explicit PrompterLockQuestion(Prompter& prompter)
        : m_prompter(prompter) {}
    LockChoice ask(const LockHolder& holder) override;

private:
    Prompter& m_prompter;
};

// takeDataLock, asking the operator through the desk's prompter.
FileError takeDataLock(DataLock& lock, Prompter& prompter);

} // namespace porvane
