#pragma once

#include "app/app_state.h"
#include "desk/open_booking.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <array>

namespace porvane {

// The personal details dialog's logic: it edits the current record's personal fields in place, and Cancel
// puts back what they held when the dialog opened.
class PersonalDetails {
    Q_DECLARE_TR_FUNCTIONS(PersonalDetails)

public:
    // Salutation to KinEmail: the fields this dialog may change.
    static constexpr std::array<Field, 15> kEditable{
        Field::Salutation,     Field::OurRef,  Field::AddressLine1, Field::Town,        Field::County,
        Field::Postcode,       Field::HomeTel, Field::DateOfBirth,  Field::IllnessFlag, Field::AidsUsed,
        Field::IllnessDetails, Field::KinName, Field::KinHomeTel,   Field::KinWorkTel,  Field::KinEmail};

    PersonalDetails(AppState& state, OpenBooking& booking);

    // The titles of SalCB, in order; the box starts as "Mr.".
    static QStringList salutationItems();
    static QString initialSalutation() { return QStringLiteral("Mr."); }

    // Opening: sets the help topic and takes the copy that Cancel restores.
    void open();

    // The shown-only boxes.
    QString regNo() const;    // PersRegNoTB
    QString fullName() const; // PersFullNaTB: first name, a blank, last name
    QString gender() const;   // Genbox3TB
    // The value an editable control shows.
    QString text(Field field) const { return m_booking[field]; }
    bool illnessTicked() const { return m_booking[Field::IllnessFlag] == u"1"; }

    // A control's change: its text goes straight into the record.
    void setText(Field field, const QString& text);
    void setIllnessTicked(bool ticked);
    // Leaving the contact e-mail box: lower case, then checked when not blank.
    void leaveKinEmail();

    void clear();
    void ok() {}
    void cancel();

private:
    AppState& m_state;
    OpenBooking& m_booking;
    std::array<QString, 15> m_copy;
};

} // namespace porvane
