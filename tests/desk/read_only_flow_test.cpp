#include "app/help_topics.h"
#include "desk/booking_store.h"
#include "desk/main_window.h"
#include "documents_folder.h"
#include "lists/on_site_list.h"
#include "recording_opener.h"
#include "store/record_store.h"
#include "temp_data_folder.h"
#include "widgets.h"

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace porvane;
using porvane::test::handBooking;
using porvane::test::slot;

namespace {

// Says yes to every question and OK to every notice, as the most careless operator would.
class YesPrompter final : public Prompter {
public:
    Answer ask(const Message& message) override {
        texts << message.text;
        return message.buttons == Buttons::YesNo || message.buttons == Buttons::YesNoCancel ? Answer::Yes
                                                                                            : Answer::Ok;
    }
    QStringList texts;
};

// The paths whose content, or presence, differs.
QStringList changedFiles(const QMap<QString, QByteArray>& before, const QMap<QString, QByteArray>& after) {
    QStringList changed;
    for (const QString& path :
         QSet<QString>(before.keyBegin(), before.keyEnd()) + QSet<QString>(after.keyBegin(), after.keyEnd()))
        if (before.value(path) != after.value(path))
            changed << path;
    return changed;
}

bool closesWindow(const QPushButton* b) {
    return b->objectName().contains(u"Close", Qt::CaseInsensitive) ||
           b->objectName().contains(u"Cancel", Qt::CaseInsensitive);
}

// Drives every modal window that opens: types the open booking's name into its empty boxes, enables and
// presses each of its visible buttons (choosing the first row of its lists, so that row actions have
// something to act on), then closes it. Windows opened from a window are driven the same way.
class ModalDriver : public QObject {
public:
    ModalDriver() { arm(); }
    ~ModalDriver() override { m_stopped = true; }

    QStringList pressed;

private:
    void arm() {
        if (!m_stopped)
            QTimer::singleShot(5, this, [this] { poll(); });
    }
    void poll() {
        arm();
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || m_seen.contains(modal))
            return;
        m_seen << modal;
        drive(modal);
    }
    void drive(QWidget* window) {
        const QPointer<QWidget> alive(window);
        // Searches find the open booking.
        for (QLineEdit* box : window->findChildren<QLineEdit*>())
            if (box->isEnabled() && !box->isReadOnly() && box->text().isEmpty())
                box->setText(QStringLiteral("Bond"));
        for (QPushButton* b : window->findChildren<QPushButton*>()) {
            if (!alive)
                return;
            if (closesWindow(b) || !b->isVisibleTo(window))
                continue;
            for (QTableView* grid : window->findChildren<QTableView*>())
                if (grid->model() && grid->model()->rowCount() > 0 && !grid->currentIndex().isValid())
                    grid->setCurrentIndex(grid->model()->index(0, 0));
            b->setEnabled(true);
            pressed << b->objectName();
            b->click();
        }
        if (auto* dialog = qobject_cast<QDialog*>(alive.data()))
            dialog->reject();
    }

    bool m_stopped = false;
    QList<QPointer<QWidget>> m_seen;
};

// The buttons that change data, pressed even when the window has greyed them: the logic behind each must
// refuse on its own. The settings window, where read-only mode is switched off, and printing, which writes no
// data, are left out.
const char* const kWritingButtons[] = {"cmdIN",   "cmdOUT", "cmdADD",    "cmdSUB",         "cmdCLEARAll",
                                       "cmdSAVE", "cmdNEW", "cmdDelete", "cmdMultiDELETE", "Command1"};

class DeskOverData : public ::testing::Test {
protected:
    DeskOverData() {
        state.AppPath = folder.appPath();
        state.settings.DataPath = folder.dataPath();
        state.settings.ckDisSingleD = QStringLiteral("0");
        state.settings.ckDisPassPrn = QStringLiteral("0");
        state.settings.ckEnbl_RTC = QStringLiteral("0");
        state.help.urlOpener = &opener;
        // Two visitors due today; Al Bond holds a pass running until next week and has a photo.
        folder.write(QStringLiteral("Record/2611.vrf"),
                     handBooking("261101080000", "Al", "Bond",
                                 {{525, "ENGINEERING"},
                                  {550, "Bond plc"},
                                  {936, "20-11-2026"},
                                  {947, "27-11-2026"},
                                  {958, "1W"},
                                  {969, "20-11-2026 at 08:00"},
                                  {slot(23), "0900"}}) +
                         "\r\n" +
                         handBooking("261102080000", "Cy", "Day",
                                     {{525, "SALES"}, {550, "Day Ltd"}, {slot(23), "1000"}}) +
                         "\r\n");
        QImage photo(150, 200, QImage::Format_RGB888);
        photo.fill(Qt::darkCyan);
        QDir().mkpath(folder.path(QStringLiteral("photo/2611")));
        photo.save(folder.path(QStringLiteral("photo/2611/261101080000_Al_Bond.bmp")), "BMP");
        // Today's status file as the desk last wrote it, with Cy on site.
        EXPECT_FALSE(OnSiteList::writeStatusList(state.files(), clock.today()));
        const QString status = QStringLiteral("Status/261123.vdf");
        QByteArray lines = folder.read(status);
        lines.replace(1188 + 990, 5, "08:55");
        folder.write(status, lines);
    }

    // Opens the on-site list and Al Bond's booking, then presses every enabled button of the main window and
    // the writing ones, driving every window they open. Returns the buttons pressed.
    QStringList pressEverything() {
        RecordStore records = recordStoreOf(state);
        RecordStoreBooking store(records);
        MainWindow window(state, store);
        window.show();
        ModalDriver driver;
        const auto press = [&](QPushButton* b) {
            driver.pressed << b->objectName();
            b->click();
        };

        press(test::find<QPushButton>(&window, "cmdDayList"));
        auto* grid = test::find<QTableView>(&window, "StatGrid");
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualRect(grid->model()->index(0, 1)).center());
        for (const char* name : kWritingButtons) {
            auto* b = test::find<QPushButton>(&window, name);
            b->setEnabled(true);
            press(b);
        }
        // The list may have changed under the presses; open the booking again for its pass and photos.
        press(test::find<QPushButton>(&window, "cmdDayList"));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualRect(grid->model()->index(0, 1)).center());
        for (QPushButton* b : window.findChildren<QPushButton*>()) {
            const QString name = b->objectName();
            if (b->isEnabled() && b->isVisible() && name != u"cmdPRINT" && name != u"cmdSettings")
                press(b);
        }
        return driver.pressed;
    }

    test::TempDataFolder folder;
    // A pass the presses print without a printer is saved here, not in the user's own documents.
    test::DocumentsFolder documents{folder.appPath()};
    YesPrompter prompter;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(11, 15, 0))};
    InstantPause pause;
    AppState state{prompter, clock, pause};
    test::RecordingOpener opener;
};

} // namespace

TEST_F(DeskOverData, readOnlyDeskChangesNoFileWhateverIsPressed) {
    state.settings.ckMakeSysRdO = QStringLiteral("1");
    const auto before = folder.contents();
    const QStringList pressed = pressEverything();

    const QStringList changed = changedFiles(before, folder.contents());
    EXPECT_TRUE(changed.isEmpty()) << changed.join(u' ').toStdString();
    // The presses reached the pass and photo windows and their writing buttons.
    for (const char* name :
         {"cmdIN", "cmdOUT", "cmdSAVE", "cmdNEW", "cmdDelete", "cmdPass", "cmdPrintPass", "cmdRemovePass",
          "cmdCapture", "cmdSaveDIB", "cmdGetPhoto", "cmdHPList", "cmdHPAttach", "cmdHPDelete",
          "cmdHPDeleteList", "cmdPhotos", "cmdCamera", "cmdRollCall"})
        EXPECT_TRUE(pressed.contains(QString::fromLatin1(name))) << name;
}

// The same presses on a desk that may write change the data, so the check above can fail.
TEST_F(DeskOverData, theSamePressesOnAWritableDeskDoChangeFiles) {
    state.settings.ckMakeSysRdO = QStringLiteral("0");
    const auto before = folder.contents();
    pressEverything();
    EXPECT_FALSE(changedFiles(before, folder.contents()).isEmpty());
}
