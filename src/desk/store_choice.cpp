#include "desk/store_choice.h"

#include "app/app_state.h"
#include "desk/late_opened_files.h"
#include "server/server_connection.h"
#include "server/server_files.h"
#include "server/server_schema.h"
#include "server/server_watcher.h"
#include "settings/server_settings.h"
#include "store/folder_watcher.h"

namespace porvane {

bool useStoreOfSettings(AppState& state) {
    if (!state.settings.usesServer()) {
        state.useFiles(nullptr);
        return true;
    }
    const QString connInfo = ServerSettings::connInfo(state.settings);
    auto files =
        std::make_unique<LateOpenedFiles>([connInfo](QString& why) { return openServerFiles(connInfo, why); },
                                          QStringLiteral("server %1").arg(state.settings.ServerDatabase));
    const FileError error = files->open();
    state.useFiles(std::move(files));
    if (error)
        state.prompter.tell(QStringLiteral("Porvane 90"), error.text, Icon::Exclamation);
    return !error;
}

std::unique_ptr<ChangeWatcher> watcherOfSettings(const AppState& state) {
    if (state.settings.usesServer())
        return std::make_unique<ServerWatcher>(ServerSettings::connInfo(state.settings));
    return std::make_unique<FolderWatcher>(state.dataPath());
}

QString reachServer(const QString& connInfo) {
    ServerConnection server(connInfo);
    if (server.error())
        return server.error().text;
    return checkSchema(server).text;
}

} // namespace porvane
