#pragma once

class QKeyEvent;
class QListWidget;

namespace platform {

// Lets the first arrow key, or the space bar, select an entry of a list in which nothing is selected: the one
// that has the focus, else the first. Without it the keys only walk away from that one.
void InstallSelectionKeys(QListWidget &list);

// What it does with a key press; true when that has selected an entry.
bool SelectByKey(QListWidget &list, const QKeyEvent &event);

} // namespace platform
