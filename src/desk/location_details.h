#pragma once

#include "app/app_state.h"
#include "desk/open_booking.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <array>

namespace porvane {

// The location and work details dialog's logic: it edits where the visitor goes and what they do, in the
// current record, and Cancel puts back what the fields held when the dialog opened.
class LocationDetails {
    Q_DECLARE_TR_FUNCTIONS(LocationDetails)

public:
    // The value of the two drop-downs when nothing is chosen.
    static QString nothingSelected() { return QStringLiteral(" -  Select  - "); }

    LocationDetails(AppState& state, OpenBooking& booking);

    // Opening: fills the two drop-downs from the site's pick lists file, sets the help topic and takes the
    // copy.
    void open();
    // The same with the drop-downs' entries given.
    void open(const QStringList& workDescriptions, const QStringList& accessAreas);

    const QStringList& workDescriptionItems() const { return m_descriptions; } // DescOWCB
    const QStringList& accessAreaItems() const { return m_accessAreas; }       // SelectACB

    QString department() const { return m_booking[Field::Department]; } // LocDepTb, shown only

    // Editable controls: OurRef, Visiting, VisitingTel, VisitingPager, Location, WorkDescription,
    // AccessAreas.
    QString text(Field field) const { return m_booking[field]; }
    void setText(Field field, const QString& text);
    QString additionalInfo() const { return m_booking.record().additionalInfo; }
    QString restrictions() const { return m_booking.record().restrictions; }
    void setAdditionalInfo(const QString& text) { m_booking.setAdditionalInfo(text); }
    void setRestrictions(const QString& text) { m_booking.setRestrictions(text); }

    // A double-click on the two large text boxes: their editors are not part of this version.
    void additionalInfoAction();
    void restrictionsAction();

    void clear();
    void ok() {}
    void cancel();

private:
    static constexpr std::array<Field, 7> kEditable{
        Field::OurRef,   Field::Visiting,        Field::VisitingTel, Field::VisitingPager,
        Field::Location, Field::WorkDescription, Field::AccessAreas};

    AppState& m_state;
    OpenBooking& m_booking;
    QStringList m_descriptions;
    QStringList m_accessAreas;
    std::array<QString, 7> m_copy;
    QString m_copyInfo;
    QString m_copyRestrictions;
};

} // namespace porvane
