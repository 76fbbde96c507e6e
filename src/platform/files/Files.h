#pragma once

#include <QString>
#include <QStringList>

#include <memory>

// Text files with the manners that lists are written for.
//
// Paths: `\` and `/` both separate, doubled separators count once, and each component is matched without
// regard to letter case when an exact match is missing. A component that holds / \ : * ? " < > | or control
// characters, or is a device name such as con, raises 52 in every call that opens, makes, copies or removes;
// a folder that is there already under such a name may be passed through.
//
// Text: 8-bit, lines end in CR LF, no mark. A line is written in Windows-1252 when that holds it all without
// becoming valid multi-byte UTF-8, else in UTF-8, and read the same way round. A lone LF or CR ends a line
// too. A UTF-8 mark at the start of a foreign file is passed over.
//
// Several programs: while one of them writes to a file, opening it waits for that, for a second at most, so
// that nobody reads a file that has just been emptied.
namespace platform {

// A text file open for reading, closed by its destruction.
class TextReader {
public:
    virtual ~TextReader() = default;
    virtual bool AtEnd() const = 0;
    // The next line without its end. Raises 62 at the end, 57 when reading fails.
    virtual QString ReadLine() = 0;
};

// A text file open for writing, closed by Close or its destruction, which keeps a failure to itself. Nothing
// can be written after Close: that raises 52.
class TextWriter {
public:
    virtual ~TextWriter() = default;
    virtual void WriteLine(const QString &line) = 0; // with CR LF. Raises 61 when the disk is full, else 57.
    virtual void Write(const QString &text) = 0;     // without a line end; the same errors
    virtual void Close() = 0;                        // the same errors, for what is still on its way
};

enum class FileWriting { Replace, Append };

class Files {
public:
    virtual ~Files() = default;

    // Never raise.
    virtual bool FileExists(const QString &path) const = 0;
    virtual bool FolderExists(const QString &path) const = 0;
    // The real path that `path` stands for, for services that open it by themselves; as it is when there is
    // none.
    virtual QString Resolve(const QString &path) const = 0;

    // The names of all files of a folder, in alphabetical order without regard to letter case. Raises 76 when
    // there is no such folder, 75 when it cannot be read.
    virtual QStringList FileNames(const QString &folder) const = 0;
    // The same for the folders in it, hidden ones left out.
    virtual QStringList FolderNames(const QString &folder) const = 0;

    // Raise 53 when there is no such file, unless `create` makes one, 76 when its folder is missing, 70
    // without permission, 75 for a folder or, to read, what is no ordinary file, 61 when the disk has no room
    // for another file, 68 when it has gone, 57 for all other failures.
    virtual std::unique_ptr<TextReader> OpenForReading(const QString &path) = 0;
    virtual std::unique_ptr<TextWriter> OpenForWriting(const QString &path, FileWriting how, bool create) = 0;

    // Removes a file. Raises 53, 70, 75 for a folder, or 76.
    virtual void Kill(const QString &path) = 0;
    // Copies a file byte by byte, replacing what is there. Raises 53, 57, 61, 70, 75 or 76; 70 also for a
    // file onto itself. After a failure on the way the target is gone.
    virtual void FileCopy(const QString &from, const QString &to) = 0;
};

} // namespace platform
