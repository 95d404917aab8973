// porvane-pass: porvane-admin's commands that draw (the pass and the roll-call sheet), in a program of its
// own because drawing needs Qt Gui. porvane-admin hands their command lines to it unchanged.
#include "admin/admin_session.h"
#include "admin/pass_command.h"
#include "admin/rollcall_command.h"

#include <QGuiApplication>

namespace porvane::admin {

std::span<const Command> commandTable() {
    static const Command commands[]{{"pass", kPassSynopsis, runPassCommand},
                                    {"rollcall", kRollCallSynopsis, runRollCallCommand}};
    return commands;
}

} // namespace porvane::admin

int main(int argc, char* argv[]) {
    return porvane::admin::runAdminCommandLine(argc, argv, [](int& count, char* words[]) {
        // Without a display the drawing runs off-screen.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
            qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<QGuiApplication>(count, words);
    });
}
