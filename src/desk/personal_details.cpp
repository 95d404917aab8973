#include "desk/personal_details.h"

#include "desk/email_check.h"

#include <algorithm>

namespace porvane {

PersonalDetails::PersonalDetails(AppState& state, OpenBooking& booking)
    : m_state(state)
    , m_booking(booking) {}

QStringList PersonalDetails::salutationItems() {
    return {QStringLiteral("Mr. "), QStringLiteral("Mrs."), QStringLiteral("Miss"), QStringLiteral("Dr."),
            QStringLiteral("Prof.")};
}

void PersonalDetails::open() {
    m_state.help.setTopic(HelpTopic::PersonalDetails);
    for (std::size_t i = 0; i < kEditable.size(); ++i)
        m_copy[i] = m_booking[kEditable[i]];
}

QString PersonalDetails::regNo() const {
    return m_booking[Field::RegNo];
}

QString PersonalDetails::fullName() const {
    return m_booking[Field::FirstName] + u' ' + m_booking[Field::LastName];
}

QString PersonalDetails::gender() const {
    return m_booking[Field::Gender];
}

void PersonalDetails::setText(Field field, const QString& text) {
    if (std::find(kEditable.begin(), kEditable.end(), field) != kEditable.end())
        m_booking.setField(field, text);
}

void PersonalDetails::setIllnessTicked(bool ticked) {
    m_booking.setField(Field::IllnessFlag, ticked ? QStringLiteral("1") : QStringLiteral("0"));
}

void PersonalDetails::leaveKinEmail() {
    const QString email = m_booking[Field::KinEmail].toLower();
    m_booking.setField(Field::KinEmail, email);
    if (!email.trimmed().isEmpty())
        checkEmailAddress(m_state.prompter, email);
}

void PersonalDetails::clear() {
    for (Field f : kEditable)
        m_booking.setField(f, QString());
    m_booking.setField(Field::IllnessFlag, QStringLiteral("0"));
}

void PersonalDetails::cancel() {
    for (std::size_t i = 0; i < kEditable.size(); ++i)
        m_booking.setField(kEditable[i], m_copy[i]);
}

} // namespace porvane
