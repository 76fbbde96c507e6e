#pragma once

#include <QtCore/qnamespace.h>

class QListWidget;

namespace platform {

// How many steps an entry of such a list is drawn in, none without it.
inline constexpr int kDepthRole = Qt::UserRole + 1;

// Lets long texts of `list` end before its right edge, with dots in their middle so that the end of a file's
// name stays legible, instead of scrolling sideways. A tool tip tells a text that is cut off whole; for the
// others it is the list's own. Called once; ends with the list.
void CutLongTexts(QListWidget &list);

} // namespace platform
