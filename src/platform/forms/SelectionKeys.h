#pragma once

#include <QItemSelectionModel>

class QKeyEvent;
class QListWidget;

namespace platform {

// Lets the first arrow key, or the space bar, select an entry of a list in which nothing is selected: the one
// that has the focus, else the first. Without it the keys only walk away from that one.
void InstallSelectionKeys(QListWidget &list);

// What it does with a key press; true when that has selected an entry.
bool SelectByKey(QListWidget &list, const QKeyEvent &event);

// What a click or a key at `index` does to the selection in a list where nothing but another entry takes it
// from an entry; `usual` is what the list would do by itself, which is to let a click beside the entries, or
// with Ctrl, select none.
QItemSelectionModel::SelectionFlags KeptSelection(const QModelIndex &index,
                                                  QItemSelectionModel::SelectionFlags usual);

} // namespace platform
