// porvane-admin: the desk's lists, search, on-site view, deletion, checks and demonstration data on the
// command line. It loads Qt Core only; the pass and the roll-call sheet are drawn by porvane-pass.
#include "admin/admin_session.h"
#include "admin/db_command.h"
#include "admin/demo_command.h"
#include "admin/list_command.h"
#include "admin/pass_command.h"
#include "admin/purge_command.h"
#include "admin/rollcall_command.h"
#include "admin/verify_command.h"

#include <vector>

namespace porvane::admin {

std::span<const Command> commandTable() {
    // One row per command: name, its arguments for the usage text, its function or the program that runs it.
    static const std::vector<Command> commands{
        {"demo", "--from YYYY-MM --months N --per-month N [--seed S]", runDemoCommand},
        {"pass", kPassSynopsis, nullptr, "porvane-pass"},
        {"list", "day YYYY-MM-DD | month YYYY-MM", runListCommand},
        {"search", "YYYY-MM[..YYYY-MM] KIND TEXT", runSearchCommand},
        {"onsite", "", runOnsiteCommand},
        {"rollcall", kRollCallSynopsis, nullptr, "porvane-pass"},
        {"purge", kPurgeSynopsis, runPurgeCommand},
        {"verify", "", runVerifyCommand},
        {"db", kDbSynopsis, runDbCommand},
    };
    return commands;
}

} // namespace porvane::admin

int main(int argc, char* argv[]) {
    return porvane::admin::runAdminCommandLine(argc, argv, [](int& count, char* words[]) {
        return std::make_unique<QCoreApplication>(count, words);
    });
}
