#pragma once

#include <QString>
#include <QStringList>

namespace porvane {

// The application folder: the folder of the executable, unless "--home DIR" on the command line or the
// environment variable PORVANE_HOME names another. The command line wins over the environment. A program
// installed in a folder it cannot write to, started with neither, works in userHome instead (the user's own
// data location), since it must write its settings. The result is absolute and always ends with "/".
QString resolveAppPath(const QStringList& arguments, const QString& environmentHome,
                       const QString& programDir, bool programDirWritable = true,
                       const QString& userHome = {});

// The same from the running program's own arguments, environment and location.
QString AppPathForThisProgram();

// Appends "/" unless the path already ends with one (a root folder stays as it is).
QString withTrailingSlash(const QString& path);

// True when the file's attributes can be read; any error means false.
bool FileExists(const QString& path);

// A home folder other than the program's own gets the program's resource folders (_PSF, PorvaneDocs) on its
// first start: whatever the home lacks is copied from programDir, nothing the home holds is replaced.
// Returns false when something could not be copied.
bool seedHomeFolder(const QString& appPath, const QString& programDir);

} // namespace porvane
