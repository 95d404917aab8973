#include "store/pick_lists.h"

#include "store/line_reader.h"
#include "store/record_line.h"
#include "store/safe_file.h"
#include "store/windows1252.h"

namespace porvane {

namespace {

// A header is known by its first ten characters, "[" and eight letters and "]"; a longer name has a letter
// where the "]" would be, so the bracket is left out of the comparison and [DEPARTMENT] counts as
// [DEPARTME]. Case counts: [Category] is no header the desk knows.
bool isHeader(QByteArrayView line, QByteArrayView header) {
    return line.startsWith(header.chopped(1));
}

// One reader for both windows: a blank, empty or ";" line ends the section, a header the reader does not
// know leaves the section as it is, a known one starts its section.
PickLists loadPickLists(const QString& iniPath, QByteArrayView firstHeader, QByteArrayView secondHeader) {
    PickLists lists;
    QStringList* section = nullptr;
    LineReader reader(iniPath);
    QByteArrayView line;
    while (reader.next(line)) {
        if (line.isEmpty() || line.front() == ' ' || line.front() == ';') {
            section = nullptr;
        } else if (line.front() == '[') {
            if (isHeader(line, firstHeader))
                section = &lists.first;
            else if (isHeader(line, secondHeader))
                section = &lists.second;
        } else if (section) {
            section->append(u' ' + fromWindows1252(line));
        }
    }
    return lists;
}

QByteArray sectionTag(const QString& listName) {
    return '[' + toWindows1252(listName.left(6));
}

enum class Edit { Add, Delete };

FileError editPickList(const QString& iniPath, const QString& listName, const QString& chosenEntry,
                       const QString& newText, Edit edit, WritePath* writePath) {
    const QByteArray tag = sectionTag(listName);
    // The entry is compared as the list shows it, trimmed with one blank in front, so blanks trailing the
    // line in the file do not hide it.
    const QString chosenTrimmed = chosenEntry.trimmed();
    const QByteArray chosen = chosenTrimmed.isEmpty() ? QByteArray() : toWindows1252(u' ' + chosenTrimmed);
    const QByteArray added = toWindows1252(newText.trimmed());
    // With no entry chosen (an empty section) the new entry goes directly after the header.
    bool addAfterHeader = edit == Edit::Add && chosenEntry.trimmed().isEmpty();
    bool inSection = false;
    const LineEdit copy = [&](QByteArrayView line, QByteArray& out) {
        auto put = [&out](QByteArrayView bytes) {
            out.append(bytes);
            out.append(kLineEnd);
        };
        if (line.startsWith('[')) {
            inSection = line.startsWith(tag);
            put(line);
            if (inSection && addAfterHeader) {
                put(added);
                addAfterHeader = false;
            }
            return true;
        }
        const bool isChosen =
            inSection && !chosen.isEmpty() && QByteArray(1, ' ') + trimBlanks(line).toByteArray() == chosen;
        if (!isChosen || edit == Edit::Add)
            put(line);
        if (isChosen && edit == Edit::Add)
            put(added);
        return true;
    };
    return rewriteLines(iniPath, copy, nullptr, writePath);
}

} // namespace

PickLists LoadMainPickLists(const QString& iniPath) {
    return loadPickLists(iniPath, "[CATEGORY]", "[DEPARTME]");
}

PickLists LoadDetailPickLists(const QString& iniPath) {
    return loadPickLists(iniPath, "[DESCRIPT]", "[SELECTAC]");
}

FileError addPickListEntry(const QString& iniPath, const QString& listName, const QString& chosenEntry,
                           const QString& newText, WritePath* writePath) {
    return editPickList(iniPath, listName, chosenEntry, newText, Edit::Add, writePath);
}

FileError deletePickListEntry(const QString& iniPath, const QString& listName, const QString& chosenEntry,
                              WritePath* writePath) {
    return editPickList(iniPath, listName, chosenEntry, {}, Edit::Delete, writePath);
}

} // namespace porvane
