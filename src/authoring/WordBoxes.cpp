#include "authoring/WordBoxes.h"

#include "platform/forms/SingleLine.h"

#include <QLineEdit>

namespace tumblewick {

void WordBoxes::SetUp() const
{
    platform::KeepSingleLine(*word);
    platform::KeepSingleLine(*pronunciation);
}

SpellingLine WordBoxes::Entry() const
{
    return { word->text(), pronunciation->text() };
}

void WordBoxes::Show(const SpellingLine &entry) const
{
    word->setText(entry.word);
    pronunciation->setText(entry.pronunciation);
    // A long text is seen from its beginning.
    word->setCursorPosition(0);
    pronunciation->setCursorPosition(0);
}

void WordBoxes::Empty() const
{
    Show({});
}

bool WordBoxes::IsAnyFilled() const
{
    return !word->text().isEmpty() || !pronunciation->text().isEmpty();
}

} // namespace tumblewick
