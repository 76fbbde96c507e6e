#include "platform/system/QtProcess.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace platform {

void QtProcess::End(int exitCode)
{
    std::cout.flush();
    std::fflush(nullptr);
    std::_Exit(exitCode);
}

QString QtProcess::Title() const
{
    return QStringLiteral("Tumblewick");
}

} // namespace platform
