#pragma once

#include "app/app_state.h"
#include "desk/booked_times.h"
#include "desk/booking_editor.h"
#include "desk/open_booking.h"
#include "lists/date_selection.h"
#include "lists/grid_lists.h"
#include "store/change_watcher.h"

#include <QMainWindow>
#include <memory>

class QCalendarWidget;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTimer;

namespace porvane {

class BookedTimesModel;
class ListSortFilterModel;
class ListTableModel;

// The desk's one main window (frmMain): the booking editor, its booked times, the date selection and the list
// grid. It forwards its controls' events to the desk's logic and shows the state that comes back.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(AppState& state, BookingStore& store, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Other desks changed these files (month "yymm", day status "yymmdd"; none named: any file): when the
    // list shown reads one of them it is read again a moment later, several changes in that moment together;
    // the highlighted booking stays highlighted and the editor is left as it is.
    void filesChanged(const QStringList& keys);
    // Follows the changes the watcher reports (in place of the one it followed, if any); the watcher is told
    // before every list is read, so that the desk's own changes are not listed a second time.
    void watch(std::unique_ptr<ChangeWatcher> watcher);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* buildEditor();
    QWidget* buildTimes();
    QWidget* buildDates();
    QWidget* buildActions();
    QWidget* buildGate();
    void wireEditor();
    void wireTimes();
    void wireDates();
    void wireLists();
    void wireTools();
    void wireGate();
    // A pass number scanned or typed into ScanTB, then Enter: that booking opened and marked IN or OUT.
    void scanPass();
    void signOutEveryone();
    void showOnSiteFilter();
    void afterRecordWindow(bool passRemoved = false);
    void printList();
    // cmdRollCall: everyone on site now, on the roll-call sheet.
    void printRollCall();
    void exportList();
    // What the find controls hold: the kind, the text and the months from dtpFindFrom to dtpFindTo.
    GridLists::SearchRequest searchRequest() const;

    void listDay();
    void listMonth();
    void refreshList();
    // Reads the list shown again after other desks changed its files; later while a window waits for the
    // operator.
    void relistChanged();
    void showTable(const ListTable& table);
    void showListState();
    void openRow(int row);
    // Highlights the list row of the booking in the editor, or none when it is not listed.
    void selectBookingRow();

    // The views of the booking follow its signals, without echoing them back as edits.
    void showBox(Field field);
    void showBooking();
    // The labels, colours, focus and buttons that the editor's logic decides.
    void showEditorState();
    void showBookingMonth();
    void showDateState();
    void showTitle();
    void fillPickLists();
    void takeDateBoxes();
    void tickClock();

    AppState& m_state;
    DateSelection m_dates;
    OpenBooking m_booking;
    BookedTimes m_times;
    BookingEditor m_editor;
    GridLists m_lists;
    BookedTimesModel* m_timesModel = nullptr;
    ListTableModel* m_listModel = nullptr;
    ListSortFilterModel* m_listView = nullptr;
    QStringList m_workDescriptions;
    QStringList m_accessAreas;
    bool m_showing = false;
    bool m_selectingRow = false;
    bool m_restarting = false; // saved settings need a restart; the close does not ask
    BookingEditor::Focus m_appliedFocus = BookingEditor::Focus::None;
    int m_appliedCaret = -1;

    // Booking editor
    std::array<QWidget*, kFieldCount> m_boxes{};
    QLineEdit* RegNoTB = nullptr;
    QLabel* laBookMonth = nullptr;
    QLineEdit* FirstNameTB = nullptr;
    QLineEdit* LastNameTB = nullptr;
    QLineEdit* PersGendTB = nullptr;
    QLineEdit* PersEmailTB = nullptr;
    QLineEdit* CatEMATB = nullptr;
    QComboBox* CataCB = nullptr;
    QComboBox* Dept1CB = nullptr;
    QLabel* PassPrntdLa = nullptr;
    QLabel* PhotoOnFLa = nullptr;
    QLabel* LaON_Site = nullptr;
    QLabel* LaOFFSite = nullptr;
    QPushButton* cmdPersonal = nullptr;
    QPushButton* cmdLocation = nullptr;

    // Booked times
    QTableView* TimeGrid = nullptr;
    QComboBox* cbTime = nullptr;
    QLabel* laSelTime = nullptr;
    QPushButton* cmdADD = nullptr;
    QPushButton* cmdSUB = nullptr;
    QPushButton* cmdCLEARAll = nullptr;

    // Date selection
    QComboBox* CBGetDay = nullptr;
    QComboBox* CBGetMonth = nullptr;
    QComboBox* CBGetYear = nullptr;
    QCalendarWidget* Calendar1 = nullptr;
    QPushButton* cmdCalDECR = nullptr;
    QPushButton* cmdCalINCR = nullptr;
    QPushButton* cmdGetToday = nullptr;
    QPushButton* cmdGetTom = nullptr;
    QPushButton* cmdGetAny = nullptr;
    QLabel* laClock = nullptr;
    QTimer* m_clockTimer = nullptr;
    QTimer* m_relistTimer = nullptr;
    std::unique_ptr<ChangeWatcher> m_watcher;
    QString m_watcherLost; // the title shown while the watcher cannot see the store

    // Actions and lists
    QPushButton* cmdNEW = nullptr;
    QPushButton* cmdSAVE = nullptr;
    QPushButton* cmdDelete = nullptr;
    QPushButton* cmdIN = nullptr;
    QPushButton* cmdOUT = nullptr;
    QPushButton* cmdDayList = nullptr;
    QLabel* SearchLa = nullptr;
    QComboBox* CBListBy = nullptr;
    QLineEdit* MainFindTB = nullptr;
    QPushButton* cmdMFind = nullptr;
    QDateEdit* dtpFindFrom = nullptr;
    QDateEdit* dtpFindTo = nullptr;
    QPushButton* cmdPRINT = nullptr;
    QPushButton* cmdExport = nullptr;
    QPushButton* cmdPass = nullptr;
    QPushButton* cmdPhotos = nullptr;
    QPushButton* cmdCamera = nullptr;
    QPushButton* cmdSettings = nullptr;
    QPushButton* cmdMultiDELETE = nullptr;
    QPushButton* cmdAbout = nullptr;
    QPushButton* Command1 = nullptr;
    QTableView* StatGrid = nullptr;

    // The gate: the scan box, the on-site counts and filters, the roll call, the end-of-day sign-out
    QLineEdit* ScanTB = nullptr;
    QLabel* laOnSiteCounts = nullptr;
    QCheckBox* ckOnSiteNow = nullptr;
    QCheckBox* ckOverstayed = nullptr;
    QPushButton* cmdRollCall = nullptr;
    QPushButton* cmdSignOutAll = nullptr;
};

} // namespace porvane
