#include "demo/demo_offer.h"
#include "store/data_paths.h"
#include "store/pick_lists.h"
#include "test_desk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;
using namespace porvane::test;

namespace {

const QString kShipped = QStringLiteral(PORVANE_STAGE_DIR "/_PSF/PSystem/PACustom.ini");

QStringList listed(std::initializer_list<const char*> entries) {
    QStringList out;
    for (const char* e : entries)
        out << u' ' + QString::fromLatin1(e);
    return out;
}

const QStringList kDepartments =
    listed({"RECEPTION", "ADMINISTRATION", "ENGINEERING", "FACILITIES", "FINANCE", "HUMAN RESOURCES",
            "PRODUCTION", "SALES", "SECURITY", "STORES"});

} // namespace

TEST(DemoOffer, asksFirst_fillsOnlyAnEmptyMonth_andSaysWhatItMade) {
    TestDesk desk{QDateTime(QDate(2026, 11, 23), QTime(9, 30))};
    const QString lists = pickListsPath(desk.state.AppPath);
    QDir().mkpath(QFileInfo(lists).absolutePath());
    ASSERT_TRUE(QFile::copy(kShipped, lists));
    const QDate march(2027, 3, 1);
    const QString file = u"Record/2703.vrf"_s;

    desk.prompter.queue(Answer::Cancel);
    EXPECT_FALSE(DemoOffer::run(desk.state, march));
    EXPECT_EQ(desk.prompter.last().text,
              u"Add 60 invented demonstration bookings to MARCH 2027?\nThey are saved like real bookings and "
              u"can be deleted with bulk deletion.");
    EXPECT_FALSE(desk.folder.exists(file));

    desk.prompter.queue(Answer::Ok);
    EXPECT_TRUE(DemoOffer::run(desk.state, march));
    EXPECT_EQ(desk.prompter.last().text, u"60 demonstration bookings were added to MARCH 2027.");
    const QByteArray written = desk.folder.read(file);
    EXPECT_EQ(written.count("\r\n"), 60);
    EXPECT_TRUE(written.startsWith("2703"));
    // Departments come from the department section only (columns 525 to 548 of each line).
    QSet<QString> departments;
    for (const QByteArray& line : written.split('\n'))
        if (line.size() > 548)
            departments.insert(u' ' + QString::fromLatin1(line.mid(524, 24)).trimmed());
    EXPECT_GT(departments.size(), 1);
    for (const QString& d : departments)
        EXPECT_TRUE(kDepartments.contains(d)) << d.toStdString();

    // A month with bookings is never topped up: invented identifiers could match real ones.
    EXPECT_FALSE(DemoOffer::run(desk.state, march));
    EXPECT_TRUE(desk.prompter.last().text.startsWith(u"MARCH 2027 already holds bookings."));
    EXPECT_EQ(desk.folder.read(file), written);

    EXPECT_FALSE(DemoOffer::run(desk.state, QDate()));
    EXPECT_EQ(desk.prompter.last().text, u"Choose a valid month in the date boxes first.");

    EXPECT_EQ(desk.prompter.unusedAnswers(), 0u);
}
