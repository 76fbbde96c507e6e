#include "authoring/SpellingEntry.h"

namespace tumblewick {

QString FaultsOfEntry(const SpellingLine &entry, const QString &wordMissing)
{
    const QLatin1Char separator('_');
    QString faults;
    if (entry.word.isEmpty())
        faults += wordMissing;
    else if (entry.word.contains(separator))
        faults += QStringLiteral("The spelling for the word cannot contain an underscore. ");
    if (entry.pronunciation.contains(separator))
        faults += QStringLiteral("The pronunciation for the word cannot contain an underscore. ");
    return faults;
}

void ShowIn(const platform::ListItemReference &item, const SpellingLine &entry)
{
    item->SetText(entry.word);
    item->SetSubItem(1, entry.pronunciation);
}

SpellingLine WordIn(const platform::ListItemReference &item)
{
    return { item->Text(), item->SubItem(1) };
}

} // namespace tumblewick
