#pragma once

#include "platform/help/ChmDirectory.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>

namespace platform {

// A compiled help file, open from its making to its destruction. Names of pages are those of the file, such
// as "Playing the Game.htm" or "pictures/menu.png", found in any letter case.
//
// Whatever the file holds, nothing but a ChmFault comes of it.
class ChmFile {
public:
    // `path` is a native path. Raises kMissing, kUnreadable, kNotHelp or kDamaged.
    explicit ChmFile(const QString &path);
    ~ChmFile();
    ChmFile(const ChmFile &) = delete;
    ChmFile &operator=(const ChmFile &) = delete;

    bool Has(const QString &name) const;
    // Raises kNoPage when there is no such page, kDamaged when it cannot be fetched whole.
    QByteArray Read(const QString &name) const;
    // The text of a page: UTF-8 when it is that, else Windows-1252. Raises as Read does.
    QString ReadText(const QString &name) const;
    // The pages with text, in alphabetical order.
    QStringList Pages() const;

    // What the file says about itself; empty when it says nothing.
    QString StartPage() const { return m_startPage; }
    QString ContentsFile() const { return m_contentsFile; }
    QString IndexFile() const { return m_indexFile; }

private:
    struct Closer {
        void operator()(void *handle) const;
    };
    void ReadSystemFile();

    std::unique_ptr<void, Closer> m_handle; // the library's own
    std::map<QString, ChmEntry> m_entries;  // by name in small letters, without the slash
    QString m_startPage, m_contentsFile, m_indexFile;
};

} // namespace platform
