// Several desks on one data folder, played by child processes of this test program: each child runs one of
// the disabled StoreChild tests, chosen by --gtest_filter, with its orders in the environment.
#include "store/data_lock.h"
#include "store/record_line.h"
#include "store/record_store.h"
#include "store_fixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

const char* const kDataVar = "PORVANE_TEST_CHILD_DATA";
const char* const kIndexVar = "PORVANE_TEST_CHILD_INDEX";
const char* const kCountVar = "PORVANE_TEST_CHILD_COUNT";

// A desk of its own in a child process, on the data folder the parent named.
struct ChildDesk {
    ScriptedPrompter prompter;
    FixedClock clock{QDateTime(QDate(2024, 3, 1), QTime(10, 0))};
    InstantPause pause;
    AppState state{prompter, clock, pause};
    RecordStore store{state};

    ChildDesk() {
        state.settings.DataPath = qEnvironmentVariable(kDataVar);
        store.lockWait = std::chrono::milliseconds(5000);
    }
    // Re-reads a booking the way a row click does.
    void open(const QString& regNo) {
        const QByteArray bytes = [&] {
            QFile f(state.dataPath() + u"Record/2403.vrf"_s);
            return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
        }();
        for (const QByteArray& line : bytes.split('\n'))
            if (RecordLine(line).trimmed(Field::RegNo) == regNo)
                decodeRecordLine(RecordLine(line.chopped(1)), state.record);
        state.record.MarkRecordSaved();
    }
};

QString ownRegNo(int index) {
    return u"24030%1090000"_s.arg(index);
}

QByteArray ownLine(int index) {
    return handLine({{1, ownRegNo(index).toLatin1().constData()},
                     {14, "Own"},
                     {31, "Booking"},
                     {525, "STORES"},
                     {550, "Desk Test"}});
}

QProcess* startChild(const char* test, const QString& dataPath, int index, int count, QObject* parent) {
    auto* child = new QProcess(parent);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QString::fromLatin1(kDataVar), dataPath);
    env.insert(QString::fromLatin1(kIndexVar), QString::number(index));
    env.insert(QString::fromLatin1(kCountVar), QString::number(count));
    child->setProcessEnvironment(env);
    child->setProcessChannelMode(QProcess::MergedChannels);
    child->start(QCoreApplication::applicationFilePath(),
                 {u"--gtest_also_run_disabled_tests"_s,
                  u"--gtest_filter=StoreChild.DISABLED_"_s + QLatin1StringView(test)});
    return child;
}

} // namespace

// --- the children

TEST(StoreChild, DISABLED_addAndUpdate) {
    ChildDesk desk;
    const int index = qEnvironmentVariableIntValue(kIndexVar);
    const int count = qEnvironmentVariableIntValue(kCountVar);
    for (int i = 0; i < count; ++i) {
        desk.state.record.ClearRecord();
        desk.state.record[Field::FirstName] = u"Child%1"_s.arg(index);
        desk.state.record[Field::LastName] = u"Visit%1"_s.arg(i);
        desk.state.record[Field::Department] = u"STORES"_s;
        desk.state.record[Field::Organisation] = u"Desk Test"_s;
        desk.clock.set(QDateTime(QDate(2026, 1, 10 + index), QTime(10, 0).addSecs(i)));
        ASSERT_TRUE(desk.store.SaveNewRecord(u"2403"_s).ok());

        desk.open(ownRegNo(index));
        desk.state.record[Field::CarReg] = QString::number(i);
        ASSERT_TRUE(desk.store.UpdateRecord(u"2403"_s, ownRegNo(index)).ok());
    }
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST(StoreChild, DISABLED_updateForever) {
    ChildDesk desk;
    desk.open(ownRegNo(1));
    for (int i = 0;; ++i) {
        desk.state.record[Field::CarReg] = QString::number(i);
        ASSERT_TRUE(desk.store.UpdateRecord(u"2403"_s, ownRegNo(1)).ok());
        if (i == 0) {
            std::fputs("running\n", stdout);
            std::fflush(stdout);
        }
    }
}

// --- the parents

TEST(StoreProcesses, twoDesksAddingAndUpdatingTheSameMonthAtOnce_loseNothing) {
    TempDataFolder folder;
    folder.write(u"Record/2403.vrf"_s, crLf({ownLine(1), ownLine(2)}));
    const int count = 40;
    QObject owner;
    QProcess* first = startChild("addAndUpdate", folder.dataPath(), 1, count, &owner);
    QProcess* second = startChild("addAndUpdate", folder.dataPath(), 2, count, &owner);
    for (QProcess* child : {first, second}) {
        ASSERT_TRUE(child->waitForFinished(30000));
        EXPECT_EQ(child->exitCode(), 0) << child->readAll().toStdString();
    }

    const QByteArrayList lines = folder.read(u"Record/2403.vrf"_s).split('\n');
    ASSERT_EQ(lines.size(), 2 + 2 * count + 1);
    QSet<QByteArray> regNos;
    for (const QByteArray& line : lines.first(lines.size() - 1)) {
        EXPECT_EQ(line.size(), 1187);
        regNos.insert(line.left(12));
    }
    for (int index : {1, 2}) {
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(regNos.contains(
                u"24031%1%2"_s.arg(index).arg(QTime(10, 0).addSecs(i).toString(u"hhmmss"_s)).toLatin1()))
                << "booking " << i << " of desk " << index << " was lost";
        const QByteArray own = lines[index - 1];
        EXPECT_EQ(RecordLine(own).trimmed(Field::CarReg), QString::number(count - 1));
    }
}

TEST(StoreProcesses, writerKilledInTheMiddleOfRewrites_alwaysLeavesACompleteFile) {
    TempDataFolder folder;
    QList<QByteArray> others;
    for (int i = 0; i < 300; ++i)
        others.append(
            handLine({{1, u"2403%1120000"_s.arg(i % 28 + 1, 2, 10, QChar(u'0')).toLatin1().constData()},
                      {14, "Other"},
                      {31, QByteArray::number(i).constData()}}));
    QByteArray start = ownLine(1) + "\r\n";
    for (const QByteArray& line : others)
        start += line + "\r\n";
    folder.write(u"Record/2403.vrf"_s, start);

    QObject owner;
    for (int round = 0; round < 8; ++round) {
        QProcess* child = startChild("updateForever", folder.dataPath(), 1, 0, &owner);
        QByteArray said;
        QElapsedTimer waiting;
        waiting.start();
        while (!said.contains("running\n") && waiting.elapsed() < 10000 &&
               child->state() != QProcess::NotRunning)
            if (child->waitForReadyRead(100))
                said += child->readAll();
        ASSERT_TRUE(said.contains("running\n")) << "round " << round << ": " << said.toStdString();
        QThread::msleep(20 + QRandomGenerator::global()->bounded(60));
        child->kill(); // SIGKILL: no clean-up of any kind
        ASSERT_TRUE(child->waitForFinished(5000));

        const QByteArray bytes = folder.read(u"Record/2403.vrf"_s);
        ASSERT_EQ(bytes.size(), start.size()) << "round " << round;
        const QByteArrayList lines = bytes.split('\n');
        bool carRegIsNumber = false;
        RecordLine(lines[0]).trimmed(Field::CarReg).toInt(&carRegIsNumber);
        EXPECT_TRUE(carRegIsNumber);
        for (int i = 0; i < others.size(); ++i)
            ASSERT_EQ(lines[i + 1], others[i] + '\r') << "round " << round << " line " << i + 1;
    }

    // Nothing a killed writer leaves behind may look like a month file to the lists.
    for (const QString& name : folderEntries(folder.path(u"Record"_s)))
        EXPECT_TRUE(name == u"2403.vrf" || !name.endsWith(u".vrf")) << name.toStdString();

    // The killed writer's lock is taken over at once by the next desk, without a question.
    ScriptedPrompter prompter;
    FixedClock clock(QDateTime(QDate(2024, 3, 1), QTime(10, 0)));
    InstantPause pause;
    AppState state(prompter, clock, pause);
    state.settings.DataPath = folder.dataPath();
    decodeRecordLine(RecordLine(ownLine(1)), state.record);
    RecordStore store(state);
    store.lockWait = std::chrono::milliseconds(3000);
    QElapsedTimer took;
    took.start();
    EXPECT_TRUE(store.UpdateRecord(u"2403"_s, ownRegNo(1)).ok());
    EXPECT_LT(took.elapsed(), 1000);
    EXPECT_TRUE(prompter.messages().isEmpty());
}
