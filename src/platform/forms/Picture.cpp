#include "platform/forms/Picture.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Files.h"

#include <algorithm>

namespace platform {

QPixmap LoadPicture(const QString &path)
{
    const Files &files = The().files;
    if (!files.FileExists(path)) {
        const auto lastSeparator =
            std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
        throw Error(files.FolderExists(path.left(lastSeparator)) ? kFileNotFound : kPathNotFound);
    }
    const QPixmap picture(files.Resolve(path));
    if (picture.isNull())
        throw Error(kInvalidPicture);
    return picture;
}

} // namespace platform
