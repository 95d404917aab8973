#pragma once

#include "lists/list_columns.h"

#include <QByteArray>
#include <utility>
#include <vector>

class QIODevice;

namespace porvane {

// Writes a list as UTF-8 text: the header row, then one line for each listed row, each cell without its
// leading and trailing blanks and with control characters (a tab, an escape) shown as "?", so that a stored
// name can neither split its column nor reach the terminal raw. Cells are separated by tabs, or written as
// RFC 4180 CSV (CR LF line ends, fields quoted where they must be). Rows go out in small pieces as they are
// written, so a month of tens of thousands of rows never stands in memory.
class ListTextWriter {
public:
    ListTextWriter(QIODevice& out, bool csv);
    ListTextWriter(const ListTextWriter&) = delete;
    ListTextWriter& operator=(const ListTextWriter&) = delete;

    // The table's column headers.
    void header(const ListTable& table);
    void row(const ListRow& row);
    // Writes out what is still held; false when a write failed, this one or one before.
    bool flush();

private:
    void field(QByteArrayView bytes);
    void field(QString text);
    void put(char c) { *m_at++ = c; }
    void put(QByteArrayView bytes);
    void quoted(QByteArrayView text);
    void endRow();

    // The first row written of the last line, and where each of its cells starts and ends in its text.
    struct LastRow {
        ListRow::Place place;
        std::vector<char> text;
        std::vector<std::pair<qsizetype, qsizetype>> cells;
    };

    QIODevice& m_device;
    bool m_csv;
    LastRow m_last;
    QByteArray m_buffer; // a piece, with room for a row after it
    char* m_at = m_buffer.data();
    bool m_ok = true;
};

// The header row, then one line for each listed row (never the empty rows after them); false when a write
// failed.
bool writeListTableText(const ListTable& table, bool csv, QIODevice& out);

} // namespace porvane
