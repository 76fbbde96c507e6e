#pragma once

class QWidget;

namespace platform {

// Twips per screen unit: 1440 to the inch at 96 units to the inch.
inline constexpr int kTwipsPerPixel = 15;

// A control's place and size in twips, in its container.
struct TwipsRect {
    int left, top, width, height;
};
TwipsRect Twips(const QWidget &control);

} // namespace platform
