#include "admin_run.h"
#include "temp_data_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// What porvane-admin prints for every list, every search kind and the on-site view, over three months of
// demonstration data and a few lines laid by hand (text outside ASCII, a no-break space at a cell's end, a
// home address and a reference, which the generator never writes). The expected output in
// tests/lists/expected/ was taken from the program before its lists were streamed; it must stay byte for byte
// the same. PORVANE_WRITE_EXPECTED=1 writes the files afresh instead of comparing.
const QString kToday = u"2026-11-18"_s;

QString expectedPath(const QString& name) {
    return QStringLiteral(PORVANE_SOURCE_DIR "/tests/lists/expected/") + name + u".txt"_s;
}

void checkOutput(const TempDataFolder& folder, const QString& name, const QStringList& args) {
    const AdminRun run = runAdmin(folder, kToday, args);
    const QByteArray got = "exit " + QByteArray::number(run.status) + "\n" + run.out.toUtf8();
    const QString path = expectedPath(name);
    if (qEnvironmentVariableIsSet("PORVANE_WRITE_EXPECTED")) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(got);
        return;
    }
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << path.toStdString();
    const QByteArray expected = f.readAll();
    EXPECT_EQ(got, expected) << name.toStdString() << " " << args.join(u' ').toStdString();
}

QByteArray withLine(QByteArray month, const QByteArray& line) {
    return month + line + "\r\n";
}

TEST(ListOutput, everyListSearchAndOnSiteViewPrintsExactlyAsBefore) {
    TempDataFolder folder;
    const AdminRun demo = runAdmin(folder, kToday,
                                   {u"demo"_s, u"--from"_s, u"2026-10"_s, u"--months"_s, u"3"_s,
                                    u"--per-month"_s, u"60"_s, u"--seed"_s, u"3"_s});
    ASSERT_EQ(demo.status, 0) << demo.err.toStdString();
    QByteArray november = folder.read(u"Record/2611.vrf"_s);
    ASSERT_FALSE(november.isEmpty());
    november = withLine(november, handLine({{1, "261118093000"},
                                            {14, "  Ren\xE9"
                                                 "e"},
                                            {31, "M\xFC"
                                                 "ller\xA0"},
                                            {69, "\xA0"
                                                 "AB12 CDE"},
                                            {130, "REF-\xC6-77"},
                                            {147, "12 Ch\xE2teau Road"},
                                            {504, "VISITOR"},
                                            {550, "\x8C"
                                                  "uvre \x80 Ltd"},
                                            {601, " 3"},
                                            {758, "Dr \xC5sa"},
                                            {936, "17-11-2026"},
                                            {947, "19-11-2026"},
                                            {958, "2D"},
                                            {969, "17-11-2026 at 09:15"},
                                            {1060 + 17 * 4, "0930"}}));
    // A pass of a kind no one knows and a booked time with blanks inside it.
    november = withLine(november, handLine({{1, "261101070000"},
                                            {14, "Quiet"},
                                            {31, "Guest"},
                                            {936, "01-11-2026"},
                                            {947, "30-11-2026"},
                                            {958, "1X"},
                                            {1060 + 2 * 4, " 8 0"}}));
    folder.write(u"Record/2611.vrf"_s, november);

    checkOutput(folder, u"day-2026-11-18"_s, {u"list"_s, u"day"_s, u"2026-11-18"_s});
    checkOutput(folder, u"day-2026-11-03"_s, {u"list"_s, u"day"_s, u"2026-11-03"_s});
    checkOutput(folder, u"day-2026-10-09-csv"_s, {u"--csv"_s, u"list"_s, u"day"_s, u"2026-10-09"_s});
    checkOutput(folder, u"month-2026-11"_s, {u"list"_s, u"month"_s, u"2026-11"_s});
    checkOutput(folder, u"month-2026-12-csv"_s, {u"--csv"_s, u"list"_s, u"month"_s, u"2026-12"_s});
    const QList<std::pair<QString, QString>> searches{
        {u"ANY TEXT"_s, u"kestrel"_s},        {u"NAME"_s, u"smith"_s},
        {u"ORGANISATION"_s, u"\u0152uvre"_s}, {u"HOME ADDRESS"_s, u"ch\u00e2teau"_s},
        {u"CAR REGISTRATION"_s, u"b1"_s},     {u"DEPARTMENT"_s, u"e"_s},
        {u"CATEGORY"_s, u"visitor"_s},        {u"BUILDING/LOCATION"_s, u"block"_s},
        {u"REFERENCE NO"_s, u"\u00e6"_s},     {u"VISITING/REPORTING TO"_s, u"harper"_s},
    };
    for (const auto& [kind, text] : searches)
        checkOutput(folder, u"search-"_s + QString(kind).replace(u' ', u'_').replace(u'/', u'_'),
                    {u"search"_s, u"2026-11"_s, kind, text});
    checkOutput(folder, u"search-csv"_s, {u"--csv"_s, u"search"_s, u"2026-11"_s, u"NAME"_s, u"e"_s});

    checkOutput(folder, u"onsite-first"_s, {u"onsite"_s});
    // Marks made at the desk: on site, gone, and a stay past midnight.
    const QString status = u"Status/261118.vdf"_s;
    QList<QByteArray> lines = folder.read(status).split('\n');
    ASSERT_GE(lines.size(), 4);
    lines[0].replace(990, 10, "09:10  -  ");
    lines[1].replace(990, 10, "08:0012:30");
    lines[2].replace(990, 10, "22:0001:15");
    folder.write(status, lines.join('\n'));
    checkOutput(folder, u"onsite-marked"_s, {u"onsite"_s});
    checkOutput(folder, u"onsite-csv"_s, {u"--csv"_s, u"onsite"_s});
}

} // namespace
