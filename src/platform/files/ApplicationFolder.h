#pragma once

#include <QString>

namespace platform {

// The file beside a program that is installed for everybody; what is in it does not matter.
inline constexpr char kForEveryUser[] = "ForEveryUser";

// The folder that the program reads and writes, without separator at the end; to be asked once, before
// anything else reads it. As a rule that is `beside`, the program's own folder. Where that cannot be written
// to, or holds kForEveryUser, it is the folder Tumblewick in `dataHome`, which belongs to the user:
//
//   Lists, QList, Set, Lintro   copied from `beside` where the user has none. Each appears whole or not at
//                               all, and is never touched again, so lists that were changed or deleted stay
//                               so.
//   everything else             links to `beside`, made anew at each start, so that a newer version is used
//                               at once. A file that the user has put there in place of a link stays.
//
// When this cannot be made (no space, no permission) the program works in `beside`, where reading succeeds
// and writing fails with its own messages.
QString ApplicationFolder(const QString &beside, const QString &dataHome);

} // namespace platform
