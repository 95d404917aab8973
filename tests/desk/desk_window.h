#pragma once

#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "store/record_store.h"
#include "test_desk.h"
#include "widgets.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace porvane::test {

// A pause that lets the test look at the window at the moment the desk waits.
class WatchedPause final : public Pause {
public:
    void wait(double) override {
        if (onWait)
            onWait();
    }
    std::function<void()> onWait;
};

// The desk's real main window over a throw-away data folder and the real record store, driven as an
// operator drives it: widgets found by objectName, mouse clicks and keys, a scripted prompter, a fixed clock
// (Monday 23 November 2026, 09:30:15).
class DeskWindow : public ::testing::Test {
protected:
    DeskWindow() {
        state.AppPath = folder.appPath();
        state.settings.DataPath = folder.dataPath();
        state.settings.ckEnbl_RTC = QStringLiteral("0");
        state.dataFolder.lockWait = std::chrono::milliseconds(200);
    }

    // The window is made once the files and settings a test needs are in place.
    MainWindow& window() {
        if (!m_window) {
            m_window = std::make_unique<MainWindow>(state, store);
            m_window->show();
        }
        return *m_window;
    }

    template <typename T = QWidget> T* find(const char* name) { return test::find<T>(&window(), name); }
    QString text(const char* name) { return find<QLineEdit>(name)->text(); }
    QString label(const char* name) { return find<QLabel>(name)->text(); }
    QString combo(const char* name) { return find<QComboBox>(name)->currentText(); }

    void click(const char* name) { test::click(&window(), name); }
    void type(const char* name, const QString& text) {
        auto* box = find<QLineEdit>(name);
        box->setFocus();
        box->end(false);
        keys(box, text);
    }
    // Ctrl+A and Delete, then the new text.
    void retype(const char* name, const QString& text) {
        auto* box = find<QLineEdit>(name);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_Delete);
        keys(box, text);
    }
    // A drop-down picked with the mouse: its activated signals fire as they do for the operator.
    void pick(const char* name, const QString& entry) {
        auto* box = find<QComboBox>(name);
        const int index = box->findText(entry);
        if (index < 0)
            throw std::runtime_error("no entry " + entry.toStdString());
        box->setCurrentIndex(index);
        emit box->activated(index);
        emit box->textActivated(entry);
    }
    // A new booking typed in the editor: names, department and organisation.
    void typeNewBooking(const QString& first, const QString& last, const QString& organisation) {
        click("cmdNEW");
        type("FirstNameTB", first);
        type("LastNameTB", last);
        find<QComboBox>("Dept1CB")->setCurrentText(QStringLiteral("ENGINEERING"));
        type("CatOrganTB", organisation);
    }

    QTableView* grid() { return find<QTableView>("StatGrid"); }
    QString cell(int row, int column) { return grid()->model()->index(row, column).data().toString(); }
    void clickRow(int row) {
        QTableView* g = grid();
        const QModelIndex index = g->model()->index(row, 1);
        g->scrollTo(index);
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(index).center());
    }
    int highlightedRow() { return grid()->currentIndex().row(); }

    // Chooses a day's time cell in the booked-times grid.
    void chooseTimeCell(int day) {
        auto* times = find<QTableView>("TimeGrid");
        const QModelIndex index = times->model()->index(day - 1, 1);
        times->scrollTo(index);
        QTest::mouseClick(times->viewport(), Qt::LeftButton, {}, times->visualRect(index).center());
    }
    QString timeCell(int day) {
        return find<QTableView>("TimeGrid")->model()->index(day - 1, 1).data().toString();
    }
    // Books a time from the time list on a day with ADD.
    void addTime(int day, const QString& hhmm) {
        chooseTimeCell(day);
        pick("cbTime", hhmm);
        click("cmdADD");
    }

    // The lines of a month file ("2611"), without their CR LF.
    QList<QByteArray> monthLines(const char* yymm) const {
        QList<QByteArray> lines =
            folder.read(QStringLiteral("Record/%1.vrf").arg(QLatin1StringView(yymm))).split('\n');
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        for (QByteArray& l : lines)
            l.chop(l.endsWith('\r') ? 1 : 0);
        return lines;
    }
    // The booked time of a day in a stored line, as hhmm.
    static QByteArray bookedTime(const QByteArray& line, int day) {
        return line.mid(1059 + 4 * (day - 1), 4);
    }

    TempDataFolder folder;
    ScriptedPrompter prompter;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(9, 30, 15))};
    WatchedPause pause;
    AppState state{prompter, clock, pause};
    RecordStore records = recordStoreOf(state);
    RecordStoreBooking store{records};

private:
    std::unique_ptr<MainWindow> m_window;
};

} // namespace porvane::test
