#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace porvane::test {

// While it lives, the user's home (and so the documents folder, where the desk saves what it cannot print)
// is the given folder: "<home>Documents/".
class DocumentsFolder {
public:
    explicit DocumentsFolder(const QString& home)
        : m_home(qgetenv("HOME"))
        , m_config(qgetenv("XDG_CONFIG_HOME")) {
        qputenv("HOME", home.toUtf8());
        qputenv("XDG_CONFIG_HOME", (home + QStringLiteral("config")).toUtf8());
    }
    ~DocumentsFolder() {
        qputenv("HOME", m_home);
        qputenv("XDG_CONFIG_HOME", m_config);
    }
    DocumentsFolder(const DocumentsFolder&) = delete;
    DocumentsFolder& operator=(const DocumentsFolder&) = delete;

private:
    QByteArray m_home;
    QByteArray m_config;
};

} // namespace porvane::test
