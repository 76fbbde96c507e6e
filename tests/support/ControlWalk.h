#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

namespace support {

// Whether a person works with `widget`: it is seen, enabled, and a button, a box, a list or the like; not a
// part of another control.
bool IsControl(const QWidget &widget);

// The controls of a window that can be worked with now.
QList<QWidget *> Controls(QWidget &window);

// The controls that Tab goes to, in its order, from the one that has the focus until the round is full. In a
// group of option buttons that is the chosen one.
QList<QWidget *> TabRound(QWidget &window);

// What keeps a person without a mouse or without eyes from working with the window as it stands, a line each:
// controls that Tab does not reach, and option buttons that the arrow keys do not reach from there; a way
// back by Shift and Tab that is another one; controls without a name or with the name of another, with a role
// that does not fit or without the states that tell of the keyboard; texts that a screen reader does not
// tell; a window without a name. The focus is somewhere else afterwards.
QStringList FaultsForKeyboardAndReader(QWidget &window);

} // namespace support
