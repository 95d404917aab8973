#pragma once

#include "store/file_error.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <functional>

namespace porvane {

// The step where bytes reach the disk. The real one writes and syncs; tests hand in one that fails after some
// bytes or before the rename, to prove that a failed write leaves the old file as it was.
class WritePath {
public:
    virtual ~WritePath() = default;
    // Writes all of data to the open file; 0, or the errno of the failure.
    virtual int write(int fd, QByteArrayView data);
    // Appends `length` bytes of the open file `from`, taken at `offset`, to the open file: inside the kernel
    // where the file system can, else read and written through write(); 0, or the errno of the failure.
    virtual int copy(int from, qint64 offset, int fd, qint64 length);
    // Flushes the finished temporary file before it is renamed over its target; 0, or the errno.
    virtual int commit(int fd);
    // Flushes an appended file to disk; 0, or the errno of the failure.
    virtual int sync(int fd);

protected:
    // copy() by reading the bytes and writing them with write().
    int copyThroughWrite(int from, qint64 offset, int fd, qint64 length);
};

WritePath& realWritePath();

// Opens a file of the data folder (open(2) flags), never through a symbolic link in its name or as its
// folder, and only when it is a regular file: a pipe or device is refused at once, never waited on. Returns
// the descriptor, or -1 with error set.
int openDataFile(const QString& path, int flags, FileError& error);

// The desk's temporary files: a new content on its way in, a file being removed. Only a desk killed at that
// moment leaves one behind; while the data folder's lock is held, any one found is such a leftover.
bool isLeftoverName(const QString& fileName);
// Removes the leftovers in the folder; called under the data folder's lock.
void removeLeftovers(const QString& folder);

// Reads a whole file. FileNotFound (53) when it does not exist, PathNotFound (76) when its folder does not.
FileError readWholeFile(const QString& path, QByteArray& bytes);

// Replaces the file's content without ever truncating it: a temporary file in the same folder is written,
// flushed and renamed over the old one, then the folder is flushed. The new file keeps the old one's group
// and permission bits. On failure the old file is untouched.
FileError replaceFile(const QString& path, QByteArrayView bytes, WritePath* writePath = nullptr);
// The same with a content made as it is written: `produce` hands it to `write` a piece at a time and returns
// the first error, its own or write's; the old file is replaced only when there is none, and only when the
// content differs from it: one the same, byte for byte, leaves the file as it was, unwritten.
using PieceWriter = std::function<FileError(QByteArrayView piece)>;
FileError replaceFileByPieces(const QString& path,
                              const std::function<FileError(const PieceWriter& write)>& produce,
                              WritePath* writePath = nullptr);

inline constexpr QByteArrayView kLineEnd("\r\n");

// Appends one line and CR LF, creating the file when missing (its folder must exist). A last line without a
// line end (a torn tail) is ended first so the new line never joins it. On failure the file is cut back to
// its old length. While the line is written, PATH.appending beside the file notes the old length.
FileError appendLine(const QString& path, QByteArrayView line, WritePath* writePath = nullptr);

// Finishes the append of a writer killed part-way: with its note beside the file, a tail without a line end
// past the noted length is cut off, and the note removed. Called under the data folder's lock before every
// change of a month file.
FileError cutInterruptedAppend(const QString& path);

// Removes all of the files or none of them: each is first renamed aside in its folder, and only when every
// one is aside are they deleted; a failed rename puts back those already moved. Error of the first failure.
FileError removeAllOrNone(const QStringList& paths);

// Reads the file fresh and hands each line (without its line end; CR LF, LF, a lone CR and a missing last
// line end are all accepted) to edit, which either returns false to keep the line as it is, ended by CR LF,
// or appends to out what takes its place, each line ended by CR LF, or nothing to drop it, and returns true.
// The file is replaced only when the result differs from what was read (changed tells); a missing file is
// FileNotFound (53). The file is streamed as raw bytes, never decoded; the lines kept as they were are copied
// from the old file to the new one inside the kernel where it can.
using LineEdit = std::function<bool(QByteArrayView line, QByteArray& out)>;
FileError rewriteLines(const QString& path, const LineEdit& edit, bool* changed = nullptr,
                       WritePath* writePath = nullptr);

} // namespace porvane
