#pragma once

#include "store/line_files.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace porvane::test {

// The stores that the store, list, bulk-deletion and on-site tests run one body over.
enum class StoreKind { DataFolder, Server };

// "DataFolder" or "Server": the store's part of a test's name.
std::string storeKindName(const ::testing::TestParamInfo<StoreKind>& info);
inline void PrintTo(StoreKind kind, std::ostream* out) {
    *out << storeKindName({kind, 0});
}

// A server store for one test, over an empty database of its own; null with why set when none can be made
// on this machine.
std::unique_ptr<LineFiles> makeServerStore(QString& why);

// A month or day status file by its name in the data folder ("Record/2403.vrf", "Status/240305.vdf").
LineFileName lineFileNameOf(const QString& relative);
// Lays out a whole file in the store, as a desk that wrote those bytes would have left it.
void putStoredFile(LineFiles& files, const QString& relative, const QByteArray& bytes);
// The file's bytes as the store hands them out; empty when it is missing.
QByteArray storedFile(LineFiles& files, const QString& relative);
// Every month and day status file of the store, by its name in the data folder, with its bytes.
QMap<QString, QByteArray> storedFiles(LineFiles& files);

// Runs the body of a test of Fixture (which holds a TestDesk `desk`) over each store: the desk's data
// folder, then a server store, which is skipped where none can be made.
template <typename Fixture> struct OverStores : Fixture, ::testing::WithParamInterface<StoreKind> {
    // The store is chosen before the fixture lays out its files.
    void SetUp() override {
        if (GetParam() == StoreKind::Server) {
            QString why;
            std::unique_ptr<LineFiles> server = makeServerStore(why);
            if (!server)
                GTEST_SKIP() << why.toStdString();
            this->desk.state.useFiles(std::move(server));
        }
        Fixture::SetUp();
    }
    LineFiles& files() { return this->desk.state.files(); }
    void put(const QString& relative, const QByteArray& bytes) { putStoredFile(files(), relative, bytes); }
    QByteArray stored(const QString& relative) { return storedFile(files(), relative); }
};

} // namespace porvane::test

// Instantiates the TEST_P bodies of Suite (an OverStores fixture) once for each store.
#define PORVANE_OVER_STORES(Suite)                                                                           \
    INSTANTIATE_TEST_SUITE_P(                                                                                \
        , Suite,                                                                                             \
        ::testing::Values(::porvane::test::StoreKind::DataFolder, ::porvane::test::StoreKind::Server),       \
        ::porvane::test::storeKindName)
