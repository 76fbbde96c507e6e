#pragma once

class QLineEdit;

namespace platform {

// Makes `box` a box for one line, of any length, as it may go into a text file: line breaks that are pasted
// into it become blanks, and the invisible mark that may open a file is left out.
void KeepSingleLine(QLineEdit &box);

} // namespace platform
