#include "authoring/SpellingEntry.h"

namespace tumblewick {

QString FaultsOfEntry(const QString &word, const QString &pronunciation, const QString &wordMissing)
{
    const QLatin1Char separator('_');
    QString faults;
    if (word.isEmpty())
        faults += wordMissing;
    else if (word.contains(separator))
        faults += QStringLiteral("The spelling for the word cannot contain an underscore. ");
    if (pronunciation.contains(separator))
        faults += QStringLiteral("The pronunciation for the word cannot contain an underscore. ");
    return faults;
}

} // namespace tumblewick
