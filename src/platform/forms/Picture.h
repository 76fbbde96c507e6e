#pragma once

#include <QPixmap>
#include <QString>

namespace platform {

// The picture in a file, whose path may have backslashes and any letter case. Raises 53 when there is no such
// file, 76 without its folder, 481 when it is no picture.
QPixmap LoadPicture(const QString &path);

} // namespace platform
