#include "stage/Letters.h"

#include <QTextBoundaryFinder>

namespace tumblewick {

QStringList Letters(const QString &word)
{
    QStringList letters;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, word);
    qsizetype begin = 0;
    while (finder.toNextBoundary() != -1) {
        letters << word.mid(begin, finder.position() - begin);
        begin = finder.position();
    }
    return letters;
}

} // namespace tumblewick
