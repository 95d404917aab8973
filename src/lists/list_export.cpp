#include "lists/list_export.h"

#include "lists/list_text.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>

namespace porvane {

QString ListExport::offeredName(ListMode mode, const QDateTime& now) {
    QString list;
    switch (mode) {
    case ListMode::None:
    case ListMode::Month:
        list = tr("Month list");
        break;
    case ListMode::Day:
        list = tr("Day list");
        break;
    case ListMode::Search:
        list = tr("Search");
        break;
    case ListMode::OnSite:
        list = tr("On site");
        break;
    }
    return list + u' ' + now.toString(QStringLiteral("yyyy-MM-dd HHmm")) + QStringLiteral(".csv");
}

QString ListExport::write(const ListTable& table, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // Without the mark a spreadsheet reads "José" as "JosÃ©".
    if (file.write("\xEF\xBB\xBF") != 3 || !writeListTableText(table, true, file))
        return file.errorString();
    if (!file.commit())
        return file.errorString();
    return {};
}

bool ListExport::run(AppState& state, const ListTable& table) {
    const QString title = QStringLiteral("Porvane 90");
    if (table.listedCount() == 0) {
        state.prompter.tell(title, tr("There is no list to export."), Icon::Information);
        return false;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const std::optional<QString> path =
        state.prompter.askSaveFileName({tr("Save the list as a CSV file"),
                                        QDir(folder).filePath(offeredName(state.listMode, state.clock.now())),
                                        tr("CSV files (*.csv)"), QStringLiteral("csv")});
    if (!path)
        return false;
    const QString shown = QDir::toNativeSeparators(*path);
    if (const QString error = write(table, *path); !error.isEmpty()) {
        state.prompter.tell(title, tr("The list was not saved as %1: %2").arg(shown, error),
                            Icon::Exclamation);
        return false;
    }
    state.prompter.tell(title, tr("The list was saved as %1").arg(shown), Icon::Information);
    return true;
}

} // namespace porvane
