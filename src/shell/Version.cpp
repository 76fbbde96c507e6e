#include "shell/Version.h"

namespace tumblewick {

QString VersionText()
{
    return QStringLiteral("Version " TUMBLEWICK_VERSION);
}

} // namespace tumblewick
