#pragma once

#include <QByteArray>

#include <exception>
#include <vector>

class QFile;

namespace platform {

// Why a compiled help file, or a page of it, cannot be had.
class ChmFault : public std::exception {
public:
    enum Kind {
        kMissing,    // there is no such file
        kUnreadable, // it may not be read, or its pages are packed in a way that is not read here
        kNotHelp,    // it is something else
        kDamaged,    // it is cut off or its parts contradict each other
        kNoPage      // it is good, but holds no such page
    };
    explicit ChmFault(Kind kind) : m_kind(kind) {}
    Kind Reason() const { return m_kind; }
    const char *what() const noexcept override { return "a help file cannot be used"; }

private:
    Kind m_kind;
};

// A page, picture or table of a compiled help file.
struct ChmEntry {
    QByteArray name; // with the slash that it begins with
    quint64 length = 0;
};

// The directory of a compiled help file, read with a distrust that the library which fetches the pages does
// not have: it would follow chunks that point at each other for ever and read beyond entries that are cut
// off. What passes here can be given to it.
//
// Raises kUnreadable, kNotHelp or kDamaged. `file` is open for reading.
std::vector<ChmEntry> ReadChmDirectory(QFile &file);

} // namespace platform
