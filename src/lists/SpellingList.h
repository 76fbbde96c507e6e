#pragma once

#include "lists/SpellingLine.h"

#include <functional>

namespace platform {
class TextReader;
class TextWriter;
} // namespace platform

namespace tumblewick {

// Reads a spelling list for editing and calls `add` for each line as it comes, so that a list which cannot be
// read to its end has given what stood before. Passes on what the reader raises.
void ReadSpellingList(platform::TextReader &reader, const std::function<void(const SpellingLine &)> &add);

enum class SpellingWriting {
    Plain,            // a word without pronunciation stands alone
    AlwaysUnderscored // behind the removal of a word each line has its underscore: wanted
};

// Writes the entries 1 to `count`, a line each. Raises 6 before the first for more than 32,767, and what the
// writer raises.
void WriteSpellingList(platform::TextWriter &writer, int count,
                       const std::function<SpellingLine(int index)> &entry, SpellingWriting how);

} // namespace tumblewick
