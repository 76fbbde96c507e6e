#include "shell/basEnumerateFonts.h"

namespace tumblewick::basEnumerateFonts {

int FontCallback(Gathered &gathered, const platform::LogicalFont &font, qint32 type)
{
    try {
        const auto index = static_cast<std::size_t>(int(gathered.count));
        if (gathered.fonts.size() <= index)
            gathered.fonts.resize(index + 1);
        gathered.fonts[index] = { font, type };
        gathered.count += 1;
    } catch (const platform::Error &) {
        gathered.count = 0;
    }
    return gathered.count;
}

Gathered Enumerate(const platform::Display &display)
{
    Gathered gathered;
    display.EnumerateFonts([&gathered](const platform::LogicalFont &font, qint32 type) {
        return FontCallback(gathered, font, type);
    });
    gathered.fonts.resize(static_cast<std::size_t>(int(gathered.count)));
    return gathered;
}

} // namespace tumblewick::basEnumerateFonts
