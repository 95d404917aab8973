#include "store/record_store.h"

#include "store/digits.h"
#include "store/line_reader.h"
#include "store/photo_paths.h"
#include "store/record_line.h"
#include "store/safe_file.h"
#include "store/windows1252.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

namespace {

StoreResult failed(const FileError& error) {
    return {StoreResult::Status::FileFailed, error, {}};
}

// The booking's key as stored: an empty registration box names no booking, not every blank-led line.
QByteArray keyOf(const QString& regNoText) {
    return toWindows1252(regNoText.trimmed());
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

bool readBookingLine(LineFiles& files, const QString& regNo, CurrentRecord& record, FileError& error) {
    const std::unique_ptr<LineReader> reader =
        files.read(LineFileName::month(regNo.left(4)), LineNarrowing::ofRegNo(regNo));
    const QByteArray key = toWindows1252(regNo);
    QByteArrayView bytes;
    while (reader->next(bytes)) {
        const RecordLine line(bytes);
        if (line.hasRegNo(key)) {
            decodeRecordLine(line, record);
            return true;
        }
    }
    error = reader->error();
    return false;
}

QString makeRegNo(const QDateTime& now, const QString& bookingYymm) {
    QString regNo = now.toString(u"yyMMddhhmmss"_s);
    regNo.replace(0, 4, bookingYymm.left(4));
    return regNo;
}

RecordStore::RecordStore(std::function<LineFiles&()> files, std::function<QString()> dataPath,
                         std::function<QDateTime()> now)
    : m_files(std::move(files))
    , m_dataPath(std::move(dataPath))
    , m_now(std::move(now)) {}

namespace {

StoreResult refused(const QString& text) {
    return {StoreResult::Status::Refused, {0, text}, {}};
}

QString namesFault(const CurrentRecord& booking) {
    if (booking[Field::FirstName].trimmed().isEmpty() || booking[Field::LastName].trimmed().isEmpty())
        return RecordStore::tr("Can't SAVE without First Name/(Initial) AND Last Name");
    return {};
}

} // namespace

StoreResult RecordStore::SaveNewRecord(const CurrentRecord& booking, const QString& bookingYymm) {
    if (const QString fault = namesFault(booking); !fault.isEmpty())
        return refused(fault);
    const QString department = booking[Field::Department].trimmed();
    if (department == u"-  Select  -" || department.size() < 3)
        return refused(tr("Can't SAVE:  No valid Department name has been entered"));
    if (booking[Field::Organisation].trimmed().size() < 3)
        return refused(tr("Can't SAVE:  No valid ORGANISATION name has been entered"));

    CurrentRecord saved = booking;
    saved[Field::RegNo] = makeRegNo(m_now(), bookingYymm);
    const QByteArray line = encodeRecordLine(saved);
    if (FileError error = m_files().change(
            [&](LineFileChanges& changes) { return changes.append(LineFileName::month(bookingYymm), line); }))
        return failed(error);
    return {StoreResult::Status::Ok, {}, saved[Field::RegNo]};
}

StoreResult RecordStore::replaceLines(const QString& bookingYymm, const QString& regNoText,
                                      const std::function<void(QByteArrayView, QByteArray&)>& replace,
                                      const std::function<void()>& afterWrite) {
    const QByteArray key = keyOf(regNoText);
    const LineEdit edit = [&](QByteArrayView stored, QByteArray& out) {
        if (key.isEmpty() || !RecordLine(stored).hasRegNo(key))
            return false;
        replace(stored, out);
        return true;
    };
    if (FileError error = m_files().change([&](LineFileChanges& changes) {
            return changes.rewrite(LineFileName::month(bookingYymm),
                                   LineNarrowing::ofRegNo(regNoText.trimmed()), edit);
        }))
        return failed(error);
    if (afterWrite)
        afterWrite();
    return {StoreResult::Status::Ok, {}, regNoText.trimmed()};
}

StoreResult RecordStore::UpdateRecord(const CurrentRecord& booking, const QString& bookingYymm,
                                      const QString& regNoText) {
    if (const QString fault = namesFault(booking); !fault.isEmpty())
        return refused(fault);
    const QByteArray line = encodeRecordLine(booking);
    return replaceLines(bookingYymm, regNoText, [&](QByteArrayView, QByteArray& out) {
        out.append(line);
        out.append(kLineEnd);
    });
}

StoreResult RecordStore::UpdatePass(const CurrentRecord& booking, const QString& bookingYymm,
                                    const QString& regNoText) {
    const QByteArray encoded = encodeRecordLine(booking);
    return replaceLines(bookingYymm, regNoText, [&](QByteArrayView stored, QByteArray& out) {
        QByteArray line = stored.toByteArray();
        for (Field f : kPassFields) {
            const FieldSpec& place = fieldSpec(f);
            const qsizetype end = place.column - 1 + place.width;
            if (line.size() < end)
                line.append(QByteArray(end - line.size(), ' '));
            line.replace(place.column - 1, place.width, encoded.mid(place.column - 1, place.width));
        }
        out.append(line);
        out.append(kLineEnd);
    });
}

StoreResult RecordStore::DeleteBooking(const QString& bookingYymm, const QString& regNoText,
                                       const QString& firstName, const QString& lastName) {
    // The photo goes only once its booking is gone, so a failed delete leaves both in place.
    return replaceLines(
        bookingYymm, regNoText, [](QByteArrayView, QByteArray&) {},
        [&] {
            if (!keyOf(regNoText).isEmpty())
                deletePhotos(m_dataPath(), regNoText.trimmed(), firstName, lastName);
        });
}

} // namespace porvane
