#pragma once

namespace tumblewick {

// Whether `candidate`, 0 or 1, is the introduction that the text file `Lintro` beside the program names as
// the last one. When it is another, the candidate is written there at once. A missing file is made empty.
// Raises 62 when the file is empty, 13 when it holds no number, and whatever the file raises.
bool CheckLastIntro(int candidate);

} // namespace tumblewick
