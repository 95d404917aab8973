#include "store/record_store.h"

#include "photos/photo_paths.h"
#include "store/data_lock.h"
#include "store/data_paths.h"
#include "store/line_reader.h"
#include "store/record_line.h"
#include "store/safe_file.h"
#include "store/windows1252.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

StoreResult failed(const FileError& error) {
    return {StoreResult::Status::FileFailed, error, {}, {}};
}

// The booking's key as stored: an empty registration box names no booking, not every blank-led line.
QByteArray keyOf(const QString& regNoText) {
    return toWindows1252(regNoText.trimmed());
}

bool isDigits(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}

// A booking's photo under its current names, and any it got under earlier names.
void deletePhotos(const QString& dataPath, const QString& regNo, const QString& first, const QString& last) {
    QFile::remove(photoPath(dataPath, regNo, first, last));
    if (!isDigits(regNo))
        return; // never let a typed wildcard reach the pattern
    QDir folder(photoMonthFolder(dataPath, regNo));
    for (const QString& name : folder.entryList({photoPattern(regNo)}, QDir::Files))
        folder.remove(name);
}

} // namespace

bool readBookingLine(const QString& dataPath, const QString& regNo, CurrentRecord& record, FileError& error) {
    LineReader reader(monthFilePath(dataPath, regNo.left(4)));
    const QByteArray key = toWindows1252(regNo);
    QByteArrayView bytes;
    while (reader.next(bytes)) {
        const RecordLine line(bytes);
        if (line.hasRegNo(key)) {
            decodeRecordLine(line, record);
            return true;
        }
    }
    error = reader.error();
    return false;
}

QString makeRegNo(const QDateTime& now, const QString& bookingYymm) {
    QString regNo = now.toString(u"yyMMddhhmmss"_s);
    regNo.replace(0, 4, bookingYymm.left(4));
    return regNo;
}

RecordStore::RecordStore(AppState& state)
    : m_state(state) {}

bool RecordStore::refuse(const QString& text) {
    m_state.prompter.tell(tr("Porvane 90"), text, Icon::Exclamation);
    return false;
}

bool RecordStore::namesValid() {
    const CurrentRecord& r = m_state.record;
    if (r[Field::FirstName].trimmed().isEmpty() || r[Field::LastName].trimmed().isEmpty())
        return refuse(tr("Can't SAVE without First Name/(Initial) AND Last Name"));
    return true;
}

StoreResult RecordStore::SaveNewRecord(const QString& bookingYymm) {
    const StoreResult refused{StoreResult::Status::Refused, {}, m_state.record[Field::RegNo], {}};
    if (!namesValid())
        return refused;
    const QString department = m_state.record[Field::Department].trimmed();
    if (department == u"-  Select  -" || department.size() < 3) {
        refuse(tr("Can't SAVE:  No valid Department name has been entered"));
        return refused;
    }
    if (m_state.record[Field::Organisation].trimmed().size() < 3) {
        refuse(tr("Can't SAVE:  No valid ORGANISATION name has been entered"));
        return refused;
    }

    CurrentRecord saved = m_state.record;
    saved[Field::RegNo] = makeRegNo(m_state.clock.now(), bookingYymm);
    const QByteArray line = encodeRecordLine(saved);
    {
        DataLock lock(m_state.dataPath(), lockWait);
        if (FileError error = takeDataLock(lock, m_state.prompter))
            return failed(error);
        if (FileError error = appendLine(monthFilePath(m_state.dataPath(), bookingYymm), line, writePath))
            return failed(error);
    }
    m_state.record[Field::RegNo] = saved[Field::RegNo];
    m_state.record.MarkRecordSaved();
    m_state.RecordChanged = false;
    m_state.showResultInTitle(tr("Record ") + saved[Field::RegNo] + tr(" SAVED"));
    return {StoreResult::Status::Ok, {}, saved[Field::RegNo], {}};
}

StoreResult RecordStore::UpdateRecord(const QString& bookingYymm, const QString& regNoText) {
    if (!namesValid())
        return {StoreResult::Status::Refused, {}, m_state.record[Field::RegNo], {}};

    const bool revoke = m_state.RemovePassRequested;
    CurrentRecord updated = m_state.record;
    if (revoke) {
        for (Field f : {Field::PassStart, Field::PassEnd, Field::PassPeriod, Field::PassIssued})
            updated[f] = QString(fieldSpec(f).width, u' ');
    }
    const QByteArray line = encodeRecordLine(updated);
    const QByteArray key = keyOf(regNoText);
    {
        DataLock lock(m_state.dataPath(), lockWait);
        if (FileError error = takeDataLock(lock, m_state.prompter))
            return failed(error);
        const LineEdit replace = [&](QByteArrayView stored, QByteArray& out) {
            out.append(!key.isEmpty() && RecordLine(stored).hasRegNo(key) ? QByteArrayView(line) : stored);
            out.append(kLineEnd);
        };
        if (FileError error =
                rewriteLines(monthFilePath(m_state.dataPath(), bookingYymm), replace, nullptr, writePath))
            return failed(error);
    }

    StoreResult result{StoreResult::Status::Ok, {}, m_state.record[Field::RegNo], {}};
    if (revoke) {
        // Only now that the line is stored does the record lose its pass.
        m_state.RemovePassRequested = false;
        for (Field f : {Field::PassStart, Field::PassEnd, Field::PassPeriod, Field::PassIssued})
            m_state.record[f] = updated[f];
        result.passLabel = tr("Pass Revoked");
        if (passLabelShown)
            passLabelShown(result.passLabel);
        m_state.pause.wait(1);
    }
    m_state.record.MarkRecordSaved();
    m_state.RecordChanged = false;
    m_state.showResultInTitle(tr("Record ") + result.regNo + tr(" UPDATED"));
    return result;
}

StoreResult RecordStore::DeleteBooking(const QString& bookingYymm, const QString& regNoText) {
    const QByteArray key = keyOf(regNoText);
    {
        DataLock lock(m_state.dataPath(), lockWait);
        if (FileError error = takeDataLock(lock, m_state.prompter))
            return failed(error);
        const LineEdit drop = [&](QByteArrayView stored, QByteArray& out) {
            if (!key.isEmpty() && RecordLine(stored).hasRegNo(key))
                return;
            out.append(stored);
            out.append(kLineEnd);
        };
        if (FileError error =
                rewriteLines(monthFilePath(m_state.dataPath(), bookingYymm), drop, nullptr, writePath))
            return failed(error);
        // The photo goes only once its booking is gone, so a failed delete leaves both in place.
        if (!key.isEmpty())
            deletePhotos(m_state.dataPath(), regNoText.trimmed(), m_state.record[Field::FirstName],
                         m_state.record[Field::LastName]);
    }
    m_state.showResultInTitle(tr("One Booking DELETED"));
    return {StoreResult::Status::Ok, {}, regNoText.trimmed(), {}};
}

} // namespace porvane
