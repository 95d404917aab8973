#pragma once

#include "app/app_state.h"
#include "lists/list_table.h"

#include <QCoreApplication>
#include <QDateTime>

namespace porvane {

// Saves the list the grid shows as a CSV file for a spreadsheet. The operator chooses the file (a name is
// offered in the documents folder); the file is written whole or not at all, and the desk says where it went.
class ListExport {
    Q_DECLARE_TR_FUNCTIONS(ListExport)

public:
    // The name offered: the list and when it was saved ("On site 2026-11-23 0930.csv").
    static QString offeredName(ListMode mode, const QDateTime& now);
    // The table as CSV: UTF-8 behind a byte-order mark, so that a spreadsheet takes it as UTF-8; a header
    // row; fields quoted where they must be. Empty on success, else why not.
    static QString write(const ListTable& table, const QString& path);
    // Asks for the file, writes it and tells the outcome; true when the file was written.
    static bool run(AppState& state, const ListTable& table);
};

} // namespace porvane
