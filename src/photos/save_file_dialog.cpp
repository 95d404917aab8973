#include "photos/save_file_dialog.h"

#include "photos/save_filter.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace porvane {

bool askSaveFileName(QWidget* parent, SaveFileRequest& request) {
    QFileDialog dialog(parent, request.title, request.initialFolder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(saveFilterToNameFilters(request.filter));
    dialog.setDefaultSuffix(request.defaultExtension);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    request.fileName = dialog.selectedFiles().constFirst();
    request.fileTitle = QFileInfo(request.fileName).fileName();
    return true;
}

} // namespace porvane
