#pragma once

#include "app/app_state.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

namespace porvane {

// One row of the photo list: a booking whose photo file exists.
struct PhotoRow {
    QString regNo;
    QString firstName;
    QString lastName;
    QString name; // first name + " " + last name
    QString organisation;
    QString passIssued;
    QString taken; // the file's date and time
    QString age;
    QString path;
};

// The photo management window's logic: listing the photos of a month or a day, showing, attaching and
// deleting them. Every question goes through the prompter; results come back as status texts.
class PhotoManager {
    Q_DECLARE_TR_FUNCTIONS(PhotoManager)

public:
    explicit PhotoManager(AppState& state)
        : m_state(state) {}

    // "Manage Photo", or "Manage Photo  [ RegNo ]" with a booking open.
    QString caption() const;

    // The photos of the bookings in the month files named ("yymm"), optionally only those booked on one day
    // (1..31; 0 for all days).
    QList<PhotoRow> list(const QStringList& months, int day = 0) const;
    // The photos of the bookings whose first name, last name or organisation holds the text (any case).
    QList<PhotoRow> find(const QStringList& months, const QString& text) const;
    static QString countLine(qsizetype count);

    // The image to show for a row: its photo, or the placeholder after the resolution message when the file
    // is over the photo size limit.
    QString show(const PhotoRow& row);
    QString placeholderImage() const {
        return m_state.AppPath + QStringLiteral("_PSF/IRender/currentfile.bmp");
    }

    // A read-only desk lists and shows photos but neither attaches nor deletes them.
    bool changesAllowed() const { return !m_state.settings.ReadOnlyMode(); }
    // Copies the row's photo to the current booking's photo path; true when attached.
    bool attach(const PhotoRow& selected);
    // Deletes every photo of the row's booking; "Photo Deleted" when done, empty when nothing was deleted.
    QString deleteOne(const PhotoRow& row);
    // Deletes the photos of all listed rows; the status text, empty when cancelled.
    QString deleteListed(const QList<PhotoRow>& rows);

private:
    template <typename Keep> QList<PhotoRow> scan(const QStringList& months, Keep keep) const;
    // Removes every "<RegNo>_*.bmp" of the booking; true when none is left.
    bool removePhotos(const QString& regNo);
    void photoGone(const QString& regNo);

    AppState& m_state;
};

} // namespace porvane
