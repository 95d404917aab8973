#pragma once

#include "store/line_files.h"

#include <QCoreApplication>
#include <QDate>
#include <QString>

namespace porvane {

// What a pass number typed into the gate's scan box leads to: IN for a visitor on today's list who has not
// arrived, OUT for one on site, and a refusal that says why for everything else. Reads today's status file
// (which the caller has just rebuilt) and, for a number not on it, the booking's month file.
class GateScan {
    Q_DECLARE_TR_FUNCTIONS(GateScan)

public:
    enum class Step { In, Out, Refused };
    struct Decision {
        Step step = Step::Refused;
        QString regNo;
        QString refusal; // the message for a refused scan
    };

    // typed: what the scanner or the operator typed before Enter; a Code 39 reader set to send its start and
    // stop characters adds "*" at both ends.
    static Decision decide(LineFiles& files, const QDate& today, const QString& typed);
};

} // namespace porvane
