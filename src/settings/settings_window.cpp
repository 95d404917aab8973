#include "settings/settings_window.h"

#include "app/help_topics.h"
#include "settings/data_folder_check.h"
#include "settings/folder_browser_dialog.h"
#include "settings/settings_options.h"
#include "settings/settings_password.h"
#include "settings/settings_password_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace porvane {

namespace {

constexpr int kDataPathWidth = 255;
constexpr int kSystemPathWidth = 76;
constexpr int kSiteNameWidth = 64;
constexpr int kFoldersTab = 3;
constexpr int kServerHostWidth = 128;
constexpr int kServerPortWidth = 5;
constexpr int kServerNameWidth = 63;
constexpr int kServerPasswordWidth = 64;

QLabel* note(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("color: #505050;"));
    return label;
}

QLineEdit* lineEdit(const char* name, int maxLength) {
    auto* edit = new QLineEdit;
    edit->setObjectName(QString::fromLatin1(name));
    edit->setMaxLength(maxLength);
    return edit;
}

} // namespace

SettingsWindow::SettingsWindow(const QString& appPath, Settings& settings, Prompter& prompter, Help& help,
                               ServerTest testServer, QWidget* parent)
    : QDialog(parent)
    , m_prompter(prompter)
    , m_help(help)
    , m_editor(appPath, settings, prompter)
    , m_lists(appPath, prompter)
    , m_testServer(std::move(testServer)) {
    setObjectName(QStringLiteral("frmSettings"));
    setWindowTitle(tr("Porvane 90 Settings"));

    tabSettings = new QTabWidget(this);
    tabSettings->setObjectName(QStringLiteral("tabSettings"));
    tabSettings->addTab(buildSitePage(), tr("Site and password"));
    tabSettings->addTab(buildOptionsPage(OptionPage::Desk), tr("Desk"));
    tabSettings->addTab(buildOptionsPage(OptionPage::Passes), tr("Passes and camera"));
    tabSettings->addTab(buildFoldersPage(), tr("Folders"));
    tabSettings->addTab(buildListsPage(), tr("Pick lists"));

    auto* buttons = new QDialogButtonBox(this);
    auto* saveButton = buttons->addButton(tr("&Save"), QDialogButtonBox::AcceptRole);
    saveButton->setObjectName(QStringLiteral("cmdSave"));
    auto* closeButton = buttons->addButton(tr("Close"), QDialogButtonBox::RejectRole);
    closeButton->setObjectName(QStringLiteral("cmdClose"));
    auto* helpHint = new QLabel(tr("[F1] for Help"), this);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(helpHint);
    bottom->addWidget(buttons, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabSettings, 1);
    layout->addLayout(bottom);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsWindow::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &SettingsWindow::reject);
    showFolderState();
    resize(680, 520);
}

SettingsWindow::Outcome SettingsWindow::openWithPassword(const QString& appPath, Settings& settings,
                                                         Prompter& prompter, Help& help,
                                                         const ServerTest& testServer, QWidget* parent) {
    if (SettingsPasswordWindow(settings, prompter, parent).exec() != QDialog::Accepted)
        return {};
    SettingsWindow window(appPath, settings, prompter, help, testServer, parent);
    window.exec();
    return {window.pickListsChanged(), window.restartPending(), window.storeChanged()};
}

QWidget* SettingsWindow::buildSitePage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);

    auto* site = new QGroupBox(tr("Site"));
    auto* siteForm = new QFormLayout(site);
    txtSiteName = lineEdit("txtSiteName", kSiteNameWidth);
    txtSiteName->setText(m_editor.edited().SiteName);
    siteForm->addRow(tr("Site's name:"), txtSiteName);
    siteForm->addRow(note(tr("Shown on the start-up and About windows, on passes and on printed lists.")));
    layout->addWidget(site);

    auto* password = new QGroupBox(tr("Settings password"));
    auto* pwForm = new QFormLayout(password);
    txtNewPW = lineEdit("txtNewPW", SettingsPassword::kMaxLength);
    txtNewPW2 = lineEdit("txtNewPW2", SettingsPassword::kMaxLength);
    for (QLineEdit* e : {txtNewPW, txtNewPW2})
        e->setEchoMode(QLineEdit::Password);
    pwForm->addRow(tr("New password:"), txtNewPW);
    pwForm->addRow(tr("Repeat new password:"), txtNewPW2);
    pwForm->addRow(note(tr("Leave both empty to keep the current password.")));
    layout->addWidget(password);
    layout->addWidget(buildOptionsPage(OptionPage::Security));
    layout->addStretch();
    return page;
}

QWidget* SettingsWindow::buildOptionsPage(OptionPage page) {
    auto* box = new QGroupBox(page == OptionPage::Security ? tr("Password rules") : tr("Options"));
    auto* layout = new QVBoxLayout(box);
    for (const OptionBox& option : SettingsOptions::boxes()) {
        if (option.page != page)
            continue;
        auto* check = new QCheckBox(SettingsOptions::label(option), box);
        check->setObjectName(QString::fromLatin1(option.name));
        check->setChecked(m_editor.edited().*option.member == u"1");
        QString Settings::*member = option.member;
        connect(check, &QCheckBox::toggled, this, [this, member](bool on) {
            m_editor.edited().*member = on ? QStringLiteral("1") : QStringLiteral("0");
            showFolderState();
        });
        layout->addWidget(check);
    }
    if (page == OptionPage::Desk)
        layout->addWidget(note(tr("Opening maximised, today's date and the clock take effect when Porvane 90 "
                                  "starts again.")));
    if (page != OptionPage::Desk && page != OptionPage::Passes)
        return box;
    // A tab of its own: the same margins as the tabs built of several groups.
    auto* tab = new QWidget;
    auto* tabLayout = new QVBoxLayout(tab);
    tabLayout->addWidget(box);
    tabLayout->addStretch();
    return tab;
}

QWidget* SettingsWindow::buildFoldersPage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(buildOptionsPage(OptionPage::Folders));

    auto* folders = new QGroupBox(tr("Folders"));
    auto* grid = new QGridLayout(folders);
    txtDataPath = lineEdit("txtDataPath", kDataPathWidth);
    txtDataPath->setText(QDir::toNativeSeparators(m_editor.edited().DataPath));
    cmdBrowseData = new QPushButton(tr("Browse..."));
    cmdBrowseData->setObjectName(QStringLiteral("cmdBrowseData"));
    txtSystemPath = lineEdit("txtSystemPath", kSystemPathWidth);
    txtSystemPath->setText(QDir::toNativeSeparators(m_editor.edited().SystemPath));
    cmdBrowseSystem = new QPushButton(tr("Browse..."));
    cmdBrowseSystem->setObjectName(QStringLiteral("cmdBrowseSystem"));
    grid->addWidget(new QLabel(tr("Data folder (bookings, day status, photos):")), 0, 0, 1, 2);
    grid->addWidget(txtDataPath, 1, 0);
    grid->addWidget(cmdBrowseData, 1, 1);
    grid->addWidget(new QLabel(tr("Program folder:")), 2, 0, 1, 2);
    grid->addWidget(txtSystemPath, 3, 0);
    grid->addWidget(cmdBrowseSystem, 3, 1);
    layout->addWidget(folders);
    layout->addWidget(
        note(tr("The data folder may be on this PC or on a network share that other desks use. It must hold "
                "the Record, Status and photo folders; for a new data folder they can be made for you. A "
                "change of folder takes effect when Porvane 90 starts again.")));
    layout->addWidget(buildServerGroup());
    layout->addStretch();

    connect(cmdBrowseData, &QPushButton::clicked, this, [this] { browse(txtDataPath, true); });
    connect(cmdBrowseSystem, &QPushButton::clicked, this, [this] { browse(txtSystemPath, false); });
    return page;
}

QWidget* SettingsWindow::buildServerGroup() {
    auto* group = new QGroupBox(tr("Bookings server (PostgreSQL)"));
    grpServer = group;
    const Settings& s = m_editor.edited();
    txtServerHost = lineEdit("txtServerHost", kServerHostWidth);
    txtServerHost->setText(s.ServerHost);
    txtServerHost->setPlaceholderText(tr("empty: the data folder"));
    txtServerPort = lineEdit("txtServerPort", kServerPortWidth);
    txtServerPort->setText(s.ServerPort);
    txtServerPort->setPlaceholderText(QStringLiteral("5432"));
    txtServerPort->setMaximumWidth(70);
    txtServerDatabase = lineEdit("txtServerDatabase", kServerNameWidth);
    txtServerDatabase->setText(s.ServerDatabase);
    txtServerUser = lineEdit("txtServerUser", kServerNameWidth);
    txtServerUser->setText(s.ServerUser);
    txtServerPassword = lineEdit("txtServerPassword", kServerPasswordWidth);
    txtServerPassword->setText(s.ServerPassword);
    txtServerPassword->setEchoMode(QLineEdit::Password);
    auto* cmdTestServer = new QPushButton(tr("&Test connection"));
    cmdTestServer->setObjectName(QStringLiteral("cmdTestServer"));

    auto* grid = new QGridLayout(group);
    grid->addWidget(new QLabel(tr("Server:")), 0, 0);
    grid->addWidget(txtServerHost, 0, 1);
    grid->addWidget(new QLabel(tr("Port:")), 0, 2);
    grid->addWidget(txtServerPort, 0, 3);
    grid->addWidget(new QLabel(tr("Database:")), 1, 0);
    grid->addWidget(txtServerDatabase, 1, 1);
    grid->addWidget(new QLabel(tr("User:")), 1, 2);
    grid->addWidget(txtServerUser, 1, 3);
    grid->addWidget(new QLabel(tr("Password:")), 2, 0);
    grid->addWidget(txtServerPassword, 2, 1);
    grid->addWidget(cmdTestServer, 2, 2, 1, 2);
    grid->addWidget(
        note(tr("With a server, every desk that names it shares its bookings; photos and pick lists "
                "stay in the data folder. A change takes effect when the settings are saved.")),
        3, 0, 1, 4);
    grid->setColumnStretch(1, 1);

    connect(cmdTestServer, &QPushButton::clicked, this, [this] {
        takeBoxes();
        m_editor.testServer([this](const QString& connInfo) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            const QString why = m_testServer(connInfo);
            QApplication::restoreOverrideCursor();
            return why;
        });
    });
    return group;
}

QWidget* SettingsWindow::buildListsPage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* chooser = new QHBoxLayout;
    cbEditList = new QComboBox;
    cbEditList->setObjectName(QStringLiteral("cbEditList"));
    cbEditList->addItems(PickListEditor::chooserItems());
    chooser->addWidget(new QLabel(tr("List to edit:")));
    chooser->addWidget(cbEditList, 1);
    layout->addLayout(chooser);

    lstEntries = new QListWidget;
    lstEntries->setObjectName(QStringLiteral("lstEntries"));
    layout->addWidget(lstEntries, 1);

    auto* edit = new QHBoxLayout;
    txtNewEntry = lineEdit("txtNewEntry", 64);
    txtNewEntry->setPlaceholderText(tr("New entry"));
    auto* cmdAddEntry = new QPushButton(tr("&Add after selected"));
    cmdAddEntry->setObjectName(QStringLiteral("cmdAddEntry"));
    auto* cmdDeleteEntry = new QPushButton(tr("&Delete selected"));
    cmdDeleteEntry->setObjectName(QStringLiteral("cmdDeleteEntry"));
    edit->addWidget(txtNewEntry, 1);
    edit->addWidget(cmdAddEntry);
    edit->addWidget(cmdDeleteEntry);
    layout->addLayout(edit);
    layout->addWidget(note(tr("Pick list changes are written to the pick lists file at once; the main "
                              "window's lists are reloaded when this window closes.")));

    connect(cbEditList, &QComboBox::currentTextChanged, this, [this](const QString& name) {
        m_lists.choose(name);
        showEntries();
    });
    connect(cmdAddEntry, &QPushButton::clicked, this, [this] {
        const int row = lstEntries->currentRow();
        if (m_lists.add(row, txtNewEntry->text())) {
            txtNewEntry->clear();
            showEntries();
            lstEntries->setCurrentRow(row + 1);
        }
    });
    connect(cmdDeleteEntry, &QPushButton::clicked, this, [this] {
        const int row = lstEntries->currentRow();
        if (m_lists.remove(row)) {
            showEntries();
            lstEntries->setCurrentRow(std::min(row, lstEntries->count() - 1));
        }
    });
    return page;
}

void SettingsWindow::showEntries() {
    lstEntries->clear();
    for (const QString& entry : m_lists.entries())
        lstEntries->addItem(entry.trimmed());
}

void SettingsWindow::browse(QLineEdit* box, bool dataFolder) {
    FolderBrowserDialog browser(this);
    browser.BFFPath = DataFolderCheck::nearestExistingFolder(QDir::fromNativeSeparators(box->text()));
    browser.exec();
    if (browser.BFFCancelled)
        return;
    const bool usable = dataFolder ? m_editor.acceptDataFolder(browser.BFFPath)
                                   : m_editor.acceptSystemFolder(browser.BFFPath);
    if (usable)
        box->setText(QDir::toNativeSeparators(browser.BFFPath));
}

void SettingsWindow::showFolderState() {
    const bool enabled = m_editor.edited().ckEnblNetPaths == u"1";
    for (QWidget* w : std::initializer_list<QWidget*>{txtDataPath, txtSystemPath, cmdBrowseData,
                                                      cmdBrowseSystem, grpServer})
        w->setEnabled(enabled);
}

HelpTopic SettingsWindow::helpTopic() const {
    // The folders tab has its own page; the rest is about how the desk behaves.
    return tabSettings->currentIndex() == kFoldersTab ? HelpTopic::SettingsFolders : HelpTopic::Settings;
}

void SettingsWindow::takeBoxes() {
    Settings& s = m_editor.edited();
    s.SiteName = txtSiteName->text();
    s.DataPath = QDir::fromNativeSeparators(txtDataPath->text());
    s.SystemPath = QDir::fromNativeSeparators(txtSystemPath->text());
    s.ServerHost = txtServerHost->text().trimmed();
    s.ServerPort = txtServerPort->text().trimmed();
    s.ServerDatabase = txtServerDatabase->text().trimmed();
    s.ServerUser = txtServerUser->text().trimmed();
    s.ServerPassword = txtServerPassword->text();
    m_editor.setNewPassword(txtNewPW->text(), txtNewPW2->text());
}

void SettingsWindow::save() {
    takeBoxes();
    if (!m_editor.save())
        return;
    txtNewPW->clear();
    txtNewPW2->clear();
    accept();
}

void SettingsWindow::reject() {
    takeBoxes();
    if (m_editor.changed()) {
        const Answer answer =
            m_prompter.ask({SettingsEditor::title(), tr("The settings have changed. Save them?"),
                            Buttons::YesNoCancel, Icon::Question});
        if (answer == Answer::Cancel || (answer == Answer::Yes && !m_editor.save()))
            return;
    }
    QDialog::reject();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
    if (!m_help.openOnKey(*event, helpTopic()))
        QDialog::keyPressEvent(event);
}

} // namespace porvane
