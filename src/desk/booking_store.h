#pragma once

#include "store/record_store.h"

#include <QString>

namespace porvane {

// The record store operations the booking editor calls. RecordStoreBooking is the desk's data folder; each
// takes the booking's values and returns what happened, and never talks to the operator.
class BookingStore {
public:
    virtual ~BookingStore() = default;
    // Appends the booking to the month file "yymm" under a new RegNo (in the result).
    virtual StoreResult saveNew(const CurrentRecord& booking, const QString& bookingYymm) = 0;
    // Rewrites the lines of the month file "yymm" whose identifier is regNoText.
    virtual StoreResult update(const CurrentRecord& booking, const QString& bookingYymm,
                               const QString& regNoText) = 0;
    // Writes only the pass fields into those lines.
    virtual StoreResult updatePass(const CurrentRecord& booking, const QString& bookingYymm,
                                   const QString& regNoText) = 0;
    // Removes those lines and the booking's photo.
    virtual StoreResult deleteBooking(const QString& bookingYymm, const QString& regNoText,
                                      const QString& firstName, const QString& lastName) = 0;
};

class RecordStoreBooking final : public BookingStore {
public:
    explicit RecordStoreBooking(RecordStore& store)
        : m_store(store) {}

    StoreResult saveNew(const CurrentRecord& booking, const QString& bookingYymm) override {
        return m_store.SaveNewRecord(booking, bookingYymm);
    }
    StoreResult update(const CurrentRecord& booking, const QString& bookingYymm,
                       const QString& regNoText) override {
        return m_store.UpdateRecord(booking, bookingYymm, regNoText);
    }
    StoreResult updatePass(const CurrentRecord& booking, const QString& bookingYymm,
                           const QString& regNoText) override {
        return m_store.UpdatePass(booking, bookingYymm, regNoText);
    }
    StoreResult deleteBooking(const QString& bookingYymm, const QString& regNoText, const QString& firstName,
                              const QString& lastName) override {
        return m_store.DeleteBooking(bookingYymm, regNoText, firstName, lastName);
    }

private:
    RecordStore& m_store;
};

} // namespace porvane
