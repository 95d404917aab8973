#pragma once

#include <QString>

class QWidget;

namespace porvane {

// What the camera window asks of a save-file dialog.
struct SaveFileRequest {
    QString fileName; // in: initial name; out: the full path chosen
    QString title;
    QString defaultExtension;
    QString filter; // "AVI files (*.avi)|*.avi"; "|" and ":" separate the pieces
    QString initialFolder;
    QString fileTitle; // out: the chosen file's name without its folder
};

// Shows the save dialog; true when a file name was chosen.
bool askSaveFileName(QWidget* parent, SaveFileRequest& request);

} // namespace porvane
