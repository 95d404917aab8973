#include "desk/store_choice.h"

#include "server/server_connection.h"
#include "server/server_schema.h"

namespace porvane {

QString reachServer(const QString& connInfo) {
    ServerConnection server(connInfo);
    if (server.error())
        return server.error().text;
    return checkSchema(server).text;
}

} // namespace porvane
