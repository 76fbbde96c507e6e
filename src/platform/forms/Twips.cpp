#include "platform/forms/Twips.h"

#include <QWidget>

namespace platform {

TwipsRect Twips(const QWidget &control)
{
    const QRect place = control.geometry();
    return { place.left() * kTwipsPerPixel, place.top() * kTwipsPerPixel, place.width() * kTwipsPerPixel,
             place.height() * kTwipsPerPixel };
}

} // namespace platform
