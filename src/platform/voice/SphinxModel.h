#pragma once

#include <QString>

namespace platform {

// Whether a folder has all that the recogniser's library cannot do without, each file as long as its own head
// says. The library ends the program over some files that are missing, and over most that are cut off. Reads
// the heads alone, some hundred kilobytes at most; may be called by any thread.
bool IsWholeSphinxModel(const QString &folder);

} // namespace platform
