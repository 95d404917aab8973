#include "csv_read_back.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

namespace porvane::test {

namespace {

// strict: a stray quote inside a field is an error, not a guess.
const char* const kReader = R"(import csv, json, sys
with open(sys.argv[1], encoding="utf-8-sig", errors="strict", newline="") as f:
    print(json.dumps(list(csv.reader(f, strict=True))))
)";

} // namespace

CsvReadBack readCsvWithPython(const QString& path) {
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), QString::fromLatin1(kReader), path});
    if (!python.waitForFinished(30000) || python.exitStatus() != QProcess::NormalExit ||
        python.exitCode() != 0)
        return {{}, QStringLiteral("python3: ") + QString::fromUtf8(python.readAllStandardError())};
    QJsonParseError parse;
    const QJsonDocument json = QJsonDocument::fromJson(python.readAllStandardOutput(), &parse);
    if (parse.error != QJsonParseError::NoError)
        return {{}, parse.errorString()};
    CsvReadBack back;
    for (const QJsonValue& row : json.array()) {
        QStringList fields;
        for (const QJsonValue& field : row.toArray())
            fields.append(field.toString());
        back.rows.append(fields);
    }
    return back;
}

} // namespace porvane::test
