#pragma once

#include <QString>

class QLineEdit;

namespace platform {
class DriveList;
class FileListBox;
class FolderList;
} // namespace platform

namespace tumblewick {

// What exporting and importing have in common.

// Takes the folders to the drive that was chosen; tells it when that cannot be read.
void FollowDrive(const platform::DriveList &drive, platform::FolderList &folder);

// A click on a file offers its own name for the copy.
void OfferName(const platform::FileListBox &files, QLineEdit &name);

// What is missing before a copy can begin: `noFile` when none is selected, and a sentence for the name; empty
// when nothing is.
QString MissingForCopy(const QString &file, const QString &name, const QString &noFile);

struct ListCopy {
    QString source;
    QString target;
    QString question; // whether a file that is there under the target's name may go
    QString name;     // of what is copied, for a user who waits for it
};
// Copies a file. One that is there goes first, after a Yes to the question; so a copy that fails has lost it:
// wanted. False when the answer was No. Raises what Kill and FileCopy raise.
[[nodiscard]] bool CopyAfterQuestion(const ListCopy &copy);

// The box for a name that the file system refuses.
void TellRefusedName();

} // namespace tumblewick
