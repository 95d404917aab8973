#include "desk/gate_scan.h"

#include "lists/on_site_rows.h"
#include "store/day_status.h"
#include "store/digits.h"
#include "store/record_store.h"

namespace porvane {

namespace {

QDate passDate(const CurrentRecord& record, Field field) {
    return QDate::fromString(record[field].trimmed(), QStringLiteral("dd-MM-yyyy"));
}

} // namespace

GateScan::Decision GateScan::decide(LineFiles& files, const QDate& today, const QString& typed) {
    QString regNo = typed.trimmed();
    if (regNo.size() == 14 && regNo.startsWith(u'*') && regNo.endsWith(u'*'))
        regNo = regNo.mid(1, 12);
    if (regNo.size() != 12 || !isDigits(regNo))
        return {Step::Refused, regNo, tr("\"%1\" is not a pass number.").arg(regNo)};

    const SiteTimes times = readSiteTimes(files, today, regNo);
    CurrentRecord booking;
    FileError error;
    const bool onFile = readBookingLine(files, regNo, booking, error);
    const QString who = onFile ? booking[Field::FirstName].trimmed() + u' ' +
                                     booking[Field::LastName].trimmed() + QStringLiteral(" (%1)").arg(regNo)
                               : regNo;
    if (times.found) {
        switch (OnSiteRows::visitOf(times.arrival, times.departure)) {
        case OnSiteRows::Visit::Expected:
            return {Step::In, regNo, {}};
        case OnSiteRows::Visit::OnSite:
            return {Step::Out, regNo, {}};
        case OnSiteRows::Visit::Left:
            return {Step::Refused, regNo,
                    tr("%1 has already left today at %2:%3.")
                        .arg(who, times.departure.left(2), times.departure.right(2))};
        }
    }
    if (error && error.number != FileError::FileNotFound)
        return {
            Step::Refused, regNo,
            tr("The booking %1 could not be read: %2 (error %3).").arg(regNo, error.text).arg(error.number)};
    if (!onFile)
        return {Step::Refused, regNo, tr("No booking has the number %1.").arg(regNo)};
    const QDate start = passDate(booking, Field::PassStart);
    const QDate end = passDate(booking, Field::PassEnd);
    if (end.isValid() && end < today)
        return {Step::Refused, regNo,
                tr("The pass of %1 expired on %2.").arg(who, end.toString(QStringLiteral("dd-MM-yyyy")))};
    if (start.isValid() && start > today)
        return {Step::Refused, regNo,
                tr("The pass of %1 is not valid before %2.")
                    .arg(who, start.toString(QStringLiteral("dd-MM-yyyy")))};
    return {Step::Refused, regNo, tr("%1 is not on today's list.").arg(who)};
}

} // namespace porvane
