#include "shell/SettingsFile.h"

#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/system/Process.h"

namespace tumblewick {

using platform::The;

namespace {

QString SettingsPath()
{
    return The().process.ApplicationFolder() + QStringLiteral("\\Set");
}

} // namespace

Settings ReadSettings()
{
    const auto file = The().files.OpenForReading(SettingsPath());
    Settings settings;
    settings.playIntro = file->ReadLine() == QLatin1String("Intro");
    settings.authoringPassword = file->ReadLine();
    return settings;
}

void WriteSettings(const Settings &settings)
{
    const auto file = The().files.OpenForWriting(SettingsPath(), platform::FileWriting::Replace, false);
    file->WriteLine(settings.playIntro ? QStringLiteral("Intro") : QStringLiteral("No Intro"));
    file->WriteLine(settings.authoringPassword);
    file->Close();
}

} // namespace tumblewick
