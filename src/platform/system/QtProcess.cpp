#include "platform/system/QtProcess.h"

#include <QCoreApplication>

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

QString QtProcess::ApplicationFolder() const
{
    return QCoreApplication::applicationDirPath();
}

QString QtProcess::Title() const
{
    return QStringLiteral("Tumblewick");
}

} // namespace platform
