#pragma once

#include "platform/help/ChmFile.h"
#include "platform/help/SiteMap.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QString>

#include <memory>
#include <vector>

namespace platform {

// What finds the words that somebody types to look for something, each at the beginning of a word and in any
// letter case; marks between them are left out.
std::vector<QRegularExpression> PatternsOf(const QString &words);

// A page that holds all the words looked for.
struct HelpHit {
    QString page;
    QString title;
    QString excerpt; // a line of the page around the first of the words
};

// A compiled help file as its reader sees it: contents, index, pages and a search. Whatever is wrong with the
// file, there is a page that tells it, so that no member raises an error.
class HelpBook {
public:
    // `path` is a native path. The file stays open as long as the book.
    explicit HelpBook(const QString &path);

    const std::vector<SiteMapLine> &Contents() const { return m_contents; }
    const std::vector<SiteMapLine> &Index() const { return m_index; }
    QString StartPage() const;

    // The HTML of a page, or of one that tells why it cannot be shown.
    QString Page(const QString &name) const;
    // A picture or style sheet; empty when it cannot be had.
    QByteArray Bytes(const QString &name) const;
    // The pages that hold every one of `words`, as PatternsOf finds them, those that tell most about them
    // first. Nothing for no words.
    std::vector<HelpHit> Search(const QString &words) const;

private:
    struct PlainPage {
        QString page;
        QString title;
        QString text;
    };
    const std::vector<PlainPage> &PlainPages() const;

    QString m_path;
    ChmFault::Kind m_fault = ChmFault::kNoPage; // why there is no file
    std::unique_ptr<ChmFile> m_file;
    std::vector<SiteMapLine> m_contents, m_index;
    mutable std::vector<PlainPage> m_plainPages; // made by the first search
};

} // namespace platform
