#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace porvane::test {

// A throw-away application folder with a data folder (Record, Status, photo) inside it.
class TempDataFolder {
public:
    TempDataFolder();

    QString appPath() const { return m_dir.path() + QStringLiteral("/"); }
    QString dataPath() const { return appPath() + QStringLiteral("Porvanedata/"); }
    QString path(const QString& relative) const { return dataPath() + relative; }

    void write(const QString& relative, const QByteArray& bytes) const;
    QByteArray read(const QString& relative) const;
    bool exists(const QString& relative) const;
    // Every folder and file under `folder` (the data folder when empty) by its path below it, with each
    // file's bytes: whatever is made, changed or removed shows as a difference.
    QMap<QString, QByteArray> contents(const QString& folder = {}) const;
    // Lets other users through the throw-away folder (it is made for its owner only), as far as the modes of
    // the files and folders inside let them.
    void openToOtherUsers() const;

private:
    QTemporaryDir m_dir;
};

using HandColumns = std::initializer_list<std::pair<int, const char*>>;
// A record line laid out by hand: pads or cuts to 1186 columns after placing each (column, text) pair.
QByteArray handLine(HandColumns columns, int length = 1186);
// A booking laid out by hand: RegNo at column 1, first name at 14, last name at 31, then more columns.
QByteArray handBooking(const char* regNo, const char* first, const char* last, HandColumns more = {},
                       int length = 1186);
// The column of a day's booked time (hhmm) in a booking.
constexpr int slot(int day) {
    return 1060 + 4 * (day - 1);
}
// Lines with CR LF after each, as month and status files hold them.
QByteArray crLf(std::initializer_list<QByteArray> lines);
// What a line holds in `width` columns from `column` (1-based, as handLine counts), trailing blanks cut.
QByteArray handColumns(const QByteArray& line, int column, int width);

// The month and day status files under a data folder, as "Record/2602.vrf", in order.
QStringList dataFiles(const QString& dataPath);

} // namespace porvane::test
