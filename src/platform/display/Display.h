#pragma once

#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace platform {

// A mode that the display offers or runs in.
struct DisplayMode {
    qint32 bitsPerPixel = 0;
    qint32 width = 0; // pixels
    qint32 height = 0;
    qint32 flags = 0;
    qint32 frequency = 0; // Hz, 0 when the display does not tell

    friend bool operator==(const DisplayMode &one, const DisplayMode &other) = default;
};

// A font as the display describes it: the logical font, and its type.
struct LogicalFont {
    qint32 height = 0, width = 0, escapement = 0, orientation = 0, weight = 0;
    quint8 italic = 0, underline = 0, strikeOut = 0, charSet = 0;
    quint8 outPrecision = 0, clipPrecision = 0, quality = 0, pitchAndFamily = 0;
    std::array<char, 32> faceName = {}; // in the code page, ended by a zero unless it fills all
};

// What ChangeMode gives.
enum DisplayChange : qint32 {
    kDisplayChanged = 0,
    kDisplayNeedsRestart = 1,
    kDisplayFailed = -1,
    kDisplayBadMode = -2, // not a mode of this display
    kDisplayNotStored = -3,
    kDisplayBadFlags = -4,
    kDisplayBadParameter = -5,
};

// The primary display. No member raises an error or runs events.
class Display {
public:
    virtual ~Display() = default;

    // The mode it runs in; none when there is no display to speak of.
    virtual std::optional<DisplayMode> Current() const = 0;
    // Dots per logical inch, 0 when the display reports none.
    virtual int DotsPerInchX() const = 0;
    virtual int DotsPerInchY() const = 0;

    // The mode of that index, counted from 0; none behind the last one. Asking for the first takes stock of
    // the modes anew, so whoever wants them all begins there.
    virtual std::optional<DisplayMode> Mode(int index) const = 0;

    // Calls `take` for each installed font with its type, until it gives 0.
    virtual void EnumerateFonts(const std::function<int(const LogicalFont &, qint32 type)> &take) const = 0;

    // Stores the mode and changes to it at once. A DisplayChange.
    virtual qint32 ChangeMode(const DisplayMode &mode) = 0;
};

} // namespace platform
