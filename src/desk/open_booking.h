#pragma once

#include "store/current_record.h"

#include <QObject>

namespace porvane {

// The booking being edited, as one object that says when it changes. The editor's boxes, the times grid, the
// labels, the detail dialogs and the list's selection all follow its signals; nothing re-reads or re-marks
// the record behind another view's back. Only load() and markSaved() make the saved copies equal, and only
// after the booking has been read from or written to its month file.
class OpenBooking final : public QObject {
    Q_OBJECT

public:
    explicit OpenBooking(CurrentRecord& record, QObject* parent = nullptr);

    const CurrentRecord& record() const { return m_record; }
    const QString& operator[](Field field) const { return m_record[field]; }
    QString regNo() const { return m_record[Field::RegNo].trimmed(); }

    // One field typed or chosen; fieldChanged only when the text differs.
    void setField(Field field, const QString& text);
    void setAdditionalInfo(const QString& text);
    void setRestrictions(const QString& text);

    // The booked time of a day (1..31) as "hhmm", or empty.
    QString time(int day) const;
    void setTime(int day, const QString& hhmm);
    void clearTimes();
    // The times were edited, even when no stored value changed (CLEAR All on an empty month, a key typed).
    void touchTimes();
    bool timesEdited() const { return m_timesEdited; }
    // A record save writes the times too, so the decision about them is settled.
    void settleTimes() { m_timesEdited = false; }

    // Whether a compared field differs from the copy last read or written.
    bool changed() const { return m_record.TestRecordChanged(); }

    // A NEW booking not yet saved.
    bool newPending() const { return m_newPending; }
    void setNewPending(bool pending) { m_newPending = pending; }

    // The booking as read from its month file: every value saved, nothing edited.
    void load(const CurrentRecord& stored);
    // Empties the booking (NEW, deletion, CLEAR). When forget is true the saved copies go too, so nothing is
    // left to ask about.
    void clear(bool forget);
    // The booking's line has been written: its values are the saved state now.
    void markSaved();
    // Only these fields were written (a pass print stores its pass fields and nothing else).
    void markFieldsSaved(std::initializer_list<Field> fields);

    // Another window (pass, photos, camera) changed fields of this record directly; the views catch up.
    void changedElsewhere();

signals:
    void fieldChanged(porvane::Field field);
    void timesChanged();
    // A different booking, or none, is in the editor now.
    void replaced();

private:
    CurrentRecord& m_record;
    bool m_timesEdited = false;
    bool m_newPending = false;
};

} // namespace porvane
