#pragma once

class QWidget;

namespace platform {

// Lets the arrow keys go through the option buttons that stand together, whichever way they stand: right and
// down choose the next one, left and up the one before, round and round. Without it a key that points to
// where no button lies does nothing.
void InstallOptionKeys(QWidget &window);

} // namespace platform
