#include "lists/Transfer.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/DriveList.h"
#include "platform/forms/FolderList.h"
#include "shell/ErrorBoxes.h"

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

bool CopyAfterQuestion(const QString &source, const QString &target, const QString &question)
{
    if (The().files.FileExists(target)) {
        if (The().boxes.MessageBox(question, platform::BoxButtons::YesNo) != platform::BoxAnswer::Yes)
            return false;
        The().files.Kill(target);
    }
    The().files.FileCopy(source, target);
    return true;
}

void TellRefusedName()
{
    The().boxes.MessageBox(
        QStringLiteral("A file name cannot contain any of the following characters: / \\ : * ? ") +
        QLatin1Char('"') + QStringLiteral(" <> | "));
}

} // namespace tumblewick
