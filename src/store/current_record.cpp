#include "store/current_record.h"

namespace porvane {

CurrentRecord::CurrentRecord() {
    ClearRecord();
    MarkRecordSaved();
}

void CurrentRecord::ClearRecord() {
    for (QString& v : m_values)
        v.clear();
    (*this)[Field::Category] = QStringLiteral("VISITOR");
    (*this)[Field::TimeOnSite] = QString::fromUtf16(kNoTimeMark);
    (*this)[Field::TimeOffSite] = QString::fromUtf16(kNoTimeMark);
    for (QString& t : m_times)
        t.clear();
    passPrintedNote.clear();
}

void CurrentRecord::MarkRecordSaved() {
    m_saved = m_values;
    m_savedAdditionalInfo = additionalInfo;
    m_savedRestrictions = restrictions;
    m_savedPassPrintedNote = passPrintedNote;
}

bool CurrentRecord::TestRecordChanged() const {
    for (int i = 0; i <= int(kLastWrittenField); ++i)
        if (m_values[std::size_t(i)] != m_saved[std::size_t(i)])
            return true;
    return false;
}

} // namespace porvane
