#include "lists/Transfer.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/DriveList.h"
#include "platform/forms/FileListBox.h"
#include "platform/forms/FolderList.h"
#include "shell/ErrorBoxes.h"

#include <QLineEdit>

namespace tumblewick {

using platform::The;

void FollowDrive(const platform::DriveList &drive, platform::FolderList &folder)
{
    try {
        folder.SetPath(drive.Drive());
    } catch (const platform::Error &error) {
        // With the home gone at the first visit there is no folder to stay in.
        if (folder.Path().isEmpty())
            folder.SetPath(QStringLiteral("/"));
        if (error.Number() == platform::kDeviceUnavailable)
            The().boxes.MessageBox(QStringLiteral("This drive is not accessable"));
        else
            ErrorReport(error);
    }
}

void OfferName(const platform::FileListBox &files, QLineEdit &name)
{
    name.setText(files.FileName());
    name.setCursorPosition(0); // a long name is seen from its beginning
}

QString MissingForCopy(const QString &file, const QString &name, const QString &noFile)
{
    QString message;
    if (file.isEmpty())
        message = noFile;
    if (name.isEmpty())
        message += QStringLiteral("Please enter a name for the list to be saved as. ");
    return message;
}

bool CopyAfterQuestion(const ListCopy &copy)
{
    platform::Files &files = The().files;
    if (files.FileExists(copy.target)) {
        if (The().boxes.MessageBox(copy.question, platform::BoxButtons::YesNo) != platform::BoxAnswer::Yes)
            return false;
        files.Kill(copy.target);
    }
    // From a slow stick it may take a while.
    The().boxes.WhileBusy(QStringLiteral("Copying ") + copy.name + QStringLiteral(" ..."),
                          [&] { files.FileCopy(copy.source, copy.target); });
    return true;
}

void TellRefusedName()
{
    The().boxes.MessageBox(
        QStringLiteral("A file name cannot contain any of the following characters: / \\ : * ? ") +
        QLatin1Char('"') + QStringLiteral(" <> | "));
}

} // namespace tumblewick
