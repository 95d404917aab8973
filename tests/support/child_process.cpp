#include "child_process.h"

#include <sys/wait.h>
#include <unistd.h>

namespace porvane::test {

bool inChildProcess(const std::function<bool()>& check, bool withoutRoot, unsigned seconds) {
    constexpr uid_t kNobody = 65534;
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(seconds);
        if (withoutRoot && ::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
            ::_exit(3);
        ::_exit(check() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace porvane::test
