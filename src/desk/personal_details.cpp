#include "desk/personal_details.h"

#include "desk/desk_help.h"
#include "desk/email_check.h"

#include <algorithm>

namespace porvane {

PersonalDetails::PersonalDetails(AppState& state)
    : m_state(state) {}

QStringList PersonalDetails::salutationItems() {
    return {QStringLiteral("Mr. "), QStringLiteral("Mrs."), QStringLiteral("Miss"), QStringLiteral("Dr."),
            QStringLiteral("Prof.")};
}

void PersonalDetails::open() {
    setHelpContext(m_state, DeskAction::PersonalDetails);
    for (std::size_t i = 0; i < kEditable.size(); ++i)
        m_copy[i] = m_state.record[kEditable[i]];
}

QString PersonalDetails::regNo() const {
    return m_state.record[Field::RegNo];
}

QString PersonalDetails::fullName() const {
    return m_state.record[Field::FirstName] + u' ' + m_state.record[Field::LastName];
}

QString PersonalDetails::gender() const {
    return m_state.record[Field::Gender];
}

void PersonalDetails::setText(Field field, const QString& text) {
    if (std::find(kEditable.begin(), kEditable.end(), field) != kEditable.end())
        m_state.record[field] = text;
}

void PersonalDetails::setIllnessTicked(bool ticked) {
    m_state.record[Field::IllnessFlag] = ticked ? QStringLiteral("1") : QStringLiteral("0");
}

void PersonalDetails::leaveKinEmail() {
    QString& email = m_state.record[Field::KinEmail];
    email = email.toLower();
    if (!email.trimmed().isEmpty())
        checkEmailAddress(m_state.prompter, email);
}

void PersonalDetails::clear() {
    for (Field f : kEditable)
        m_state.record[f].clear();
    m_state.record[Field::IllnessFlag] = QStringLiteral("0");
}

void PersonalDetails::cancel() {
    for (std::size_t i = 0; i < kEditable.size(); ++i)
        m_state.record[kEditable[i]] = m_copy[i];
}

} // namespace porvane
