#pragma once

#include <QString>

namespace platform {

// The file beside a program that is installed for everybody; what is in it does not matter.
inline constexpr char kForEveryUser[] = "ForEveryUser";

// The folder that the program reads and writes, without separator at the end; to be asked once, before
// anything else reads it. As a rule that is the folder that holds the file `program`. Where that cannot be
// written to, or holds kForEveryUser, it is the folder Tumblewick in `dataHome`, which belongs to the user:
//
//   Lists, QList, Set, Lintro   copied from beside the program where the user has none. Each appears whole or
//                               not at all, and is never touched again, so lists that were changed or deleted
//                               stay so. What a start that was broken off has left is cleared away by the
//                               next one; several starts at once do one another no harm.
//   everything else             links to what is beside the program, made anew at each start, so that a newer
//                               version is used at once. A file that the user has put there in place of a
//                               link stays. The program itself is not linked to.
//
// When this cannot be made (no space, no permission) the program works beside itself, where reading succeeds
// and writing fails with its own messages.
QString ApplicationFolder(const QString &program, const QString &dataHome);

} // namespace platform
