#include "shell/LastIntroduction.h"

#include "platform/Services.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/system/Process.h"

namespace tumblewick {

using platform::FileWriting;
using platform::The;

bool CheckLastIntro(int candidate)
{
    const QString path = The().process.ApplicationFolder() + QStringLiteral("\\Lintro");
    if (!The().files.FileExists(path))
        The().files.OpenForWriting(path, FileWriting::Replace, true)->Close();
    const QString last = The().files.OpenForReading(path)->ReadLine();
    if (platform::ToReal(last) == candidate)
        return true;
    const auto file = The().files.OpenForWriting(path, FileWriting::Replace, true);
    file->Write(QString::number(candidate));
    file->Close();
    return false;
}

} // namespace tumblewick
