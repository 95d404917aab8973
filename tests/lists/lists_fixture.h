#pragma once

#include "lists/grid_lists.h"
#include "test_desk.h"
#include "test_stores.h"

#include <QDateTime>
#include <gtest/gtest.h>

namespace porvane::test {

// A desk on 15 June 2024 at 10:00 over a throw-away data folder, with the lists of its grid.
struct ListsFixture : ::testing::Test {
    TestDesk desk{QDateTime(QDate(2024, 6, 15), QTime(10, 0))};
    GridLists lists{desk.state};
    DateSelection dates{2024};

    // Month and day status files are CR LF lines, laid out in the desk's store.
    void writeLines(const QString& relative, std::initializer_list<QByteArray> lines) {
        QByteArray bytes;
        for (const QByteArray& l : lines)
            bytes += l + "\r\n";
        putStoredFile(desk.state.files(), relative, bytes);
    }
    void select(int day, const char* month, const char* year) {
        dates.setDayText(day == 0 ? DateSelection::noDay() : QString::number(day));
        dates.setMonthText(QString::fromLatin1(month));
        dates.setYearText(QString::fromLatin1(year));
    }
    QString cell(int row, int column) const { return lists.table().text(row, column); }
    QStringList column(int c) const {
        QStringList out;
        for (int r = 0; r < lists.table().listedCount(); ++r)
            out.append(cell(r, c));
        return out;
    }
    // A listed row's cells without their padding.
    QStringList row(int r) const {
        QStringList out;
        for (int c = 0; c < lists.table().columnCount(); ++c)
            out.append(cell(r, c).trimmed());
        return out;
    }
};

} // namespace porvane::test
