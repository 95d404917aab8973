#include "settings/pick_list_editor.h"

#include "store/data_paths.h"
#include "store/pick_lists.h"

namespace porvane {

namespace {

const QString kNone = QStringLiteral("- Select -");

QString title() {
    return QStringLiteral("Porvane 90");
}

} // namespace

QStringList PickListEditor::chooserItems() {
    return {kNone, QStringLiteral("CATEGORY"), QStringLiteral("DEPARTMENT"),
            QStringLiteral("DESCRIPTION OF WORK"), QStringLiteral("SELECT ACCESS")};
}

void PickListEditor::choose(const QString& listName) {
    const QStringList items = chooserItems();
    const qsizetype index = items.indexOf(listName);
    m_list = index > 0 ? listName : QString();
    m_entries.clear();
    if (m_list.isEmpty())
        return;
    // The main window's reader holds the first two lists, the location dialog's the last two.
    const QString ini = pickListsPath(m_appPath);
    const PickLists lists = index <= 2 ? LoadMainPickLists(ini) : LoadDetailPickLists(ini);
    m_entries = index % 2 == 1 ? lists.first : lists.second;
}

bool PickListEditor::listChosen() {
    if (!m_list.isEmpty())
        return true;
    m_prompter.tell(title(), noListText(), Icon::Exclamation);
    return false;
}

bool PickListEditor::add(int row, const QString& newText) {
    if (!listChosen())
        return false;
    if (newText.trimmed().isEmpty()) {
        m_prompter.tell(title(), tr("Type the new entry first."), Icon::Exclamation);
        return false;
    }
    // Such a line would read as a header or end the list.
    if (newText.trimmed().startsWith(u'[') || newText.trimmed().startsWith(u';')) {
        m_prompter.tell(title(), tr("An entry cannot begin with \"[\" or \";\"."), Icon::Exclamation);
        return false;
    }
    const bool rowValid = row >= 0 && row < m_entries.size();
    if (!rowValid && !m_entries.isEmpty()) {
        m_prompter.tell(title(), tr("Choose the entry after which the new one goes."), Icon::Exclamation);
        return false;
    }
    const QString after = rowValid ? m_entries[row] : QString();
    return finish(addPickListEntry(pickListsPath(m_appPath), m_list, after, newText));
}

bool PickListEditor::remove(int row) {
    if (!listChosen())
        return false;
    if (row < 0 || row >= m_entries.size()) {
        m_prompter.tell(title(), tr("Choose the entry to delete."), Icon::Exclamation);
        return false;
    }
    const QString entry = m_entries[row];
    if (m_prompter.ask({title(), tr("Delete \"%1\" from the %2 list?").arg(entry.trimmed(), m_list),
                        Buttons::YesNo, Icon::Question}) != Answer::Yes)
        return false;
    return finish(deletePickListEntry(pickListsPath(m_appPath), m_list, entry));
}

bool PickListEditor::finish(const FileError& error) {
    if (error) {
        m_prompter.tell(
            title(),
            tr("The pick lists file could not be changed: %1 (error %2).").arg(error.text).arg(error.number),
            Icon::Exclamation);
        return false;
    }
    m_changed = true;
    choose(m_list);
    return true;
}

} // namespace porvane
