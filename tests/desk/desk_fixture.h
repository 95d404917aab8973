#pragma once

#include "app/app_state.h"
#include "desk/booking_editor.h"
#include "desk/booking_store.h"
#include "scripted_prompter.h"
#include "store/record_store.h"
#include "temp_data_folder.h"

#include <gtest/gtest.h>

namespace porvane::test {

// The desk's state over a scripted prompter, a fixed clock (Thursday 14 March 2024, 10:05:07), an instant
// pause and a throw-away data folder.
class DeskFixture : public ::testing::Test {
protected:
    DeskFixture()
        : clock(QDateTime(QDate(2024, 3, 14), QTime(10, 5, 7)))
        , state(prompter, clock, pause) {
        state.AppPath = folder.appPath();
        state.settings.DataPath = folder.dataPath();
        state.settings.ckMakeSysRdO = QStringLiteral("0");
        state.settings.ckDisSingleD = QStringLiteral("0");
    }

    ScriptedPrompter prompter;
    FixedClock clock;
    InstantPause pause;
    TempDataFolder folder;
    AppState state;
};

// The booking editor through the real record store, on real files; the calendar shows today.
class DeskFlow : public DeskFixture {
protected:
    DeskFlow()
        : dates(2024)
        , times(state)
        , records(state)
        , store(records)
        , editor(state, dates, times, store) {
        records.lockWait = std::chrono::milliseconds(200);
        dates.cmdGetToday(clock);
        times.setMonth(2024, 3);
        editor.refreshList = [this] {
            ++refreshes;
        };
    }

    // The boxes a new booking needs (after NEW).
    void typeBooking(const char* first = "Jo", const char* last = "Li",
                     const char* department = " ENGINEERING", const char* organisation = "Acme Widgets Ltd") {
        editor.setBoxText(Field::FirstName, QString::fromUtf8(first));
        editor.setBoxText(Field::LastName, QString::fromUtf8(last));
        editor.setBoxText(Field::Department, QString::fromUtf8(department));
        editor.setBoxText(Field::Organisation, QString::fromUtf8(organisation));
    }

    // A field of a stored line, trailing blanks cut.
    static QByteArray stored(const QByteArray& line, Field field) {
        QByteArray text = line.mid(fieldSpec(field).column - 1, fieldSpec(field).width);
        while (text.endsWith(' '))
            text.chop(1);
        return text;
    }
    // The booked time of day `day` in a stored line, as hhmm.
    static QByteArray bookedTime(const QByteArray& line, int day) {
        return line.mid(1059 + 4 * (day - 1), 4);
    }

    // The lines of the month file "yymm", each checked for its CR LF and without it.
    QList<QByteArray> monthLines(const char* yymm) const {
        QList<QByteArray> lines =
            folder.read(QStringLiteral("Record/%1.vrf").arg(QLatin1StringView(yymm))).split('\n');
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        for (QByteArray& l : lines) {
            EXPECT_TRUE(l.endsWith('\r'));
            l.chop(1);
        }
        return lines;
    }

    DateSelection dates;
    BookedTimes times;
    RecordStore records;
    RecordStoreBooking store;
    BookingEditor editor;
    int refreshes = 0;
};

} // namespace porvane::test
