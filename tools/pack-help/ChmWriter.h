#pragma once

#include <QByteArray>
#include <QString>

#include <map>

// What a compiled help file holds besides its pages.
struct HelpHeader {
    QString title;        // of the help window
    QString startTopic;   // the page that is shown first
    QString contentsFile; // the table of contents among the files, or empty
    QString indexFile;    // the index among the files, or empty
    QString baseName;     // the name of the help file without its ending
};

// The bytes of a compiled help file (.chm) that holds `files`, by path, such as "pictures/menu.png". Paths
// may hold blanks, commas and letters of any kind. The same files always give the same bytes: the file
// carries no date. Pages are kept as they are, without compression, which every reader understands.
QByteArray WriteChm(const HelpHeader &header, const std::map<QString, QByteArray> &files);
