#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace porvane::test {

// A CSV file as a spreadsheet program reads it, by Python's csv module (UTF-8, a byte-order mark allowed):
// its rows, each a list of fields. A file the module cannot read, or that is not UTF-8, gives no rows and the
// reason in `error`.
struct CsvReadBack {
    QList<QStringList> rows;
    QString error;
};
CsvReadBack readCsvWithPython(const QString& path);

} // namespace porvane::test
