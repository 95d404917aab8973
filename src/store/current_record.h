#pragma once

#include "store/record_fields.h"

#include <QString>
#include <array>

namespace porvane {

// The one booking held in memory by the desk: each field's value and the copy last saved, for change
// detection.
class CurrentRecord {
public:
    CurrentRecord();

    QString& operator[](Field f) { return m_values[std::size_t(f)]; }
    const QString& operator[](Field f) const { return m_values[std::size_t(f)]; }
    const QString& saved(Field f) const { return m_saved[std::size_t(f)]; }

    // Booked times, index 0..30 for days 1..31 as "hhmm" or empty; index 31 is never filled.
    std::array<QString, kBookedTimesSize>& bookedTimes() { return m_times; }
    const std::array<QString, kBookedTimesSize>& bookedTimes() const { return m_times; }

    // Held with the booking but never stored in its line.
    QString additionalInfo;
    QString restrictions;
    QString passPrintedNote;

    // Empties every field except Category ("VISITOR") and the arrival and departure ("  -  "), and the times.
    // Additional information, restrictions and the saved copies are left alone.
    void ClearRecord();
    // Makes every saved copy equal to its value.
    void MarkRecordSaved();
    // The same for one field, when only it was written.
    void MarkFieldSaved(Field f) { m_saved[std::size_t(f)] = m_values[std::size_t(f)]; }
    // True when a compared field differs from its saved copy: the stored fields RegNo..PhotoOnFile.
    bool TestRecordChanged() const;

private:
    std::array<QString, kFieldCount> m_values;
    std::array<QString, kFieldCount> m_saved;
    std::array<QString, kBookedTimesSize> m_times;
    QString m_savedAdditionalInfo;
    QString m_savedRestrictions;
    QString m_savedPassPrintedNote;
};

inline constexpr char16_t kNoTimeMark[] = u"  -  ";

} // namespace porvane
