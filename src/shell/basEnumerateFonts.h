#pragma once

#include "platform/Integer16.h"
#include "platform/display/Display.h"

#include <vector>

namespace tumblewick {

// One installed font: its description and its type.
struct FontRecord {
    platform::LogicalFont font;
    qint32 type = 0;
};

// The fonts of a display, gathered by a callback.
namespace basEnumerateFonts {

// What the callback has gathered so far.
struct Gathered {
    platform::Integer16 count;
    std::vector<FontRecord> fonts;
};

// Takes one font and gives the new count, which keeps the enumeration going. When there are more fonts than
// 16 bits count, the count begins at 0 again.
int FontCallback(Gathered &gathered, const platform::LogicalFont &font, qint32 type);

// All fonts of `display`.
Gathered Enumerate(const platform::Display &display);

} // namespace basEnumerateFonts

} // namespace tumblewick
