#include "lists/SpellingList.h"

#include "platform/Integer16.h"
#include "platform/files/Files.h"

namespace tumblewick {

void ReadSpellingList(platform::TextReader &reader, const std::function<void(const SpellingLine &)> &add)
{
    while (!reader.AtEnd())
        add(SpellingLine::ForEdit(reader.ReadLine()));
}

void WriteSpellingList(platform::TextWriter &writer, int count,
                       const std::function<SpellingLine(int index)> &entry, SpellingWriting how)
{
    const platform::Integer16 last = count;
    for (int index = 1; index <= last; ++index) {
        const SpellingLine line = entry(index);
        writer.WriteLine(how == SpellingWriting::Plain ? line.Line() : line.LineWithUnderscore());
    }
}

} // namespace tumblewick
