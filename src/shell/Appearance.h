#pragma once

class QApplication;
class QWidget;

namespace tumblewick {

// The rooms that the screens stand in: three of the theatre, and the desk by day for the screens of the
// grown-ups.
enum class Room { Menu, SetUp, Game, Study };

// Style, fonts, colours and icon of the whole program. Called once, before the first window is made.
void ApplyAppearance(QApplication &application);

// Hangs the backdrop of the room behind the controls of `window`, gives the buttons their pictures and
// colours, and turns fonts given in points into pixels. Called after setupUi and before the resizer takes its
// measures.
void DressWindow(QWidget &window, Room room);

} // namespace tumblewick
