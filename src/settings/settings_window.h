#pragma once

#include "app/help_topics.h"
#include "settings/pick_list_editor.h"
#include "settings/settings_editor.h"
#include "settings/settings_options.h"

#include <QDialog>

class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace porvane {

// frmSettings: every option of the settings record, the site's name, a new settings password, the data and
// program folders, the bookings server and the pick lists, on tabs. Save writes the settings file; pick list
// edits are written at once.
class SettingsWindow final : public QDialog {
    Q_OBJECT

public:
    // Edits settings, the desk's own, and the settings and pick lists files of the installation in appPath.
    // testServer is what "Test connection" runs.
    SettingsWindow(const QString& appPath, Settings& settings, Prompter& prompter, Help& help,
                   ServerTest testServer, QWidget* parent = nullptr);

    // What the desk must do after the window closed.
    struct Outcome {
        bool pickListsChanged = false; // reload the drop-down lists
        bool restartPending = false;   // close without asking: the saved settings need a restart
        bool storeChanged = false;     // open the store the settings now name
    };
    // The only way in from the desk: the password window first, then the settings window.
    static Outcome openWithPassword(const QString& appPath, Settings& settings, Prompter& prompter,
                                    Help& help, const ServerTest& testServer, QWidget* parent);

    bool pickListsChanged() const { return m_lists.changed(); }
    bool restartPending() const { return m_editor.restartPending(); }
    bool storeChanged() const { return m_editor.storeChanged(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override;

private:
    QWidget* buildSitePage();
    QWidget* buildOptionsPage(OptionPage page);
    QWidget* buildFoldersPage();
    QWidget* buildServerGroup();
    QWidget* buildListsPage();
    void browse(QLineEdit* box, bool dataFolder);
    void showFolderState();
    void showEntries();
    HelpTopic helpTopic() const;
    void takeBoxes();
    void save();

    Prompter& m_prompter;
    Help& m_help;
    SettingsEditor m_editor;
    PickListEditor m_lists;
    ServerTest m_testServer;

    QTabWidget* tabSettings;
    QLineEdit* txtSiteName;
    QLineEdit* txtNewPW;
    QLineEdit* txtNewPW2;
    QLineEdit* txtDataPath;
    QLineEdit* txtSystemPath;
    QPushButton* cmdBrowseData;
    QPushButton* cmdBrowseSystem;
    QWidget* grpServer;
    QLineEdit* txtServerHost;
    QLineEdit* txtServerPort;
    QLineEdit* txtServerDatabase;
    QLineEdit* txtServerUser;
    QLineEdit* txtServerPassword;
    QComboBox* cbEditList;
    QListWidget* lstEntries;
    QLineEdit* txtNewEntry;
};

} // namespace porvane
