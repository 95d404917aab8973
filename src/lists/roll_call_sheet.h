#pragma once

#include "lists/list_table.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QString>

class QPagedPaintDevice;

namespace porvane {

// One visitor on the roll call, each text as it is printed.
struct RollCallEntry {
    QString name; // "Quist, Ada"
    QString organisation;
    QString visiting;
    QString arrived; // "hh:mm"
    QString carReg;
    QString photoFile; // empty when no photo is on file
};

// The roll-call sheet for a fire alarm or a muster: everyone on site now, by name, with a small photo, whom
// they visit, when they arrived, their car and a box to tick, then a few numbered blank lines for people who
// reach the muster point without being on the list. A4 portrait, every page headed with the count and the
// time the sheet was made, in type that reads at arm's length.
class RollCallSheet {
    Q_DECLARE_TR_FUNCTIONS(RollCallSheet)

public:
    static constexpr int kBlankLines = 5;

    // Everyone today's on-site list shows as on site now, sorted by last name, then first name.
    static QList<RollCallEntry> entries(const ListTable& onSiteList, const QString& dataPath);
    // "Harbour Works    Roll call:  23 on site  at 09:30 on Monday 23 November 2026".
    static QString heading(const QString& siteName, qsizetype count, const QDateTime& made);
    // Sets the device's page to A4 portrait and prints the sheet; an error text, empty on success.
    static QString print(QPagedPaintDevice& device, const QList<RollCallEntry>& entries,
                         const QString& siteName, const QDateTime& made);
};

} // namespace porvane
