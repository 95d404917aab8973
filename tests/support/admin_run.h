#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace porvane::test {

class TempDataFolder;

// What one run of the staged porvane-admin printed and returned; status -1 when it did not finish.
struct AdminRun {
    int status = -1;
    QString out;
    QString err;

    QStringList outLines() const { return out.split(u'\n', Qt::SkipEmptyParts); }
};

// porvane-admin over the folder's data as on `today` (YYYY-MM-DD), with `input` on its stdin.
AdminRun runAdmin(const TempDataFolder& folder, const QString& today, const QStringList& args,
                  const QByteArray& input = {});

} // namespace porvane::test
