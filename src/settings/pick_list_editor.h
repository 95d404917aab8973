#pragma once

#include "app/prompter.h"
#include "store/file_error.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace porvane {

// The pick lists part of the settings window: choose a list by its name, then add a new entry after the
// chosen entry or delete the chosen entry. Every edit rewrites the pick lists file and reloads the list.
class PickListEditor {
    Q_DECLARE_TR_FUNCTIONS(PickListEditor)

public:
    // appPath: the installation whose pick lists file is edited.
    PickListEditor(const QString& appPath, Prompter& prompter)
        : m_appPath(appPath)
        , m_prompter(prompter) {}

    // The chooser's items: "- Select -" and the four list names.
    static QStringList chooserItems();
    static QString noListText() { return tr("No Edit list: Select a list to edit from the drop-down box"); }

    // Chooses a list by its name and loads its entries; "- Select -" chooses none.
    void choose(const QString& listName);
    const QString& listName() const { return m_list; }
    // The entries as the desk lists them, each with one blank in front.
    const QStringList& entries() const { return m_entries; }
    // True once a list was changed in this session; the desk then reloads its drop-down lists.
    bool changed() const { return m_changed; }

    // Adds newText after the entry at row (row -1 only when the list is still empty). True when written.
    bool add(int row, const QString& newText);
    // Deletes the entry at row after asking. True when written.
    bool remove(int row);

private:
    bool listChosen();
    bool finish(const FileError& error);

    const QString& m_appPath;
    Prompter& m_prompter;
    QString m_list;
    QStringList m_entries;
    bool m_changed = false;
};

} // namespace porvane
