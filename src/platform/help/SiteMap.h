#pragma once

#include <QString>

#include <vector>

namespace platform {

// A line of a table of contents or of an index.
struct SiteMapLine {
    QString title;
    QString page;  // with the place on it behind a #; empty for a heading alone
    int depth = 0; // 0 for the outermost; never more than one deeper than the line before

    friend bool operator==(const SiteMapLine &, const SiteMapLine &) = default;
};

// Reads a table of contents or an index as compiled help files hold them. What makes no sense is passed over,
// and what is more than anybody could read is left out.
std::vector<SiteMapLine> ReadSiteMap(const QString &text);

} // namespace platform
