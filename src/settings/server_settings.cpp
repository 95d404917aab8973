#include "settings/server_settings.h"

#include "store/windows1252.h"

namespace porvane {

namespace {

// libpq reads a value in single quotes with a backslash before a quote or a backslash.
QString quoted(QString value) {
    value.replace(u'\\', QStringLiteral("\\\\"));
    value.replace(u'\'', QStringLiteral("\\'"));
    return u'\'' + value + u'\'';
}

} // namespace

QString ServerSettings::connInfo(const Settings& settings) {
    if (!settings.usesServer())
        return {};
    const std::pair<const char*, const QString*> parts[] = {
        {"host", &settings.ServerHost},         {"port", &settings.ServerPort},
        {"dbname", &settings.ServerDatabase},   {"user", &settings.ServerUser},
        {"password", &settings.ServerPassword},
    };
    QStringList pairs;
    for (const auto& [key, value] : parts) {
        if (!value->isEmpty())
            pairs << QString::fromLatin1(key) + u'=' + quoted(*value);
    }
    return pairs.join(u' ');
}

QString ServerSettings::refusal(const Settings& settings) {
    const std::pair<QString, const QString*> parts[] = {
        {tr("server"), &settings.ServerHost},       {tr("port"), &settings.ServerPort},
        {tr("database"), &settings.ServerDatabase}, {tr("user"), &settings.ServerUser},
        {tr("password"), &settings.ServerPassword},
    };
    for (const auto& [name, value] : parts) {
        // The settings record holds printable single-byte text only.
        for (const QChar c : *value) {
            if (c.unicode() < 0x20 || c.unicode() == 0x7F)
                return tr("The %1 has a control character.").arg(name);
        }
        if (!fitsWindows1252(*value))
            return tr("The %1 has a character that the settings file cannot hold.").arg(name);
        // Qt's PostgreSQL driver reads a ";" in the connection string as a blank.
        if (value->contains(u';'))
            return tr("The %1 cannot hold a \";\".").arg(name);
    }
    if (settings.ServerPassword != settings.ServerPassword.trimmed())
        return tr("The server password cannot begin or end with a blank.");
    if (!settings.ServerPort.isEmpty()) {
        bool number = false;
        const int port = settings.ServerPort.toInt(&number);
        if (!number || port < 1 || port > 65535)
            return tr("The port is a number from 1 to 65535 (PostgreSQL's own is 5432).");
    }
    return {};
}

} // namespace porvane
