#include "desk/open_booking.h"

namespace porvane {

OpenBooking::OpenBooking(CurrentRecord& record, QObject* parent)
    : QObject(parent)
    , m_record(record) {}

void OpenBooking::setField(Field field, const QString& text) {
    if (m_record[field] == text)
        return;
    m_record[field] = text;
    emit fieldChanged(field);
}

void OpenBooking::setAdditionalInfo(const QString& text) {
    m_record.additionalInfo = text;
}

void OpenBooking::setRestrictions(const QString& text) {
    m_record.restrictions = text;
}

QString OpenBooking::time(int day) const {
    return day >= 1 && day <= 31 ? m_record.bookedTimes()[std::size_t(day - 1)] : QString();
}

void OpenBooking::setTime(int day, const QString& hhmm) {
    if (day < 1 || day > 31)
        return;
    m_record.bookedTimes()[std::size_t(day - 1)] = hhmm;
    touchTimes();
}

void OpenBooking::clearTimes() {
    for (QString& t : m_record.bookedTimes())
        t.clear();
    touchTimes();
}

void OpenBooking::touchTimes() {
    m_timesEdited = true;
    emit timesChanged();
}

void OpenBooking::load(const CurrentRecord& stored) {
    m_record = stored;
    m_record.MarkRecordSaved();
    m_timesEdited = false;
    m_newPending = false;
    emit replaced();
}

void OpenBooking::clear(bool forget) {
    m_record.ClearRecord();
    if (forget)
        m_record.MarkRecordSaved();
    m_timesEdited = false;
    m_newPending = false;
    emit replaced();
}

void OpenBooking::markSaved() {
    m_record.MarkRecordSaved();
    m_timesEdited = false;
    m_newPending = false;
    emit replaced();
}

void OpenBooking::markFieldsSaved(std::initializer_list<Field> fields) {
    for (Field f : fields)
        m_record.MarkFieldSaved(f);
}

void OpenBooking::changedElsewhere() {
    emit fieldChanged(Field::RegNo);
}

} // namespace porvane
