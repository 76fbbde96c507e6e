#pragma once

class QApplication;
class QWidget;

namespace tumblewick {

// The three rooms that the children's screens stand in.
enum class Room { Menu, SetUp, Game };

// Style, fonts, colours and icon of the whole program. Called once, before the first window is made.
void ApplyAppearance(QApplication &application);

// Hangs the backdrop of the room behind the controls of `window`, gives the buttons their pictures and
// colours, and turns fonts given in points into pixels. Called after setupUi and before the resizer takes its
// measures.
void DressWindow(QWidget &window, Room room);

} // namespace tumblewick
