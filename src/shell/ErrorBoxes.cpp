#include "shell/ErrorBoxes.h"

#include "platform/Services.h"
#include "platform/forms/Boxes.h"

namespace tumblewick {

void ErrorReport(const platform::Error &error)
{
    platform::The().boxes.MessageBox(
        QStringLiteral("Tumblewick has detected a problem. Please email ") + QLatin1String(kSupportAddress) +
        QStringLiteral(" \r\n Please quote the following information ") + QString::number(error.Number()) +
        QLatin1Char(' ') + error.Description() + QStringLiteral("\r\nWe apologise for this inconvenience"));
}

void Trapped(const std::function<void()> &work)
{
    try {
        work();
    } catch (const platform::Error &error) {
        ErrorReport(error);
    }
}

void ShortErrorBox(const platform::Error &error)
{
    platform::The().boxes.MessageBox(error.Description() + QLatin1Char(' ') +
                                     QString::number(error.Number()));
}

} // namespace tumblewick
