#pragma once

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
// program folders and the pick lists, on tabs. Save writes the settings file; pick list edits are written
// at once.
class SettingsWindow final : public QDialog {
    Q_OBJECT

public:
    explicit SettingsWindow(AppState& state, QWidget* parent = nullptr);

    // The only way in from the desk: the password window first, then the settings window. Returns true when
    // a pick list was changed, so the caller reloads its drop-down lists.
    static bool openWithPassword(AppState& state, QWidget* parent);

    bool pickListsChanged() const { return m_lists.changed(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override;

private:
    QWidget* buildSitePage();
    QWidget* buildOptionsPage(OptionPage page);
    QWidget* buildFoldersPage();
    QWidget* buildListsPage();
    void browse(QLineEdit* box, bool dataFolder);
    void showFolderState();
    void showEntries();
    void updateHelpContext();
    void takeBoxes();
    void save();

    AppState& m_state;
    SettingsEditor m_editor;
    PickListEditor m_lists;

    QTabWidget* tabSettings;
    QLineEdit* txtSiteName;
    QLineEdit* txtNewPW;
    QLineEdit* txtNewPW2;
    QLineEdit* txtDataPath;
    QLineEdit* txtSystemPath;
    QPushButton* cmdBrowseData;
    QPushButton* cmdBrowseSystem;
    QComboBox* cbEditList;
    QListWidget* lstEntries;
    QLineEdit* txtNewEntry;
};

} // namespace porvane
