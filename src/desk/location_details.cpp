#include "desk/location_details.h"

#include "store/data_paths.h"
#include "store/pick_lists.h"

#include <algorithm>

namespace porvane {

LocationDetails::LocationDetails(AppState& state, OpenBooking& booking)
    : m_state(state)
    , m_booking(booking) {}

void LocationDetails::open() {
    const PickLists lists = LoadDetailPickLists(pickListsPath(m_state.AppPath));
    open(lists.first, lists.second);
}

void LocationDetails::open(const QStringList& workDescriptions, const QStringList& accessAreas) {
    m_descriptions = workDescriptions;
    m_accessAreas = accessAreas;
    m_state.help.setTopic(HelpTopic::LocationDetails);
    for (std::size_t i = 0; i < kEditable.size(); ++i)
        m_copy[i] = m_booking[kEditable[i]];
    m_copyInfo = m_booking.record().additionalInfo;
    m_copyRestrictions = m_booking.record().restrictions;
}

void LocationDetails::setText(Field field, const QString& text) {
    if (std::find(kEditable.begin(), kEditable.end(), field) != kEditable.end())
        m_booking.setField(field, text);
}

void LocationDetails::additionalInfoAction() {
    m_state.prompter.tell(QStringLiteral("Porvane 90"),
                          tr("Additional Information Text - Not implemented on this version"),
                          Icon::Information);
}

void LocationDetails::restrictionsAction() {
    m_state.prompter.tell(QStringLiteral("Porvane 90"),
                          tr("Restrictions Text - Not implemented on this version"), Icon::Information);
}

void LocationDetails::clear() {
    for (Field f :
         {Field::OurRef, Field::Visiting, Field::VisitingTel, Field::VisitingPager, Field::Location})
        m_booking.setField(f, QString());
    m_booking.setAdditionalInfo(QString());
    m_booking.setRestrictions(QString());
    m_booking.setField(Field::WorkDescription, nothingSelected());
    m_booking.setField(Field::AccessAreas, nothingSelected());
}

void LocationDetails::cancel() {
    for (std::size_t i = 0; i < kEditable.size(); ++i)
        m_booking.setField(kEditable[i], m_copy[i]);
    m_booking.setAdditionalInfo(m_copyInfo);
    m_booking.setRestrictions(m_copyRestrictions);
}

} // namespace porvane
