#include "shell/HelpTopics.h"

#include "platform/Services.h"
#include "platform/help/Help.h"
#include "platform/system/Process.h"

namespace tumblewick {

void ShowHelpTopic(const QString &topic)
{
    using platform::The;
    The().help.ShowTopic(The().process.ApplicationFolder() + QStringLiteral("\\TumblewickHelp.chm"), topic);
}

void CloseHelp()
{
    platform::The().help.CloseAll();
}

} // namespace tumblewick
