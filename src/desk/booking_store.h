#pragma once

#include "store/record_store.h"

#include <QString>

namespace porvane {

// The three record store operations the booking editor calls, so the editor's questions can be tested
// without writing files. RecordStoreBooking is the desk's real one.
class BookingStore {
public:
    virtual ~BookingStore() = default;
    // Appends the current record to the month file "yymm" under a new RegNo.
    virtual StoreResult saveNew(const QString& bookingYymm) = 0;
    // Rewrites the lines of the month file "yymm" whose identifier is regNoText.
    virtual StoreResult update(const QString& bookingYymm, const QString& regNoText) = 0;
    // Removes those lines and the booking's photo.
    virtual StoreResult deleteBooking(const QString& bookingYymm, const QString& regNoText) = 0;
};

class RecordStoreBooking final : public BookingStore {
public:
    explicit RecordStoreBooking(RecordStore& store)
        : m_store(store) {}

    StoreResult saveNew(const QString& bookingYymm) override { return m_store.SaveNewRecord(bookingYymm); }
    StoreResult update(const QString& bookingYymm, const QString& regNoText) override {
        return m_store.UpdateRecord(bookingYymm, regNoText);
    }
    StoreResult deleteBooking(const QString& bookingYymm, const QString& regNoText) override {
        return m_store.DeleteBooking(bookingYymm, regNoText);
    }

private:
    RecordStore& m_store;
};

} // namespace porvane
