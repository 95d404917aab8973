#pragma once

#include "store/file_error.h"

#include <QString>
#include <QStringList>

namespace porvane {

class WritePath;

// The entries of two pick lists, each with one blank in front, in file order, duplicates kept.
struct PickLists {
    QStringList first;
    QStringList second;
};

// The main window's lists: first [CATEGORY] (visitor categories), second [DEPARTME] (departments).
PickLists LoadMainPickLists(const QString& iniPath);
// The location dialog's lists: first [DESCRIPT] (descriptions of work), second [SELECTAC] (access areas).
PickLists LoadDetailPickLists(const QString& iniPath);

// Adds newText (trimmed) after the line of the chosen entry (as listed, with its leading blank) in the list
// named listName ("CATEGORY", "DEPARTMENT", "DESCRIPTION OF WORK", "SELECT ACCESS"); the section is found by
// "[" and the first six letters of the name. When the section has no entry the new one goes directly after
// its header. A chosen entry not in the section changes nothing. The file, CR LF or LF, is replaced
// atomically and written with CR LF.
FileError addPickListEntry(const QString& iniPath, const QString& listName, const QString& chosenEntry,
                           const QString& newText, WritePath* writePath = nullptr);
// Removes the chosen entry's line(s) from that section, the same way.
FileError deletePickListEntry(const QString& iniPath, const QString& listName, const QString& chosenEntry,
                              WritePath* writePath = nullptr);

} // namespace porvane
